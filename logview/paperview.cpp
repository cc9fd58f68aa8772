#include "logview/paperview.h"

#include <QEvent>
#include <QScrollBar>

#include <cmath>

PaperView::PaperView(QGraphicsScene *scene, QWidget *parent)
    : QGraphicsView(scene, parent)
{
    setBackgroundBrush(Qt::white);
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent); // filling it once is enough
}

// On a screen that scales pixels by a fraction a step of the scroll bar need not be a whole number of pixels: parts
// would not fit together.
bool PaperView::viewportEvent(QEvent *event)
{
    if (event->type() == QEvent::Paint) {
        const double ratio = viewport()->devicePixelRatioF();
        setViewportUpdateMode(ratio == std::floor(ratio) ? MinimalViewportUpdate : FullViewportUpdate);
    }
    return QGraphicsView::viewportEvent(event);
}

// What stands left of the tracks stays in sight until the user scrolls it away.
template<class Change>
void PaperView::keepingTheLeftEnd(const Change &change)
{
    QScrollBar *bar = horizontalScrollBar();
    const bool wasAtLeft = bar->value() == bar->minimum();
    change();
    if (wasAtLeft)
        bar->setValue(bar->minimum());
}

void PaperView::showRect(const QRectF &sceneRect)
{
    keepingTheLeftEnd([&] { setSceneRect(sceneRect); });
}

void PaperView::resizeEvent(QResizeEvent *event)
{
    keepingTheLeftEnd([&] { QGraphicsView::resizeEvent(event); });
}
