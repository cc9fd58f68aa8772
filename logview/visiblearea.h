#pragma once

#include <QPaintEngine>
#include <QPainter>
#include <QStyleOptionGraphicsItem>

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

} // namespace logview
