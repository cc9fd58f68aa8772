#pragma once

#include "host/hostrecords.h"

namespace opendtect {

class MarkerWatch;
class WellStore;

/// Writing into the host's wells, as host::Wells promises it.
host::Status writeLog(WellStore &store, const QString &key, const host::LogData &log);
/// Announces the new markers to \a watch, and where the host has the well in its memory, there.
host::Status writeMarkers(WellStore &store, const QString &key, const QVector<host::Marker> &markers,
                          MarkerWatch &watch);

} // namespace opendtect
