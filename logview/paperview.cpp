#include "logview/paperview.h"

#include <QEvent>

PaperView::PaperView(QGraphicsScene *scene, QWidget *parent)
    : QGraphicsView(scene, parent)
{
    setBackgroundBrush(Qt::white);
}

// On a scaled screen all pens are wider than a pixel. Such lines come out a little different when only a part of them
// is painted, and a step of the scroll bar need not be a whole number of pixels: parts would not fit together.
bool PaperView::viewportEvent(QEvent *event)
{
    if (event->type() == QEvent::Paint)
        setViewportUpdateMode(viewport()->devicePixelRatioF() == 1 ? MinimalViewportUpdate : FullViewportUpdate);
    return QGraphicsView::viewportEvent(event);
}
