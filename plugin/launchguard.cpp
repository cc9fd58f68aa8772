#include "plugin/launchguard.h"

#include "base/nestedevents.h"

namespace {

QString endedError()
{
    return QStringLiteral("The survey of this window is closed.");
}

} // namespace

// A host may show boxes of its own when it reads or writes.
template<class Call>
auto GuardedWells::called(const Call &call) -> decltype(call())
{
    const base::NestedEvents events;
    if (!m_hasEnded)
        return call();
    decltype(call()) refused;
    refused.error = endedError();
    return refused;
}

host::Outcome<QVector<host::WellEntry>> GuardedWells::list()
{
    return called([this] { return m_wells.list(); });
}

host::Outcome<host::WellHeader> GuardedWells::header(const QString &key)
{
    return called([&] { return m_wells.header(key); });
}

host::Outcome<QVector<host::LogInfo>> GuardedWells::logs(const QString &key)
{
    return called([&] { return m_wells.logs(key); });
}

host::Outcome<host::LogData> GuardedWells::log(const QString &key, int index)
{
    return called([&] { return m_wells.log(key, index); });
}

host::Outcome<QVector<host::Marker>> GuardedWells::markers(const QString &key)
{
    return called([&] { return m_wells.markers(key); });
}

host::Status GuardedWells::writeLog(const QString &key, const host::LogData &log)
{
    return called([&] { return m_wells.writeLog(key, log); });
}

host::Status GuardedWells::writeMarkers(const QString &key, const QVector<host::Marker> &markers)
{
    return called([&] { return m_wells.writeMarkers(key, markers); });
}

host::Outcome<QStringList> GuardedWells::markersLostByWriting(const QString &key,
                                                              const QVector<host::Marker> &markers)
{
    return called([&] { return m_wells.markersLostByWriting(key, markers); });
}

void GuardedWells::reload(const QString &key)
{
    if (!m_hasEnded)
        m_wells.reload(key);
}

void GuardedHost::end()
{
    m_hasEnded = true;
    m_wells.end();
}

void GuardedHost::showError(const QString &text)
{
    const base::NestedEvents events;
    if (!m_hasEnded)
        m_host.showError(text);
}

base::BoxButton GuardedAsker::show(const base::Box &box)
{
    const base::NestedEvents events;
    if (!m_host.hasEnded())
        return m_asker.show(box);
    return box.buttons.contains(base::BoxButton::No) ? base::BoxButton::No : base::BoxButton::Ok;
}
