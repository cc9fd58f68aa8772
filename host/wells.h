#pragma once

#include "host/hostrecords.h"

#include <QStringList>

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

    /// Adds a log, or replaces the one of the same name. It is stored in ascending order of depth, whatever its order.
    /// Undefined samples at the top and the bottom are left out; a log without a defined sample is refused and what
    /// was there stays.
    virtual Status writeLog(const QString &key, const LogData &log) = 0;

    /// Replaces the well's whole marker set and announces it (Listener::markersChanged). Of two markers with one
    /// name the first is kept. On an error the old set stays.
    virtual Status writeMarkers(const QString &key, const QVector<Marker> &markers) = 0;

    /// The stored markers that writeMarkers() of this set would delete although markers() does not give them out,
    /// since they lie outside of the well's track or cannot be read; by name, one without a name by its number
    /// ("no. 5"). Markers whose names are written anew do not count. Empty where the host keeps such markers.
    virtual Outcome<QStringList> markersLostByWriting(const QString &key, const QVector<Marker> &markers) = 0;

    /// Forgets what the host holds of the well in memory, so that the next read sees the store as it is.
    virtual void reload(const QString &key) = 0;
};

} // namespace host
