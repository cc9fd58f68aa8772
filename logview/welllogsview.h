#pragma once

#include "logview/paperview.h"

QT_BEGIN_NAMESPACE
class QMenu;
QT_END_NAMESPACE

class MarkerItem;
class WellLogsScene;

/// The view of a log scene: context menu, and picking of markers with the mouse.
class WellLogsView : public PaperView
{
    Q_OBJECT

public:
    /// The scene must outlive the view.
    explicit WellLogsView(WellLogsScene *scene, QWidget *parent = nullptr);

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
    void contextMenuEvent(QContextMenuEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    template<class Slot>
    void addItemAction(QMenu *menu, const QString &text, QGraphicsItem *item, const Slot &slot);
    QGraphicsItem *itemUnder(const QPoint &position) const;
    MarkerItem *livePicked();
    void movePicked(const QPoint &position);
    void endPicking();
    void cancelPicking();

    WellLogsScene *m_scene;
    MarkerItem *m_picked = nullptr; ///< in the scene; look at it through livePicked() only
};
