#pragma once

#include "datastore/perforationfile.h"
#include "logview/geometry/depthaxis.h"

#include <QColor>
#include <QFont>
#include <QRectF>
#include <QVector>

QT_BEGIN_NAMESPACE
class QPaintDevice;
QT_END_NAMESPACE

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

/// The label of a zone as it is drawn, centred in its rectangle.
struct ZoneLabel
{
    QString text; ///< one line, or two; empty when nothing fits
    QFont font;
    QColor color; ///< white in a black zone
    QRectF rect;
};
/// The label of a zone in the largest font of at most the size of \a font with which it fits into the zone beside what
/// is \a taken: on one line, or broken after a blank or hyphen; in the middle, or as near to it as there is room.
ZoneLabel zoneLabel(const ZoneGeometry &zone, QFont font, QPaintDevice *device, const QVector<QRectF> &taken);

} // namespace logview
