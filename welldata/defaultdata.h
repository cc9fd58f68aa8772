#pragma once

#include "datastore/defaultlogs.h"

struct ProjectData;

/// The default-logs file of a well as the default data editor reads and writes it.
namespace welldata {

/// A default-logs file with the well that it says it is of.
struct DefaultDataFile
{
    QString wellName; ///< its first line, without byte order marks in front
    DefaultLogs logs; ///< of the lines of exactly two parts that are not empty
};

/// The curve groups, of all in their order, of which a log can be the default: a well's depths have none, nor have logs without
/// a group.
QStringList groupsWithDefaults(const QStringList &groupNames);

DefaultDataFile parseDefaultData(const QByteArray &bytes);
/// Whether the first line of a file is that of the well's. Byte order marks in front are not compared.
bool isOfWell(const DefaultDataFile &file, const QString &wellName);

/// What the editor stores: every log of the well with its group, and those that are a default.
struct DefaultData
{
    DefaultLogs defaults;
    DefaultLogs all;
};

/// Writes the well's default-logs file and gives every log its group, as an import does; then the default-logs pass
/// runs. False, and nothing changed, when the file cannot be written.
bool storeDefaultData(ProjectData &data, const QString &wellName, const DefaultData &stored);

} // namespace welldata
