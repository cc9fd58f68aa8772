#include "logview/paintedpixels.h"

#include <QBackingStore>
#include <QPaintEngine>
#include <QPainter>
#include <QWidget>

#include <cstring>

namespace {

// The image of the window, when it is one and it is what is being painted.
const QImage *windowImage(const QPainter &painter, const QWidget &widget)
{
    const QPaintDevice *device = painter.paintEngine()->paintDevice();
    QBackingStore *window = widget.backingStore();
    if (!window || device != window->paintDevice() || device->devType() != QInternal::Image)
        return nullptr;
    return static_cast<const QImage *>(device);
}

QRect placeIn(const QImage &window, const QPainter &painter, const QWidget &widget)
{
    return painter.deviceTransform().mapRect(QRectF(widget.rect())).toAlignedRect() & window.rect();
}

} // namespace

void PaintedPixels::take(QWidget &widget)
{
    const QPainter painter(&widget);
    const QImage *window = windowImage(painter, widget);
    if (!window)
        return;
    const QRect place = placeIn(*window, painter, widget);
    if (m_pixels.size() != place.size() || m_pixels.format() != window->format())
        m_pixels = QImage(place.size(), window->format());
    const int pixelBytes = window->depth() / 8;
    for (int row = 0; row < place.height(); ++row)
        std::memcpy(m_pixels.scanLine(row), window->constScanLine(place.top() + row) + place.left() * pixelBytes,
                    static_cast<size_t>(place.width() * pixelBytes));
}

bool PaintedPixels::draw(QWidget &widget) const
{
    QPainter painter(&widget);
    const QImage *window = m_pixels.isNull() ? nullptr : windowImage(painter, widget);
    if (!window)
        return false;
    const QRect place = placeIn(*window, painter, widget);
    if (place.size() != m_pixels.size() || window->format() != m_pixels.format())
        return false;
    painter.setWorldTransform(painter.deviceTransform().inverted()); // pixel for pixel
    painter.drawImage(place.topLeft(), m_pixels);
    return true;
}
