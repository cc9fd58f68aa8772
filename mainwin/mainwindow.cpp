#include "mainwin/mainwindow.h"

#include "base/asker.h"
#include "base/nestedevents.h"
#include "base/waitcursor.h"
#include "correlation/correlationdisplaywidget.h"
#include "correlation/correlationsheet.h"
#include "correlation/correlationview.h"
#include "correlation/correlationviewtabwidget.h"
#include "datastore/projectdata.h"
#include "las/wellimportdialog.h"
#include "las/welllogexport.h"
#include "logview/paper/displaysheet.h"
#include "logview/paper/truefeet.h"
#include "logview/welldisplaywidget.h"
#include "logview/welllogsscene.h"
#include "logview/welllogsviewwidget.h"
#include "mainwin/printedpage.h"
#include "mainwin/printpreview.h"
#include "mainwin/projecttreewidget.h"
#include "mainwin/reportwriter.h"
#include "mainwin/windowlooks.h"
#include "welldata/defaultdataclass.h"
#include "welldata/definecalibrationpoint.h"
#include "welldata/definewellperforation.h"
#include "welldata/markerdatawidget.h"
#include "welldata/wellsdatamanagerwidget.h"

#include <QAction>
#include <QCloseEvent>
#include <QDesktopServices>
#include <QDockWidget>
#include <QFileInfo>
#include <QGraphicsView>
#include <QLabel>
#include <QMenuBar>
#include <QPaintEngine>
#include <QPainter>
#include <QPointer>
#include <QPrinter>
#include <QShortcut>
#include <QStatusBar>
#include <QTabWidget>
#include <QToolBar>
#include <QUrl>

namespace {

constexpr int projectDockWidth = 250;
constexpr int propertiesDockWidth = 220; // wide enough for a property panel before one is shown

// "file:///" and the path as it stands, also where a character of it means something else in a URL.
QUrl fileUrl(const QString &path)
{
    return QUrl::fromEncoded("file:///" + QUrl::toPercentEncoding(path, "/:@!$&'()*+,;="));
}

// Long commands let the windows repaint at each well; clicks wait. They end when the host went to another survey.
std::function<bool()> repaintedBetweenWells(const host::Host &host)
{
    return [&host, survey = host.surveyDirectory()] {
        base::handleEvents(QEventLoop::ExcludeUserInputEvents);
        return host.surveyDirectory() == survey;
    };
}

} // namespace

MainWindow::MainWindow(ProjectData &projectData, QWidget *parent)
    : QMainWindow(parent)
    , m_data(projectData)
{
    setObjectName(QStringLiteral("MainWindow"));
    setWindowTitle(QStringLiteral("HESKO Log Interpretation Software V0.1"));
    setWindowIcon(m_data.host.icon(QStringLiteral("LORVA_wlc.png")));
    createActions();
    createDocks();
    createTabs();
    createMenus();
    m_place = new QLabel;
    m_place->setObjectName(QStringLiteral("placeLabel"));
    m_place->setTextFormat(Qt::PlainText);
    m_place->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_place->setMinimumWidth(1); // a long path must not widen the window
    statusBar()->addWidget(m_place, 1);
    restoreLooks(*this);
}

MainWindow::~MainWindow()
{
    if (m_wasShown)
        keepLooks(*this);
}

