#include "logview/welllogsviewwidget.h"

#include "logview/welldisplaywidget.h"

#include <QDockWidget>
#include <QSignalBlocker>
#include <QTabWidget>
#include <QTreeWidget>
#include <QVBoxLayout>

WellLogsViewWidget::WellLogsViewWidget(ProjectData &projectData, QDockWidget *propertiesDock,
                                       QTreeWidget *projectTree, QWidget *parent)
    : QWidget(parent)
    , m_data(projectData)
    , m_dock(propertiesDock)
    , m_projectTree(projectTree)
    , m_tabs(new QTabWidget)
{
    setObjectName(QStringLiteral("WellLogsViewWidget"));
    m_tabs->setObjectName(QStringLiteral("wellTabs"));
    m_tabs->setTabsClosable(true);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_tabs);
    connect(m_tabs, &QTabWidget::tabCloseRequested, this, &WellLogsViewWidget::tabClose);
    connect(m_tabs, &QTabWidget::tabBarClicked, this, &WellLogsViewWidget::setCurrentTab);
    connect(m_tabs, &QTabWidget::currentChanged, this, &WellLogsViewWidget::showCurrentPanel);
}

WellDisplayWidget *WellLogsViewWidget::display(int tabIdx) const
{
    return qobject_cast<WellDisplayWidget *>(m_tabs->widget(tabIdx));
}

WellDisplayWidget *WellLogsViewWidget::currentDisplay() const
{
    return display(m_tabs->currentIndex());
}

void WellLogsViewWidget::addWellDisWidget(QString wellName, QString disTempName)
{
    auto *newDisplay = new WellDisplayWidget(m_data, wellName, disTempName, m_dock);
    connect(newDisplay, &WellDisplayWidget::markerSaved, this, &WellLogsViewWidget::markerSaved);
    connect(newDisplay, &WellDisplayWidget::markersDropped, this, &WellLogsViewWidget::markersDropped);
    const int old = m_wells.indexOf(wellName);
    const int place = old < 0 ? m_wells.size() : old;
    m_wells.insert(place, wellName);
    m_tabs->insertTab(place, newDisplay, wellName + QLatin1Char(':') + disTempName);
    if (old >= 0)
        removeTab(place + 1);
    m_tabs->setCurrentIndex(place);
    showCurrentPanel();
}

void WellLogsViewWidget::removeTab(int tabIdx)
{
    QWidget *widget = m_tabs->widget(tabIdx);
    m_wells.removeAt(tabIdx);
    m_tabs->removeTab(tabIdx);
    delete widget;
}

void WellLogsViewWidget::removeWellDisWidget(QString wellName)
{
    const int tab = m_wells.indexOf(wellName);
    if (tab >= 0)
        removeTab(tab);
}

void WellLogsViewWidget::tabClose(int tabIdx)
{
    if (tabIdx < 0 || tabIdx >= m_wells.size())
        return;
    uncheckWell(m_wells.at(tabIdx));
    removeTab(tabIdx);
}

void WellLogsViewWidget::uncheckWell(const QString &wellName)
{
    const QTreeWidgetItem *wells = m_projectTree ? m_projectTree->topLevelItem(0) : nullptr;
    if (!wells)
        return;
    const QSignalBlocker blocker(m_projectTree);
    for (int i = 0; i < wells->childCount(); ++i) {
        QTreeWidgetItem *well = wells->child(i);
        if (well->text(0) == wellName && well->checkState(0) == Qt::Checked) {
            well->setCheckState(0, Qt::Unchecked);
            return;
        }
    }
}

void WellLogsViewWidget::setCurrentTab(int tabIdx)
{
    if (!display(tabIdx))
        return;
    m_tabs->setCurrentIndex(tabIdx);
    showCurrentPanel();
}

void WellLogsViewWidget::showCurrentPanel()
{
    if (WellDisplayWidget *current = currentDisplay())
        current->showCurrentPanel();
}

void WellLogsViewWidget::addMarkerInScene(QString wellName, QString markerName)
{
    const int tab = m_wells.indexOf(wellName);
    if (tab < 0)
        return;
    m_tabs->setCurrentIndex(tab);
    display(tab)->addMarker(wellName, markerName);
}

void WellLogsViewWidget::removeMarkerFromScene(QString wellName, QString markerName)
{
    const int tab = m_wells.indexOf(wellName);
    if (tab < 0)
        return;
    m_tabs->setCurrentIndex(tab);
    display(tab)->removeMarker(wellName, markerName);
}

void WellLogsViewWidget::removeGoneMarkers()
{
    for (int tab = 0; tab < m_wells.size(); ++tab)
        display(tab)->removeGoneMarkers();
}

void WellLogsViewWidget::saveCurrentPicture()
{
    if (WellDisplayWidget *current = currentDisplay())
        current->savePicture();
}

void WellLogsViewWidget::renderCurrent(QPainter &painter)
{
    if (WellDisplayWidget *current = currentDisplay())
        current->renderTo(painter);
}
