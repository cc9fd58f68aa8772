#include "logview/geometry/curvepath.h"

#include "logview/geometry/stepscan.h"

#include <algorithm>
#include <limits>

namespace logview {

void keepShown(std::vector<QPointF> &row)
{
    if (row.size() <= 4)
        return;
    const auto isLess = [](const QPointF &a, const QPointF &b) { return a.x() < b.x(); };
    const auto [upper, lower] = std::minmax(
        {std::min_element(row.begin(), row.end(), isLess), std::max_element(row.begin(), row.end(), isLess)});
    auto kept = row.begin();
    for (const auto each : {upper, lower, row.end() - 1})
        if (each != row.begin())
            *++kept = *each;
    row.erase(kept + 1, row.end());
}

bool findShown(std::vector<QPointF> &row, const CurveSamples &samples, const SamplePlacer &placer, int first, int end)
{
    constexpr float infinite = std::numeric_limits<float>::infinity();
    const float *values = samples.values();
    if (!placer.isLinear() || firstBeyond(values, first, end, -infinite, infinite) < end)
        return false;
    // The first that stands as far out. Beyond the limits of the scale all stand on the edge.
    const auto firstLike = [&](float extreme) {
        const double x = placer.x(static_cast<double>(extreme));
        const bool isOnEdge = x <= 0 || x >= placer.width();
        const auto isAsFarOut = [&](float value) { return placer.x(static_cast<double>(value)) == x; };
        const float *found = isOnEdge ? std::find_if(values + first, values + end, isAsFarOut)
                                      : std::find(values + first, values + end, extreme);
        return static_cast<int>(found - values);
    };
    const auto [smallest, largest] = extremesOf(values, first, end - 1);
    const auto [upper, lower] = std::minmax({firstLike(smallest), firstLike(largest)});
    for (const int i : {first, upper, lower, end - 1})
        row.emplace_back(placer.x(samples.value(i)), placer.y(samples, i));
    return true;
}

QPainterPath reducedPath(const CurveSamples &samples, const CurveKey &key, const ShownRows &rows)
{
    const SamplePlacer placer(key);
    QPainterPath path;
    forReducedLine(samples, placer, placer.range(samples, rows.wholeRows()), rows.perPixel,
                   [&path](const QPointF &point, bool isFirst) {
                       if (isFirst)
                           path.moveTo(point);
                       else
                           path.lineTo(point);
                   });
    return path;
}

namespace {

// Whether a line comes into an area.
bool touches(QPointF upper, QPointF lower, const QRectF &area)
{
    if (upper.y() > lower.y())
        std::swap(upper, lower);
    if (lower.y() < area.top() || upper.y() > area.bottom())
        return false;
    // The stretch of the line within the area's top and bottom, by its smallest and largest x.
    const double slope = lower.y() > upper.y() ? (lower.x() - upper.x()) / (lower.y() - upper.y()) : 0;
    double x1 = upper.x();
    double x2 = lower.x();
    if (upper.y() < area.top())
        x1 += (area.top() - upper.y()) * slope;
    if (lower.y() > area.bottom())
        x2 -= (lower.y() - area.bottom()) * slope;
    return std::min(x1, x2) <= area.right() && std::max(x1, x2) >= area.left();
}

} // namespace

bool passes(const CurveSamples &samples, const CurveKey &key, const QRectF &area)
{
    const QRectF wanted = area.normalized();
    const SamplePlacer placer(key);
    const std::pair<int, int> range = placer.range(samples, {wanted.top(), wanted.bottom()});
    countReadSamples(range);
    QPointF from;
    bool isOpen = false;
    for (int i = range.first; i < range.second; ++i) {
        QPointF point;
        const SamplePlacer::Place place = placer.place(samples, i, point);
        if (place == SamplePlacer::Skipped)
            continue;
        if (place == SamplePlacer::Drawn && touches(isOpen ? from : point, point, wanted))
            return true;
        isOpen = place == SamplePlacer::Drawn;
        from = point;
    }
    return false;
}

} // namespace logview
