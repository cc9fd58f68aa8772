#include "workbench/workbenchwindow.h"

#include "base/asker.h"
#include "base/keptlooks.h"
#include "base/waitcursor.h"
#include "survey/surveyfolder.h"
#include "survey/surveyplace.h"
#include "workbench/commandline.h"
#include "workbench/droppedfiles.h"
#include "workbench/hintpage.h"
#include "workbench/loadedpluginsdialog.h"
#include "workbench/manualdialog.h"
#include "workbench/messagespanel.h"
#include "workbench/newsurveydialog.h"
#include "workbench/recentsurveysmenu.h"
#include "workbench/surveyoverview.h"
#include "workbench/topsdialog.h"
#include "workbench/windowsettings.h"
#include "workbench/workbenchhost.h"

#include <QCloseEvent>
#include <QDir>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileInfo>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QPointer>
#include <QScopedValueRollback>
#include <QStackedWidget>
#include <QStatusBar>
#include <QVBoxLayout>

namespace workbench {

namespace {

const QLatin1String surveysFolder("surveys");
const QLatin1String windowLook("window");
const QLatin1String splitterLook("overview");
const QLatin1String messagesLook("messages");

QString productName()
{
    return QStringLiteral("LORVA Workbench");
}

QString wellCountText(int count)
{
    return count == 1 ? QStringLiteral("1 well") : QStringLiteral("%1 wells").arg(count);
}

} // namespace

WorkbenchWindow::WorkbenchWindow(WorkbenchHost &host, base::Asker &asker, const FileChooser &chooser, QWidget *parent)
    : QMainWindow(parent)
    , m_host(host)
    , m_asker(asker)
    , m_chooser(chooser)
{
    setObjectName(QStringLiteral("workbenchWindow"));
    setAcceptDrops(true);
    buildMenus();
    buildCentre();
    resize(1280, 720);
    restoreLook();
    m_host.store().setProblemFound([this] { showMessagesSoon(); });
    refresh();
}

WorkbenchWindow::~WorkbenchWindow()
{
    m_host.store().setProblemFound({});
    // Before anything of this window goes: their destructors may still look at it.
    while (!pluginWindows().isEmpty())
        delete pluginWindows().first();
}

QAction *WorkbenchWindow::addEntry(QMenu *menu, const char *objectName, const QString &text,
                                   void (WorkbenchWindow::*triggered)(), const QString &iconName)
{
    QAction *action = menu->addAction(iconName.isEmpty() ? QIcon() : m_host.icon(iconName), text);
    action->setObjectName(QString::fromLatin1(objectName));
    connect(action, &QAction::triggered, this, triggered);
    return action;
}

void WorkbenchWindow::buildMenus()
{
    QMenu *survey = menuBar()->addMenu(QStringLiteral("&Survey"));
    survey->setObjectName(QStringLiteral("surveyMenu"));
    m_newAction = addEntry(survey, "newSurveyAction", QStringLiteral("&New…"), &WorkbenchWindow::newSurvey);
    m_newAction->setIconText(QStringLiteral("New survey…"));
    m_newAction->setShortcut(QKeySequence(Qt::CTRL + Qt::Key_N));
    m_openAction = addEntry(survey, "openSurveyAction", QStringLiteral("&Open…"), &WorkbenchWindow::chooseSurvey);
    m_openAction->setIconText(QStringLiteral("Open survey…"));
    m_openAction->setShortcut(QKeySequence(Qt::CTRL + Qt::Key_O));
    m_recent = new RecentSurveysMenu(QStringLiteral("Open &Recent"), survey);
    connect(m_recent, &RecentSurveysMenu::chosen, this, &WorkbenchWindow::openRecent);
    survey->addMenu(m_recent);
    survey->addSeparator();
    QAction *quit = survey->addAction(m_host.icon(QStringLiteral("exit_wlc.png")), QStringLiteral("&Quit"));
    quit->setObjectName(QStringLiteral("quitAction"));
    quit->setShortcut(QKeySequence(Qt::CTRL + Qt::Key_Q));
    connect(quit, &QAction::triggered, this, &WorkbenchWindow::close);

    m_wells = menuBar()->addMenu(QStringLiteral("&Wells"));
    m_wells->setObjectName(QStringLiteral("wellsMenu"));
    m_manageAction = addEntry(m_wells, "manageWellsAction", QStringLiteral("&Manage wells…"),
                              &WorkbenchWindow::manageWells, QStringLiteral("multisimplewell.png"));
    m_newWellsAction = addEntry(m_wells, "newWellsAction", QStringLiteral("&New wells from LAS files…"),
                                &WorkbenchWindow::newWellsFromFiles, QStringLiteral("import_wlc.png"));
    m_topsAction = addEntry(m_wells, "importTopsAction", QStringLiteral("&Import tops…"),
                            &WorkbenchWindow::importTopsOfFiles, QStringLiteral("marker.png"));
    m_wells->addSeparator();
    m_refreshAction = addEntry(m_wells, "refreshAction", QStringLiteral("&Refresh"), &WorkbenchWindow::refresh,
                               QStringLiteral("syncdb_wlc.png"));
    m_refreshAction->setShortcut(QKeySequence(Qt::Key_F5));

    m_utilities = menuBar()->addMenu(QStringLiteral("&Utilities"));
    m_utilities->setObjectName(QStringLiteral("utilitiesMenu"));

    QMenu *help = menuBar()->addMenu(QStringLiteral("&Help"));
    help->setObjectName(QStringLiteral("helpMenu"));
    QAction *manual = addEntry(help, "manualAction", QStringLiteral("&Manual"), &WorkbenchWindow::showManual);
    manual->setShortcut(QKeySequence(Qt::Key_F1));
    addEntry(help, "aboutAction", QStringLiteral("&About"), &WorkbenchWindow::showAbout,
             QStringLiteral("about_wlc.png"));
    addEntry(help, "loadedPluginsAction", QStringLiteral("&Loaded plug-ins"), &WorkbenchWindow::showLoadedPlugins);
}

void WorkbenchWindow::buildCentre()
{
    auto *centre = new QWidget(this);
    m_pages = new QStackedWidget(centre);
    m_pages->setObjectName(QStringLiteral("pages"));
    m_hint = new HintPage(m_pages);
    m_overview = new SurveyOverview(m_pages);
    m_pages->addWidget(m_hint);
    m_pages->addWidget(m_overview);
    connect(m_overview, &SurveyOverview::wellActivated, this, &WorkbenchWindow::manageWells);
    connect(m_overview, &SurveyOverview::wellMenuRequested, this, &WorkbenchWindow::showWellMenu);
    connect(m_overview, &SurveyOverview::wellRenameRequested, this,
            [this](const QString &key) { changeWell(key, renameWell); });
    connect(m_overview, &SurveyOverview::wellDeletionRequested, this, &WorkbenchWindow::deleteStored);
    m_messages = new MessagesPanel(centre);
    auto *column = new QVBoxLayout(centre);
    column->setContentsMargins(6, 6, 6, 0);
    column->addWidget(m_pages, 1);
    column->addWidget(m_messages);
    setCentralWidget(centre);

    m_status = new QLabel(this);
    m_status->setObjectName(QStringLiteral("statusLabel"));
    m_status->setTextFormat(Qt::PlainText);
    m_status->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred); // a long path must not widen the window
    statusBar()->addWidget(m_status, 1);
}

