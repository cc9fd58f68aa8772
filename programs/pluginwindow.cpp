#include "programs/pluginwindow.h"

#include <QAbstractScrollArea>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QDockWidget>
#include <QGraphicsView>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QMouseEvent>
#include <QScrollBar>
#include <QTabWidget>
#include <QTreeWidget>

namespace programs {

namespace {

constexpr int wellDataPage = 2;

QTreeWidgetItem *findBelow(QTreeWidgetItem *parent, const QString &text)
{
    for (int i = 0; i < parent->childCount(); ++i) {
        QTreeWidgetItem *child = parent->child(i);
        if (child->text(0) == text)
            return child;
        if (QTreeWidgetItem *found = findBelow(child, text))
            return found;
    }
    return nullptr;
}

// The user waits meanwhile: what is worked with stays.
void letWindowsPaint()
{
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

bool scrollTo(const QAbstractScrollArea *view, double place)
{
    letWindowsPaint();
    if (!view)
        return false;
    QScrollBar *bar = view->verticalScrollBar();
    bar->setValue(static_cast<int>(bar->maximum() * place));
    return true;
}

QWidget *showTrack(int track)
{
    QWidget *editor = QApplication::activeModalWidget();
    if (auto *tabs = editor ? editor->findChild<QTabWidget *>(QStringLiteral("trackTabs")) : nullptr)
        tabs->setCurrentIndex(track);
    letWindowsPaint();
    return editor;
}

} // namespace

// A menu without an entry of a plug-in holds a disabled line that says so.
QAction *pluginAction(const QMenu *utilities)
{
    QAction *last = utilities->isEmpty() ? nullptr : utilities->actions().last();
    return last && last->isEnabled() ? last : nullptr;
}

QWidget *childWindow(const QWidget *parent, const char *className)
{
    for (QWidget *widget : parent->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly))
        if (widget->inherits(className))
            return widget;
    return nullptr;
}

QMainWindow *PluginWindow::below(const QWidget *parent)
{
    return qobject_cast<QMainWindow *>(childWindow(parent, "MainWindow"));
}

PluginWindow::PluginWindow(QMainWindow *window)
    : m_window(window)
    , m_tree(window->findChild<QTreeWidget *>(QStringLiteral("ProjectTreeWidget")))
{
}

QTreeWidgetItem *PluginWindow::firstWell() const
{
    const QTreeWidgetItem *wells = m_tree ? m_tree->topLevelItem(0) : nullptr;
    return wells ? wells->child(0) : nullptr;
}

QTreeWidgetItem *PluginWindow::belowFirstWell(const QString &text) const
{
    QTreeWidgetItem *well = firstWell();
    return well ? findBelow(well, text) : nullptr;
}

void PluginWindow::expandFirstWell() const
{
    QTreeWidgetItem *well = firstWell();
    if (!well)
        return;
    well->setExpanded(true);
    for (int i = 0; i < well->childCount(); ++i)
        well->child(i)->setExpanded(true);
}

void PluginWindow::showPage(int page) const
{
    if (auto *pages = m_window->findChild<QTabWidget *>(QStringLiteral("centralTabs")))
        pages->setCurrentIndex(page);
    letWindowsPaint();
}

QWidget *PluginWindow::page() const
{
    const auto *pages = m_window->findChild<QTabWidget *>(QStringLiteral("centralTabs"));
    return pages ? pages->currentWidget() : nullptr;
}

void PluginWindow::check(QTreeWidgetItem *item) const
{
    item->setCheckState(0, Qt::Unchecked);
    item->setCheckState(0, Qt::Checked);
    emit m_tree->itemClicked(item, 0);
}

bool PluginWindow::displayFirstWell(const QString &templateName, double place) const
{
    QTreeWidgetItem *item = belowFirstWell(templateName);
    QTreeWidgetItem *markers = belowFirstWell(QStringLiteral("Markers"));
    if (!item || !markers)
        return false;
    for (QTreeWidgetItem *checked : {firstWell(), item, markers})
        check(checked);
    return scrollTo(m_window->findChild<QAbstractScrollArea *>(QStringLiteral("logView")), place);
}

bool PluginWindow::openFirstCorrelation() const
{
    const QTreeWidgetItem *correlations = m_tree ? m_tree->topLevelItem(1) : nullptr;
    QTreeWidgetItem *item = correlations ? correlations->child(0) : nullptr;
    if (!item)
        return false;
    m_tree->setCurrentItem(item);
    emit m_tree->itemDoubleClicked(item, 0);
    letWindowsPaint();
    return true;
}

bool PluginWindow::showOfCorrelation(double y, double x) const
{
    auto *view = m_window->findChild<QGraphicsView *>(QStringLiteral("correlationView"));
    letWindowsPaint();
    if (view)
        view->centerOn(x, y);
    return view;
}

// A part of the scene would be one of the deepest well.
bool PluginWindow::showOfFirstCorrelated(double place) const
{
    const auto *view = m_window->findChild<QGraphicsView *>(QStringLiteral("correlationView"));
    const QGraphicsItem *item = view ? view->scene()->itemAt(1, 1, {}) : nullptr;
    return item && showOfCorrelation(place * item->topLevelItem()->boundingRect().height());
}

bool PluginWindow::chooseForCorrelation(const char *box, const QString &text) const
{
    const auto *dock = m_window->findChild<QDockWidget *>(QStringLiteral("propertiesDock"));
    if (!dock || !dock->widget()) // other panels have boxes of the same name
        return false;
    auto *chooser = dock->widget()->findChild<QComboBox *>(QString::fromLatin1(box));
    if (chooser)
        chooser->setCurrentText(text);
    letWindowsPaint();
    return chooser;
}

void PluginWindow::clickFirstHeader() const
{
    const auto *headers = m_window->findChild<QGraphicsView *>(QStringLiteral("headerView"));
    if (!headers)
        return;
    const QPoint place = headers->mapFromScene(QPointF(20, 50));
    QMouseEvent press(QEvent::MouseButtonPress, place, headers->viewport()->mapToGlobal(place), Qt::LeftButton,
                      Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(headers->viewport(), &press);
}

QWidget *PluginWindow::editTemplate(const QString &templateName, int track) const
{
    m_tree->setCurrentItem(belowFirstWell(templateName));
    QMetaObject::invokeMethod(m_tree, "editGlobalTemplate");
    return showTrack(track);
}

QWidget *PluginWindow::defineTemplate(const QString &newName) const
{
    m_tree->setCurrentItem(belowFirstWell(QStringLiteral("Template")));
    QMetaObject::invokeMethod(m_tree, "createNewTemplate");
    QWidget *editor = QApplication::activeModalWidget();
    if (!editor)
        return nullptr;
    QMetaObject::invokeMethod(editor, "populateFromDefaultBtnClicked");
    if (auto *name = editor->findChild<QLineEdit *>(QStringLiteral("nameEdit")))
        name->setText(newName);
    return showTrack(0);
}

QWidget *PluginWindow::showWellData(int tab) const
{
    auto *manager = m_window->findChild<QWidget *>(QStringLiteral("WellsDataManagerWidget"));
    auto *tabs = manager ? manager->findChild<QTabWidget *>(QStringLiteral("editorTabs")) : nullptr;
    auto *wells = manager ? manager->findChild<QComboBox *>(QStringLiteral("wellBox")) : nullptr;
    if (!tabs || !wells || wells->count() < 2)
        return nullptr;
    showPage(wellDataPage);
    wells->setCurrentIndex(1);
    tabs->setCurrentIndex(tab);
    letWindowsPaint();
    return tabs->currentWidget();
}

QDialog *PluginWindow::openDialog(const char *action, const char *dialog) const
{
    auto *entry = m_window->findChild<QAction *>(QString::fromLatin1(action));
    if (entry)
        entry->trigger();
    letWindowsPaint();
    return m_window->findChild<QDialog *>(QString::fromLatin1(dialog));
}

} // namespace programs
