#include "base/vectorregisters.h"
#include "logview/geometry/linepixels.h"
#include "logview/geometry/rowreducer.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace logview {

namespace {

/// A round pen: the discs around the points of a line, and the strips between them.
class WidePen
{
public:
    WidePen(PixelRows &pixels, int topY, double radius)
        : m_pixels(pixels)
        , m_topY(topY)
        , m_radius(radius)
    {
    }

    void lineBreaks() { m_isOpen = false; }
    void rowBegins(int) { }
    void point(const QPointF &position)
    {
        const QPointF to(position.x(), position.y() - m_topY);
        if (m_isOpen && !isSet(m_from, to)) {
            if (m_isFirst)
                line(m_from, m_from);
            line(m_from, to);
        }
        m_isFirst = !m_isOpen;
        m_isOpen = true;
        m_from = to;
    }

private:
    // Whether all pixels that a line may have are set: many lines of dense logs lie in those before.
    bool isSet(const QPointF &from, const QPointF &to) const
    {
        const auto left = static_cast<qint64>(std::floor(std::min(from.x(), to.x()) - m_radius));
        const auto right = static_cast<qint64>(std::ceil(std::max(from.x(), to.x()) + m_radius));
        const auto [first, last] = rows(std::min(from.y(), to.y()) - m_radius, std::max(from.y(), to.y()) + m_radius);
        for (qint64 row = first; row <= last; ++row) {
            const auto [firstSet, lastSet] = m_pixels.runIn(row);
            if (left < firstSet || right > lastSet)
                return false;
        }
        return true;
    }

    // The disc around the second end, and what lies between the ends and no further from the line than the radius: in
    // each row one run.
    void line(const QPointF &from, const QPointF &to)
    {
        const double dx = to.x() - from.x();
        const double dy = to.y() - from.y();
        const double square = dx * dx + dy * dy;
        const double reach = m_radius * std::sqrt(square);
        constexpr double infinite = std::numeric_limits<double>::infinity();
        const double perDx = dx != 0 ? 1 / dx : 0;
        const double perDy = dy != 0 ? 1 / dy : 0;
        const auto [first, last] = rows(std::min(from.y(), to.y()) - m_radius, std::max(from.y(), to.y()) + m_radius);
        for (qint64 row = first; row <= last; ++row) {
            const double y = static_cast<double>(row) + 0.5 - from.y();
            double left = infinite;
            double right = -infinite;
            if (const double rest = m_radius * m_radius - (y - dy) * (y - dy); rest >= 0) {
                const double half = std::sqrt(rest);
                left = dx - half;
                right = dx + half;
            }
            std::pair<double, double> between{-infinite, infinite};
            if (dx != 0)
                between = std::minmax({-y * dy * perDx, (square - y * dy) * perDx});
            else if (y * dy < 0 || y * dy > square)
                between = {infinite, -infinite};
            std::pair<double, double> near{-infinite, infinite};
            if (dy != 0)
                near = std::minmax({(y * dx - reach) * perDy, (y * dx + reach) * perDy});
            else if (std::abs(y * dx) > reach)
                near = {infinite, -infinite};
            const double stripLeft = std::max(between.first, near.first);
            const double stripRight = std::min(between.second, near.second);
            if (square > 0 && stripLeft <= stripRight) {
                left = std::min(left, stripLeft);
                right = std::max(right, stripRight);
            }
            if (left <= right)
                m_pixels.set(row, static_cast<qint64>(std::ceil(from.x() + left - 0.5)),
                             static_cast<qint64>(std::floor(from.x() + right - 0.5)));
        }
    }

    // The rows that have their middle between two positions.
    std::pair<qint64, qint64> rows(double top, double bottom) const
    {
        const double last = m_pixels.rows();
        return {static_cast<qint64>(std::ceil(std::clamp(top - 0.5, 0.0, last))),
                static_cast<qint64>(std::floor(std::clamp(bottom - 0.5, -1.0, last)))};
    }
    PixelRows &m_pixels;
    int m_topY;
    double m_radius;
    QPointF m_from;
    bool m_isOpen = false;
    bool m_isFirst = false; // m_from has no disc yet
};

} // namespace

void drawWideLine(PixelRows &pixels, const CurveSamples &samples, const CurveKey &key, const ShownRows &rows,
                  int topY, double penWidth)
{
    base::freeVectorRegisters();
    WidePen pen(pixels, topY, penWidth / 2);
    const SamplePlacer placer(key);
    // What does not show under a pen of this width.
    const double rowsPerPixel = penWidth < 2 ? 4 : 2;
    RowReducer<WidePen>(pen).reduce(samples, placer, placer.range(samples, rows), rowsPerPixel);
}

} // namespace logview
