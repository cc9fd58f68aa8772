#pragma once

#include "logview/paper/sheet.h"

QT_BEGIN_NAMESPACE
class QGraphicsScene;
class QPainter;
QT_END_NAMESPACE

namespace logview {

/// Paints the pages of a sheet from the scenes of a display.
class SheetPainter
{
public:
    /// The scenes must outlive the painter and stay as they are meanwhile. \a sheet is a good one.
    SheetPainter(QGraphicsScene &headerScene, QGraphicsScene &logScene, const Sheet &sheet);

    const Sheet &sheet() const { return m_sheet; }
    /// Paints one page. The painter's units are pixels of the display, from the page's upper left corner.
    void paint(QPainter &painter, int page) const;

private:
    void paintFooter(QPainter &painter, int page) const;

    QGraphicsScene &m_headerScene;
    QGraphicsScene &m_logScene;
    Sheet m_sheet;
};

} // namespace logview
