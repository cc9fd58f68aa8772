#include "logview/geometry/curvesamples.h"

#include "logview/geometry/stepscan.h"

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