void MainWindow::createActions()
{
    const auto make = [this](const char *name, const char *text, const char *icon, const char *statusTip) {
        auto *action = new QAction(QString::fromLatin1(text), this);
        action->setObjectName(QString::fromLatin1(name));
        if (icon)
            action->setIcon(m_data.host.icon(QString::fromLatin1(icon)));
        action->setStatusTip(QString::fromLatin1(statusTip));
        return action;
    };
    m_syncAction = make("syncAction", "Sync Data", "syncdb_wlc.png", "User can Sync update data from data base");
    m_importAction = make("importAction", "Import Well logs", "import_wlc.png",
                          "User can import well logs from LAS file. Here user can select multiple LAS file.");
    m_exportAction =
        make("exportAction", "Export Well logs", "export_wlc.png", "User can export well logs in ASCII Text format.");
    m_printAction = make("printAction", "Print", nullptr, "User can print only Log Section.");
    m_exitAction = make("exitAction", "Exit", "exit_wlc.png", "Exit");
    m_wellsReportAction = make("wellsReportAction", "Wells Info Report", nullptr,
                               "User can export the Wells logs information in ASCII text file.");
    m_markersReportAction = make("markersReportAction", "Markers Report", nullptr,
                                 "User can export the Wells Markers information in ASCII text file.");
    m_documentationAction =
        make("documentationAction", "Documentation", "help_wlc.png", "User Manual Documentation.");
    m_aboutAction = make("aboutAction", "About", "about_wlc.png", "About Plugin Information.");
    m_syncAction->setShortcut(Qt::Key_F5);
    m_importAction->setShortcut(Qt::CTRL + Qt::Key_I);
    m_exportAction->setShortcut(Qt::CTRL + Qt::Key_E);
    m_printAction->setShortcut(Qt::CTRL + Qt::Key_P);
    connect(new QShortcut(Qt::CTRL + Qt::Key_W, this), &QShortcut::activated, this, &MainWindow::closeCurrentTab);

    connect(m_syncAction, &QAction::triggered, this, &MainWindow::syncODDBActionClicked);
    connect(m_importAction, &QAction::triggered, this, &MainWindow::importWellLogsActionClicked);
    connect(m_exportAction, &QAction::triggered, this, &MainWindow::exportWellLogsActionClicked);
    connect(m_printAction, &QAction::triggered, this, &MainWindow::printActionClicked);
    connect(m_exitAction, &QAction::triggered, this, &MainWindow::close);
    connect(m_wellsReportAction, &QAction::triggered, this, &MainWindow::generateReportActionClicked);
    connect(m_markersReportAction, &QAction::triggered, this, &MainWindow::generateMarkersReportActionClicked);
    connect(m_documentationAction, &QAction::triggered, this, &MainWindow::documentActionClicked);
}

void MainWindow::createDocks()
{
    m_projectTree = new ProjectTreeWidget(m_data);
    m_projectDock = new QDockWidget(QStringLiteral("Project Data"), this);
    m_projectDock->setObjectName(QStringLiteral("projectDataDock"));
    m_projectDock->setWidget(m_projectTree);
    m_projectDock->setMinimumWidth(projectDockWidth);
    addDockWidget(Qt::LeftDockWidgetArea, m_projectDock);
    m_propertiesDock = new QDockWidget(QStringLiteral("Properties"), this);
    m_propertiesDock->setObjectName(QStringLiteral("propertiesDock"));
    addDockWidget(Qt::RightDockWidgetArea, m_propertiesDock);
    m_propertiesDock->setMinimumWidth(propertiesDockWidth);
}

