#include "logview/geometry/curvesamples.h"

#include "logview/geometry/valuescan.h"

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

// In one pass without a branch, eight depths at a time: this is what making a display of long logs costs besides reading
// them.
template<class Depth>
DepthOrder orderOf(const Depth *depths, int size, double *largestStep)
{
    if (size == 0)
        return DepthOrder::Ascending;
    constexpr int block = scannedTogether;
    Depth largest[block] = {};
    Depth smallest[block] = {};
    int broken = 0;
    const auto look = [&](int i, int lane) {
        const Depth step = depths[i] - depths[i - 1];
        largest[lane] = step > largest[lane] ? step : largest[lane];
        smallest[lane] = step < smallest[lane] ? step : smallest[lane];
        broken |= std::abs(depths[i]) <= std::numeric_limits<Depth>::max() ? 0 : 1;
    };
    int i = 1;
    for (; i + block <= size; i += block)
        for (int lane = 0; lane < block; ++lane)
            look(i + lane, lane);
    for (; i < size; ++i)
        look(i, 0);
    const Depth most = *std::max_element(largest, largest + block);
    const Depth least = *std::min_element(smallest, smallest + block);
    if (broken != 0 || !std::isfinite(depths[0]) || (most > 0 && least < 0))
        return DepthOrder::Unsorted;
    *largestStep = static_cast<double>(std::max(most, -least));
    return least < 0 ? DepthOrder::Descending : DepthOrder::Ascending;
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
