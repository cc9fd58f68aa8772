#include "correlation/correlationviewtabwidget.h"

#include "base/asker.h"
#include "base/emptyhint.h"
#include "base/labeltext.h"
#include "base/waitcursor.h"
#include "correlation/correlationdisplaywidget.h"
#include "correlation/correlationpropertiesdialog.h"
#include "correlation/correlationview.h"
#include "datastore/projectdata.h"
#include "logview/infront.h"
#include "templates/templatestore.h"

#include <QDockWidget>
#include <QTabWidget>
#include <QTreeWidgetItem>

#include <algorithm>

namespace {

constexpr int correlationPage = 1;

} // namespace

CorrelationViewTabWidget::CorrelationViewTabWidget(ProjectData &projectData, QDockWidget *propertiesDock,
                                                   QTabWidget *pages, QWidget *parent)
    : QWidget(parent)
    , m_data(projectData)
    , m_dock(propertiesDock)
    , m_pages(pages)
    , m_tabs(new QTabWidget)
{
    setObjectName(QStringLiteral("CorrelationViewTabWidget"));
    setWindowTitle(QStringLiteral("Correlation View"));
    m_tabs->setObjectName(QStringLiteral("correlationTabs"));
    m_tabs->setTabsClosable(true);
    m_tabs->setMovable(false);
    base::fillWithTabs(this, m_tabs,
                       QStringLiteral("Double-click a correlation in the project tree to open it here. \"Add "
                                      "Correlation\" in the context menu of \"Correlations\" makes a new one."));
    connect(m_tabs, &QTabWidget::tabCloseRequested, this, &CorrelationViewTabWidget::closeCorrTab);
    connect(m_tabs, &QTabWidget::currentChanged, this, &CorrelationViewTabWidget::tabChanged);
}

CorrelationDisplayWidget *CorrelationViewTabWidget::display(int tab) const
{
    return qobject_cast<CorrelationDisplayWidget *>(m_tabs->widget(tab));
}

CorrelationDisplayWidget *CorrelationViewTabWidget::currentDisplay() const
{
    return display(m_tabs->currentIndex());
}

void CorrelationViewTabWidget::closeCurrent()
{
    closeCorrTab(m_tabs->currentIndex());
}

void CorrelationViewTabWidget::addCorrelation(QTreeWidgetItem *item)
{
    if (!item)
        return;
    if (m_pages)
        m_pages->setCurrentIndex(correlationPage);
    const QString name = item->text(0);
    const int open = m_names.indexOf(name);
    if (open >= 0) {
        m_tabs->setCurrentIndex(open);
        return;
    }
    const base::WaitCursor cursor; // the logs of its wells are read
    auto *display = new CorrelationDisplayWidget(m_data, name, m_dock);
    connect(display, &CorrelationDisplayWidget::renamed, this,
            [this, display](const QString &newName) { correlationNameChanged(m_tabs->indexOf(display), newName); });
    m_names.append(name); // before the tab: the signal of a first tab finds it
    m_tabs->setCurrentIndex(m_tabs->addTab(display, base::labelText(name)));
}

void CorrelationViewTabWidget::closeCorrTab(int tab)
{
    const QPointer<CorrelationDisplayWidget> closing = display(tab);
    if (!closing)
        return;
    const QPointer<CorrelationViewTabWidget> self = this;
    if (closing->dialog()->isChanged()
        && m_data.asker.confirm(windowTitle(),
                                QStringLiteral("Correlation Properties has been changed.\nWould you like to saved it "
                                               "before close it ?"))
        && self && closing && !closing->dialog()->save())
        return;
    if (self && closing)
        removeTab(m_tabs->indexOf(closing));
}

void CorrelationViewTabWidget::removeTab(int tab)
{
    const QWidget *display = m_tabs->widget(tab);
    if (!display)
        return;
    m_names.removeAt(tab);
    m_tabs->removeTab(tab);
    delete display;
}

void CorrelationViewTabWidget::tabChanged(int tab)
{
    CorrelationDisplayWidget *shown = display(tab);
    if (shown && logview::isInFront(*this))
        shown->showPanel();
}

void CorrelationViewTabWidget::showCurrentPanel()
{
    tabChanged(m_tabs->currentIndex());
}

void CorrelationViewTabWidget::correlationNameChanged(int tab, const QString &name)
{
    if (tab < 0 || tab >= m_names.size())
        return;
    const QString oldName = m_names.at(tab);
    m_names[tab] = name;
    m_tabs->setTabText(tab, base::labelText(name));
    emit correlationRenamed(oldName, name);
}

void CorrelationViewTabWidget::keepOnly(const QStringList &existing)
{
    for (int tab = m_names.size(); tab-- > 0;)
        if (!existing.contains(m_names.at(tab)) && display(tab)->dialog()->isStored())
            removeTab(tab);
}

void CorrelationViewTabWidget::forget(const QString &name)
{
    removeTab(m_names.indexOf(name));
}

void CorrelationViewTabWidget::wellChanged(const QString &wellName)
{
    for (int tab = 0; tab < m_names.size(); ++tab) {
        if (wellName.isEmpty())
            display(tab)->synchronise();
        CorrelationView *view = display(tab)->view();
        const QVector<CorrelationWell> &wells = view->properties().wells;
        const bool isShown = std::any_of(wells.begin(), wells.end(), [&wellName](const CorrelationWell &well) {
            return well.wellName == wellName;
        });
        if (wellName.isEmpty() || isShown)
            view->reload(wellName);
        display(tab)->dialog()->followWell(wellName);
    }
}

void CorrelationViewTabWidget::applyTemplate(const TemplateId &now, const TemplateId &was)
{
    for (int tab = 0; tab < m_names.size(); ++tab) {
        display(tab)->dialog()->templatesChanged();
        CorrelationView *view = display(tab)->view();
        const QVector<CorrelationWell> &wells = view->properties().wells;
        const bool isUsed = std::any_of(wells.begin(), wells.end(), [&](const CorrelationWell &well) {
            return now.mayBeShownAs(well.templateName, well.wellName)
                || was.mayBeShownAs(well.templateName, well.wellName);
        });
        if (isUsed)
            view->reloadTemplates();
    }
}

std::optional<PicturePage> CorrelationViewTabWidget::saveCurrentPicture()
{
    CorrelationDisplayWidget *shown = currentDisplay();
    return shown ? shown->savePicture() : PicturePage();
}

void CorrelationViewTabWidget::renderCurrent(QPainter &painter)
{
    if (CorrelationDisplayWidget *shown = currentDisplay())
        shown->renderTo(painter);
}
