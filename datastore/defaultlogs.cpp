#include "datastore/defaultlogs.h"

#include "base/atomicfile.h"
#include "base/safename.h"
#include "base/textbytes.h"
#include "datastore/curvegrouptable.h"
#include "datastore/groupfiles.h"
#include "datastore/projectdata.h"

#include <QDir>
#include <QFile>
#include <QSet>

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

// Groups in the order of the well's logs; logs without a group are classified by their unit.
void classifyLogs(const WellsCatalogue &catalogue, int well, GroupFiles *groupFiles)
{
    const QStringList &names = catalogue.logNames(well);
    QStringList unitGroups; // read when the first log needs it: most launches find every log in the table
    for (int log = 0; log < names.size(); ++log) {
        QString group = groupInTable(names.at(log));
        if (group == othersGroup()) {
            if (unitGroups.isEmpty())
                unitGroups = catalogue.curveGroups(well);
            group = unitGroups.value(log, othersGroup());
            CurveGroupTable::instance().set(names.at(log), group);
        }
        if (group != noGroup())
            groupFiles->add(group, names.at(log));
    }
}

QByteArray defaultLogsBytes(const ProjectData &data, int well)
{
    QByteArray bytes = data.catalogue.wellNames().at(well).toUtf8() + '\n';
    QStringList free = data.project.groupNames;
    for (const QString &log : data.catalogue.logNames(well)) {
        const QString group = groupInTable(log);
        const int at = [&free, &group] {
            for (int i = 0; i < free.size(); ++i)
                if (free.at(i).compare(group, Qt::CaseInsensitive) == 0)
                    return i;
            return -1;
        }();
        if (at < 0)
            continue;
        bytes += group.toUtf8() + '|' + log.toUtf8() + '\n';
        free.removeAt(at);
    }
    return bytes;
}

} // namespace

QString defaultLogsPath(const QString &projectFolder, const QString &wellName)
{
    return defaultLogsFolder(projectFolder) + QLatin1Char('/') + defaultLogsFileName(wellName);
}

DefaultLogs readDefaultLogs(const QString &projectFolder, const QString &wellName)
{
    DefaultLogs result;
    QFile file(defaultLogsPath(projectFolder, wellName));
    if (!file.open(QIODevice::ReadOnly))
        return result;
    const QVector<QString> lines = base::splitLines(base::decodeText(file.readAll()));
    for (int i = 1; i < lines.size(); ++i) {
        const QStringList parts = lines.at(i).trimmed().split(QLatin1Char('|'));
        if (parts.size() != 2)
            continue;
        result.groups.append(parts.at(0));
        result.logs.append(parts.at(1));
    }
    return result;
}

void runDefaultLogsPass(ProjectData &data)
{
    const QString &folder = data.project.projectFolder;
    CurveGroupTable &table = CurveGroupTable::instance();
    table.read(folder);
    GroupFiles groupFiles(folder);
    for (int well = 0; well < data.catalogue.wellCount(); ++well)
        classifyLogs(data.catalogue, well, &groupFiles);
    groupFiles.write();

    const QStringList present
        = QDir(defaultLogsFolder(folder)).entryList(QDir::AllEntries | QDir::Hidden | QDir::System);
    QSet<QString> existing(present.begin(), present.end());
    for (int well = 0; well < data.catalogue.wellCount(); ++well) {
        const QString fileName = defaultLogsFileName(data.catalogue.wellNames().at(well));
        if (existing.contains(fileName))
            continue;
        // One that cannot be made is passed over; the next launch tries again.
        if (base::writeFileAtomically(defaultLogsFolder(folder) + QLatin1Char('/') + fileName,
                                      defaultLogsBytes(data, well))
                .ok())
            existing.insert(fileName);
    }
    table.write(folder);
}
