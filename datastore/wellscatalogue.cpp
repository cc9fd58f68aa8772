#include "datastore/wellscatalogue.h"

#include "base/asker.h"
#include "datastore/textfields.h"
#include "datastore/unitclassification.h"

#include <algorithm>

namespace {

QString selectedWellError()
{
    return QStringLiteral("Cannot get data for the selected well");
}

double definedOrZero(float elevation)
{
    return host::isUndefined(elevation) ? 0.0 : static_cast<double>(elevation);
}

QStringList namesOf(const QVector<host::LogInfo> &logs)
{
    QStringList names;
    names.reserve(logs.size());
    for (const host::LogInfo &log : logs)
        names.append(log.name);
    return names;
}

QStringList namesOf(const QVector<host::Marker> &markers)
{
    QStringList names;
    names.reserve(markers.size());
    for (const host::Marker &marker : markers)
        names.append(marker.name);
    return names;
}

// The units of the logs in the order of the catalogue's names. Names may repeat, and the host's logs may have changed
// since the names were read: the index counts where the name is still there, else the first log of the name.
QStringList unitsOf(const QStringList &names, const QVector<host::LogInfo> &logs)
{
    QHash<QString, QString> firstUnits;
    for (const host::LogInfo &log : logs)
        if (!firstUnits.contains(log.name))
            firstUnits.insert(log.name, log.unit);
    QStringList units;
    units.reserve(names.size());
    for (int i = 0; i < names.size(); ++i) {
        const bool isInPlace = i < logs.size() && logs.at(i).name == names.at(i);
        units.append(isInPlace ? logs.at(i).unit : firstUnits.value(names.at(i)));
    }
    return units;
}

QColor opaque(const QColor &color)
{
    return QColor(color.red(), color.green(), color.blue());
}

LogCurveData namedCurve(const QString &wellName, const QString &logName)
{
    LogCurveData curve;
    curve.wellName = wellName;
    curve.logName = logName;
    curve.displayName = logName;
    curve.source = QStringLiteral("Read from OD");
    return curve;
}

QString wellTypeText(int code)
{
    if (code == host::OilWell)
        return QStringLiteral("Oil");
    return code == host::GasWell ? QStringLiteral("Gas") : QString();
}

void copySamples(const host::LogData &log, LogCurveData *curve)
{
    const int count = qMin(log.depths.size(), log.values.size());
    // A vector that grows takes room for the next power of two: up to as much again for what stays in memory.
    curve->depths.reserve(count);
    curve->values.reserve(count);
    curve->sampleFlags.reserve(count);
    curve->depths.resize(count);
    curve->values.resize(count);
    curve->sampleFlags.fill(0, count);
    double *depths = curve->depths.data();
    double *values = curve->values.data();
    double minimum = curve->minimum;
    double maximum = curve->maximum;
    for (int i = 0; i < count; ++i) {
        depths[i] = static_cast<double>(log.depths.at(i));
        const float stored = log.values.at(i);
        const auto value =
            static_cast<double>(host::isUndefined(stored) ? static_cast<float>(nullSampleValue) : stored);
        values[i] = value;
        if (value == nullSampleValue)
            continue;
        if (value < minimum)
            minimum = value;
        if (value > maximum)
            maximum = value;
    }
    curve->minimum = minimum;
    curve->maximum = maximum;
}

} // namespace

WellsCatalogue::WellsCatalogue(host::Wells &wells, base::Asker &asker, const ErrorBox &showError)
    : m_wells(wells)
    , m_asker(asker)
    , m_showError(showError)
{
}

bool WellsCatalogue::isReadable(int well) const
{
    return isWell(well) && m_wells.header(m_keys.at(well)).ok();
}

void WellsCatalogue::warnUnreadable(const QString &wellName) const
{
    m_asker.warn(QStringLiteral("Reading Wells Data"),
                 QStringLiteral("Cannot get data for the well :%1.\n"
                                "If you used this well in this Plugin then it may be get crashed.\n"
                                "Please first check this well in Opendtect's Well Manager.")
                     .arg(wellName));
}

void WellsCatalogue::build()
{
    // Filled aside: while a warning stands, the windows go on painting with the catalogue as it was.
    QStringList wellNames;
    QStringList keys;
    QVector<QStringList> logNames;
    QVector<bool> hasLogNames;
    QVector<QStringList> markerNames;
    QHash<QString, int> indexByName;
    const host::Outcome<QVector<host::WellEntry>> list = m_wells.list();
    for (const host::WellEntry &entry : list.value) {
        if (!indexByName.contains(entry.name))
            indexByName.insert(entry.name, wellNames.size());
        wellNames.append(entry.name);
        keys.append(entry.key);
        if (m_wells.header(entry.key).ok()) {
            const host::Outcome<QVector<host::LogInfo>> logs = m_wells.logs(entry.key);
            logNames.append(namesOf(logs.value));
            hasLogNames.append(logs.ok());
            markerNames.append(namesOf(m_wells.markers(entry.key).value));
        } else {
            warnUnreadable(entry.name);
            logNames.append(QStringList());
            hasLogNames.append(false);
            markerNames.append(QStringList());
        }
    }
    m_wellNames = wellNames;
    m_keys = keys;
    m_logNames = logNames;
    m_hasLogNames = hasLogNames;
    m_markerNames = markerNames;
    m_indexByName = indexByName;
}

