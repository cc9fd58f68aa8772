#pragma once

#include "datastore/calibrationfile.h"
#include "datastore/perforationfile.h"
#include "welldata/columnfile.h"
#include "welldata/tablerow.h"

/// Perforation zones and calibration points as rows of their tables, and back as the records of their side files.
namespace welldata {

enum ZoneNumber { StartNumber = 0, EndNumber = 1 };
enum PointNumber { DepthNumber = 0, ValueNumber = 1 };

QVector<TableColumn> zoneColumns();
QVector<TableColumn> pointColumns();

/// The zones of a side file; a type that is none of the list stays as it is read.
QVector<TableRow> zoneRows(const PerforationRecord &record);
/// The zones of an imported file of the columns name, start, end and type.
QVector<TableRow> zoneRows(const ColumnFile &file);
PerforationRecord zoneRecord(const QString &wellName, const QVector<TableRow> &rows);
/// Gives zones of an unknown type the first one of the list; the numbers of these rows, from 1.
QVector<int> replaceUnknownTypes(QVector<TableRow> *rows);

/// Why the zones cannot be stored, as one line for each row concerned: an empty name, a "|" or a line break in a name
/// or a type. Empty when they can.
QStringList zoneProblems(const QVector<TableRow> &rows);

QVector<TableRow> pointRows(const CalibrationRecord &record);
/// The points of an imported file of the columns depth and value.
QVector<TableRow> pointRows(const ColumnFile &file);
CalibrationRecord pointRecord(const QString &wellName, const QString &groupName, const QVector<TableRow> &rows);

/// The rows of zones or points, from 1, one of whose two numbers is none and is stored as 0.
QVector<int> rowsWithoutNumber(const QVector<TableRow> &rows);
/// "row 3" or "rows 3, 4, 7 and 12 more".
QString rowList(const QVector<int> &rows);

} // namespace welldata
