#pragma once

#include "datastore/storeresult.h"
#include "welldata/tablerow.h"

struct ProjectData;

/// Storing the rows of the tables, whether they were typed or imported: checked first, then written.
namespace welldata {

/// The well that an editor or an import works on. Two wells may have one name: the key tells them apart.
struct WellChoice
{
    QString name;
    QString key; ///< of the host; empty where there is no such well

    bool isSet() const { return !key.isEmpty() || (!name.isEmpty() && name != QLatin1String("None")); }
};

/// The well of that key; without one, the first well of that name. "None" without a key is none.
WellChoice chosenWell(const ProjectData &data, const QString &wellName, const QString &wellKey);

/// Writes the markers into the host's well. What the host would drop, and \a otherLosses, are asked about first, under
/// \a title. Depths are those along hole.
StoreResult storeMarkers(ProjectData &data, const WellChoice &well, const QVector<TableRow> &rows,
                         const QString &title, const QStringList &otherLosses = {});

/// Writes the zones into the well's side file. Zones that it cannot hold are refused in a box with \a title.
StoreResult storeZones(ProjectData &data, const QString &wellName, const QVector<TableRow> &rows,
                       const QString &title);

/// Writes the points into the side file of well and group.
StoreResult storePoints(ProjectData &data, const QString &wellName, const QString &groupName,
                        const QVector<TableRow> &rows);

} // namespace welldata
