#include "mainwin/reportwriter.h"

#include "base/asker.h"
#include "base/atomicfile.h"
#include "base/safename.h"
#include "base/waitcursor.h"
#include "datastore/projectdata.h"
#include "datastore/projectfile.h"
#include "mainwin/wellreports.h"

#include <optional>

namespace {

constexpr char logsFileEnding[] = "_logsInfo.txt";

QString logsTitle()
{
    return QStringLiteral("Wells Logs Information");
}

void warnCannotCreate(base::Asker &asker, const QString &path)
{
    asker.warn(logsTitle(),
               QStringLiteral("Unable to create logs information file.\nPlease check file read/write permision.\n")
                   + path);
}

bool hasWells(ProjectData &projectData)
{
    if (projectData.catalogue.wellCount() > 0)
        return true;
    projectData.asker.warn(logsTitle(), QStringLiteral("Well(s) doesn't exists."));
    return false;
}

// A well that went from the host since it was listed is told once, by its name, not once for each of its logs.
bool isThere(ProjectData &projectData, int well)
{
    const bool isReadable = projectData.host.wells().header(projectData.catalogue.wellKey(well)).ok();
    if (!isReadable)
        projectData.catalogue.wellRecord(well); // shows the host's error box
    return isReadable;
}

// A log that cannot be read has zeros; all of them are told in one box when the cursor is the user's again.
QByteArray logsReport(ProjectData &projectData, int well)
{
    const WellsCatalogue &catalogue = projectData.catalogue;
    const QStringList &names = catalogue.logNames(well);
    const bool canRead = names.isEmpty() || isThere(projectData, well);
    QByteArray bytes = wellreports::logsHeaderLine();
    QStringList unread;
    {
        const base::WaitCursor cursor;
        for (int log = 0; log < names.size(); ++log) {
            auto curve = canRead ? catalogue.readCurveOfReadWell(well, log) : std::nullopt;
            if (!curve) {
                curve.emplace().logName = names.at(log);
                unread.append(names.at(log));
            }
            bytes += wellreports::logLine(*curve);
        }
    }
    if (canRead && !unread.isEmpty())
        projectData.tellUnread(catalogue.wellNames().at(well), unread);
    return bytes;
}

// False when they cannot be read.
bool addMarkerLines(const WellsCatalogue &catalogue, int well, QByteArray *bytes)
{
    const base::WaitCursor cursor;
    const auto record = catalogue.readWellRecord(well, WellsCatalogue::OnFailure::BeSilent);
    const auto markers = catalogue.readWellMarkers(well, WellsCatalogue::OnFailure::BeSilent);
    if (!record || !markers)
        return false;
    for (const WellMarker &marker : *markers)
        *bytes += wellreports::markerLine(*record, marker);
    return true;
}

// Nothing when it was ended on the way.
std::optional<QByteArray> markersReport(ProjectData &projectData, const std::function<bool()> &mayGoOn)
{
    const WellsCatalogue &catalogue = projectData.catalogue;
    QByteArray bytes = wellreports::markersHeaderLine();
    for (int well = 0; well < catalogue.wellCount(); ++well) {
        if (mayGoOn && !mayGoOn())
            return std::nullopt;
        if (catalogue.markerNames(well).isEmpty() || !isThere(projectData, well))
            continue;
        if (!addMarkerLines(catalogue, well, &bytes))
            projectData.tellUnread(catalogue.wellNames().at(well));
    }
    return bytes;
}

bool writeReport(const ProjectData &projectData, const QString &path, const QByteArray &bytes)
{
    const base::WaitCursor cursor;
    return writeProjectFile(projectData.project.projectFolder, path, bytes, base::Flush::Later).ok();
}

bool flushReports(const ProjectData &projectData)
{
    const base::WaitCursor cursor;
    return base::flushFileSystem(projectData.project.projectFolder).ok();
}

} // namespace

QString logsReportPath(const ProjectData &projectData, const QString &wellName)
{
    return projectData.project.projectFolder + QLatin1Char('/')
        + base::fileNameFor(wellName, static_cast<int>(sizeof logsFileEnding) - 1) + QLatin1String(logsFileEnding);
}

QString markersReportPath(const ProjectData &projectData)
{
    return projectData.project.projectFolder + QStringLiteral("/Well_Markers_Info.txt");
}

bool writeLogsReport(ProjectData &projectData, const std::function<bool()> &mayGoOn)
{
    if (!hasWells(projectData))
        return false;
    const WellsCatalogue &catalogue = projectData.catalogue;
    for (int well = 0; well < catalogue.wellCount(); ++well) {
        if (mayGoOn && !mayGoOn())
            return false;
        const QString &name = catalogue.wellNames().at(well);
        const QString path = logsReportPath(projectData, name);
        if (!base::checkWritable(path).ok() || !writeReport(projectData, path, logsReport(projectData, well))) {
            warnCannotCreate(projectData.asker, path);
            return false;
        }
        if (catalogue.logNames(well).isEmpty())
            projectData.asker.warn(logsTitle(), QStringLiteral("logs are not available for this well :") + name);
    }
    const bool isFlushed = flushReports(projectData);
    if (isFlushed)
        projectData.asker.inform(logsTitle(), QStringLiteral("Done !"));
    else
        warnCannotCreate(projectData.asker, projectData.project.projectFolder);
    return isFlushed;
}

bool writeMarkersReport(ProjectData &projectData, const std::function<bool()> &mayGoOn)
{
    if (!hasWells(projectData))
        return false;
    const QString path = markersReportPath(projectData);
    if (!base::checkWritable(path).ok()) {
        warnCannotCreate(projectData.asker, path);
        return false;
    }
    const std::optional<QByteArray> bytes = markersReport(projectData, mayGoOn);
    if (!bytes)
        return false;
    if (!writeReport(projectData, path, *bytes) || !flushReports(projectData)) {
        warnCannotCreate(projectData.asker, path);
        return false;
    }
    projectData.asker.inform(QStringLiteral("Wells Markers Information"), QStringLiteral("Done !"));
    return true;
}
