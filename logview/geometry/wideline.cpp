#include "logview/geometry/linepixels.h"
#include "logview/geometry/rowreducer.h"

#include <QImage>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace logview {

namespace {

/// A round pen of two pixels: the discs around the points of a line, and the strips between them.
class WidePen
{
public:
    WidePen(PixelRows &pixels, int topY)
        : m_pixels(pixels)
        , m_topY(topY)
    {
    }

    void lineBreaks() { m_isOpen = false; }
    void rowBegins(int) { }
    void point(const QPointF &position)
    {
        const QPointF to(position.x(), position.y() - m_topY);
        if (m_isOpen) {
            if (!isSet(m_from, to)) {
                if (m_isFirst)
                    disc(m_from);
                disc(to);
                strip(m_from, to);
            }
        }
        m_isFirst = !m_isOpen;
        m_isOpen = true;
        m_from = to;
    }

private:
    // Whether all pixels that a line may have are set: many lines of dense logs lie in those before.
    bool isSet(const QPointF &from, const QPointF &to) const
    {
        const auto left = static_cast<qint64>(std::floor(std::min(from.x(), to.x()) - 1));
        const auto right = static_cast<qint64>(std::ceil(std::max(from.x(), to.x()) + 1));
        const auto [first, last] = rows(std::min(from.y(), to.y()) - 1, std::max(from.y(), to.y()) + 1);
        for (qint64 row = first; row <= last; ++row) {
            const auto [firstSet, lastSet] = m_pixels.runIn(row);
            if (left < firstSet || right > lastSet)
                return false;
        }
        return true;
    }

    void disc(const QPointF &center)
    {
        const auto [first, last] = rows(center.y() - 1, center.y() + 1);
        for (qint64 row = first; row <= last; ++row) {
            const double dy = middle(row) - center.y();
            const double reach = std::sqrt(std::max(1 - dy * dy, 0.0));
            set(row, center.x() - reach, center.x() + reach);
        }
    }

    // What lies between the two ends, and no further from the line than the radius.
    void strip(const QPointF &from, const QPointF &to)
    {
        const double dx = to.x() - from.x();
        const double dy = to.y() - from.y();
        const double square = dx * dx + dy * dy;
        if (square == 0)
            return;
        const double reach = std::sqrt(square); // the radius is 1
        constexpr double infinite = std::numeric_limits<double>::infinity();
        const double perDx = dx != 0 ? 1 / dx : 0;
        const double perDy = dy != 0 ? 1 / dy : 0;
        const auto [first, last] = rows(std::min(from.y(), to.y()) - 1, std::max(from.y(), to.y()) + 1);
        for (qint64 row = first; row <= last; ++row) {
            const double y = middle(row) - from.y();
            std::pair<double, double> between{-infinite, infinite};
            if (dx != 0)
                between = std::minmax({-y * dy * perDx, (square - y * dy) * perDx});
            else if (y * dy < 0 || y * dy > square)
                continue;
            std::pair<double, double> near{-infinite, infinite};
            if (dy != 0)
                near = std::minmax({(y * dx - reach) * perDy, (y * dx + reach) * perDy});
            else if (std::abs(y * dx) > reach)
                continue;
            set(row, from.x() + std::max(between.first, near.first),
                from.x() + std::min(between.second, near.second));
        }
    }

    static double middle(qint64 row) { return static_cast<double>(row) + 0.5; }
    // The rows that have their middle between two positions.
    std::pair<qint64, qint64> rows(double top, double bottom) const
    {
        const double last = m_pixels.rows();
        return {static_cast<qint64>(std::ceil(std::clamp(top - 0.5, 0.0, last))),
                static_cast<qint64>(std::floor(std::clamp(bottom - 0.5, -1.0, last)))};
    }
    void set(qint64 row, double left, double right)
    {
        if (left <= right)
            m_pixels.set(row, static_cast<qint64>(std::ceil(left - 0.5)),
                         static_cast<qint64>(std::floor(right - 0.5)));
    }

    PixelRows &m_pixels;
    int m_topY;
    QPointF m_from;
    bool m_isOpen = false;
    bool m_isFirst = false; // m_from has no disc yet
};

} // namespace

void drawWideLine(PixelRows &pixels, const CurveSamples &samples, const CurveKey &key, const ShownRows &rows,
                  int topY, int penWidth)
{
    ShownRows halfRows = rows;
    halfRows.perPixel = 2;
    if (penWidth == 2) {
        // What the painter makes of round ends and joins of this size are discs; larger ones have corners.
        WidePen pen(pixels, topY);
        RowReducer<WidePen>(pen).reduce(samples, SamplePlacer(key), SamplePlacer(key).range(samples, rows), 2);
        return;
    }
    // A line that leaves the picture is cut, which moves some of its pixels: so the picture grows to here.
    constexpr int maximumSpareRows = 4096;
    const QPainterPath lines = reducedPath(samples, key, halfRows);
    const QRectF bounds = lines.controlPointRect();
    const int above = std::clamp(topY - toInt(bounds.top()) + penWidth, 0, maximumSpareRows);
    const int below = std::clamp(toInt(bounds.bottom()) - topY - pixels.rows() + penWidth, 0, maximumSpareRows);
    QImage image(pixels.columns(), above + pixels.rows() + below, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.translate(-pixels.left(), above - topY);
    painter.setPen(QPen(Qt::black, penWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPath(lines);
    painter.end();
    for (int row = 0; row < pixels.rows(); ++row) {
        const QRgb *line = reinterpret_cast<const QRgb *>(image.constScanLine(above + row));
        const QRgb *end = line + pixels.columns();
        const auto isSet = [](QRgb pixel) { return pixel != 0; };
        for (const QRgb *run = std::find_if(line, end, isSet); run != end;) {
            const QRgb *runEnd = std::find(run, end, 0U);
            pixels.set(row, run - line + pixels.left(), runEnd - 1 - line + pixels.left());
            run = std::find_if(runEnd, end, isSet);
        }
    }
}

} // namespace logview
