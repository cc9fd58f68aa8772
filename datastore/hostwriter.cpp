#include "datastore/hostwriter.h"

#include "base/asker.h"
#include "datastore/logrun.h"
#include "datastore/textfields.h"

#include <cmath>

namespace {

constexpr int markersNamedAtMost = 15;

QString logTitle()
{
    return QStringLiteral("Writing Well Logs");
}

bool isDepth(float depth)
{
    return std::isfinite(depth) && !host::isUndefined(depth);
}

QVector<host::Marker> hostMarkers(const MarkerSetRecord &markers)
{
    const int count = qMin(markers.names.size(), qMin(markers.measuredDepths.size(), markers.colors.size()));
    QVector<host::Marker> set;
    for (int i = 0; i < count; ++i) {
        const QColor &color = markers.colors.at(i);
        if (isDepth(markers.measuredDepths.at(i)))
            set.append({markers.names.at(i), markers.measuredDepths.at(i),
                        QColor(color.red(), color.green(), color.blue())});
    }
    return set;
}

} // namespace

HostWriter::HostWriter(host::Wells &wells, WellsCatalogue &catalogue, base::Asker &asker,
                       const WellsCatalogue::ErrorBox &showError)
    : m_wells(wells)
    , m_catalogue(catalogue)
    , m_asker(asker)
    , m_showError(showError)
{
}

bool HostWriter::writeLog(int well, const LogCurveData &curve, bool showSuccess)
{
    const bool isWell = well >= 0 && well < m_catalogue.wellCount();
    const QString wellName = isWell ? m_catalogue.wellNames().at(well) : curve.wellName;
    LogRun run(m_wells, m_catalogue, m_asker, m_catalogue.wellKey(well));
    const LogOutcome outcome = run.write(curve);
    if (outcome == LogOutcome::NoWell)
        m_asker.warn(logTitle(), QStringLiteral("Cannot get data for this well : ") + wellName);
    else if (outcome == LogOutcome::Failed)
        m_asker.warn(logTitle(), QStringLiteral("Cannot write new log for ") + wellName);
    else if (outcome == LogOutcome::Written && showSuccess)
        m_asker.inform(logTitle(),
                       QStringLiteral("Successfully added this log : ") + textfields::trimmedLine(curve.logName));
    run.finish();
    return outcome == LogOutcome::Written;
}

bool HostWriter::mayLose(int well, const QStringList &markers)
{
    if (markers.isEmpty())
        return true;
    QStringList named = markers.mid(0, markersNamedAtMost);
    if (markers.size() > named.size())
        named.append(QStringLiteral("… and %1 more").arg(markers.size() - named.size()));
    return m_asker.confirmLoss(
        QStringLiteral("Writing Markers"),
        QStringLiteral("The well %1 has markers that cannot be shown: they lie outside of its track or cannot be "
                       "read. Writing its markers deletes them:\n%2\nWould you like to write the markers?")
            .arg(m_catalogue.wellNames().at(well), named.join(QLatin1Char('\n'))));
}

StoreResult HostWriter::writeMarkers(int well, const MarkerSetRecord &markers)
{
    const QString key = m_catalogue.wellKey(well);
    if (well < 0 || well >= m_catalogue.wellCount() || !m_wells.header(key).ok()) {
        m_showError(QStringLiteral("Cannot get data for the selected well"));
        return StoreResult::Failed;
    }
    const QVector<host::Marker> set = hostMarkers(markers);
    const host::Outcome<QStringList> lost = m_wells.markersLostByWriting(key, set);
    if (lost.ok() && !mayLose(well, lost.value))
        return StoreResult::Declined;
    if (!lost.ok() || !m_wells.writeMarkers(key, set).ok()) {
        m_showError(QStringLiteral("Cannot write new markers to disk"));
        return StoreResult::Failed;
    }
    return StoreResult::Stored;
}
