#pragma once

#include <QImage>
#include <QWidget>

/// A widget, or a part of it, as a picture that has a pixel for each of the widget's, on screens of any scale.
inline QImage grabbed(QWidget *widget, const QRect &part = {})
{
    const QRect place = part.isNull() ? widget->rect() : part;
    QImage image(place.size(), QImage::Format_RGB32);
    widget->render(&image, QPoint(), place);
    return image;
}
