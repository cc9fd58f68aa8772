#include "logview/geometry/curvepath.h"

#include "logview/geometry/stepscan.h"
#include "logview/geometry/valuescan.h"

#include <QPainter>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <vector>

namespace logview {

namespace {

std::atomic<qint64> readSamples{0};

} // namespace

qint64 readSampleCount()
{
    return readSamples;
}

void countReadSamples(std::pair<int, int> range)
{
    readSamples += range.second - range.first;
}

CurveKey curveKey(const CurveSamples &samples, const DepthAxis &axis, const DepthReference &reference,
                  const ValueScale &scale)
{
    return {axis, reference, scale, samples.revision()};
}

bool operator==(const CurveKey &a, const CurveKey &b)
{
    return a.axis == b.axis && a.reference == b.reference && a.scale == b.scale && a.revision == b.revision;
}

ShownRows ShownRows::wholeRows() const
{
    const auto row = [this](double y) { return std::floor(y * perPixel); };
    // The bottom of a row is the top of the next.
    return {row(top) / perPixel, std::nextafter((row(bottom) + 1) / perPixel, top), perPixel};
}

double rowsPerPixel(const QPainter &painter)
{
    return std::max(1.0, std::abs(painter.deviceTransform().m22()));
}

SamplePlacer::SamplePlacer(const CurveKey &key)
    : m_key(key)
    , m_start(static_cast<double>(key.axis.start))
    , m_extent(static_cast<double>(key.axis.end) - m_start)
    , m_height(static_cast<double>(key.axis.height))
    , m_isDrawable(key.axis.isDrawable() && std::isfinite(key.scale.width) && key.scale.width >= 0)
    , m_value(key.scale)
{
}

std::pair<int, int> SamplePlacer::range(const CurveSamples &samples) const
{
    const int size = samples.size();
    if (!m_isDrawable)
        return {0, 0};
    if (samples.order() == DepthOrder::Unsorted)
        return {0, size};
    const bool isAscending = samples.order() == DepthOrder::Ascending;
    const auto isBefore = [&](double depthM) {
        const float depth = m_key.reference.toDisplay(depthM);
        return isAscending ? depth < m_key.axis.start : depth > m_key.axis.end;
    };
    const auto isNotAfter = [&](double depthM) {
        const float depth = m_key.reference.toDisplay(depthM);
        return isAscending ? depth <= m_key.axis.end : depth >= m_key.axis.start;
    };
    const int first = samples.partition(0, size, isBefore);
    return {first, samples.partition(first, size, isNotAfter)};
}

// Where a sample at a y is, if they stand at even distances, as in most logs: a search that begins there meets few others, and
// these side by side.
int SamplePlacer::likelyAt(const CurveSamples &samples, double y) const
{
    const double end = m_start + m_extent;
    const double depthM = m_key.reference.toMeasuredM(std::clamp(m_start + y * m_extent / m_height, m_start, end));
    const int last = samples.size() - 1;
    const double part = (depthM - samples.depthM(0)) / (samples.depthM(last) - samples.depthM(0));
    return part > 0 ? static_cast<int>(std::min(part, 1.0) * last) : 0;
}

std::pair<int, int> SamplePlacer::range(const CurveSamples &samples, const ShownRows &rows) const
{
    if (!m_isDrawable || samples.isEmpty() || samples.order() == DepthOrder::Unsorted)
        return range(samples);
    const bool isAscending = samples.order() == DepthOrder::Ascending;
    const auto isOutOfRange = [&](int i) {
        const float depth = m_key.reference.toDisplay(samples.depthM(i));
        return depth < m_key.axis.start || depth > m_key.axis.end;
    };
    const auto isBefore = [&](double depthM) {
        const float depth = m_key.reference.toDisplay(depthM);
        return isAscending ? depth < m_key.axis.start || yOf(depth) < rows.top
                           : depth > m_key.axis.end || yOf(depth) > rows.bottom;
    };
    const auto isNotAfter = [&](double depthM) {
        const float depth = m_key.reference.toDisplay(depthM);
        return isAscending ? depth <= m_key.axis.end && yOf(depth) <= rows.bottom
                           : depth >= m_key.axis.start && yOf(depth) >= rows.top;
    };
    const int end = samples.size();
    const auto find = [&](int from, double y, const auto &isPassed) {
        return firstAround(from - 1, std::max(likelyAt(samples, y), from), end,
                           [&](int i) { return isPassed(samples.depthM(i)); });
    };
    const int first = find(0, isAscending ? rows.top : rows.bottom, isBefore);
    const int last = find(first, isAscending ? rows.bottom : rows.top, isNotAfter);
    return {first > 0 && !isOutOfRange(first - 1) ? first - 1 : first,
            last < samples.size() && !isOutOfRange(last) ? last + 1 : last};
}

void SamplePlacer::toSteps(const CurveSamples &samples, int first, int count, int row, int *steps) const
{
    placeDepths(m_key.axis, m_key.reference, samples.depthsM() + first, count, row, steps);
}

namespace {

// What shows of points of one row: all where they are four or fewer, else the first, the smallest, the largest and the last in x.
void addRow(QPainterPath &path, const std::vector<QPointF> &row, bool &isOpen)
{
    const auto add = [&](const QPointF &point) {
        if (isOpen)
            path.lineTo(point);
        else
            path.moveTo(point);
        isOpen = true;
    };
    if (row.size() <= 4) {
        std::for_each(row.begin(), row.end(), add);
        return;
    }
    const auto isLess = [](const QPointF &a, const QPointF &b) { return a.x() < b.x(); };
    const auto [upper, lower] = std::minmax(
        {std::min_element(row.begin(), row.end(), isLess), std::max_element(row.begin(), row.end(), isLess)});
    const auto last = row.end() - 1;
    add(row.front());
    if (upper != row.begin())
        add(*upper);
    if (lower != upper && lower != row.begin() && lower != last)
        add(*lower);
    if (upper != last)
        add(*last);
}

// Finds what shows of the samples [first, stop) of one row without placing each. False where the line breaks.
bool reduceRow(std::vector<QPointF> &row, const CurveSamples &samples, const SamplePlacer &placer, int first,
               int stop)
{
    constexpr float infinite = std::numeric_limits<float>::infinity();
    const float *values = samples.values();
    if (!placer.isLinear() || firstBeyond(values, first, stop, -infinite, infinite) < stop)
        return false;
    // The first that stands as far out. Beyond the limits of the scale all stand on the edge.
    const auto firstLike = [&](float extreme) {
        const double x = placer.x(static_cast<double>(extreme));
        const bool isOnEdge = x <= 0 || x >= placer.width();
        const auto isAsFarOut = [&](float value) { return placer.x(static_cast<double>(value)) == x; };
        const float *found = isOnEdge ? std::find_if(values + first, values + stop, isAsFarOut)
                                      : std::find(values + first, values + stop, extreme);
        return static_cast<int>(found - values);
    };
    const auto [smallest, largest] = extremesOf(values, first, stop - 1);
    const auto [upper, lower] = std::minmax({firstLike(smallest), firstLike(largest)});
    int added = -1;
    for (const int i : {first, upper, lower, stop - 1}) {
        if (i > added)
            row.emplace_back(placer.x(samples.value(i)), placer.y(samples, i));
        added = i;
    }
    return true;
}

} // namespace

QPainterPath reducedPath(const CurveSamples &samples, const SamplePlacer &placer, std::pair<int, int> range,
                         double rowsPerPixel)
{
    constexpr int many = 12; // samples in a row, for which they are not placed one by one
    constexpr qint64 none = -1;
    countReadSamples(range);
    const bool isInOrder = samples.order() != DepthOrder::Unsorted;
    const auto rowOf = [&](double y) { return static_cast<qint64>(y * rowsPerPixel); };
    QPainterPath path;
    bool isOpen = false;
    std::vector<QPointF> row; // points of the row that is looked at
    qint64 number = none; // of that row
    int begin = range.first; // the first of its samples
    int perRow = 0; // samples of the row before
    for (int i = range.first; i < range.second; ++i) {
        QPointF point;
        const SamplePlacer::Place place = placer.place(samples, i, point);
        if (place == SamplePlacer::Skipped)
            continue;
        const qint64 next = place == SamplePlacer::Break ? none : rowOf(point.y());
        if (next != number || !isInOrder) {
            addRow(path, row, isOpen);
            row.clear();
            perRow = i - begin;
            begin = i;
        }
        number = next;
        if (place == SamplePlacer::Break) {
            isOpen = false;
            continue;
        }
        if (i == begin && isInOrder && perRow >= many) {
            const int stop =
                firstAround(i, i + perRow, range.second, [&](int k) { return rowOf(placer.y(samples, k)) == next; });
            if (stop - i >= many && reduceRow(row, samples, placer, i, stop)) {
                i = stop - 1;
                continue;
            }
        }
        row.push_back(point);
    }
    addRow(path, row, isOpen);
    return path;
}

QPainterPath reducedPath(const CurveSamples &samples, const CurveKey &key, const ShownRows &rows)
{
    const SamplePlacer placer(key);
    return reducedPath(samples, placer, placer.range(samples, rows.wholeRows()), rows.perPixel);
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
