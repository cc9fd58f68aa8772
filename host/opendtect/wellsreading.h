#pragma once

#include "host/hostrecords.h"

#include <QStringList>

/// Reading of the host's wells, as host::Wells promises it.
namespace opendtect {

/// The host keeps lengths in the survey's depth unit.
bool isSurveyInFeet();

host::Outcome<QVector<host::WellEntry>> readWellList();
host::Outcome<host::WellHeader> readHeader(const QString &key);
host::Outcome<QVector<host::LogInfo>> readLogInfos(const QString &key);
host::Outcome<host::LogData> readLog(const QString &key, int index);
host::Outcome<QVector<host::Marker>> readMarkers(const QString &key);
host::Outcome<QStringList> readMarkersLostByWriting(const QString &key, const QVector<host::Marker> &markers);
void reloadWell(const QString &key);

} // namespace opendtect
