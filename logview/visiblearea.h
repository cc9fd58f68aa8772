#pragma once

#include <QPaintEngine>
#include <QPainter>
#include <QStyleOptionGraphicsItem>

#include <algorithm>
#include <cmath>

namespace logview {

/// The part of an item that a paint shows, in item coordinates: what is exposed, and no more than the device has. A
/// scene rendered into a picture calls whole items exposed.
inline QRectF visibleArea(const QPainter &painter, const QStyleOptionGraphicsItem &option)
{
    // The device of the engine has the pixels of the screen; a widget, those of its coordinates.
    const QPaintDevice *device = painter.paintEngine()->paintDevice();
    const QRectF deviceArea(0, 0, device->width(), device->height());
    return option.exposedRect & painter.deviceTransform().inverted().mapRect(deviceArea);
}

/// How many rows of the painter's device a row of the item takes; at least 1.
inline double rowsPerPixel(const QPainter &painter)
{
    return std::max(1.0, std::abs(painter.deviceTransform().m22()));
}

} // namespace logview
