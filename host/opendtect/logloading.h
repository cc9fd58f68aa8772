#pragma once

#include <QString>

namespace Well {
class Data;
class Log;
} // namespace Well

namespace opendtect {

/// A log with its samples, or none and the host's reason, if it gives one.
struct LoadedLog
{
    const Well::Log *log = nullptr;
    QString error;
};

/// The well's log of this name as the host has it in memory, else as it is stored, at its place among the logs. The
/// object of a log of which only the header was loaded is replaced.
LoadedLog loadLog(Well::Data &well, const char *name);
/// The same for a log whose samples in memory are out of date.
LoadedLog reloadLog(Well::Data &well, const char *name);

} // namespace opendtect
