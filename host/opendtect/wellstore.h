#pragma once

#include "host/opendtect/scratchwell.h"
#include "host/opendtect/storedwell.h"
#include "host/opendtect/welllist.h"

#include <QHash>

#include <memory>

#include <ptrman.h>
#include <welldata.h>
#include <wellman.h>

namespace opendtect {

/// The wells of the survey: their list, the one that was read last from its files, and those that the host has in its
/// memory, which stay as the host left them.
class WellStore
{
public:
    WellList &list() { return m_list; }
    /// The list's entry, or the error; valid until the next call.
    host::Outcome<const IOObj *> find(const QString &key);
    /// The well as its files are, or the error; valid until the next call. Nothing is read again that did not change.
    host::Outcome<StoredWell *> stored(const QString &key);
    /// The well as the host has it in memory, with these parts; null, without an error, when it has not.
    static host::Outcome<RefMan<Well::Data>> loaded(const IOObj &entry, const Well::LoadReqs &parts);

    /// What was last given out as the well's markers, for the next write to tell what another program changed.
    void setGivenMarkers(const QString &key, const QVector<host::Marker> &markers) { m_given[key] = markers; }
    const QHash<QString, QVector<host::Marker>> &givenMarkers() const { return m_given; }

    /// Lets go of everything that was read, and of what is the host's.
    void forget();

private:
    WellList m_list;
    ScratchWell m_scratch;
    QString m_lastKey;
    int m_lastRevision = 0; ///< of the list whose entry has that key
    std::unique_ptr<StoredWell> m_last; ///< fills the scratch well
    QHash<QString, QVector<host::Marker>> m_given;
};

} // namespace opendtect
