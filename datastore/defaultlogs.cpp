#include "datastore/defaultlogs.h"

#include "base/atomicfile.h"
#include "base/safename.h"
#include "datastore/curvegrouptable.h"
#include "datastore/groupfiles.h"
#include "datastore/projectdata.h"
#include "datastore/projectfile.h"
#include "datastore/textfields.h"

#include <QDir>
#include <QSet>

#include <algorithm>

namespace {

QString noGroup()
{
    return QStringLiteral("None");
}

QString othersGroup()
{
    return QStringLiteral("Others");
}

QString defaultLogsFolder(const QString &projectFolder)
{
    return projectFolder + QStringLiteral("/DefaultLogs");
}

QString defaultLogsFileName(const QString &wellName)
{
    return base::fileNameFor(wellName, 4) + QStringLiteral(".txt");
}

QString groupInTable(const QString &logName)
{
    const QString group = CurveGroupTable::instance().group(logName);
    return group.isEmpty() ? othersGroup() : group;
}

// Logs without a group are classified by their unit. False when the units were needed and the well can no longer be
// read: then nothing of it is kept.
bool classifyLogs(const WellsCatalogue &catalogue, int well, GroupFiles *groupFiles)
{
    const QStringList &names = catalogue.logNames(well);
    QStringList unitGroups; // most launches find every log in the table and need none
    if (std::any_of(names.begin(), names.end(),
                    [](const QString &name) { return groupInTable(name) == othersGroup(); })) {
        const host::Outcome<QStringList> read = catalogue.readCurveGroups(well);
        if (!read.ok())
            return false;
        unitGroups = read.value;
    }
    for (int log = 0; log < names.size(); ++log) {
        QString group = groupInTable(names.at(log));
        if (group == othersGroup()) {
            group = unitGroups.value(log, othersGroup());
            CurveGroupTable::instance().set(names.at(log), group);
        }
        if (group != noGroup())
            groupFiles->add(group, names.at(log));
    }
    return true;
}

// The first log of each group.
DefaultLogs firstLogs(const Project &project, const WellsCatalogue &catalogue, int well)
{
    DefaultLogs first;
    QStringList free = project.groupNames;
    for (const QString &log : catalogue.logNames(well)) {
        const QString group = groupInTable(log);
        const int at = [&free, &group] {
            for (int i = 0; i < free.size(); ++i)
                if (free.at(i).compare(group, Qt::CaseInsensitive) == 0)
                    return i;
            return -1;
        }();
        if (at < 0)
            continue;
        first.groups.append(group);
        first.logs.append(log);
        free.removeAt(at);
    }
    return first;
}

} // namespace

QString defaultLogsPath(const QString &projectFolder, const QString &wellName)
{
    return defaultLogsFolder(projectFolder) + QLatin1Char('/') + defaultLogsFileName(wellName);
}

QByteArray defaultLogsBytes(const QString &wellName, const DefaultLogs &logs)
{
    QByteArray bytes = textfields::oneLine(wellName) + '\n';
    for (int i = 0; i < qMin(logs.groups.size(), logs.logs.size()); ++i)
        bytes += logs.groups.at(i).toUtf8() + '|' + textfields::fieldName(logs.logs.at(i)).toUtf8() + '\n';
    return bytes;
}

DefaultLogs parseDefaultLogs(const QByteArray &bytes)
{
    using namespace textfields;
    DefaultLogs result;
    bool isFirst = true;
    forEachLine(utf8Text(bytes), [&](Field whole) {
        const Field line = trimmed(whole);
        const size_t bar = line.find('|');
        if (!isFirst && bar != Field::npos && line.find('|', bar + 1) == Field::npos) {
            result.groups.append(toString(line.substr(0, bar)));
            result.logs.append(toString(line.substr(bar + 1)));
        }
        isFirst = false;
    });
    return result;
}

DefaultLogs readDefaultLogs(const QString &projectFolder, const QString &wellName)
{
    return parseDefaultLogs(readProjectFile(projectFolder, defaultLogsPath(projectFolder, wellName)).bytes);
}

void runDefaultLogsPass(const Project &project, const WellsCatalogue &catalogue, const std::function<bool()> &mayGoOn)
{
    const QString &folder = project.projectFolder;
    CurveGroupTable &table = CurveGroupTable::instance();
    table.read(folder);
    GroupFiles groupFiles(folder);
    QSet<QString> unreadable; // file names: wells of one name share a file
    for (int well = 0; well < catalogue.wellCount(); ++well) {
        if (mayGoOn && !mayGoOn())
            return;
        if (!catalogue.hasLogNames(well) || !classifyLogs(catalogue, well, &groupFiles))
            unreadable.insert(defaultLogsFileName(catalogue.wellNames().at(well)));
    }
    bool isChanged = groupFiles.write(base::Flush::Later);

    const QStringList present =
        QDir(defaultLogsFolder(folder)).entryList(QDir::AllEntries | QDir::Hidden | QDir::System);
    QSet<QString> existing(present.begin(), present.end());
    for (int well = 0; well < catalogue.wellCount(); ++well) {
        if (mayGoOn && !mayGoOn())
            break;
        const QString fileName = defaultLogsFileName(catalogue.wellNames().at(well));
        if (unreadable.contains(fileName) || existing.contains(fileName))
            continue;
        // One that cannot be made is passed over; the next launch tries again.
        if (writeProjectFile(folder, defaultLogsFolder(folder) + QLatin1Char('/') + fileName,
                             defaultLogsBytes(catalogue.wellNames().at(well), firstLogs(project, catalogue, well)),
                             base::Flush::Later)
                .ok()) {
            existing.insert(fileName);
            isChanged = true;
        }
    }
    isChanged |= table.write(folder, base::Flush::Later);
    if (isChanged)
        (void)base::flushFileSystem(folder); // all of it can be made again
}

void runDefaultLogsPass(ProjectData &data, const std::function<bool()> &mayGoOn)
{
    runDefaultLogsPass(data.project, data.catalogue, mayGoOn);
}