void WorkbenchWindow::setPluginReports(const QVector<PluginReport> &reports)
{
    m_reports = reports;
    if (m_utilities->isEmpty())
        m_utilities->addAction(QStringLiteral("No plug-in has an action here"))->setEnabled(false);
}

bool WorkbenchWindow::hasSurvey() const
{
    return !m_host.surveyDirectory().isEmpty();
}

bool WorkbenchWindow::openSurvey(const QString &path)
{
    const QString folder = QDir::cleanPath(QFileInfo(path).absoluteFilePath());
    const QString problem = survey::surveyFolderProblem(folder);
    if (!problem.isEmpty()) {
        m_asker.warn(QStringLiteral("Open survey"), problem);
        return false;
    }
    settings::addRecentSurvey(folder);
    settings::setLastSurvey(folder);
    settings::setLastFolder(surveysFolder, QFileInfo(folder).path());
    m_recent->fill();
    m_listError.clear();
    m_overview->beginSurvey();
    m_host.setSurvey(folder);
    refresh();
    warnOfOthers(folder);
    return true;
}

void WorkbenchWindow::warnOfOthers(const QString &folder)
{
    const QStringList others = m_use.open(folder);
    if (!others.isEmpty())
        m_asker.warn(QStringLiteral("Open survey"),
                     QStringLiteral("The survey is open elsewhere too: %1.\nBoth may change it; what the other one "
                                    "writes shows here after Refresh (F5).")
                         .arg(others.join(QStringLiteral(", "))));
}

