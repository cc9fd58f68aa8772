#pragma once

#include <QPainter>
#include <QStyleOptionGraphicsItem>

namespace logview {

/// The part of an item that a paint shows, in item coordinates: what is exposed, less the pixel that Qt adds to it on
/// each side, and no more than the device has. A scene rendered into a picture calls whole items exposed.
inline QRectF visibleArea(const QPainter &painter, const QStyleOptionGraphicsItem &option)
{
    const QRectF exposed = option.exposedRect.adjusted(1, 1, -1, -1);
    const QPaintDevice *device = painter.device();
    const QRectF deviceArea(0, 0, device->width(), device->height());
    return exposed & painter.combinedTransform().inverted().mapRect(deviceArea);
}

} // namespace logview
