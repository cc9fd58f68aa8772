#pragma once

#include "host/hostrecords.h"

/// Reading of the host's wells, as host::Wells promises it.
namespace opendtect {

host::Outcome<QVector<host::WellEntry>> readWellList();
host::Outcome<host::WellHeader> readHeader(const QString &key);
host::Outcome<QVector<host::LogInfo>> readLogInfos(const QString &key);
host::Outcome<host::LogData> readLog(const QString &key, int index);
host::Outcome<QVector<host::Marker>> readMarkers(const QString &key);
void reloadWell(const QString &key);

} // namespace opendtect
