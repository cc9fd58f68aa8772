#include "datastore/curvegroupassignment.h"
#include "datastore/defaultlogs.h"
#include "datastore/textfields.h"
#include "las/resampling.h"
#include "programs/batch/commands.h"
#include "programs/batch/damage.h"
#include "programs/batch/progress.h"
#include "programs/batch/session.h"
#include "programs/batch/tables.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace batch {

namespace {

/// The step of depths that are even but for what single precision adds; NaN for others.
double evenStep(const QVector<float> &depths)
{
    if (depths.size() < 2)
        return std::numeric_limits<double>::quiet_NaN();
    const auto first = static_cast<double>(depths.first());
    const double step = (static_cast<double>(depths.last()) - first) / (depths.size() - 1);
    const double noise = las::stepTolerance + std::abs(static_cast<double>(depths.last())) * 1e-6;
    for (int i = 0; i < depths.size(); ++i)
        if (std::abs(static_cast<double>(depths.at(i)) - (first + i * step)) > noise)
            return std::numeric_limits<double>::quiet_NaN();
    return std::round(step / las::stepTolerance) * las::stepTolerance;
}

void addSamples(const host::LogData &log, Record *record)
{
    float lowest = std::numeric_limits<float>::infinity();
    float highest = -std::numeric_limits<float>::infinity();
    int missing = 0;
    for (const float value : log.values) {
        if (host::isUndefined(value)) {
            ++missing;
            continue;
        }
        lowest = std::min(lowest, value);
        highest = std::max(highest, value);
    }
    (*record)[QLatin1String("sampleCount")] = log.values.size();
    (*record)[QLatin1String("missingCount")] = missing;
    (*record)[QLatin1String("minimum")] = jsonNumber(lowest);
    (*record)[QLatin1String("maximum")] = jsonNumber(highest);
    (*record)[QLatin1String("step")] = jsonNumber(evenStep(log.depths));
    if (log.depths.isEmpty())
        return;
    (*record)[QLatin1String("startDepth")] = jsonNumber(log.depths.first());
    (*record)[QLatin1String("endDepth")] = jsonNumber(log.depths.last());
}

Result run(Session &session, const Arguments &arguments)
{
    const host::Outcome<host::WellEntry> well = session.well(arguments.operand(0));
    if (!well.ok())
        return Result::failed(well.error);
    const auto logs = session.store().logs(well.value.key);
    if (!logs.ok())
        return Result::failed(logs.error);
    const QString project = session.projectFolder();
    CurveGroupFinder groups(project);
    const DefaultLogs defaults = readDefaultLogs(project, well.value.name);
    Result result;
    Progress progress(QStringLiteral("Reading logs"), qMax(1, logs.value.size()));
    for (int i = 0; i < logs.value.size(); ++i) {
        progress.setDone(i);
        const host::LogInfo &info = logs.value.at(i);
        Record record;
        record[QLatin1String("name")] = info.name;
        record[QLatin1String("unit")] = info.unit;
        record[QLatin1String("group")] = groups.group(info.name);
        record[QLatin1String("isDefault")] = defaults.logs.contains(textfields::fieldName(info.name));
        const host::Outcome<host::LogData> log = session.store().log(well.value.key, i);
        if (log.ok())
            addSamples(log.value, &record);
        else
            result.failures.append(well.value.name + QStringLiteral(", ") + info.name + QStringLiteral(": ")
                                   + log.error);
        result.records.append(record);
    }
    const Damage damage(session);
    for (const QString &problem : damage.ofLogs(well.value, nullptr)) // those are not among the well's
        if (result.failures.filter(problem).isEmpty())
            result.failures.append(problem);
    result.notices += damage.ofDefaultLogs(well.value.name);
    return result;
}

} // namespace

Command logsCommand()
{
    Command command = makeCommand("logs", "List the logs of a well",
                                  "Lists the logs in the well's own order and reads all their samples.",
                                  "logs Aldra-1 --survey Demo");
    command.operands = {wellOperand()};
    command.form.key = QStringLiteral("logs");
    command.form.whenEmpty = QStringLiteral("The well has no logs.");
    command.form.fields = {
        textField("name", "Log", "its name"),
        textField("unit", "Unit", "unit of its values"),
        textField("group", "Group", "curve group"),
        flagField("isDefault", "Default", "whether it is the default log of its group in this well"),
        numberField("startDepth", "From (m)", "measured depth of the first sample, metres", 2),
        numberField("endDepth", "To (m)", "measured depth of the last sample, metres", 2),
        numberField("step", "Step (m)", "metres between samples; null where they are not even"),
        countField("sampleCount", "Samples", "number of samples, those without a value too"),
        countField("missingCount", "Missing", "samples without a value"),
        numberField("minimum", "Least", "smallest value"),
        numberField("maximum", "Most", "largest value"),
    };
    command.run = run;
    return command;
}

} // namespace batch
