#pragma once

#include <QFont>
#include <QHash>
#include <QRectF>
#include <QVector>

class MarkerItem;

/// Tops that stand close together keep their lines where they are; their names move apart. In a crowd some names have
/// no room: those lines tell theirs under the mouse.
class MarkerNames
{
public:
    /// Lets the names of markers that stand at their places, beside one well, keep clear of each other. \a font is the
    /// painter's.
    void place(const QVector<MarkerItem *> &markers, const QFont &font);

private:
    QFont m_font;
    QHash<QString, QRectF> m_extents; ///< in this font: the same names come again and again
};
