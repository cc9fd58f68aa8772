#pragma once

#include <QPaintEngine>
#include <QPainter>
#include <QStyleOptionGraphicsItem>
#include <QVector>

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

/// The same in parts one below the other, where only some rows of it are exposed: in a view that scrolls a strip at its end
/// and the row of the mouse.
inline QVector<QRectF> visibleParts(const QPainter &painter, const QStyleOptionGraphicsItem &option)
{
    constexpr int maximumParts = 8;
    const QRectF area = visibleArea(painter, option);
    const QRegion exposed = painter.paintEngine()->systemClip();
    if (exposed.rectCount() < 2 || exposed.rectCount() > maximumParts)
        return {area};
    const QTransform toItem = painter.deviceTransform().inverted();
    QVector<QRectF> parts;
    for (const QRect &rect : exposed) {
        const QRectF part = area & toItem.mapRect(QRectF(rect));
        if (!parts.isEmpty() && parts.last().bottom() > part.top())
            parts.last() |= part; // beside the one before
        else if (!part.isEmpty())
            parts.append(part);
    }
    return parts;
}

} // namespace logview
