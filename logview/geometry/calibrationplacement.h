#pragma once

#include "datastore/calibrationfile.h"
#include "logview/geometry/depthaxis.h"
#include "logview/geometry/valuescale.h"

#include <QPointF>
#include <QVector>

namespace logview {

struct CalibrationPoint
{
    QPoint position; ///< pixels, in the track; may lie outside of it
    float value = 0;
    float depth = 0; ///< as in the file
    bool isInRange = false; ///< whether its depth lies in the range of the axis
};

/// Where the calibration points of a curve stand: linear even on logarithmic tracks, not clamped, truncated. Points
/// that no pixel can be computed for are left out. \a reference turns the points' depths into depths of the display;
/// the default one takes them as they are.
QVector<CalibrationPoint> placeCalibration(const CalibrationRecord &record, const DepthAxis &axis,
                                           const ValueScale &scale, const DepthReference &reference = {});

/// Index of the topmost (last) point in range whose square of half side \a sizePx holds \a position; -1 for none.
int calibrationAt(const QVector<CalibrationPoint> &points, const QPointF &position, int sizePx);

} // namespace logview
