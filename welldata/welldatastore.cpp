#include "welldata/welldatastore.h"

#include "base/asker.h"
#include "datastore/projectdata.h"
#include "welldata/markerrows.h"
#include "welldata/siderows.h"

namespace welldata {

WellChoice chosenWell(const ProjectData &data, const QString &wellName, const QString &wellKey)
{
    if (wellKey.isEmpty() && wellName == QLatin1String("None"))
        return {wellName, {}}; // also where a well is called so: it is chosen by its key
    return {wellName, wellKey.isEmpty() ? data.catalogue.wellKey(data.catalogue.indexOf(wellName)) : wellKey};
}

StoreResult storeMarkers(ProjectData &data, const WellChoice &well, const QVector<TableRow> &rows,
                         const QString &title, const QStringList &otherLosses)
{
    const int index = data.catalogue.indexOfKey(well.key);
    const auto record = data.catalogue.readWellRecord(index, WellsCatalogue::OnFailure::BeSilent);
    const double trackEndM = record ? record->totalDepth : 0;
    const QStringList losses = markerProblems(rows, trackEndM) + otherLosses;
    if (!losses.isEmpty()
        && !data.asker.confirmLoss(
            title,
            QStringLiteral(
                "The well cannot take all markers as they are:\n%1\nMarkers without a name, of a name that "
                "another one has, or outside of the track are left out.\nWould you like to go on?")
                .arg(firstOf(losses).join(QLatin1Char('\n')))))
        return StoreResult::Declined;
    HostWriter writer(data.host.wells(), data.catalogue, data.asker,
                      [&data](const QString &text) { data.host.showError(text); });
    return writer.writeMarkers(data.catalogue.indexOfKey(well.key),
                               markerRecord(well.name, storableMarkerRows(rows, trackEndM)));
}

StoreResult storeZones(ProjectData &data, const QString &wellName, const QVector<TableRow> &rows,
                       const QString &title)
{
    const QStringList problems = zoneProblems(rows);
    if (!problems.isEmpty()) {
        data.asker.warn(title,
                        QStringLiteral("These zones cannot be stored:\n%1\nNothing was written.")
                            .arg(firstOf(problems).join(QLatin1Char('\n'))));
        return StoreResult::Declined;
    }
    return writePerforation(data.project.projectFolder, zoneRecord(wellName, rows), data.asker);
}

StoreResult storePoints(ProjectData &data, const QString &wellName, const QString &groupName,
                        const QVector<TableRow> &rows)
{
    return writeCalibration(data.project.projectFolder, pointRecord(wellName, groupName, rows), data.asker);
}

} // namespace welldata
