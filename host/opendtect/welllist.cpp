#include "host/opendtect/welllist.h"

#include "host/opendtect/odtext.h"

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
    const QString survey = toFolder(IOM().rootDir());
    const bool isSameFolder = m_folder && survey == m_survey;
    const QString path = isSameFolder ? toFolder(m_folder->dirName()) + QStringLiteral("/.omf") : QString();
    if (isSameFolder && base::fileState(path).isSame(m_state))
        return;
    m_survey = survey;
    m_entries.clear();
    m_wells.clear();
    const IOObjContext context = WellTranslatorGroup::ioContext();
    const base::FileState before = base::fileState(path);
    m_folder = std::make_unique<IODir>(context.getSelKey());
    // The path is known only now the first time; a change while the list was read must not stay unseen.
    m_state = isSameFolder ? before : base::FileState{};
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
