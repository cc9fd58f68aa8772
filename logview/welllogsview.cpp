#include "logview/welllogsview.h"

#include "logview/curveitem.h"
#include "logview/markeritem.h"
#include "logview/trackitem.h"
#include "logview/welllogsscene.h"

#include <QContextMenuEvent>
#include <QMenu>
#include <QPointer>

namespace {

bool isDisplayItem(const QGraphicsItem *item)
{
    return item->type() == TrackItem::Type || item->type() == CurveItem::Type || item->type() == MarkerItem::Type;
}

} // namespace

WellLogsView::WellLogsView(WellLogsScene *scene, QWidget *parent)
    : PaperView(scene, parent)
    , m_scene(scene)
{
    setMouseTracking(true);
}

MarkerItem *WellLogsView::livePicked()
{
    if (m_picked && !m_scene->markers().all().contains(m_picked))
        endPicking(); // a change of the depth range took the marker away
    return m_picked;
}

void WellLogsView::startPicking()
{
    cancelPicking();
    m_scene->pickedMarkerClicked();
    m_scene->setMode(WellLogsScene::Mode::None);
    m_picked = m_scene->markers().last();
    viewport()->setCursor(Qt::CrossCursor);
    setFocus();
    movePicked(mapFromGlobal(QCursor::pos()));
}

void WellLogsView::movePicked(const QPoint &position)
{
    m_scene->movePickedMarker(m_picked, mapToScene(position).y());
    emit pickingHint(
        QStringLiteral("%1 at %2 m measured depth. Click where the marker stands; Escape cancels.")
            .arg(m_picked->markerName(), QString::number(static_cast<double>(m_picked->depth()), 'f', 2)));
}

void WellLogsView::endPicking()
{
    m_picked = nullptr;
    viewport()->unsetCursor();
    emit pickingHint(QString());
}

void WellLogsView::cancelPicking()
{
    if (MarkerItem *marker = livePicked()) {
        m_scene->markers().destroy(marker);
        endPicking();
    }
}

void WellLogsView::mouseMoveEvent(QMouseEvent *event)
{
    if (livePicked())
        movePicked(event->pos());
    else
        PaperView::mouseMoveEvent(event);
}

void WellLogsView::mousePressEvent(QMouseEvent *event)
{
    MarkerItem *marker = livePicked();
    if (!marker) {
        PaperView::mousePressEvent(event);
    } else if (event->button() == Qt::LeftButton) {
        movePicked(event->pos());
        m_scene->selection().selectOnly(marker);
        m_scene->selection().showPanelOfSelection();
        endPicking();
    }
}

void WellLogsView::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape && livePicked())
        cancelPicking();
    else
        PaperView::keyPressEvent(event);
}

QGraphicsItem *WellLogsView::itemUnder(const QPoint &position) const
{
    for (QGraphicsItem *item : items(position))
        if (isDisplayItem(item))
            return item;
    return nullptr;
}

// The item may be gone by the time the user chooses. The mode goes back to none, or clicks would no longer show
// panels.
template<class Slot>
void WellLogsView::addItemAction(QMenu *menu, const QString &text, QGraphicsItem *item, const Slot &slot)
{
    menu->addAction(text, this, [this, item, slot] {
        if (!m_scene->items().contains(item))
            return;
        m_scene->selection().selectOnly(item);
        const QPointer<WellLogsView> self = this; // a box of the slot may outlive the display
        slot();
        if (self)
            m_scene->setMode(WellLogsScene::Mode::None);
    });
}

QMenu *WellLogsView::createContextMenu(const QPoint &position)
{
    auto *menu = new QMenu(this);
    menu->setObjectName(QStringLiteral("logContextMenu"));
    menu->addAction(QStringLiteral("Pick Marker"), this, &WellLogsView::startPicking);
    QGraphicsItem *item = itemUnder(position);
    if (auto *marker = qgraphicsitem_cast<MarkerItem *>(item)) {
        if (m_scene->markers().unsaved().contains(marker))
            addItemAction(menu, QStringLiteral("Save Picked Marker"), marker, [this, marker] {
                m_scene->savePickedMarkerClicked();
                emit saveMarkerRequested(marker);
            });
        addItemAction(menu, QStringLiteral("Delete Marker"), marker, [this] { m_scene->deleteMarker(); });
    } else if (item && item->type() == CurveItem::Type) {
        addItemAction(menu, QStringLiteral("Delete Curve"), item, [this] { m_scene->deleteCurve(); });
    } else if (item) {
        addItemAction(menu, QStringLiteral("Delete Track"), item, [this] { m_scene->deleteTrack(); });
    }
    return menu;
}

void WellLogsView::contextMenuEvent(QContextMenuEvent *event)
{
    if (livePicked()) {
        cancelPicking();
        return;
    }
    QMenu *menu = createContextMenu(event->pos());
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->popup(event->globalPos());
}