void MainWindow::createTabs()
{
    m_tabs = new QTabWidget(this);
    m_tabs->setObjectName(QStringLiteral("centralTabs"));
    m_tabs->setMovable(false);
    m_tabs->setTabsClosable(false);
    m_logsView = new WellLogsViewWidget(m_data, m_propertiesDock, m_projectTree);
    m_tabs->addTab(m_logsView, QStringLiteral("Well Logs View"));
    m_correlations = new CorrelationViewTabWidget(m_data, m_propertiesDock, m_tabs);
    m_tabs->addTab(m_correlations, QStringLiteral("Correlation View"));
    m_wellData = new WellsDataManagerWidget(m_data);
    m_tabs->addTab(m_wellData, QStringLiteral("Well Data Manager"));
    setCentralWidget(m_tabs);
    connect(m_tabs, &QTabWidget::currentChanged, this, &MainWindow::showPanelOfPage);

    using Tree = ProjectTreeWidget;
    using View = WellLogsViewWidget;
    const auto bringForward = [this] { m_tabs->setCurrentWidget(m_logsView); };
    connect(m_projectTree, &Tree::sendWellDisplayProperties, m_tabs, bringForward);
    connect(m_projectTree, &Tree::wellClicked, m_tabs, bringForward);
    connect(m_projectTree, &Tree::sendWellDisplayProperties, m_logsView, &View::addWellDisWidget);
    connect(m_projectTree, &Tree::removeWellDisplay, m_logsView, &View::removeWellDisWidget);
    connect(m_projectTree, &Tree::displayMarker, m_logsView, &View::addMarkerInScene);
    connect(m_projectTree, &Tree::removeMarker, m_logsView, &View::removeMarkerFromScene);
    connect(m_projectTree, &Tree::wellClicked, m_logsView, &View::showWell);
    connect(m_projectTree, &Tree::markersBegin, m_logsView, &View::beginMarkers);
    connect(m_projectTree, &Tree::markersEnd, m_logsView, &View::endMarkers);
    connect(m_projectTree, &Tree::templateApplied, m_logsView, &View::applyTemplate);
    connect(m_logsView, &View::markerSaved, m_projectTree, &Tree::checkShownMarker);
    connect(m_logsView, &View::markersDropped, m_projectTree, &Tree::uncheckDroppedMarkers);
    connect(m_logsView, &View::displayRebuilt, m_projectTree, &Tree::sendMarkersOf);
    connect(m_logsView, &View::displayClosed, m_projectTree, &Tree::uncheckWell);
    connectCorrelations();
    connectWellData();
}

// The dock shows a panel of the work area in front; one without a display has none.
void MainWindow::showPanelOfPage()
{
    m_propertiesDock->setWidget(nullptr);
    m_logsView->showCurrentPanel();
    m_correlations->showCurrentPanel();
}

void MainWindow::closeCurrentTab()
{
    if (m_tabs->currentWidget() == m_logsView)
        m_logsView->closeCurrent();
    else if (m_tabs->currentWidget() == m_correlations)
        m_correlations->closeCurrent();
}

void MainWindow::tellPlace(const QString &text)
{
    m_place->setText(text);
}

void MainWindow::connectCorrelations()
{
    using Tree = ProjectTreeWidget;
    using View = CorrelationViewTabWidget;
    connect(m_projectTree, &Tree::sendCorrelation, m_correlations, &View::addCorrelation);
    connect(m_projectTree, &Tree::templateApplied, m_correlations, &View::applyTemplate);
    connect(m_projectTree, &Tree::correlationDeleted, m_correlations, &View::forget);
    connect(m_correlations, &View::correlationRenamed, m_projectTree, &Tree::renameCorrelation);
}

// What an editor stored shows at once wherever the well shows.
void MainWindow::connectWellData()
{
    connect(m_wellData->markers(), &MarkerDataWidget::markersWritten, this, &MainWindow::markersChanged);
    connect(m_wellData->markers(), &MarkerDataWidget::markersAdded, m_projectTree,
            &ProjectTreeWidget::showNewMarkers);
    const auto sideFilesWritten = [this](const QString &wellName) {
        m_logsView->reloadSideFiles(wellName);
        m_correlations->wellChanged(wellName);
    };
    connect(m_wellData->zones(), &DefineWellPerforation::zonesWritten, this, sideFilesWritten);
    connect(m_wellData->points(), &DefineCalibrationPoint::pointsWritten, this, sideFilesWritten);
    connect(m_wellData->defaultData(), &DefaultDataClass::defaultsWritten, this, [this](const QString &wellName) {
        m_logsView->reloadDefaultLogs(wellName);
        m_correlations->wellChanged(wellName);
    });
}

