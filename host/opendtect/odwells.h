#pragma once

#include "host/opendtect/markerwatch.h"
#include "host/opendtect/wellstore.h"
#include "host/wells.h"

namespace opendtect {

/// The host's wells behind our interface.
class OdWells : public host::Wells
{
public:
    /// \a markersChanged is called whoever changed them, we or the host.
    explicit OdWells(std::function<void(const QString &wellKey)> markersChanged);

    host::Outcome<QVector<host::WellEntry>> list() override;
    host::Outcome<host::WellHeader> header(const QString &key) override;
    host::Outcome<QVector<host::LogInfo>> logs(const QString &key) override;
    host::Outcome<host::LogData> log(const QString &key, int index) override;
    host::Outcome<QVector<host::Marker>> markers(const QString &key) override;
    host::Status writeLog(const QString &key, const host::LogData &log) override;
    host::Status writeMarkers(const QString &key, const QVector<host::Marker> &markers) override;
    host::Outcome<QStringList> markersLostByWriting(const QString &key,
                                                    const QVector<host::Marker> &markers) override;
    void reload(const QString &key) override;

    /// To be called when the host may have loaded wells.
    void watchLoadedWells() { m_watch.attach(); }
    /// To be called when another survey is current, and before the host ends.
    void forget() { m_store.forget(); }

private:
    WellStore m_store;
    MarkerWatch m_watch;
};

} // namespace opendtect
