#pragma once

#include "logview/itempanels.h"

#include <QObject>
#include <QPointer>

QT_BEGIN_NAMESPACE
class QGraphicsScene;
QT_END_NAMESPACE

/// What is selected in a scene of tracks, and the property panel that goes with it.
class DisplaySelection : public QObject
{
    Q_OBJECT

public:
    /// \a ownPanel is shown when nothing is selected; it must outlive the object.
    DisplaySelection(QGraphicsScene *scene, QWidget *ownPanel, QObject *parent);

    /// Selects this item alone, as a click on it would.
    void selectOnly(QGraphicsItem *item);
    /// Shows the panels of what is selected; the display's own when nothing is.
    void showPanelOfSelection();
    void showOwnPanel();
    /// Before an item goes: the display's own panel takes the place of its panel, or of that of a child.
    void leavePanelOf(QGraphicsItem *item);

    /// The panel that was announced last, as long as it exists.
    QWidget *shownPanel() const { return m_shownPanel; }
    ItemPanels &panels() { return m_panels; }
    /// Number of the last clicked track; negative when none was.
    int currentTrackIndex() const { return m_currentTrackIndex; }
    void forgetCurrentTrack() { m_currentTrackIndex = -1; }

signals:
    void panelChanged(QWidget *panel);

private:
    void showPanel(QWidget *panel);

    QGraphicsScene *m_scene;
    QWidget *m_ownPanel;
    QPointer<QWidget> m_shownPanel;
    ItemPanels m_panels;
    int m_currentTrackIndex = -1;
};
