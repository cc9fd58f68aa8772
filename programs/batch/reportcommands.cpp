#include "mainwin/reportwriter.h"
#include "programs/batch/commands.h"
#include "programs/batch/damage.h"
#include "programs/batch/heldsignals.h"
#include "programs/batch/progress.h"
#include "programs/batch/session.h"
#include "programs/batch/tables.h"

#include <QFileInfo>

#include <functional>

namespace batch {

namespace {

using Writer = bool (*)(ProjectData &data, const std::function<bool()> &mayGoOn);

/// What of the wells the report holds is damaged.
using DamageOfWell = std::function<QStringList(const Damage &damage, const host::WellEntry &well)>;

Result report(Session &session, const QStringList &paths, Writer write, const DamageOfWell &damageOfWell)
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
        Progress progress(QStringLiteral("Reading wells"), qMax(1, data.catalogue.wellCount()));
        int wells = 0;
        const bool isWritten = write(data, [&progress, &wells] {
            progress.setDone(wells++);
            return !HeldSignals::isOneWaiting();
        });
        // A report that was written has no more than things to tell; one that was not has its reason among them.
        (isWritten ? result.notices : result.failures) += session.asker().takeWarnings();
        if (!isWritten)
            return result;
        const Damage damage(session);
        for (const host::WellEntry &well : session.store().list().value)
            result.failures += damage.ofWell(well) + damageOfWell(damage, well);
        result.failures.removeDuplicates();
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
    return report(session, paths, writeLogsReport,
                  [](const Damage &damage, const host::WellEntry &well) { return damage.ofLogs(well, nullptr); });
}

Result runMarkers(Session &session, const Arguments &)
{
    return report(session, {markersReportPath(session.project())}, writeMarkersReport,
                  [](const Damage &damage, const host::WellEntry &well) { return damage.ofMarkers(well); });
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
