#pragma once

#include "base/filestate.h"
#include "host/hostrecords.h"

#include <QHash>

#include <memory>

class IODir;
class IOObj;

namespace opendtect {

/// The survey's list of wells as the host's library reads it, read anew only when its file is another one: asked for one
/// well, the library would read the list of all wells.
class WellList
{
public:
    WellList();
    ~WellList();
    WellList(const WellList &) = delete;
    WellList &operator=(const WellList &) = delete;

    /// As host::Wells::list() promises it.
    host::Outcome<QVector<host::WellEntry>> entries();
    /// Null when there is no well of that key; valid until the next call.
    const IOObj *find(const QString &key);
    /// Another number whenever the list was read anew.
    int revision() const { return m_revision; }

private:
    void update();

    int m_revision = 0;
    QByteArray m_survey; ///< whose list it is
    QString m_path; ///< of its file
    base::FileState m_state;
    std::unique_ptr<IODir> m_folder; ///< owns what the table shows
    QVector<host::WellEntry> m_entries;
    QHash<QString, const IOObj *> m_wells;
};

/// Has the host's library work in the wells' folder: then what it looks up there is in its memory.
void enterWellFolder();

} // namespace opendtect
