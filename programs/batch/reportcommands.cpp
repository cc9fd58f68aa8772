#include "mainwin/reportwriter.h"
#include "programs/batch/commands.h"
#include "programs/batch/heldsignals.h"
#include "programs/batch/session.h"
#include "programs/batch/tables.h"

#include <QFileInfo>

#include <functional>

namespace batch {

namespace {

using Writer = std::function<bool(ProjectData &data)>;

Result report(Session &session, const QStringList &paths, const Writer &write)
{
    Result result;
    for (const QString &path : paths)
        if (QFileInfo::exists(path) && !session.isForced())
            result.failures.append(existsProblem(path));
    if (!result.failures.isEmpty())
        return result;
    if (!session.isDryRun()) {
        ProjectData &data = session.projectToWrite();
        const HeldSignals held;
        const bool isWritten = write(data);
        // A report that was written has no more than things to tell; one that was not has its reason among them.
        (isWritten ? result.notices : result.failures) += session.asker().takeWarnings();
        if (!isWritten)
            return result;
    }
    for (const QString &path : paths) {
        Record record;
        record[QLatin1String("file")] = path;
        result.records.append(record);
    }
    return result;
}

Result runLogs(Session &session, const Arguments &)
{
    const ProjectData &data = session.project();
    QStringList paths;
    for (const QString &name : data.catalogue.wellNames())
        paths.append(logsReportPath(data, name));
    paths.removeDuplicates();
    return report(session, paths, [](ProjectData &project) {
        return writeLogsReport(project, [] { return !HeldSignals::isOneWaiting(); });
    });
}

Result runMarkers(Session &session, const Arguments &)
{
    return report(session, {markersReportPath(session.project())}, [](ProjectData &project) {
        return writeMarkersReport(project, [] { return !HeldSignals::isOneWaiting(); });
    });
}

Command reportCommand(const char *name, const char *summary, const char *description, const char *example)
{
    Command command = makeCommand(name, summary, description, example);
    command.writes = true;
    command.replaces = true;
    command.form.key = QStringLiteral("files");
    command.form.fields = {textField("file", "File", "path of the report"), isWrittenField()};
    return command;
}

} // namespace

Command reportLogsCommand()
{
    Command command =
        reportCommand("report logs", "Write the reports on the logs of all wells",
                      "Writes for each well the file WELL_logsInfo.txt into the project folder WLC of the survey: "
                      "depth range and first gap of each log, as the menu entry \"Wells Info Report\" does.",
                      "report logs --survey Demo --force");
    command.run = runLogs;
    return command;
}

Command reportMarkersCommand()
{
    Command command = reportCommand("report markers", "Write the report on the markers of all wells",
                                    "Writes the file Well_Markers_Info.txt into the project folder WLC of the "
                                    "survey, as the menu entry \"Markers Report\" does.",
                                    "report markers --survey Demo --force");
    command.run = runMarkers;
    return command;
}

} // namespace batch