QStringList WellsCatalogue::refreshLogNames(int well)
{
    const host::Outcome<QVector<host::LogInfo>> logs = readLogs(well);
    if (!logs.ok()) {
        m_showError(selectedWellError());
        return {};
    }
    m_logNames[well] = namesOf(logs.value);
    m_hasLogNames[well] = true;
    return m_logNames.at(well);
}

QStringList WellsCatalogue::refreshMarkerNames(int well)
{
    const host::Outcome<QVector<host::Marker>> markers = readMarkers(well);
    if (!markers.ok()) {
        m_showError(selectedWellError());
        return {};
    }
    m_markerNames[well] = namesOf(markers.value);
    return m_markerNames.at(well);
}

QStringList WellsCatalogue::curveGroups(int well) const
{
    const host::Outcome<QStringList> groups = readCurveGroups(well);
    if (!groups.ok())
        m_showError(selectedWellError() + QLatin1Char(':'));
    return groups.value;
}

host::Outcome<QStringList> WellsCatalogue::readCurveGroups(int well) const
{
    const host::Outcome<QVector<host::LogInfo>> logs = readLogs(well);
    if (!isWell(well))
        return {{}, logs.error};
    QStringList units = unitsOf(m_logNames.at(well), logs.value);
    for (QString &unit : units)
        unit = curveGroupOfUnit(unit);
    return {units, logs.error};
}

QString WellsCatalogue::curveGroup(int well, int log) const
{
    const QStringList groups = curveGroups(well);
    return log >= 0 && log < groups.size() ? groups.at(log) : QStringLiteral("Others");
}

QString WellsCatalogue::curveGroup(const QString &wellName, const QString &logName) const
{
    const int well = indexOf(wellName);
    return curveGroup(well, logIndex(well, logName));
}

int WellsCatalogue::logIndex(int well, const QString &logName) const
{
    if (!isWell(well))
        return -1;
    const QStringList &names = m_logNames.at(well);
    const int exact = names.indexOf(logName);
    if (exact >= 0)
        return exact;
    const auto found = std::find_if(names.begin(), names.end(), [&logName](const QString &name) {
        return textfields::fieldName(name) == logName;
    });
    return found == names.end() ? -1 : static_cast<int>(found - names.begin());
}

LogCurveData WellsCatalogue::curve(const QString &wellName, const QString &logName) const
{
    LogCurveData curve = namedCurve(wellName, logName);
    const int well = indexOf(wellName);
    const int log = logIndex(well, logName);
    if (log >= 0 && (!isReadable(well) || !readSamples(well, log, &curve)))
        m_showError(selectedWellError());
    return curve;
}

LogCurveData WellsCatalogue::curve(int well, int log) const
{
    if (!isWell(well) || log < 0 || log >= m_logNames.at(well).size())
        return namedCurve({}, {});
    LogCurveData curve = namedCurve(m_wellNames.at(well), m_logNames.at(well).at(log));
    if (!isReadable(well) || !readSamples(well, log, &curve))
        m_showError(selectedWellError());
    return curve;
}

std::optional<LogCurveData> WellsCatalogue::readCurve(int well, int log, OnFailure onFailure) const
{
    if (isReadable(well))
        if (auto curve = readCurveOfReadWell(well, log))
            return curve;
    tell(selectedWellError(), onFailure);
    return std::nullopt;
}

std::optional<host::LogData> WellsCatalogue::readStoredLog(int well, int log) const
{
    if (!isReadable(well) || log < 0 || log >= m_logNames.at(well).size())
        return std::nullopt;
    host::Outcome<host::LogData> data = readLog(well, log);
    return data.ok() ? std::optional(std::move(data.value)) : std::nullopt;
}

std::optional<LogCurveData> WellsCatalogue::readCurveOfReadWell(int well, int log) const
{
    if (!isWell(well) || log < 0 || log >= m_logNames.at(well).size())
        return std::nullopt;
    LogCurveData curve = namedCurve(m_wellNames.at(well), m_logNames.at(well).at(log));
    if (!readSamples(well, log, &curve))
        return std::nullopt;
    return curve;
}