void MainWindow::createMenus()
{
    const auto addMenu = [this](const char *name, const char *title) {
        QMenu *menu = menuBar()->addMenu(QString::fromLatin1(title));
        menu->setObjectName(QString::fromLatin1(name));
        return menu;
    };
    QMenu *file = addMenu("fileMenu", "&File");
    file->addAction(m_syncAction);
    file->addSeparator();
    file->addActions({m_importAction, m_exportAction});
    file->addSeparator();
    file->addActions({m_printAction, m_exitAction});
    QMenu *utilities = addMenu("utilitiesMenu", "&Utilities");
    utilities->addActions({m_wellsReportAction, m_markersReportAction});
    QMenu *view = addMenu("viewMenu", "&View");
    view->addActions({m_projectDock->toggleViewAction(), m_propertiesDock->toggleViewAction()});
    QMenu *help = addMenu("helpMenu", "&Help");
    help->addActions({m_documentationAction, m_aboutAction});

    QToolBar *toolBar = addToolBar(QStringLiteral("Toolbar"));
    toolBar->setObjectName(QStringLiteral("toolBar"));
    toolBar->addAction(m_syncAction);
    toolBar->addSeparator();
}

void MainWindow::markersChanged(int well)
{
    m_projectTree->synchroniseMarkers(well);
    m_logsView->removeGoneMarkers();
    const QString name = m_data.catalogue.wellNames().value(well);
    if (well >= 0 && m_data.catalogue.indexOf(name) == well) // displays know the first well of a name
        m_logsView->refreshMarkers(name);
    redrawCorrelationsOf(well);
    m_wellData->markersChanged(well);
}

void MainWindow::logsImported(int well)
{
    m_projectTree->synchroniseLogs(well);
    const QString name = m_data.catalogue.wellNames().value(well);
    if (m_data.catalogue.indexOf(name) == well) // displays know the first well of a name
        m_logsView->reloadLogs(name);
    redrawCorrelationsOf(well);
    m_wellData->logsChanged(well);
}

void MainWindow::redrawCorrelationsOf(int well)
{
    if (well >= 0 && well < m_data.catalogue.wellCount())
        m_correlations->wellChanged(m_data.catalogue.wellNames().at(well));
}

void MainWindow::syncODDBActionClicked()
{
    const host::Outcome<QVector<host::WellEntry>> wells = m_data.host.wells().list();
    if (!wells.ok()) {
        m_data.asker.warn(QStringLiteral("Sync Data"),
                          QStringLiteral("The wells of the survey cannot be listed; nothing was changed.\n")
                              + wells.error);
        return;
    }
    {
        const base::WaitCursor cursor;
        m_data.catalogue.build();
        m_projectTree->synchronise();
    }
    const QPointer<MainWindow> self = this;
    m_logsView->synchronise(); // a box may come up for a log that cannot be read
    if (!self)
        return;
    m_correlations->keepOnly(m_projectTree->correlationNames());
    m_correlations->wellChanged(QString());
    m_wellData->synchronise(); // may ask whether to save
    if (!self)
        return;
    m_data.asker.inform(QStringLiteral("Sync Data"), QStringLiteral("synchronization done !"));
}

void MainWindow::importWellLogsActionClicked()
{
    auto *dialog = new WellImportDialog(m_data, this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &WellImportDialog::logsImported, this, &MainWindow::logsImported);
    dialog->open();
}

void MainWindow::exportWellLogsActionClicked()
{
    auto *dialog = new WellLogExport(m_data, this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &WellLogExport::exported, this,
            [this](const QString &folder) { tellPlace(QStringLiteral("The exported logs lie in %1").arg(folder)); });
    dialog->open();
}

void MainWindow::printActionClicked()
{
    // On the heap: the window may go while the preview is shown, and takes it along.
    const QPointer<PrintPreview> preview = new PrintPreview(currentPage(), this);
    connect(preview, &PrintPreview::paintRequested, this, &MainWindow::printPreView);
    m_preview = preview;
    preview->run();
    delete preview;
}

// Null where there is nothing to print.
std::unique_ptr<PrintedPage> MainWindow::currentPage() const
{
    if (m_tabs->currentWidget() == m_logsView && m_logsView->currentDisplay())
        return std::make_unique<PrintedPage>(*m_logsView);
    if (m_tabs->currentWidget() == m_correlations && m_correlations->currentDisplay())
        return std::make_unique<PrintedPage>(*m_correlations);
    return nullptr;
}

