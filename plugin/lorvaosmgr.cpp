#include "plugin/lorvaosmgr.h"

#include "base/nestedevents.h"
#include "base/waitcursor.h"
#include "datastore/defaultlogs.h"

#include <QApplication>
#include <QClipboard>
#include <QMimeData>
#include <QScopedValueRollback>
#include <QStyle>
#include <QStyleOptionViewItem>

#include <utility>

namespace {

// Styles remember the list or tree item that they laid out last, text and all. It may be one of ours, and a text of
// ours lies in the memory of this library, which is unloaded next: the style gets an empty item to remember instead.
void makeStyleForgetOurItems()
{
    if (!qobject_cast<QApplication *>(QCoreApplication::instance()))
        return;
    const QStyleOptionViewItem nothing;
    QApplication::style()->subElementRect(QStyle::SE_ItemViewItemText, &nothing);
}

// The same of what was copied from our windows: the clipboard gets copies. What another program put there is left alone.
void makeClipboardForgetOurTexts()
{
    if (!qobject_cast<QApplication *>(QCoreApplication::instance()))
        return;
    for (const QClipboard::Mode mode : {QClipboard::Clipboard, QClipboard::Selection}) {
        const QMimeData *data = QApplication::clipboard()->mimeData(mode);
        if (!data || data->metaObject() != &QMimeData::staticMetaObject)
            continue;
        auto *copy = new QMimeData;
        for (const QString &format : data->formats()) {
            const QByteArray bytes = data->data(format);
            copy->setData(QString(format.constData(), format.size()), QByteArray(bytes.constData(), bytes.size()));
        }
        QApplication::clipboard()->setMimeData(copy, mode);
    }
}

} // namespace

lorvaosMgr::lorvaosMgr(host::Host &host)
    : m_host(host)
    , m_asker(host.mainWidget())
{
    m_actionId =
        m_host.appendAction({QStringLiteral("&LORVA OS 0.0"), QStringLiteral("LORVA_wlc.png"), [this] { launch(); }});
    m_paperActionId = m_host.appendWellsAction(
        {QStringLiteral("Save as &PDF at true scale…"), QString(), [this] { saveAtTrueScale(); }});
    m_host.addListener(this);
}

lorvaosMgr::~lorvaosMgr()
{
    m_host.removeListener(this);
    m_host.removeAction(m_paperActionId);
    m_host.removeAction(m_actionId);
    deleteWindows();
    makeStyleForgetOurItems();
    makeClipboardForgetOurTexts();
}

void lorvaosMgr::deleteWindows()
{
    delete m_mainWindow;
    delete m_launcher;
    m_launch.reset();
}

void lorvaosMgr::deleteEndedLaunch()
{
    if (m_launch && !isRunning())
        deleteWindows();
}

// The data of the launch and its windows belong together: both go when nothing works with them any more.
void lorvaosMgr::endLaunch()
{
    if (!isRunning())
        return;
    m_launch->host.end();
    base::NestedEvents::whenDone(&m_context, [this] { deleteEndedLaunch(); });
}

void lorvaosMgr::launch()
{
    if (m_isLaunching)
        return;
    if (base::NestedEvents::areHandled()) {
        if (!std::exchange(m_isLaunchDue, true))
            base::NestedEvents::whenDone(&m_context, [this] {
                m_isLaunchDue = false;
                launch();
            });
        return;
    }
    {
        const QScopedValueRollback<bool> launching(m_isLaunching, true);
        const base::NestedEvents events;
        runLaunch();
    }
    deleteEndedLaunch();
}

// Many wells take a while to read, with nothing of this launch on the screen yet: the cursor tells it, and the host is
// painted once more without the menu. What of the menu stood over a window of its own, as a 3D view is, stays till later.
void lorvaosMgr::makeLauncher(ProjectData &launchData)
{
    const base::WaitCursor cursor;
    if (QWidget *hostWindow = m_host.mainWidget())
        hostWindow->repaint();
    m_launcher = new Launcher(launchData, m_host.mainWidget());
}

void lorvaosMgr::runLaunch()
{
    deleteWindows();
    // Kept before any window of it exists, so that it outlives them whatever happens in between.
    m_launch = std::make_unique<Launch>(m_host, m_asker);
    ProjectData &launchData = m_launch->data;
    QObject::disconnect(m_hostWindowWatch);
    if (const QWidget *hostWindow = m_host.mainWidget())
        m_hostWindowWatch =
            QObject::connect(hostWindow, &QObject::destroyed, &m_context, [this] { hostWindowGoes(); });
    makeLauncher(launchData);
    if (!isRunning())
        return;
    m_launcher->show();

    // Each step lets the host handle its events, in which the survey may change or the host close its window.
    const auto mayGoOn = [this] { return m_launcher && isRunning(); };
    const auto step = [this, mayGoOn](int percent, const char *status) {
        if (!mayGoOn())
            return false;
        m_launcher->setProgress(percent);
        m_launcher->setStatus(QString::fromLatin1(status));
        QCoreApplication::processEvents();
        return mayGoOn();
    };
    if (!step(10, "Loading Main Ui Dialog..."))
        return;
    {
        const base::WaitCursor cursor;
        m_mainWindow = new MainWindow(launchData, m_host.mainWidget());
    }
    QCoreApplication::processEvents();
    if (!step(50, "Parsing Data according to its contain..."))
        return;
    {
        const base::WaitCursor cursor; // it paints, and takes no clicks
        runDefaultLogsPass(launchData, [mayGoOn] {
            QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
            return mayGoOn();
        });
    }
    QCoreApplication::processEvents();
    if (!step(100, "Done..."))
        return;
    m_launcher->close();
    QCoreApplication::processEvents();
    if (m_mainWindow && isRunning())
        m_mainWindow->showMaximized();
}

// The action stands in the host's window, from which a display cannot be seen to be open.
void lorvaosMgr::saveAtTrueScale()
{
    if (m_isLaunching || base::NestedEvents::areHandled())
        return;
    if (m_mainWindow && m_mainWindow->isVisible() && isRunning())
        m_mainWindow->saveAtTrueScale();
    else
        m_asker.inform(QString::fromLatin1(sheetsaving::title),
                       QStringLiteral("Open LORVA OS first, and display a well or a correlation there."));
}

void lorvaosMgr::markersChanged(const QString &wellKey)
{
    if (!isRunning())
        return;
    WellsCatalogue &catalogue = m_launch->data.catalogue;
    const int well = catalogue.indexOfKey(wellKey);
    if (well < 0)
        return;
    catalogue.refreshMarkerNames(well);
    if (m_mainWindow)
        m_mainWindow->markersChanged(well);
}

void lorvaosMgr::surveyChanged()
{
    endLaunch();
}

void lorvaosMgr::hostClosing()
{
    if (m_mainWindow)
        m_mainWindow->closeWithoutAsking();
    endLaunch();
}

// The host's window takes its children along at once: what is still worked with must not be among them.
void lorvaosMgr::hostWindowGoes()
{
    if (base::NestedEvents::areHandled()) {
        for (QWidget *window : {static_cast<QWidget *>(m_mainWindow), static_cast<QWidget *>(m_launcher)}) {
            if (window) {
                window->hide();
                window->setParent(nullptr);
            }
        }
    }
    endLaunch();
}
