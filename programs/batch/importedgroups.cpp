#include "programs/batch/importedgroups.h"

#include "datastore/curvegroupassignment.h"
#include "datastore/curvegrouptable.h"
#include "datastore/defaultlogs.h"
#include "datastore/groupfiles.h"
#include "datastore/projectfile.h"
#include "datastore/textfields.h"
#include "las/showntext.h"
#include "programs/batch/heldsignals.h"
#include "programs/batch/session.h"

#include <QMap>
#include <QSet>

namespace batch {

namespace {

/// What of the groups is not in the project's files, as sentences that name them: the window's parts pass over what they
/// cannot write. \a groups by the names of logs.
QStringList unkeptGroups(const QString &project, const QMap<QString, QString> &groups)
{
    CurveGroupTable stored;
    stored.read(project);
    QStringList names;
    QSet<QString> unlisted;
    for (auto group = groups.begin(); group != groups.end(); ++group) {
        const QString field = textfields::fieldName(group.key());
        if (stored.group(group.key()) != group.value())
            names.append(las::shortened(group.key()));
        QStringList listed = readGroupFile(project, group.value());
        for (QString &name : listed)
            name = textfields::fieldName(name);
        if (!listed.contains(field))
            unlisted.insert(group.value());
    }
    QStringList problems;
    if (!names.isEmpty())
        problems.append(
            QStringLiteral("The curve groups of these logs were not kept: %1; the file %2 cannot be written.")
                .arg(names.join(QStringLiteral(", ")), CurveGroupTable::path(project)));
    QStringList files;
    for (const QString &group : qAsConst(unlisted))
        files.append(groupFilePath(project, group));
    files.sort();
    for (const QString &file : qAsConst(files))
        problems.append(
            QStringLiteral("Logs were not added to their curve group: the file %1 cannot be written.").arg(file));
    return problems;
}

/// The same for the default logs of new wells.
QStringList unkeptDefaults(const QString &project, const Result &imported)
{
    QStringList problems;
    for (const Record &record : imported.records) {
        const QString path = defaultLogsPath(project, record.value(QLatin1String("well")).toString());
        if (record.value(QLatin1String("isNew")).toBool()
            && readProjectFile(project, path).state != ProjectFile::State::Read)
            problems.append(QStringLiteral("The well \"%1\" has no default logs: the file %2 cannot be written.")
                                .arg(record.value(QLatin1String("well")).toString(), path));
    }
    return problems;
}

} // namespace

QStringList assignGroups(Session &session, const Result &imported)
{
    ProjectData &data = session.projectToWrite();
    CurveGroupAssignments groups(data.project.projectFolder);
    QMap<QString, QString> wanted;
    for (const Record &record : imported.records) {
        for (const QJsonValue &log : record.value(QLatin1String("logs")).toArray()) {
            const QJsonObject object = log.toObject();
            const QString name = object.value(QLatin1String("name")).toString();
            const QString group = object.value(QLatin1String("group")).toString();
            groups.add(name, group);
            wanted.insert(name, group);
        }
    }
    const HeldSignals held;
    groups.write();
    session.readWells();
    runDefaultLogsPass(data, [] { return !HeldSignals::isOneWaiting(); });
    return unkeptGroups(data.project.projectFolder, wanted) + unkeptDefaults(data.project.projectFolder, imported);
}

} // namespace batch
