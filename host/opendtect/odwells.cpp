#include "host/opendtect/odwells.h"

#include "host/opendtect/wellsreading.h"
#include "host/opendtect/wellswriting.h"

namespace opendtect {

OdWells::OdWells(std::function<void(const QString &wellKey)> markersChanged)
    : m_watch(std::move(markersChanged))
{
}

host::Outcome<QVector<host::WellEntry>> OdWells::list()
{
    return m_store.list().entries();
}

host::Outcome<host::WellHeader> OdWells::header(const QString &key)
{
    return readHeader(m_store, key);
}

host::Outcome<QVector<host::LogInfo>> OdWells::logs(const QString &key)
{
    return readLogInfos(m_store, key);
}

host::Outcome<host::LogData> OdWells::log(const QString &key, int index)
{
    return readLog(m_store, key, index);
}

host::Outcome<QVector<host::Marker>> OdWells::markers(const QString &key)
{
    return readMarkers(m_store, key);
}

host::Status OdWells::writeLog(const QString &key, const host::LogData &log)
{
    return opendtect::writeLog(m_store, key, log);
}

host::Status OdWells::writeMarkers(const QString &key, const QVector<host::Marker> &markers)
{
    return opendtect::writeMarkers(m_store, key, markers, m_watch);
}

host::Outcome<QStringList> OdWells::markersLostByWriting(const QString &key, const QVector<host::Marker> &markers)
{
    return readMarkersLostByWriting(m_store, key, markers);
}

void OdWells::reload(const QString &key)
{
    reloadWell(m_store, key);
}

} // namespace opendtect
