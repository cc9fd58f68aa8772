#pragma once

#include <QPainterPath>
#include <QPointF>
#include <QRectF>
#include <QTransform>
#include <QVector>

#include <vector>

namespace logview {

/// Lines on whole dots of a printer, one behind the other.
struct DotLines
{
    std::vector<QPointF> corners;
    std::vector<size_t> starts; ///< the first corner of each
    bool hasCurves = false; ///< then there are no lines
};

/// The lines of a path on whole dots: without corners that no dot tells apart, and without what cannot show in the area.
DotLines linesOnDots(const QPainterPath &path, const QTransform &toDots, const QRectF &area);

/// The rectangle that all corners stand in.
QRectF boundsOf(const DotLines &lines);

/// A path on whole dots: lines lose idle corners, curves keep theirs. Of lines goes what cannot show in a valid
/// \a strokedIn: for those that are only stroked.
QPainterPath onDots(const QPainterPath &path, const QTransform &toDots, const QRectF &strokedIn);

/// The corners of a line without those that it passes within half a unit; first and last stay.
QVector<QPointF> withoutIdleCorners(const QVector<QPointF> &corners);

} // namespace logview
