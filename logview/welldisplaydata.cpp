#include "logview/welldisplaydata.h"

#include "datastore/projectdata.h"
#include "logview/geometry/valuescan.h"

WellDisplayData::WellDisplayData(ProjectData &projectData, const QString &wellName)
    : m_data(projectData)
    , m_depthTrackWidth(projectData.project.halfDotsPerInch)
    , m_curveTrackWidth(projectData.project.doubleDotsPerInch)
{
    const auto record = projectData.catalogue.readWellRecord(projectData.catalogue.indexOf(wellName));
    m_isReadable = record.has_value();
    m_record = record.value_or(WellRecord());
    m_record.wellName = wellName;
}

// A log that the well has not is an empty one; one that it has and that cannot be read is told of.
DisplayedLog WellDisplayData::readLog(const QString &logName)
{
    const WellsCatalogue &catalogue = m_data.catalogue;
    const int well = catalogue.indexOf(m_record.wellName);
    const int log = catalogue.logIndex(well, logName);
    if (!m_isReadable || log < 0)
        return {{}, {}, log < 0};
    std::optional<host::LogData> read = catalogue.readStoredLog(well, log);
    if (!read) {
        m_unreadLogs.append(logName);
        return {};
    }
    const int size = read->values.size();
    float *values = read->values.data();
    logview::firstThat(
        values, 0, size, [](const float *value) { return host::isUndefined(*value) ? 1 : 0; },
        [values](int from, int end) {
            for (int i = from; i < end; ++i)
                if (host::isUndefined(values[i]))
                    values[i] = static_cast<float>(nullSampleValue);
            return end;
        });
    return {logview::CurveSamples(read->depths, read->values), read->unit, false};
}

DisplayedLog WellDisplayData::log(const QString &logName)
{
    auto found = m_logs.find(logName);
    if (found == m_logs.end())
        found = m_logs.insert(logName, readLog(logName));
    return *found;
}

bool WellDisplayData::isWithoutLogs() const
{
    const int well = m_data.catalogue.indexOf(m_record.wellName);
    return m_isReadable && well >= 0 && m_data.catalogue.logNames(well).isEmpty();
}

CalibrationRecord WellDisplayData::calibration(const QString &groupName)
{
    auto found = m_calibrations.find(groupName);
    if (found == m_calibrations.end())
        found = m_calibrations.insert(
            groupName, readCalibration(m_data.project.projectFolder, m_record.wellName, groupName, m_data.asker));
    return *found;
}

PerforationRecord WellDisplayData::perforations()
{
    if (!m_hasPerforations)
        m_perforations = readPerforation(m_data.project.projectFolder, m_record.wellName);
    m_hasPerforations = true;
    return m_perforations;
}

void WellDisplayData::forgetSideFiles()
{
    m_calibrations.clear();
    m_hasPerforations = false;
}

base::ColorBar WellDisplayData::colorBar(int number)
{
    auto found = m_colorBars.find(number);
    if (found == m_colorBars.end())
        found = m_colorBars.insert(number, base::loadColorBar(m_data.project.setupDataFolder, number));
    return *found;
}

TrackInfo WellDisplayData::resolved(const TrackInfo &track)
{
    TrackInfo result = track;
    for (TemplateCurveInfo &curve : result.curves)
        if (curve.curve == defaultCurveName())
            curve.curve = defaultLog(curve.group);
    return result;
}

QStringList WellDisplayData::groupsWithoutLog(const TrackInfo &resolvedTrack)
{
    QStringList groups;
    if (resolvedTrack.type == DepthTrack)
        return groups;
    for (const TemplateCurveInfo &curve : resolvedTrack.curves)
        if (curve.curve == defaultCurveName())
            groups.append(curve.group);
    return groups;
}

QStringList WellDisplayData::curvesOffScale(const TrackInfo &resolvedTrack)
{
    QStringList curves;
    if (resolvedTrack.type != LogarithmicTrack)
        return curves;
    for (const TemplateCurveInfo &curve : resolvedTrack.curves)
        if (curve.curve != defaultCurveName() && !(curve.minimum > 0 && curve.maximum > curve.minimum))
            curves.append(curve.curve);
    return curves;
}

QString WellDisplayData::defaultLog(const QString &groupName)
{
    if (!m_hasDefaultLogs)
        m_defaultLogs = readDefaultLogs(m_data.project.projectFolder, m_record.wellName);
    m_hasDefaultLogs = true;
    if (!m_data.project.groupNames.contains(groupName))
        return defaultCurveName();
    return m_defaultLogs.logs.value(m_defaultLogs.groups.indexOf(groupName), defaultCurveName());
}

void WellDisplayData::setDotsPerInch(int dotsPerInch)
{
    m_depthTrackWidth = dotsPerInch / 2.0;
    m_curveTrackWidth = 2 * dotsPerInch;
}

QString defaultCurveName()
{
    return QStringLiteral("Default");
}
