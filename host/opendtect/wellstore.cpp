#include "host/opendtect/wellstore.h"

#include "host/opendtect/odtext.h"

#include <ioobj.h>

namespace opendtect {

host::Outcome<const IOObj *> WellStore::find(const QString &key)
{
    // A well that was removed meanwhile may still be in the host's memory: the list counts.
    const IOObj *entry = m_list.find(key);
    if (!entry)
        return {nullptr, QStringLiteral("There is no well with the key \"%1\" in the survey.").arg(key)};
    return {entry, {}};
}

host::Outcome<StoredWell *> WellStore::stored(const QString &key)
{
    const host::Outcome<const IOObj *> entry = find(key);
    if (!entry.ok())
        return {nullptr, entry.error};
    // Keys repeat from survey to survey, files do not.
    const bool isSameEntry =
        m_last && key == m_lastKey && (m_lastRevision == m_list.revision() || m_last->isOf(*entry.value));
    if (!isSameEntry || !m_last->isUnchanged()) {
        m_last.reset();
        m_last = std::make_unique<StoredWell>(*entry.value, m_scratch);
        m_lastKey = key;
    }
    m_lastRevision = m_list.revision();
    if (m_last->error().isEmpty())
        return {m_last.get(), {}};
    const QString error = m_last->error();
    m_last.reset();
    return {nullptr, error};
}

host::Outcome<RefMan<Well::Data>> WellStore::loaded(const IOObj &entry, const Well::LoadReqs &parts)
{
    const MultiID id = entry.key();
    if (!Well::MGR().isLoaded(id))
        return {};
    RefMan<Well::Data> well = Well::MGR().get(id, parts);
    if (well)
        return {well, {}};
    return {nullptr,
            withReason(QStringLiteral("Cannot read the well %1").arg(toQString(entry.name().buf())),
                       toQString(Well::MGR().errMsg()))};
}

void WellStore::forget()
{
    m_last.reset();
    m_scratch.release();
    m_given.clear();
}

} // namespace opendtect
