#pragma once

#include "host/hostrecords.h"

#include <QStringList>

/// Reading of the host's wells, as host::Wells promises it.
namespace opendtect {

class WellStore;

/// The host keeps lengths in the survey's depth unit.
bool isSurveyInFeet();
QVector<host::Marker> inMetres(const QVector<host::Marker> &markers);

host::Outcome<host::WellHeader> readHeader(WellStore &store, const QString &key);
host::Outcome<QVector<host::LogInfo>> readLogInfos(WellStore &store, const QString &key);
host::Outcome<host::LogData> readLog(WellStore &store, const QString &key, int index);
host::Outcome<QVector<host::Marker>> readMarkers(WellStore &store, const QString &key);
host::Outcome<QStringList> readMarkersLostByWriting(WellStore &store, const QString &key,
                                                    const QVector<host::Marker> &markers);
void reloadWell(WellStore &store, const QString &key);

} // namespace opendtect
