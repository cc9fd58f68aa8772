#pragma once

#include "host/hostrecords.h"

namespace Well {
class Data;
class Log;
class MarkerSet;
} // namespace Well

/// What the host's objects hold, as records. Lengths stay in the survey's unit.
namespace opendtect {

/// Without the well's name, which the host's list knows.
host::WellHeader headerOf(const Well::Data &well);
host::LogInfo infoOf(const Well::Log &log);
host::LogData dataOf(const Well::Log &log);
QVector<host::Marker> markersOf(const Well::MarkerSet &markers);

} // namespace opendtect