void WorkbenchWindow::openAtStart(const QString &given)
{
    const QString last = settings::lastSurvey();
    if (!given.isEmpty())
        openSurvey(given);
    else if (!last.isEmpty() && survey::isSurveyFolder(last))
        openSurvey(last);
}

void WorkbenchWindow::openLasFiles(const QStringList &paths)
{
    if (!hasSurvey()) {
        m_asker.inform(QStringLiteral("New wells"),
                       QStringLiteral("The wells of these files need a survey to stand in. Make one first."));
        newSurvey();
    }
    if (hasSurvey())
        newWells(paths);
}

void WorkbenchWindow::openRecent(const QString &path)
{
    if (QFileInfo::exists(path)) {
        openSurvey(path);
        return;
    }
    settings::removeRecentSurvey(path);
    m_recent->fill();
    m_asker.warn(QStringLiteral("Open survey"),
                 QStringLiteral("The folder %1 does not exist any more. It is taken off the list of recent surveys.")
                     .arg(path));
}

void WorkbenchWindow::refresh()
{
    if (m_isReading)
        return;
    const QScopedValueRollback<bool> reading(m_isReading, true);
    const host::Outcome<QVector<survey::WellSummary>> wells = readWells();
    showSurveyName();
    enableActions();
    if (wells.ok())
        showHint();
    showListError(wells.error);
}

// Shows them, and what could not be read, as well.
host::Outcome<QVector<survey::WellSummary>> WorkbenchWindow::readWells()
{
    const base::WaitCursor waiting;
    m_readErrors.clear();
    survey::DepthUnit depthUnit = survey::DepthUnit::Metre;
    host::Outcome<QVector<survey::WellSummary>> wells;
    if (hasSurvey()) {
        m_wellsTime = wellsTime();
        const host::Outcome<survey::SurveyInfo> info = survey::readSurveyInfo(m_host.surveyDirectory());
        depthUnit = info.value.depthUnit;
        wells = survey::readWellSummaries(m_host.store(), depthUnit);
        for (const QString &error : {info.error, wells.error})
            if (!error.isEmpty())
                m_readErrors.append(error);
        for (const survey::WellSummary &well : wells.value)
            if (!well.error.isEmpty())
                m_readErrors.append(well.error);
    }
    m_wellCount = wells.value.size();
    m_overview->setWells(wells.value, depthUnit);
    showMessages();
    return wells;
}

// A plug-in that reads thousands of damaged logs in one go rebuilds the list once.
void WorkbenchWindow::showMessagesSoon()
{
    if (m_isReading || m_areMessagesDue)
        return;
    m_areMessagesDue = true;
    QMetaObject::invokeMethod(this, &WorkbenchWindow::showMessages, Qt::QueuedConnection);
}

void WorkbenchWindow::showMessages()
{
    m_areMessagesDue = false;
    m_messages->setMessages(m_readErrors + m_host.store().problems());
}

void WorkbenchWindow::showSurveyName()
{
    const QString folder = m_host.surveyDirectory();
    setWindowTitle(hasSurvey() ? survey::readSurveyInfo(folder).value.name + QStringLiteral(" - ") + productName()
                               : productName());
    const QString note = survey::isReadOnly(folder) ? QStringLiteral(" (read-only)") : QString();
    m_status->setText(hasSurvey() ? QStringLiteral("%1  -  %2%3").arg(wellCountText(m_wellCount), folder, note)
                                  : QStringLiteral("No survey is open"));
}

void WorkbenchWindow::enableActions()
{
    for (QAction *action :
         {m_manageAction, m_newWellsAction, m_topsAction, m_refreshAction, m_utilities->menuAction()})
        action->setEnabled(hasSurvey());
}

