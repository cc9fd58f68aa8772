#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <functional>

class WellsCatalogue;
struct Project;
struct ProjectData;

/// The default log of each curve group of one well: two parallel lists in file order.
struct DefaultLogs
{
    QStringList groups;
    QStringList logs;
};

/// The path of a well's default-logs file.
QString defaultLogsPath(const QString &projectFolder, const QString &wellName);

/// The bytes of a well's default-logs file.
QByteArray defaultLogsBytes(const QString &wellName, const DefaultLogs &logs);

/// Reads the bytes of a default-logs file: its first line is skipped, and lines that are not "group|log".
DefaultLogs parseDefaultLogs(const QByteArray &bytes);

/// Empty lists when there is no such file.
DefaultLogs readDefaultLogs(const QString &projectFolder, const QString &wellName);

/// Brings the curve group table, the group files and the default-logs files up to date with the catalogue: every
/// log gets a group, and a well without a default-logs file gets one with the first log of each group. Silent; each
/// file is read and written once, and nothing is written that did not change. The group "None" has no group file; an
/// entry of the table without a group counts as absent. A well whose units are needed and that can no longer be read
/// is passed over: nothing of it is kept, the next pass tries again; a well that the catalogue could not read gets no
/// file either. Log names stand in the files as textfields::fieldName() gives them. The files reach the disk together
/// at the end. \a mayGoOn is called for each well, before it is read and before its file is made, so that windows can
/// be repainted; false ends the pass there.
void runDefaultLogsPass(const Project &project, const WellsCatalogue &catalogue,
                        const std::function<bool()> &mayGoOn = {});
void runDefaultLogsPass(ProjectData &data, const std::function<bool()> &mayGoOn = {});
