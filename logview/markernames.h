#pragma once

#include <QFont>
#include <QHash>
#include <QRectF>
#include <QVector>

class MarkerItem;

/// Tops that stand close together keep their lines where they are; their names move apart. In a crowd some names have
/// no room: those lines tell theirs under the mouse, as do those whose name is cut by its box.
class MarkerNames
{
public:
    /// Lets the names of markers that stand at their places, beside one well, keep clear of each other. \a font is the
    /// painter's.
    void place(const QVector<MarkerItem *> &markers, const QFont &font);

private:
    struct NameBox
    {
        QRectF extent;
        bool isCut = false;
    };

    QFont m_font;
    QHash<QString, NameBox> m_boxes; ///< in this font: the same names come again and again
};
