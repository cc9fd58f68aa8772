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
DepthOrder orderOf(const float *depths, int size)
{
    if (size == 0)
        return DepthOrder::Ascending;
    constexpr int block = scannedTogether;
    float largest[block] = {};
    float smallest[block] = {};
    int broken = 0;
    const auto look = [&](int i, int lane) {
        const float step = depths[i] - depths[i - 1];
        largest[lane] = step > largest[lane] ? step : largest[lane];
        smallest[lane] = step < smallest[lane] ? step : smallest[lane];
        broken |= std::abs(depths[i]) <= std::numeric_limits<float>::max() ? 0 : 1;
    };
    int i = 1;
    for (; i + block <= size; i += block)
        for (int lane = 0; lane < block; ++lane)
            look(i + lane, lane);
    for (; i < size; ++i)
        look(i, 0);
    const float most = *std::max_element(largest, largest + block);
    const float least = *std::min_element(smallest, smallest + block);
    if (broken != 0 || !std::isfinite(depths[0]) || (most > 0 && least < 0))
        return DepthOrder::Unsorted;
    return least < 0 ? DepthOrder::Descending : DepthOrder::Ascending;
}

} // namespace

CurveSamples::CurveSamples(const QVector<float> &depthsM, const QVector<float> &values)
    : m_depthsM(depthsM)
    , m_values(values)
    , m_firstDepthM(m_depthsM.constData())
    , m_firstValue(m_values.constData())
    , m_size(std::min(depthsM.size(), values.size()))
    , m_order(orderOf(m_firstDepthM, m_size))
    , m_revision(nextRevision())
{
}

bool CurveSamples::isNull(int i) const
{
    const double sample = value(i);
    return sample == nullSampleValue || !std::isfinite(sample);
}

} // namespace logview
