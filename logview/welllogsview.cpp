#include "logview/welllogsview.h"

#include "logview/curveitem.h"
#include "logview/geometry/depthscales.h"
#include "logview/markeritem.h"
#include "logview/trackitem.h"
#include "logview/viewkeys.h"
#include "logview/welllogsscene.h"
#include "logview/welllogsscenepropertywidget.h"

#include <QContextMenuEvent>
#include <QMenu>
#include <QPointer>

namespace {

constexpr double markerReach = 4; // pixels

bool isDisplayItem(const QGraphicsItem *item)
{
    return item->type() == TrackItem::Type || item->type() == CurveItem::Type || item->type() == MarkerItem::Type;
}

} // namespace

WellLogsView::WellLogsView(WellLogsScene *scene, QWidget *parent)
    : PaperView(scene, parent)
    , m_scene(scene)
    , m_place(scene, this)
    , m_cursor(viewport())
    , m_drag(this)
{
    setMouseTracking(true);
}

bool WellLogsView::viewportEvent(QEvent *event)
{
    if (event->type() == QEvent::Leave)
        m_cursor.hide();
    return PaperView::viewportEvent(event);
}

void WellLogsView::paintEvent(QPaintEvent *event)
{
    m_place.viewSeen();
    PaperView::paintEvent(event);
    m_cursor.paint(QRect(mapFromScene(0, 0), QSize(m_scene->sceneWidth(), m_scene->trackHeight())));
}

void WellLogsView::resizeEvent(QResizeEvent *event)
{
    m_place.resize([this, event] { PaperView::resizeEvent(event); });
}

// The read-out of what comes under a mouse that stands still is Qt's work: it repeats the last move.
void WellLogsView::scrollContentsBy(int dx, int dy)
{
    PaperView::scrollContentsBy(dx, dy);
    m_cursor.scrolled(dy);
    if (dy != 0)
        m_place.viewScrolled();
    if (livePicked())
        movePicked(m_mouse);
}

// Ctrl and wheel walk through the usual scales, around the depth under the mouse.
void WellLogsView::wheelEvent(QWheelEvent *event)
{
    if (!(event->modifiers() & Qt::ControlModifier)) {
        PaperView::wheelEvent(event);
        return;
    }
    event->accept();
    const int steps = m_wheelSteps.take(event->angleDelta().y());
    WellLogsScenePropertyWidget *panel = m_scene->panel();
    const float scale = logview::steppedScale(panel->scale(), -steps);
    if (scale != panel->scale())
        m_place.keepRow(event->position().toPoint().y(), [panel, scale] { panel->enterScale(scale); });
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
    m_mouse = viewport()->mapFromGlobal(QCursor::pos());
    movePicked(m_mouse);
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
    m_mouse = event->pos();
    m_cursor.moveTo(m_mouse.y());
    if (m_drag.isOn() && !(event->buttons() & Qt::MiddleButton))
        m_drag.end(); // the release went elsewhere
    if (m_drag.isOn())
        m_drag.moveTo(m_mouse);
    else if (livePicked())
        movePicked(m_mouse);
    else
        PaperView::mouseMoveEvent(event);
}

void WellLogsView::mousePressEvent(QMouseEvent *event)
{
    MarkerItem *marker = livePicked();
    if (event->button() == Qt::MiddleButton) {
        m_drag.begin(event->pos());
    } else if (!marker) {
        PaperView::mousePressEvent(event);
    } else if (event->button() == Qt::LeftButton) {
        movePicked(event->pos());
        m_scene->selection().selectOnly(marker);
        m_scene->selection().showPanelOfSelection();
        endPicking();
    }
}

void WellLogsView::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() == Qt::MiddleButton)
        m_drag.end();
    else
        PaperView::mouseReleaseEvent(event);
}

void WellLogsView::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape && livePicked())
        cancelPicking();
    else if (!logview::scrollByKey(*this, *event))
        PaperView::keyPressEvent(event);
}

QGraphicsItem *WellLogsView::itemUnder(const QPoint &position) const
{
    for (QGraphicsItem *item : items(position))
        if (isDisplayItem(item))
            return item;
    return nullptr;
}

// A line is thin: a marker is meant as well when the mouse stands a little beside it.
MarkerItem *WellLogsView::markerNear(const QPoint &position) const
{
    const QPointF place = mapToScene(position);
    return place.x() <= m_scene->sceneWidth() ? m_scene->markers().nearest(place.y(), markerReach) : nullptr;
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
    MarkerItem *marker = markerNear(position);
    QGraphicsItem *item = itemUnder(position);
    const QVector<MarkerItem *> &unsaved = m_scene->markers().unsaved();
    MarkerItem *toSave = marker && unsaved.contains(marker) ? marker : unsaved.isEmpty() ? nullptr : unsaved.last();
    if (toSave)
        addItemAction(menu, QStringLiteral("Save Picked Marker"), toSave, [this, toSave] {
            m_scene->savePickedMarkerClicked();
            emit saveMarkerRequested(toSave);
        });
    if (marker) {
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
