#include "programs/batch/commands.h"
#include "programs/batch/progress.h"
#include "programs/batch/session.h"
#include "programs/batch/tables.h"
#include "survey/wellsummary.h"

namespace batch {

namespace {

QJsonValue countOf(int count)
{
    return count == survey::WellSummary::unknownCount ? QJsonValue() : QJsonValue(count);
}

Result run(Session &session, const Arguments &)
{
    Progress progress(QStringLiteral("Reading wells"), 1);
    const auto wells =
        survey::readWellSummaries(session.store(), survey::DepthUnit::Metre, [&progress](int done, int all) {
            progress.setTotal(all);
            progress.setDone(done);
        });
    if (!wells.ok())
        return Result::failed(wells.error);
    const QStringList typeNames = survey::wellTypeNames();
    Result result;
    for (const survey::WellSummary &well : wells.value) {
        Record record;
        record[QLatin1String("name")] = well.name;
        record[QLatin1String("key")] = well.key;
        record[QLatin1String("x")] = jsonNumber(well.x);
        record[QLatin1String("y")] = jsonNumber(well.y);
        record[QLatin1String("kbElevation")] = jsonNumber(static_cast<float>(well.kbElevation));
        record[QLatin1String("totalDepth")] = jsonNumber(static_cast<float>(well.totalDepth));
        record[QLatin1String("type")] = typeNames.value(well.typeCode);
        record[QLatin1String("logCount")] = countOf(well.logCount);
        record[QLatin1String("markerCount")] = countOf(well.markerCount);
        result.records.append(record);
        if (!well.error.isEmpty())
            result.failures.append(well.name + QStringLiteral(": ") + well.error);
    }
    return result;
}

} // namespace

Command wellsCommand()
{
    Command command = makeCommand("wells", "List the wells of the survey",
                                  "Lists all wells in the order in which the windows list them. A well that cannot "
                                  "be read is listed with what is known of it, and told.",
                                  "wells --survey Demo");
    command.form.key = QStringLiteral("wells");
    command.form.whenEmpty = QStringLiteral("The survey has no wells.");
    command.form.fields = {
        textField("name", "Well", "its name"),
        textField("key", "", "what tells it from others of its name"),
        numberField("x", "X", "surface position, survey coordinates", 1),
        numberField("y", "Y", "surface position, survey coordinates", 1),
        numberField("kbElevation", "KB (m)", "kelly bushing above datum, metres; null where nobody knows", 2),
        numberField("totalDepth", "TD (m)", "last measured depth of the track, metres", 2),
        textField("type", "Type", "type of the well"),
        countField("logCount", "Logs", "number of its logs"),
        countField("markerCount", "Markers", "number of its markers"),
    };
    command.run = run;
    return command;
}

} // namespace batch
