#include "las/exportplan.h"

#include "las/resampling.h"

#include <algorithm>

namespace las {

std::optional<LogCurveData> readListedLog(const WellsCatalogue &catalogue, int well, const ListedLog &log,
                                          WellsCatalogue::OnFailure onFailure)
{
    int index = -1;
    if (well >= 0 && well < catalogue.wellCount()) {
        const QStringList &names = catalogue.logNames(well);
        index = names.value(log.row) == log.name ? log.row : names.indexOf(log.name);
    }
    return catalogue.readCurve(well, index, onFailure);
}

void ExportRange::add(const LogCurveData &log)
{
    if (log.depths.isEmpty())
        return;
    start = std::min(start, log.depths.first());
    stop = std::max(stop, log.depths.last());
}

ExportLog exportLog(const LogCurveData &log, double interval, bool *isUnsuited)
{
    const bool wantsResampling = differsFromStep(log.depths, interval);
    *isUnsuited = wantsResampling && !isStrictlyIncreasing(log.depths);
    return {log, wantsResampling && !*isUnsuited};
}

QString unreadableLogsText(const NameList &logs)
{
    return QStringLiteral("Cannot get data for the selected well\n") + logs.text();
}

QString unsuitedExportWarning(const NameList &logs)
{
    return QStringLiteral("The depths of these logs do not increase strictly, so the interval could not be applied.\n"
                          "They were written sample by sample, whatever their depths:\n%1")
        .arg(logs.text());
}

} // namespace las
