#pragma once

#include <QColor>
#include <QFont>
#include <QFontMetricsF>
#include <QPen>

namespace logview {

/// Of the widths of tracks that are typed and kept, whatever the screen has.
constexpr int widthPixelsPerInch = 96;

inline QColor backgroundColor()
{
    return QColor(255, 255, 255);
}
/// Fills a selected track and its header.
inline QColor highlightColor()
{
    return QColor(204, 229, 255);
}

/// The font of headers. Its name is no literal of ours, because Qt keeps names of fonts longer than the plug-in is
/// loaded.
inline QFont timesFont()
{
    return QFont(QString::fromLatin1("Times"));
}

/// The font with which a text is no wider than that on the device: the largest in whole points, no larger than given.
inline QFont fittedFont(QFont font, const QString &text, double widthPx, QPaintDevice *device)
{
    while (font.pointSize() > 1 && QFontMetricsF(font, device).horizontalAdvance(text) > widthPx)
        font.setPointSize(font.pointSize() - 1);
    return font;
}

/// The pen of a selected curve or marker: as the normal one, 2 pixels wider, in a blue that shows on white and on the
/// highlight colour.
inline QPen selectionPen(const QPen &normal)
{
    QPen pen = normal;
    pen.setColor(QColor(0, 102, 204));
    pen.setWidth(normal.width() + 2);
    return pen;
}

} // namespace logview
