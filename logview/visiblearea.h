#pragma once

#include <QPaintEngine>
#include <QPainter>
#include <QStyleOptionGraphicsItem>

namespace logview {

/// The part of an item that a paint shows, in item coordinates: what is exposed, and no more than the device and the
/// clip of the painter have. A scene rendered into a picture or onto a page calls whole items exposed, and clips.
inline QRectF visibleArea(const QPainter &painter, const QStyleOptionGraphicsItem &option)
{
    // The device of the engine has the pixels of the screen; a widget, those of its coordinates.
    const QPaintDevice *device = painter.paintEngine()->paintDevice();
    const QRectF deviceArea(0, 0, device->width(), device->height());
    const QRectF shown = option.exposedRect & painter.deviceTransform().inverted().mapRect(deviceArea);
    return painter.hasClipping() ? shown & painter.clipBoundingRect() : shown;
}

} // namespace logview
