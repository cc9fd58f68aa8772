#include "plugin/lorvaosmgr.h"

#include "datastore/defaultlogs.h"

#include <QApplication>
#include <QScopedValueRollback>
#include <QStyle>
#include <QStyleOptionViewItem>

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

} // namespace

lorvaosMgr::lorvaosMgr(host::Host &host)
    : m_host(host)
    , m_asker(host.mainWidget())
{
    m_actionId =
        m_host.appendAction({QStringLiteral("&LORVA OS 0.0"), QStringLiteral("LORVA_wlc.png"), [this] { launch(); }});
    m_host.addListener(this);
}

lorvaosMgr::~lorvaosMgr()
{
    m_host.removeListener(this);
    m_host.removeAction(m_actionId);
    deleteWindows();
    makeStyleForgetOurItems();
}

void lorvaosMgr::deleteWindows()
{
    delete m_mainWindow;
    delete m_launcher;
    m_data.reset();
}

void lorvaosMgr::launch()
{
    if (m_isLaunching)
        return;
    m_isAbandoned = false;
    {
        const QScopedValueRollback<bool> launching(m_isLaunching, true);
        runLaunch();
    }
    if (m_isAbandoned)
        deleteWindows();
}

void lorvaosMgr::runLaunch()
{
    deleteWindows();
    auto data = std::make_unique<ProjectData>(m_host, m_asker);
    ProjectData &launchData = *data;
    // Kept before any window of it exists, so that it outlives them whatever happens in between.
    m_data = std::move(data);
    m_launcher = new Launcher(launchData, m_host.mainWidget());
    if (m_isAbandoned)
        return;
    m_launcher->show();

    // Each step lets the host handle its events, in which the survey may change or the host close its window.
    const auto mayGoOn = [this] { return m_launcher && !m_isAbandoned; };
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
    m_mainWindow = new MainWindow(launchData, m_host.mainWidget());
    QCoreApplication::processEvents();
    if (!step(50, "Parsing Data according to its contain..."))
        return;
    runDefaultLogsPass(launchData, [mayGoOn] {
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
        return mayGoOn();
    });
    QCoreApplication::processEvents();
    if (!step(100, "Done..."))
        return;
    m_launcher->close();
    QCoreApplication::processEvents();
    if (m_mainWindow && !m_isAbandoned)
        m_mainWindow->showMaximized();
}

void lorvaosMgr::markersChanged(const QString &wellKey)
{
    if (!m_data)
        return;
    const int well = m_data->catalogue.indexOfKey(wellKey);
    if (well < 0)
        return;
    m_data->catalogue.refreshMarkerNames(well);
    if (m_mainWindow)
        m_mainWindow->markersChanged(well);
}

void lorvaosMgr::surveyChanged()
{
    // A launch in progress still stands on its data; it stops at its next step and everything goes then.
    if (m_isLaunching)
        m_isAbandoned = true;
    else
        deleteWindows();
}
