#include "las/exportplan.h"

#include "las/resampling.h"

#include <algorithm>

namespace las {

void ExportRange::add(const LogCurveData &log)
{
    if (log.depths.isEmpty())
        return;
    start = std::min(start, log.depths.first());
    stop = std::max(stop, log.depths.last());
}

LogCurveData resampledForExport(const LogCurveData &log, double interval, bool *isUnsuited)
{
    *isUnsuited = false;
    LogCurveData result = log;
    if (!differsFromStep(log.depths, interval))
        return result;
    *isUnsuited = !isStrictlyIncreasing(log.depths);
    if (!*isUnsuited) {
        Samples samples = resample(log.depths, log.values, interval);
        result.depths = samples.depths;
        result.values = samples.values;
    }
    return result;
}

QString unsuitedExportWarning(const QStringList &logs)
{
    return QStringLiteral("The depths of these logs do not increase strictly, so the interval could not be applied.\n"
                          "They were written sample by sample, whatever their depths:\n%1")
        .arg(logs.join(QLatin1Char('\n')));
}

} // namespace las
