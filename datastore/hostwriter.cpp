#include "datastore/hostwriter.h"

#include "base/asker.h"
#include "datastore/textfields.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr int markersNamedAtMost = 15;

QString logTitle()
{
    return QStringLiteral("Writing Well Logs");
}

// What a float cannot hold is undefined to the host.
float toFloat(double value)
{
    const bool fits = std::fabs(value) <= static_cast<double>(std::numeric_limits<float>::max());
    return fits ? static_cast<float>(value) : host::undefinedValue;
}

bool isDepth(float depth)
{
    return std::isfinite(depth) && !host::isUndefined(depth);
}

host::LogData hostLog(const QString &name, const LogCurveData &curve)
{
    host::LogData log;
    log.name = name;
    log.unit = curve.unit;
    const int count = qMin(curve.depths.size(), curve.values.size());
    log.depths.reserve(count);
    log.values.reserve(count);
    for (int i = 0; i < count; ++i) {
        const float depth = toFloat(curve.depths.at(i));
        if (!isDepth(depth))
            continue;
        const double value = curve.values.at(i);
        log.depths.append(depth);
        log.values.append(value == nullSampleValue ? host::undefinedValue : toFloat(value));
    }
    return log;
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

bool HostWriter::hasLog(int well, const QString &logName) const
{
    if (m_catalogue.logNames(well).contains(logName))
        return true;
    const QVector<host::LogInfo> logs = m_wells.logs(m_catalogue.wellKey(well)).value;
    return std::any_of(logs.begin(), logs.end(),
                       [&logName](const host::LogInfo &log) { return log.name == logName; });
}

bool HostWriter::writeLog(int well, const LogCurveData &curve, bool showSuccess)
{
    const bool isWell = well >= 0 && well < m_catalogue.wellCount();
    const QString wellName = isWell ? m_catalogue.wellNames().at(well) : curve.wellName;
    const QString logName = textfields::trimmedLine(curve.logName);
    if (isWell && hasLog(well, logName)) {
        const base::Box question{
            base::BoxIcon::Question,
            logTitle(),
            QStringLiteral("A log with this name %1 is already exists.\n"
                           "Would you like to overwrite this existing log ?")
                .arg(logName),
            {base::BoxButton::No, base::BoxButton::Yes},
        };
        if (m_asker.show(question) != base::BoxButton::Yes)
            return false;
    }
    const QString key = m_catalogue.wellKey(well);
    if (!isWell || !m_wells.header(key).ok()) {
        m_asker.warn(logTitle(), QStringLiteral("Cannot get data for this well : ") + wellName);
        return false;
    }
    const host::Status status = m_wells.writeLog(key, hostLog(logName, curve));
    if (!status.ok())
        m_asker.warn(logTitle(), QStringLiteral("Cannot write new log for ") + wellName);
    else if (showSuccess)
        m_asker.inform(logTitle(), QStringLiteral("Successfully added this log : ") + logName);
    m_wells.reload(key);
    if (status.ok())
        m_catalogue.refreshLogNames(well);
    return status.ok();
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

bool HostWriter::writeMarkers(int well, const MarkerSetRecord &markers)
{
    const QString key = m_catalogue.wellKey(well);
    if (well < 0 || well >= m_catalogue.wellCount() || !m_wells.header(key).ok()) {
        m_showError(QStringLiteral("Cannot get data for the selected well"));
        return false;
    }
    const QVector<host::Marker> set = hostMarkers(markers);
    const host::Outcome<QStringList> lost = m_wells.markersLostByWriting(key, set);
    if (lost.ok() && !mayLose(well, lost.value))
        return false;
    if (!lost.ok() || !m_wells.writeMarkers(key, set).ok()) {
        m_showError(QStringLiteral("Cannot write new markers to disk"));
        return false;
    }
    return true;
}
