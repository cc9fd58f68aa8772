#pragma once

#include "host/hostrecords.h"

namespace opendtect {

class MarkerWatch;

/// Writing into the host's wells, as host::Wells promises it.
host::Status writeLog(const QString &key, const host::LogData &log);
/// Has the well in the host's memory announce its new markers, to \a watch too.
host::Status writeMarkers(const QString &key, const QVector<host::Marker> &markers, MarkerWatch &watch);

} // namespace opendtect
