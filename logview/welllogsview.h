#pragma once

#include "logview/depthcursor.h"
#include "logview/depthplace.h"
#include "logview/paperview.h"
#include "logview/viewdrag.h"
#include "logview/wheelsteps.h"

QT_BEGIN_NAMESPACE
class QMenu;
QT_END_NAMESPACE

class MarkerItem;
class WellLogsScene;

/// The view of a log scene: moving along the depths and scaling with mouse and keys, a cursor line at the mouse,
/// context menu, and picking of markers.
class WellLogsView : public PaperView
{
    Q_OBJECT

public:
    /// The scene must outlive the view.
    explicit WellLogsView(WellLogsScene *scene, QWidget *parent = nullptr);

    /// What keeps a depth in its place; whoever shows another depth axis works through it.
    DepthPlace &depthPlace() { return m_place; }

    /// A new marker follows the mouse until a left click places it; Escape or a right click takes it away.
    void startPicking();
    bool isPicking() const { return m_picked != nullptr; }

    /// The menu for what lies under a position of the viewport.
    QMenu *createContextMenu(const QPoint &position);

signals:
    /// The user wants this picked marker to be stored in the well.
    void saveMarkerRequested(MarkerItem *marker);
    void pickingHint(const QString &text);

protected:
    bool viewportEvent(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void scrollContentsBy(int dx, int dy) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    template<class Slot>
    void addItemAction(QMenu *menu, const QString &text, QGraphicsItem *item, const Slot &slot);
    QGraphicsItem *itemUnder(const QPoint &position) const;
    MarkerItem *markerNear(const QPoint &position) const;
    MarkerItem *livePicked();
    void movePicked(const QPoint &position);
    void endPicking();
    void cancelPicking();

    WellLogsScene *m_scene;
    DepthPlace m_place;
    DepthCursor m_cursor;
    ViewDrag m_drag;
    logview::WheelSteps m_wheelSteps;
    QPoint m_mouse; ///< where it was last, in the viewport
    MarkerItem *m_picked = nullptr; ///< in the scene; look at it through livePicked() only
};
