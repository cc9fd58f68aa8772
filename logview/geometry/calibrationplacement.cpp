#include "logview/geometry/calibrationplacement.h"

#include <algorithm>
#include <cmath>

namespace logview {

QVector<CalibrationPoint> placeCalibration(const CalibrationRecord &record, const DepthAxis &axis,
                                           const ValueScale &scale, const DepthReference &reference)
{
    QVector<CalibrationPoint> points;
    if (!axis.isDrawable())
        return points;
    const int count = std::min(record.depths.size(), record.values.size());
    points.reserve(count);
    for (int i = 0; i < count; ++i) {
        const float depth = record.depths.at(i);
        const float value = record.values.at(i);
        const double display = static_cast<double>(reference.toDisplay(static_cast<double>(depth)));
        const double x = scale.toLinearPixel(static_cast<double>(value));
        const double y = axis.toPixel(display);
        if (std::isfinite(x) && std::isfinite(y))
            points.append({QPoint(toInt(x), toInt(y)), value, depth, axis.contains(display)});
    }
    return points;
}

int calibrationAt(const QVector<CalibrationPoint> &points, const QPointF &position, int sizePx)
{
    for (int i = points.size(); i-- > 0;) {
        const QPointF distance = position - QPointF(points.at(i).position);
        if (points.at(i).isInRange && std::abs(distance.x()) <= sizePx && std::abs(distance.y()) <= sizePx)
            return i;
    }
    return -1;
}

} // namespace logview
