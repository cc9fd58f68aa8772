#include "logview/displayselection.h"

#include "logview/trackitem.h"

#include <QGraphicsScene>

DisplaySelection::DisplaySelection(QGraphicsScene *scene, QWidget *ownPanel, QObject *parent)
    : QObject(parent)
    , m_scene(scene)
    , m_ownPanel(ownPanel)
{
}

void DisplaySelection::selectOnly(QGraphicsItem *item)
{
    m_scene->clearSelection();
    item->setSelected(true);
    if (const auto *track = qgraphicsitem_cast<TrackItem *>(item))
        m_currentTrackIndex = track->trackNumber();
}

void DisplaySelection::showPanelOfSelection()
{
    bool isShown = false;
    for (QGraphicsItem *item : m_scene->selectedItems()) {
        QWidget *panel = m_panels.panelOf(item);
        isShown = panel != nullptr;
        if (!panel)
            continue;
        if (const auto *track = qgraphicsitem_cast<TrackItem *>(item))
            m_currentTrackIndex = track->trackNumber();
        showPanel(panel);
    }
    if (!isShown)
        showOwnPanel();
}

void DisplaySelection::showOwnPanel()
{
    showPanel(m_ownPanel);
}

void DisplaySelection::leavePanelOf(QGraphicsItem *item)
{
    if (!m_shownPanel)
        return;
    QList<QGraphicsItem *> leaving = item->childItems();
    leaving.append(item);
    for (QGraphicsItem *child : qAsConst(leaving)) {
        if (m_panels.existingPanelOf(child) == m_shownPanel) {
            showOwnPanel();
            return;
        }
    }
}

void DisplaySelection::showPanel(QWidget *panel)
{
    m_shownPanel = panel;
    emit panelChanged(panel);
}