void MainWindow::saveAtTrueScale()
{
    const QPointer<MainWindow> self = this;
    const QString outcome = sheetsaving::saveSheet(m_data, currentSheet(), this, choosePath);
    if (self && !outcome.isEmpty())
        tellPlace(outcome);
}

sheetsaving::Display MainWindow::currentSheet() const
{
    const WellDisplayWidget *well = m_logsView->currentDisplay();
    if (m_tabs->currentWidget() == m_logsView && well) {
        QGraphicsScene *headers = well->headerView()->scene();
        const logview::TrueFeet feet(*well->scene(), static_cast<logview::DepthUnit>(well->scene()->depthUnit()));
        return {headers, well->scene(), logview::sheetContents(*headers, *well->scene())};
    }
    const CorrelationDisplayWidget *correlation = m_correlations->currentDisplay();
    if (m_tabs->currentWidget() == m_correlations && correlation) {
        correlation->view()->makeAllWells();
        QGraphicsScene *headers = correlation->headerView()->scene();
        const logview::TrueFeet feet(*correlation->view()->scene(), correlation->view()->depthUnit());
        return {headers, correlation->view()->scene(), correlation::sheetContents(*headers, *correlation->view())};
    }
    return {};
}

// The well data manager prints nothing, which the preview shows as an empty page.
void MainWindow::printPreView(QPrinter *printer)
{
    const std::unique_ptr<PrintedPage> single = m_preview ? nullptr : currentPage();
    PrintedPage *page = m_preview ? m_preview->page() : single.get();
    if (!page) {
        if (printer->paintEngine()->type() == QPaintEngine::Picture)
            QPainter(printer).end();
        return;
    }
    const PrintedPage::Outcome outcome = page->paint(*printer);
    if (outcome == PrintedPage::Outcome::Cancelled && m_preview)
        m_preview->close();
    if (outcome != PrintedPage::Outcome::NotStarted)
        return;
    const QString target = printer->outputFileName().isEmpty() ? printer->printerName() : printer->outputFileName();
    m_data.asker.warn(QStringLiteral("Print"),
                      QStringLiteral("The print could not be started; nothing was printed.\n") + target);
}

// The box at a report's end may outlive the window.
void MainWindow::generateReportActionClicked()
{
    const QPointer<MainWindow> self = this;
    if (writeLogsReport(m_data, repaintedBetweenWells(m_data.host)) && self)
        tellPlace(QStringLiteral("The reports lie in %1").arg(m_data.project.projectFolder));
}

void MainWindow::generateMarkersReportActionClicked()
{
    const QPointer<MainWindow> self = this;
    if (writeMarkersReport(m_data, repaintedBetweenWells(m_data.host)) && self)
        tellPlace(QStringLiteral("The report lies in %1").arg(m_data.project.projectFolder));
}

void MainWindow::documentActionClicked()
{
    const QString path = m_data.host.documentationFolder() + QStringLiteral("/LORVA_doc.pdf");
    if (QFileInfo::exists(path))
        QDesktopServices::openUrl(fileUrl(path));
}

void MainWindow::closeWithoutAsking()
{
    m_closesWithoutAsking = true;
    close();
}

void MainWindow::showEvent(QShowEvent *event)
{
    m_wasShown = true;
    QMainWindow::showEvent(event);
}

void MainWindow::closeEvent(QCloseEvent *event)
{
    // A host whose window has gone before this one ends, and asked already.
    const bool isHostGone = parentWidget() && !parentWidget()->isVisible();
    if (m_closesWithoutAsking || isHostGone) {
        event->accept();
        return;
    }
    const base::Box question{base::BoxIcon::Warning,
                             QStringLiteral("Exit"),
                             QStringLiteral("Do you really want to exit ?"),
                             {base::BoxButton::Yes, base::BoxButton::No},
                             {},
                             base::BoxButton::No};
    event->setAccepted(m_data.asker.show(question) == base::BoxButton::Yes);
}
