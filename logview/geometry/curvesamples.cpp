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

DepthOrder orderOf(const double *depths, int size)
{
    bool isAscending = true;
    bool isDescending = true;
    for (int i = 0; i < size && (isAscending || isDescending); ++i) {
        if (!std::isfinite(depths[i]))
            return DepthOrder::Unsorted;
        isAscending = isAscending && (i == 0 || depths[i - 1] <= depths[i]);
        isDescending = isDescending && (i == 0 || depths[i - 1] >= depths[i]);
    }
    if (isAscending)
        return DepthOrder::Ascending;
    return isDescending ? DepthOrder::Descending : DepthOrder::Unsorted;
}

} // namespace

CurveSamples::CurveSamples(const QVector<double> &depthsM, const QVector<double> &values, double nullValue)
    : m_depthsM(depthsM)
    , m_values(values)
    , m_nullValue(nullValue)
    , m_size(std::min(depthsM.size(), values.size()))
    , m_order(orderOf(depthsM.constData(), m_size))
    , m_revision(nextRevision())
{
}

CurveSamples::CurveSamples(const LogCurveData &curve)
    : CurveSamples(curve.depths, curve.values, curve.nullValue)
{
}

bool CurveSamples::isNull(int i) const
{
    const double value = m_values.at(i);
    return value == m_nullValue || !std::isfinite(value);
}

} // namespace logview
