#pragma once

#include "datastore/hostwriter.h"
#include "host/hostrecords.h"
#include "welldata/columnfile.h"
#include "welldata/tablerow.h"

struct WellRecord;

namespace welldata {

/// What of a row of the marker table is which number.
enum MarkerNumber { MdNumber = 0, TvdNumber = 1, TvdssNumber = 2 };

/// The columns of the marker table.
QVector<TableColumn> markerColumns();

/// The elevations of a well as the marker table subtracts them, metres.
struct MarkerElevations
{
    MarkerElevations() = default;
    explicit MarkerElevations(const WellRecord &well);

    float kb = 0;
    float second = 0;
};

/// The rows of a well's stored markers: TVD shows the measured depth, TVDSS the measured depth less KB elevation. White
/// is shown as black.
QVector<TableRow> markerRows(const QVector<host::Marker> &markers, const MarkerElevations &elevations);
/// After the measured depth was edited: TVD = depth - KB elevation, TVDSS = TVD - second elevation.
void computeMarkerDepths(TableRow *row, const MarkerElevations &elevations);

/// The rows of an imported file of the columns name and depth: black, TVDSS = depth - KB elevation.
QVector<TableRow> markerRows(const ColumnFile &file, const MarkerElevations &elevations);

MarkerSetRecord markerRecord(const QString &wellName, const QVector<TableRow> &rows);

/// What the host would drop without a word, or what would become another depth, as one line for each row concerned: no
/// name, a name that occurs twice, a depth outside of the track, a depth that is no number. \a trackEndM is where the
/// track ends, 0 where nobody knows.
QStringList markerProblems(const QVector<TableRow> &rows, double trackEndM);

/// The rows without those that markerProblems() names as left out: no name, a name that an earlier row has, a depth outside
/// of the track.
QVector<TableRow> storableMarkerRows(const QVector<TableRow> &rows, double trackEndM);

/// What storing the rows would undo of what others did to the well's markers since they were \a shown, as one line for each
/// of \a now or of those gone: one that came, was changed or was deleted.
QStringList undoneByStoring(const QVector<host::Marker> &shown, const QVector<host::Marker> &now,
                            const QVector<TableRow> &rows);

} // namespace welldata