void WellsCatalogue::tell(const QString &error, OnFailure onFailure) const
{
    if (onFailure == OnFailure::Tell)
        m_showError(error);
}

// A host may still find logs or markers of a well whose own record is gone; such a well counts as unreadable.
host::Outcome<QVector<host::LogInfo>> WellsCatalogue::readLogs(int well) const
{
    if (!isReadable(well))
        return {{}, selectedWellError()};
    return m_wells.logs(m_keys.at(well));
}

host::Outcome<QVector<host::Marker>> WellsCatalogue::readMarkers(int well) const
{
    if (!isReadable(well))
        return {{}, selectedWellError()};
    return m_wells.markers(m_keys.at(well));
}

host::Outcome<host::LogData> WellsCatalogue::readLog(int well, int log) const
{
    const QString &name = m_logNames.at(well).at(log);
    host::Outcome<host::LogData> data = m_wells.log(m_keys.at(well), log);
    if (data.ok() && data.value.name == name)
        return data;
    // The host's logs changed since the catalogue was read: the name counts, not the index.
    const int current = namesOf(m_wells.logs(m_keys.at(well)).value).indexOf(name);
    if (current < 0)
        return {{}, selectedWellError()};
    return m_wells.log(m_keys.at(well), current);
}

bool WellsCatalogue::readSamples(int well, int log, LogCurveData *curve) const
{
    const host::Outcome<host::LogData> data = readLog(well, log);
    if (!data.ok())
        return false;
    curve->unit = data.value.unit;
    QString unit = data.value.unit;
    curve->curveGroup = curveGroupOfUnit(unit);
    curve->isLogarithmic = curve->curveGroup == QLatin1String("Resistivity") ? 1 : 0;
    curve->nullValue = nullSampleValue;
    // These starts are required: a log wholly above 999.25 reports 999.25 as its minimum, one wholly below -999.25
    // reports -999.25 as its maximum.
    curve->minimum = 999.25;
    curve->maximum = -999.25;
    copySamples(data.value, curve);
    return true;
}

QVector<WellMarker> WellsCatalogue::markers(int well) const
{
    return readWellMarkers(well).value_or(QVector<WellMarker>());
}

std::optional<QVector<WellMarker>> WellsCatalogue::readWellMarkers(int well, OnFailure onFailure) const
{
    const host::Outcome<host::WellHeader> header = m_wells.header(wellKey(well));
    const host::Outcome<QVector<host::Marker>> stored = m_wells.markers(wellKey(well));
    if (!isWell(well) || !header.ok() || !stored.ok()) {
        tell(selectedWellError(), onFailure);
        return std::nullopt;
    }
    const double kb = definedOrZero(header.value.kbElevation);
    const double second = definedOrZero(header.value.groundElevation);
    QHash<QString, const host::Marker *> byName;
    for (const host::Marker &marker : stored.value)
        if (!byName.contains(marker.name))
            byName.insert(marker.name, &marker);
    QVector<WellMarker> markers;
    for (const QString &name : m_markerNames.at(well)) {
        const host::Marker *marker = byName.value(name);
        if (marker)
            markers.append(
                {name, marker->depth, static_cast<double>(marker->depth) - kb - second, opaque(marker->color)});
    }
    return markers;
}

QColor WellsCatalogue::markerColor(int well, const QString &markerName) const
{
    if (!isWell(well))
        return {};
    for (const host::Marker &marker : m_wells.markers(m_keys.at(well)).value)
        if (marker.name == markerName)
            return opaque(marker.color);
    return {};
}

WellRecord WellsCatalogue::wellRecord(const QString &wellName) const
{
    return readRecord(indexOf(wellName), wellName, OnFailure::Tell).value_or(WellRecord());
}

WellRecord WellsCatalogue::wellRecord(int well) const
{
    return readWellRecord(well).value_or(WellRecord());
}

std::optional<WellRecord> WellsCatalogue::readWellRecord(int well, OnFailure onFailure) const
{
    return readRecord(well, m_wellNames.value(well), onFailure);
}

std::optional<WellRecord> WellsCatalogue::readRecord(int well, const QString &wellName, OnFailure onFailure) const
{
    const host::Outcome<host::WellHeader> header = m_wells.header(wellKey(well));
    if (!isWell(well) || !header.ok()) {
        tell(QStringLiteral("Cannot get data for this well : ") + wellName, onFailure);
        return std::nullopt;
    }
    WellRecord record;
    record.wellName = wellName;
    record.x = header.value.x;
    record.y = header.value.y;
    record.kbElevation = definedOrZero(header.value.kbElevation);
    record.totalDepth = header.value.totalDepth;
    record.secondElevation = definedOrZero(header.value.groundElevation);
    record.wellType = wellTypeText(header.value.typeCode);
    return record;
}
