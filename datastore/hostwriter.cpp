#include "datastore/hostwriter.h"

#include "base/asker.h"

#include <cmath>
#include <limits>

namespace {

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

host::LogData hostLog(const LogCurveData &curve)
{
    host::LogData log;
    log.name = curve.logName;
    log.unit = curve.unit;
    const int count = qMin(curve.depths.size(), curve.values.size());
    log.depths.resize(count);
    log.values.resize(count);
    float *depths = log.depths.data();
    float *values = log.values.data();
    for (int i = 0; i < count; ++i) {
        depths[i] = static_cast<float>(curve.depths.at(i));
        const double value = curve.values.at(i);
        values[i] = value == nullSampleValue ? host::undefinedValue : toFloat(value);
    }
    return log;
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
    if (isWell && m_catalogue.logNames(well).contains(curve.logName)) {
        const base::Box question{
            base::BoxIcon::Question,
            logTitle(),
            QStringLiteral("A log with this name %1 is already exists.\n"
                           "Would you like to overwrite this existing log ?")
                .arg(curve.logName),
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
    const host::Status status = m_wells.writeLog(key, hostLog(curve));
    if (!status.ok())
        m_asker.warn(logTitle(), QStringLiteral("Cannot write new log for ") + wellName);
    else if (showSuccess)
        m_asker.inform(logTitle(), QStringLiteral("Successfully added this log : ") + curve.logName);
    m_wells.reload(key);
    if (status.ok())
        m_catalogue.refreshLogNames(well);
    return status.ok();
}

bool HostWriter::writeMarkers(int well, const MarkerSetRecord &markers)
{
    const QString key = m_catalogue.wellKey(well);
    if (well < 0 || well >= m_catalogue.wellCount() || !m_wells.header(key).ok()) {
        m_showError(QStringLiteral("Cannot get data for the selected well"));
        return false;
    }
    QVector<host::Marker> set;
    for (int i = 0; i < markers.names.size(); ++i) {
        const QColor color = markers.colors.value(i);
        set.append(
            {markers.names.at(i), markers.measuredDepths.value(i), QColor(color.red(), color.green(), color.blue())});
    }
    if (!m_wells.writeMarkers(key, set).ok()) {
        m_showError(QStringLiteral("Cannot write new markers to disk"));
        return false;
    }
    return true;
}
