#include "logview/welllogsviewwidget.h"

#include "base/emptyhint.h"
#include "base/labeltext.h"
#include "base/waitcursor.h"
#include "datastore/projectdata.h"
#include "logview/welldisplaywidget.h"
#include "templates/templatestore.h"

#include <QDockWidget>
#include <QLabel>
#include <QSignalBlocker>
#include <QTabWidget>
#include <QTreeWidget>

namespace {

QString tabText(const QString &wellName, const QString &templateName)
{
    return base::labelText(wellName + QLatin1Char(':') + templateName);
}

} // namespace

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
    m_hint = base::fillWithTabs(this, m_tabs, hintText());
    connect(m_tabs, &QTabWidget::tabCloseRequested, this, &WellLogsViewWidget::tabClose);
    connect(m_tabs, &QTabWidget::tabBarClicked, this, &WellLogsViewWidget::setCurrentTab);
    connect(m_tabs, &QTabWidget::currentChanged, this, &WellLogsViewWidget::showCurrentPanel);
}

QString WellLogsViewWidget::hintText() const
{
    if (m_data.catalogue.wellNames().isEmpty())
        return QStringLiteral("This survey has no wells yet. Make some in the window from which this one was opened, "
                              "there with Wells > New wells from LAS files…, then press Sync Data here.");
    return QStringLiteral("Check a well in the project tree: its log display opens here.");
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
    const base::WaitCursor cursor; // a well's logs are read
    const int old = m_wells.indexOf(wellName);
    QPointer<WellDisplayWidget> newDisplay = insertDisplay(old < 0 ? m_wells.size() : old, wellName, disTempName);
    if (old >= 0) {
        newDisplay->openAtDepth(display(old + 1)->depthInView());
        removeTab(old + 1);
    }
    m_tabs->setCurrentWidget(newDisplay);
    showCurrentPanel();
    newDisplay->tellUnread();
}

WellDisplayWidget *WellLogsViewWidget::insertDisplay(int place, const QString &wellName, const QString &templateName)
{
    auto *newDisplay = new WellDisplayWidget(m_data, wellName, templateName, m_dock, this);
    connect(newDisplay, &WellDisplayWidget::markerSaved, this, &WellLogsViewWidget::markerSaved);
    connect(newDisplay, &WellDisplayWidget::markersDropped, this, &WellLogsViewWidget::markersDropped);
    m_wells.insert(place, wellName);
    m_displays.insert(place, {m_data.catalogue.wellKey(m_data.catalogue.indexOf(wellName)), templateName});
    m_tabs->insertTab(place, newDisplay, tabText(wellName, templateName));
    return newDisplay;
}

void WellLogsViewWidget::removeTab(int tabIdx)
{
    QWidget *widget = m_tabs->widget(tabIdx);
    m_wells.removeAt(tabIdx);
    m_displays.removeAt(tabIdx);
    m_tabs->removeTab(tabIdx);
    delete widget;
}

void WellLogsViewWidget::showWell(const QString &wellName)
{
    setCurrentTab(m_wells.indexOf(wellName));
}

void WellLogsViewWidget::synchronise()
{
    const WellsCatalogue &catalogue = m_data.catalogue;
    m_hint->setText(hintText());
    QStringList renamed;
    for (int tab = m_wells.size() - 1; tab >= 0; --tab) {
        const Display shown = m_displays.at(tab);
        const int well = catalogue.indexOfKey(shown.wellKey);
        const QString name = well < 0 ? QString() : catalogue.wellNames().at(well);
        if (well >= 0 && name == m_wells.at(tab))
            continue;
        const bool wasCurrent = m_tabs->currentIndex() == tab;
        // A name stands for the first well that has it: another one cannot be displayed by it.
        if (well >= 0 && catalogue.indexOf(name) == well && !m_wells.contains(name)) {
            insertDisplay(tab + 1, name, shown.templateName)->openAs(*display(tab));
            renamed.append(name);
            if (wasCurrent)
                m_tabs->setCurrentIndex(tab + 1);
        } else if (well >= 0) {
            emit displayClosed(shown.wellKey);
        }
        removeTab(tab);
    }
    QWidget *current = m_tabs->currentWidget();
    for (const QString &name : qAsConst(renamed))
        emit displayRebuilt(name);
    m_tabs->setCurrentWidget(current); // markers bring their display to the front
    showCurrentPanel();
    // A box may come up for a log: tabs may go meanwhile.
    const QPointer<WellLogsViewWidget> self = this;
    for (const QString &name : QStringList(m_wells)) {
        const int tab = self && !renamed.contains(name) ? m_wells.indexOf(name) : -1;
        if (tab >= 0)
            display(tab)->synchronise(QString(m_displays.at(tab).templateName));
    }
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

void WellLogsViewWidget::closeCurrent()
{
    tabClose(m_tabs->currentIndex());
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

// A box may come up for a calibration file: tabs may go meanwhile.
void WellLogsViewWidget::applyTemplate(const TemplateId &now, const TemplateId &was)
{
    const QPointer<WellLogsViewWidget> self = this;
    // A well's own template is not what is displayed where a global one has its name.
    const bool wasShown = was.isGlobal || !m_data.project.globalTemplateNames.contains(was.name);
    for (const QString &wellName : QStringList(m_wells)) {
        const int tab = self ? m_wells.indexOf(wellName) : -1;
        if (tab < 0)
            continue;
        QString &shown = m_displays[tab].templateName;
        if (!now.mayBeShownAs(shown, wellName) && !(wasShown && was.mayBeShownAs(shown, wellName)))
            continue;
        shown = now.name;
        m_tabs->setTabText(tab, tabText(wellName, now.name));
        const QPointer<WellDisplayWidget> rebuilt = display(tab);
        rebuilt->applyTemplate(now.name);
        if (rebuilt)
            rebuilt->tellUnread();
    }
}

void WellLogsViewWidget::refreshMarkers(const QString &wellName)
{
    if (WellDisplayWidget *shown = display(m_wells.indexOf(wellName)))
        shown->refreshMarkers();
}

void WellLogsViewWidget::reloadSideFiles(const QString &wellName)
{
    if (WellDisplayWidget *shown = display(m_wells.indexOf(wellName)))
        shown->reloadSideFiles();
}

void WellLogsViewWidget::reloadDefaultLogs(const QString &wellName)
{
    const int tab = m_wells.indexOf(wellName);
    if (WellDisplayWidget *shown = display(tab))
        shown->reloadDefaultLogs(QString(m_displays.at(tab).templateName));
}

void WellLogsViewWidget::reloadLogs(const QString &wellName)
{
    const int tab = m_wells.indexOf(wellName);
    if (WellDisplayWidget *shown = display(tab))
        shown->reloadLogs(QString(m_displays.at(tab).templateName));
}

void WellLogsViewWidget::beginMarkers(const QString &wellName)
{
    if (WellDisplayWidget *shown = display(m_wells.indexOf(wellName)))
        shown->beginMarkers();
}

void WellLogsViewWidget::endMarkers(const QString &wellName)
{
    if (WellDisplayWidget *shown = display(m_wells.indexOf(wellName)))
        shown->endMarkers();
}

std::optional<PicturePage> WellLogsViewWidget::saveCurrentPicture()
{
    WellDisplayWidget *current = currentDisplay();
    return current ? current->savePicture() : PicturePage();
}

void WellLogsViewWidget::renderCurrent(QPainter &painter)
{
    if (WellDisplayWidget *current = currentDisplay())
        current->renderTo(painter);
}
