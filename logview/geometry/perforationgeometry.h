#pragma once

#include "datastore/perforationfile.h"
#include "logview/geometry/depthaxis.h"

#include <QColor>
#include <QRectF>
#include <QSizeF>
#include <QVector>

namespace logview {

struct ZoneColors
{
    QColor left;
    QColor right; ///< as left where the zone type has one colour
};
/// The colours of a zone type; invalid colours (nothing to fill) for a type that is none of zoneTypeNames().
ZoneColors zoneColors(const QString &zoneType);

/// A perforation zone in its track.
struct ZoneGeometry
{
    QRectF left; ///< the left half
    QRectF right;
    ZoneColors colors;
    QString label; ///< the zone type
    QRectF outline() const { return QRectF(left.topLeft(), right.bottomRight()); }
};

/// The zones that meet the rows \a topY to \a bottomY, in the order of the record. Zone depths are measured depths in
/// metres; \a reference turns them into depths of the display. A zone is cut to the axis; one wholly outside, or with
/// a depth that is no number, is left out. Top and bottom the wrong way round are exchanged.
QVector<ZoneGeometry> zoneGeometry(const PerforationRecord &record, const DepthAxis &axis,
                                   const DepthReference &reference, float trackWidth, double topY, double bottomY);

/// Where the label of a zone is drawn, centred in the zone; an empty rectangle when the text does not fit.
QRectF labelRect(const ZoneGeometry &zone, const QSizeF &textSize);

} // namespace logview
