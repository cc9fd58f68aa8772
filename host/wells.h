#pragma once

#include "host/hostrecords.h"

namespace host {

/// The wells of the host's current survey. Every call reads or writes the host's own store and keeps nothing open;
/// all on the interface thread. A well that is gone, locked or damaged gives an error, never a crash.
class Wells
{
public:
    virtual ~Wells() = default;

    /// All wells, sorted by name as the host sorts them. An unreadable store gives an empty list and the error.
    virtual Outcome<QVector<WellEntry>> list() = 0;

    virtual Outcome<WellHeader> header(const QString &key) = 0;

    /// Names and units in the host's index order; reads no samples.
    virtual Outcome<QVector<LogInfo>> logs(const QString &key) = 0;

    /// The log at an index of logs(). An index outside it is an error.
    virtual Outcome<LogData> log(const QString &key, int index) = 0;

    /// In the host's order: by depth.
    virtual Outcome<QVector<Marker>> markers(const QString &key) = 0;

    /// Adds a log, or replaces the one of the same name. Undefined samples at the top and the bottom are left out;
    /// a log without a defined sample is refused and what was there stays.
    virtual Status writeLog(const QString &key, const LogData &log) = 0;

    /// Replaces the well's whole marker set and announces it (Listener::markersChanged). Of two markers with one
    /// name the first is kept. On an error the old set stays.
    virtual Status writeMarkers(const QString &key, const QVector<Marker> &markers) = 0;

    /// Forgets what the host holds of the well in memory, so that the next read sees the store as it is.
    virtual void reload(const QString &key) = 0;
};

} // namespace host
