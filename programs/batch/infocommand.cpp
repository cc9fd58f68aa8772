#include "datastore/curvegroups.h"
#include "datastore/defaultlogs.h"
#include "datastore/perforationfile.h"
#include "programs/batch/calibrationpoints.h"
#include "programs/batch/commands.h"
#include "programs/batch/damage.h"
#include "programs/batch/session.h"
#include "programs/batch/tables.h"
#include "survey/wellfile.h"
#include "templates/templatestore.h"

#include <QFileInfo>

namespace batch {

namespace {

QJsonValue elevation(float value)
{
    return host::isUndefined(value) ? QJsonValue() : jsonNumber(value);
}

QJsonArray defaultLogsOf(const QString &project, const QString &wellName)
{
    const DefaultLogs defaults = readDefaultLogs(project, wellName);
    QJsonArray list;
    for (int i = 0; i < qMin(defaults.groups.size(), defaults.logs.size()); ++i)
        list.append(QJsonObject{{QStringLiteral("group"), defaults.groups.at(i)},
                                {QStringLiteral("log"), defaults.logs.at(i)}});
    return list;
}

QJsonArray pointsOf(Session &session, const QString &wellName, QStringList *failures)
{
    const QString project = session.projectFolder();
    QJsonArray list;
    for (const QString &group : curveGroupNames()) {
        if (!QFileInfo::exists(calibrationPath(project, wellName, group)))
            continue;
        const CalibrationRecord points = readPoints(session, wellName, group, failures);
        list.append(QJsonObject{{QStringLiteral("group"), group}, {QStringLiteral("count"), points.depths.size()}});
    }
    return list;
}

Result run(Session &session, const Arguments &arguments)
{
    const host::Outcome<host::WellEntry> well = session.well(arguments.operand(0));
    if (!well.ok())
        return Result::failed(well.error);
    survey::SurveyStore &store = session.store();
    const auto header = store.header(well.value.key);
    const auto logs = store.logs(well.value.key);
    const auto markers = store.markers(well.value.key);
    Result result;
    const QString &name = well.value.name;
    const Damage damage(session);
    result.failures = damage.ofWell(well.value) + damage.ofLogs(well.value, nullptr) + damage.ofMarkers(well.value)
        + damage.ofZones(name) + damage.ofDefaultLogs(name);
    for (const QString &own : wellTemplateNames(session.projectPaths(), name))
        result.failures += damage.ofTemplate(TemplateId::ofWell(name, own));
    Record record;
    record[QLatin1String("name")] = name;
    record[QLatin1String("key")] = well.value.key;
    if (header.ok()) {
        record[QLatin1String("x")] = jsonNumber(header.value.x);
        record[QLatin1String("y")] = jsonNumber(header.value.y);
        record[QLatin1String("kbElevation")] = elevation(header.value.kbElevation);
        record[QLatin1String("groundElevation")] = elevation(header.value.groundElevation);
        record[QLatin1String("totalDepth")] = jsonNumber(static_cast<float>(header.value.totalDepth));
        record[QLatin1String("type")] = survey::wellTypeNames().value(header.value.typeCode);
    }
    record[QLatin1String("surveyUnit")] = survey::pluralName(store.depthUnit());
    QJsonArray logNames;
    for (const host::LogInfo &log : logs.value)
        logNames.append(log.name);
    record[QLatin1String("logs")] = logNames;
    QJsonArray markerNames;
    for (const host::Marker &marker : markers.value)
        markerNames.append(marker.name);
    record[QLatin1String("markers")] = markerNames;

    const QString project = session.projectFolder();
    record[QLatin1String("zoneCount")] = readPerforation(project, name).names.size();
    record[QLatin1String("points")] = pointsOf(session, name, &result.failures);
    record[QLatin1String("defaultLogs")] = defaultLogsOf(project, name);
    record[QLatin1String("templates")] = QJsonArray::fromStringList(wellTemplateNames(session.projectPaths(), name));
    record[QLatin1String("problems")] = QJsonArray::fromStringList(store.takeProblems());
    result.failures.removeDuplicates();
    result.records.append(record);
    return result;
}

} // namespace

Command infoCommand()
{
    Command command = makeCommand("info", "Tell what is known of a well",
                                  "Tells the well's head, and what the survey and the project hold of it.",
                                  "info Aldra-1 --survey Demo");
    command.operands = {wellOperand()};
    command.form.key = QStringLiteral("wells");
    command.form.layout = ResultForm::Layout::Sheet;
    command.form.fields = {
        textField("name", "Well", "its name"),
        textField("key", "Key", "what tells it from others of its name"),
        numberField("x", "X", "surface position, survey coordinates"),
        numberField("y", "Y", "surface position, survey coordinates"),
        numberField("kbElevation", "KB (m)", "kelly bushing above datum, metres; null where nobody knows", 2),
        numberField("groundElevation", "Ground (m)", "ground level above datum, metres; null where nobody knows", 2),
        numberField("totalDepth", "TD (m)", "last measured depth of the track, metres", 2),
        textField("type", "Type", "type of the well"),
        textField("surveyUnit", "Survey in", "unit of depths in the survey's files: metres or feet"),
        textsField("logs", "Logs", "names of its logs"),
        textsField("markers", "Markers", "names of its markers, by depth"),
        countField("zoneCount", "Zones", "number of its perforation zones"),
        recordsField("points", "Calibration points", "its calibration points by curve group",
                     {textField("group", "Group", "curve group"), countField("count", "Points", "how many")}),
        recordsField("defaultLogs", "Default logs", "its default log of each curve group",
                     {textField("group", "Group", "curve group"), textField("log", "Log", "name of the log")}),
        textsField("templates", "Own templates", "names of its own display templates"),
        textsField("problems", "Problems", "what of its files could not be read"),
    };
    command.run = run;
    return command;
}

} // namespace batch
