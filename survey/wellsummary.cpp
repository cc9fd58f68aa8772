#include "survey/wellsummary.h"

#include "host/feet.h"

namespace survey {

namespace {

// Single precision is what the survey's elevations have.
double stored(float metres, DepthUnit unit)
{
    return static_cast<double>(unit == DepthUnit::Foot ? host::metresToFeet(metres) : metres);
}

} // namespace

host::Outcome<QVector<WellSummary>> readWellSummaries(host::Wells &wells, DepthUnit unit,
                                                      const std::function<void(int done, int all)> &progress)
{
    const host::Outcome<QVector<host::WellEntry>> list = wells.list();
    if (!list.ok())
        return {{}, list.error};
    QVector<WellSummary> summaries;
    summaries.reserve(list.value.size());
    for (const host::WellEntry &entry : list.value) {
        if (progress)
            progress(summaries.size(), list.value.size());
        WellSummary summary;
        summary.key = entry.key;
        summary.name = entry.name;
        const host::Outcome<host::WellHeader> header = wells.header(entry.key);
        summary.error = header.error;
        if (header.ok()) {
            summary.x = header.value.x;
            summary.y = header.value.y;
            if (!host::isUndefined(header.value.kbElevation))
                summary.kbElevation = stored(header.value.kbElevation, unit);
            summary.totalDepth = fromMetres(header.value.totalDepth, unit);
            summary.typeCode = header.value.typeCode;
        }
        const host::Outcome<QVector<host::LogInfo>> logs = wells.logs(entry.key);
        if (logs.ok())
            summary.logCount = logs.value.size();
        const host::Outcome<QVector<host::Marker>> markers = wells.markers(entry.key);
        if (markers.ok())
            summary.markerCount = markers.value.size();
        summaries.append(summary);
    }
    return {summaries, {}};
}

} // namespace survey
