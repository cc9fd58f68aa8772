#pragma once

#include <QImage>

QT_BEGIN_NAMESPACE
class QWidget;
QT_END_NAMESPACE

/// The pixels of a widget as they were painted last, so that parts of it can be put back exactly. For use inside of its
/// paint event, and only where windows are painted as images.
class PaintedPixels
{
public:
    /// Keeps what stands in the window. Nothing happens in a paint event for something else, such as a picture.
    void take(QWidget &widget);
    void forget() { m_pixels = {}; }
    bool isEmpty() const { return m_pixels.isNull(); }
    /// Puts back what the paint event asks for. False when that is not known.
    bool draw(QWidget &widget) const;

private:
    QImage m_pixels;
};
