#include "workbench/workbenchhost.h"

#include "survey/surveyfolder.h"
#include "workbench/hostaccess.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QMessageBox>

namespace workbench {

WorkbenchHost::WorkbenchHost(const QString &dataFolder)
    : m_dataFolder(dataFolder)
{
    m_store.setMarkersChanged(
        [this](const QString &key) { tell([&key](host::Listener &listener) { listener.markersChanged(key); }); });
    lorvaSetWorkbenchHost(this);
    followWindows();
}

WorkbenchHost::~WorkbenchHost()
{
    lorvaSetWorkbenchHost(nullptr);
}

QString WorkbenchHost::installedDataFolder()
{
    const QDir programs(QCoreApplication::applicationDirPath());
    return QDir::cleanPath(programs.absoluteFilePath(QStringLiteral("../share/lorva")));
}

void WorkbenchHost::setWindow(QWidget *window, QMenu *menu, QMenu *wellsMenu)
{
    m_window = window;
    m_menu = menu;
    m_wellsMenu = wellsMenu;
}

void WorkbenchHost::setSurvey(const QString &directory)
{
    if (!directory.isEmpty())
        survey::removeSurveyLeftovers(directory);
    m_store.setSurveyDirectory(directory);
    tell([](host::Listener &listener) { listener.surveyChanged(); });
}

void WorkbenchHost::announceClosing()
{
    tell([](host::Listener &listener) { listener.hostClosing(); });
}

// A listener may take itself or another one out while it is told.
template<class Call>
void WorkbenchHost::tell(const Call &call) const
{
    const QVector<host::Listener *> listeners = m_listeners;
    for (host::Listener *listener : listeners)
        if (m_listeners.contains(listener))
            call(*listener);
}

// Dialogs and boxes stand for the window that they belong to: they are gone when it matters.
void WorkbenchHost::followWindows()
{
    QObject::connect(qApp, &QApplication::focusChanged, &m_whileAlive, [this](QWidget *, QWidget *now) {
        QWidget *window = now ? now->window() : nullptr;
        while (window && window->windowType() != Qt::Window && window->parentWidget())
            window = window->parentWidget()->window();
        if (window)
            m_lastWindow = window;
    });
}

QWidget *WorkbenchHost::windowInUse() const
{
    if (QWidget *modal = QApplication::activeModalWidget())
        return modal;
    if (QWidget *active = QApplication::activeWindow())
        return active;
    return m_lastWindow && m_lastWindow->isVisible() ? m_lastWindow : m_window;
}

QString WorkbenchHost::surveyDirectory() const
{
    return m_store.surveyDirectory();
}

QString WorkbenchHost::surveyName() const
{
    return QFileInfo(m_store.surveyDirectory()).fileName();
}

QString WorkbenchHost::documentationFolder() const
{
    return m_dataFolder + QStringLiteral("/doc");
}

QIcon WorkbenchHost::icon(const QString &fileName) const
{
    QString name = fileName;
    if (name.endsWith(QLatin1String(".png")))
        name.chop(4);
    const QString base = m_dataFolder + QStringLiteral("/icons.Default/") + name;
    // The same each time: Qt remembers a name for every icon that was ever drawn.
    QIcon &icon = m_icons[base];
    if (!icon.isNull())
        return icon;
    // The small drawing is made for 16 pixels; scaling the large one down would blur it.
    for (const QString &file : {base + QStringLiteral(".png"), base + QStringLiteral(".small.png")})
        if (QFileInfo::exists(file))
            icon.addFile(file);
    return icon;
}

void WorkbenchHost::showError(const QString &text)
{
    // Over the window in use, which is a plug-in's as well: over another one, the box would bring that to the front. On the
    // heap: the window may go while the box is shown, and takes it along.
    const QPointer<QMessageBox> box = new QMessageBox(QMessageBox::Critical, QStringLiteral("LORVA Workbench"), text,
                                                      QMessageBox::Ok, windowInUse());
    box->setTextFormat(Qt::PlainText);
    box->exec();
    delete box;
}

int WorkbenchHost::appendAction(const host::MenuAction &action)
{
    return append(m_menu, action);
}

int WorkbenchHost::appendWellsAction(const host::MenuAction &action)
{
    return append(m_wellsMenu, action);
}

int WorkbenchHost::append(QMenu *menu, const host::MenuAction &action)
{
    if (!menu)
        return 0;
    QAction *entry = menu->addAction(icon(action.iconName), action.text);
    QObject::connect(entry, &QAction::triggered, entry, [triggered = action.triggered] { triggered(); });
    m_actions.insert(++m_lastActionId, entry);
    return m_lastActionId;
}

void WorkbenchHost::removeAction(int id)
{
    delete m_actions.take(id).data();
}

void WorkbenchHost::addListener(host::Listener *listener)
{
    if (!m_listeners.contains(listener))
        m_listeners.append(listener);
}

void WorkbenchHost::removeListener(host::Listener *listener)
{
    m_listeners.removeAll(listener);
}

} // namespace workbench
