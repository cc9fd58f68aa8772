#pragma once

#include "datastore/wellrecord.h"
#include "datastore/wellscatalogue.h"

#include <QByteArray>
#include <QVector>

/// The text of the well reports: space-aligned lines, each field padded to its width and followed by a blank but for
/// the last. A field longer than its width is written whole.
namespace wellreports {

/// The depth where the first run of null values inside the data begins; 0 when there is none.
double breakZoneDepth(const QVector<double> &depths, const QVector<double> &values, double nullValue);

QByteArray logsHeaderLine();
/// One log's row; a log without samples has zeros.
QByteArray logLine(const LogCurveData &curve);

QByteArray markersHeaderLine();
QByteArray markerLine(const WellRecord &well, const WellMarker &marker);

} // namespace wellreports
