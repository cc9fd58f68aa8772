#include "base/vectorregisters.h"
#include "logview/geometry/curvepath.h"
#include "logview/geometry/linepixels.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace logview {

namespace {

// Whether all pixels between two rows and two positions are set: many lines of dense logs lie in those before.
bool isSet(const PixelRows &pixels, int first, int last, double left, double right)
{
    const auto firstColumn = static_cast<qint64>(std::floor(left));
    const auto lastColumn = static_cast<qint64>(std::ceil(right));
    for (int row = first; row <= last; ++row) {
        const auto [firstSet, lastSet] = pixels.runIn(row);
        if (firstColumn < firstSet || lastColumn > lastSet)
            return false;
    }
    return true;
}

// Sets the disc around the second end, and what lies between the ends and no further from the line than the radius: in
// each row one run.
void setLine(PixelRows &pixels, const QPointF &from, const QPointF &to, double radius)
{
    // The rows that have their middle between top and bottom.
    const double end = pixels.rows();
    const auto first = static_cast<int>(std::ceil(std::clamp(std::min(from.y(), to.y()) - radius - 0.5, 0.0, end)));
    const auto last = static_cast<int>(std::floor(std::clamp(std::max(from.y(), to.y()) + radius - 0.5, -1.0, end)));
    if (isSet(pixels, first, last, std::min(from.x(), to.x()) - radius, std::max(from.x(), to.x()) + radius))
        return;
    const double dx = to.x() - from.x();
    const double dy = to.y() - from.y();
    const double square = dx * dx + dy * dy;
    const double reach = radius * std::sqrt(square);
    constexpr double infinite = std::numeric_limits<double>::infinity();
    const double perDx = dx != 0 ? 1 / dx : 0;
    const double perDy = dy != 0 ? 1 / dy : 0;
    for (int row = first; row <= last; ++row) {
        const double y = row + 0.5 - from.y();
        double left = infinite;
        double right = -infinite;
        if (const double rest = radius * radius - (y - dy) * (y - dy); rest >= 0) {
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
            pixels.set(row, static_cast<qint64>(std::ceil(from.x() + left - 0.5)),
                       static_cast<qint64>(std::floor(from.x() + right - 0.5)));
    }
}

} // namespace

void drawWideLine(PixelRows &pixels, const CurveSamples &samples, const CurveKey &key, const ShownRows &rows,
                  int topY, double penWidth)
{
    base::freeVectorRegisters();
    // What does not show under a pen of this width.
    const double rowsPerPixel = penWidth < 2 ? 4 : 2;
    const double radius = penWidth / 2;
    const SamplePlacer placer(key);
    QPointF from;
    bool isFirst = false; // whether a piece begins there, which has no disc yet
    forReducedLine(samples, placer, placer.range(samples, rows), rowsPerPixel,
                   [&](const QPointF &point, bool begins) {
                       const QPointF to(point.x(), point.y() - topY);
                       if (!begins && to == from)
                           return; // as a path leaves it out
                       if (isFirst && !begins)
                           setLine(pixels, from, from, radius);
                       if (!begins)
                           setLine(pixels, from, to, radius);
                       isFirst = begins;
                       from = to;
                   });
}

} // namespace logview