// Every write to a well puts a file in place in this folder and so changes its time.
QDateTime WorkbenchWindow::wellsTime() const
{
    return QFileInfo(m_host.surveyDirectory() + QStringLiteral("/WellInfo")).lastModified();
}

void WorkbenchWindow::changeEvent(QEvent *event)
{
    QMainWindow::changeEvent(event);
    // A plug-in or another program may have written wells while its window was in front.
    if (event->type() == QEvent::ActivationChange && isActiveWindow() && hasSurvey() && wellsTime() != m_wellsTime)
        refresh();
}

QWidgetList WorkbenchWindow::pluginWindows() const
{
    QWidgetList windows;
    for (QWidget *child : findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly))
        if (child->windowType() == Qt::Window || child->windowType() == Qt::Dialog || child->windowType() == Qt::Tool)
            windows.append(child);
    return windows;
}

void WorkbenchWindow::closeEvent(QCloseEvent *event)
{
    // Closed one by one, so that each may ask about its unsaved work and refuse.
    QVector<QPointer<QWidget>> windows;
    for (QWidget *window : pluginWindows())
        windows.append(window);
    for (const QPointer<QWidget> &window : windows) {
        if (window && window->isVisible() && !window->close()) {
            event->ignore();
            return;
        }
    }
    saveLook();
    event->accept();
    m_host.announceClosing();
    emit closed();
}

void WorkbenchWindow::restoreLook()
{
    restoreGeometry(settings::widgetState(windowLook));
    if (!isMaximized() && !isFullScreen())
        resize(size().boundedTo(base::roomOnScreen(*this))); // it may have been another screen
    m_overview->restoreState(settings::widgetState(splitterLook));
    m_messages->setUnfolded(settings::widgetState(messagesLook) != "folded");
}

void WorkbenchWindow::saveLook() const
{
    settings::setWidgetState(windowLook, saveGeometry());
    settings::setWidgetState(splitterLook, m_overview->saveState());
    settings::setWidgetState(messagesLook, m_messages->isUnfolded() ? "unfolded" : "folded");
}

void WorkbenchWindow::newSurvey()
{
    NewSurveyDialog dialog(m_asker, m_chooser, settings::lastFolder(surveysFolder), this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    if (m_prepare)
        m_prepare(dialog.createdSurvey());
    openSurvey(dialog.createdSurvey());
}

void WorkbenchWindow::chooseSurvey()
{
    const QString root = settings::lastFolder(surveysFolder);
    survey::removeUnfinishedSurveys(root);
    const QString folder = m_chooser.chooseFolder(this, QStringLiteral("Open survey folder"), root);
    if (!folder.isEmpty())
        openSurvey(folder);
}

// Whether it is a survey, LAS files or tables of tops shows at the drop.
void WorkbenchWindow::dragEnterEvent(QDragEnterEvent *event)
{
    if (event->mimeData()->hasUrls())
        event->acceptProposedAction();
}

void WorkbenchWindow::dropEvent(QDropEvent *event)
{
    const QStringList paths = localPaths(event->mimeData());
    event->acceptProposedAction();
    // Queued: the program from which they come waits until the drop has been answered.
    QMetaObject::invokeMethod(
        this,
        [this, paths] {
            if (paths.size() == 1 && survey::isSurveyFolder(paths.first()))
                openSurvey(paths.first());
            else if (!hasSurvey())
                m_asker.inform(QStringLiteral("New wells"),
                               QStringLiteral("Open a survey or make a new one first; then drop the files again."));
            else if (areTables(paths))
                importTops(paths);
            else if (!paths.isEmpty())
                newWells(paths);
        },
        Qt::QueuedConnection);
}

void WorkbenchWindow::showAbout()
{
    m_asker.inform(QStringLiteral("About %1").arg(productName()),
                   QStringLiteral("%1\n%2\n\nOpens survey folders, manages their wells and runs plug-ins on them.\n\n"
                                  "Free software under the GNU General Public License, version 3 or later.")
                       .arg(productName(), versionText()));
}

void WorkbenchWindow::showLoadedPlugins()
{
    LoadedPluginsDialog(m_reports, this).exec();
}

void WorkbenchWindow::showManual()
{
    ManualDialog::showBeside(this, m_host.documentationFolder());
}

} // namespace workbench
