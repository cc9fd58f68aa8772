#include "host/opendtect/welllist.h"

#include "host/opendtect/odtext.h"

#include <QDateTime>

#include <iodir.h>
#include <iodirentry.h>
#include <ioman.h>
#include <ioobj.h>
#include <welltransl.h>

namespace opendtect {

WellList::WellList() = default;
WellList::~WellList() = default;

void WellList::update()
{
    const char *const survey = IOM().rootDir();
    if (m_folder && m_survey == survey && base::fileState(m_path).isSame(m_state))
        return;
    ++m_revision;
    m_survey = survey;
    m_entries.clear();
    m_wells.clear();
    const IOObjContext context = WellTranslatorGroup::ioContext();
    const qint64 begin = QDateTime::currentMSecsSinceEpoch();
    m_folder = std::make_unique<IODir>(context.getSelKey());
    m_path = toFolder(m_folder->dirName()) + QStringLiteral("/.omf");
    m_state = base::fileState(m_path);
    // A change while the list was read must not stay unseen; file systems count time in steps of some milliseconds.
    if (m_state.changedNs / 1000000 > begin - 100)
        m_state = base::FileState{};
    if (m_folder->isBad()) {
        m_folder.reset();
        return;
    }
    IODirEntryList entries(*m_folder, context);
    entries.sort();
    for (int i = 0; i < entries.size(); ++i)
        if (const IOObj *well = entries[i]->ioobj_)
            m_entries.append({toQString(well->name().buf()), toQString(well->key().buf())});
    const IODir &folder = *m_folder;
    for (int i = 0; i < folder.size(); ++i) {
        const IOObj *object = folder.get(i);
        if (object->group() == mTranslGroupName(Well))
            m_wells.insert(toQString(object->key().buf()), object);
    }
}

host::Outcome<QVector<host::WellEntry>> WellList::entries()
{
    update();
    if (!m_folder)
        return {{},
                QStringLiteral("Cannot read the list of wells of the survey in %1.").arg(toFolder(IOM().rootDir()))};
    return {m_entries, {}};
}

const IOObj *WellList::find(const QString &key)
{
    update();
    return m_wells.value(key);
}

void enterWellFolder()
{
    IOM().to(WellTranslatorGroup::ioContext().getSelKey());
}

} // namespace opendtect
