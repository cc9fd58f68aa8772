#include "logview/geometry/sampleplacer.h"

#include "logview/geometry/stepscan.h"
#include "logview/geometry/valuescan.h"

#include <QPainter>

#include <algorithm>
#include <atomic>
#include <cmath>

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

} // namespace logview
