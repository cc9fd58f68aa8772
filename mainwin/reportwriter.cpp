#include "mainwin/reportwriter.h"

#include "base/asker.h"
#include "base/atomicfile.h"
#include "base/safename.h"
#include "datastore/projectdata.h"
#include "mainwin/wellreports.h"

#include <QCursor>
#include <QGuiApplication>

namespace {

constexpr char logsFileEnding[] = "_logsInfo.txt";

QString logsTitle()
{
    return QStringLiteral("Wells Logs Information");
}

/// The wait cursor for as long as it lives; lifted while a box is up.
class WaitCursor
{
public:
    WaitCursor() { QGuiApplication::setOverrideCursor(QCursor(Qt::WaitCursor)); }
    ~WaitCursor() { lift(); }
    WaitCursor(const WaitCursor &) = delete;
    WaitCursor &operator=(const WaitCursor &) = delete;

    void lift()
    {
        if (m_isShown)
            QGuiApplication::restoreOverrideCursor();
        m_isShown = false;
    }

private:
    bool m_isShown = true;
};

void warnCannotCreate(base::Asker &asker, const QString &path)
{
    asker.warn(logsTitle(),
               QStringLiteral("Unable to create logs information file.\nPlease check file read/write permision.\n") + path);
}

bool hasWells(ProjectData &projectData)
{
    if (projectData.catalogue.wellCount() > 0)
        return true;
    projectData.asker.warn(logsTitle(), QStringLiteral("Well(s) doesn't exists."));
    return false;
}

QString logsPath(const ProjectData &projectData, const QString &wellName)
{
    return projectData.project.projectFolder + QLatin1Char('/')
        + base::fileNameFor(wellName, static_cast<int>(sizeof logsFileEnding) - 1) + QLatin1String(logsFileEnding);
}

QByteArray logsReport(const WellsCatalogue &catalogue, int well)
{
    QByteArray bytes = reports::logsHeaderLine();
    for (int log = 0; log < catalogue.logNames(well).size(); ++log)
        bytes += reports::logLine(catalogue.curve(well, log));
    return bytes;
}

QByteArray markersReport(const WellsCatalogue &catalogue)
{
    QByteArray bytes = reports::markersHeaderLine();
    for (int well = 0; well < catalogue.wellCount(); ++well) {
        if (catalogue.markerNames(well).isEmpty())
            continue;
        const WellRecord record = catalogue.wellRecord(well);
        for (const WellMarker &marker : catalogue.markers(well))
            bytes += reports::markerLine(record, marker);
    }
    return bytes;
}

} // namespace

void writeLogsReport(ProjectData &projectData)
{
    if (!hasWells(projectData))
        return;
    const WellsCatalogue &catalogue = projectData.catalogue;
    for (int well = 0; well < catalogue.wellCount(); ++well) {
        const QString &name = catalogue.wellNames().at(well);
        const QString path = logsPath(projectData, name);
        WaitCursor cursor;
        const bool isWritten = base::checkWritable(path).ok()
            && base::writeFileAtomically(path, logsReport(catalogue, well)).ok();
        cursor.lift();
        if (!isWritten) {
            warnCannotCreate(projectData.asker, path);
            return;
        }
        if (catalogue.logNames(well).isEmpty())
            projectData.asker.warn(logsTitle(), QStringLiteral("logs are not available for this well :") + name);
    }
    projectData.asker.inform(logsTitle(), QStringLiteral("Done !"));
}

void writeMarkersReport(ProjectData &projectData)
{
    if (!hasWells(projectData))
        return;
    const QString path = projectData.project.projectFolder + QStringLiteral("/Well_Markers_Info.txt");
    WaitCursor cursor;
    const bool isWritten
        = base::checkWritable(path).ok() && base::writeFileAtomically(path, markersReport(projectData.catalogue)).ok();
    cursor.lift();
    if (!isWritten) {
        warnCannotCreate(projectData.asker, path);
        return;
    }
    projectData.asker.inform(QStringLiteral("Wells Markers Information"), QStringLiteral("Done !"));
}
