#include "logview/geometry/curvesamples.h"

#include <algorithm>
#include <atomic>
#include <cmath>

namespace logview {

namespace {

quint64 nextRevision()
{
    static std::atomic<quint64> revision{0};
    return ++revision;
}

// In one pass without a branch: this is what making a display of long logs costs besides reading them.
template<class Depth>
DepthOrder orderOf(const Depth *depths, int size, double *largestStep)
{
    Depth largest = 0;
    Depth smallest = 0;
    Depth zero = size > 0 ? 0 * depths[0] : 0; // unless a depth is no number
    for (int i = 1; i < size; ++i) {
        const Depth step = depths[i] - depths[i - 1];
        largest = std::max(largest, step);
        smallest = std::min(smallest, step);
        zero += 0 * depths[i];
    }
    if (zero != 0 || (largest > 0 && smallest < 0))
        return DepthOrder::Unsorted;
    *largestStep = static_cast<double>(std::max(largest, -smallest));
    return smallest < 0 ? DepthOrder::Descending : DepthOrder::Ascending;
}

} // namespace

template<class Number>
CurveSamples::CurveSamples(const QVector<Number> &depthsM, const QVector<Number> &values, double nullValue, int size)
    : m_depthsM(depthsM)
    , m_values(values)
    , m_nullValue(nullValue)
    , m_size(size)
    , m_order(orderOf(depthsM.constData(), m_size, &m_largestStepM))
    , m_revision(nextRevision())
{
}

CurveSamples::CurveSamples(const QVector<double> &depthsM, const QVector<double> &values, double nullValue)
    : CurveSamples(depthsM, values, nullValue, std::min(depthsM.size(), values.size()))
{
}

CurveSamples CurveSamples::ofFloats(const QVector<float> &depthsM, const QVector<float> &values, double nullValue)
{
    return {depthsM, values, nullValue, std::min(depthsM.size(), values.size())};
}

bool CurveSamples::isNull(int i) const
{
    const double value = m_values.at(i);
    return value == m_nullValue || !std::isfinite(value);
}

} // namespace logview
