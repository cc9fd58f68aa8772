#include "mainwin/mainwindow.h"

#include "base/asker.h"
#include "datastore/projectdata.h"
#include "mainwin/projecttreewidget.h"
#include "mainwin/reportwriter.h"
#include "templates/templatestore.h"

#include <QAction>
#include <QCloseEvent>
#include <QDesktopServices>
#include <QDockWidget>
#include <QFileInfo>
#include <QMenuBar>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QStatusBar>
#include <QTabWidget>
#include <QToolBar>
#include <QUrl>

namespace {

constexpr int projectDockWidth = 250;

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
    statusBar();
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
    m_exportAction = make("exportAction", "Export Well logs", "export_wlc.png",
                          "User can export well logs in ASCII Text format.");
    m_printAction = make("printAction", "Print", nullptr, "User can print only Log Section.");
    m_exitAction = make("exitAction", "Exit", "exit_wlc.png", "Exit");
    m_wellsReportAction = make("wellsReportAction", "Wells Info Report", nullptr,
                               "User can export the Wells logs information in ASCII text file.");
    m_markersReportAction = make("markersReportAction", "Markers Report", nullptr,
                                 "User can export the Wells Markers information in ASCII text file.");
    m_documentationAction
        = make("documentationAction", "Documentation", "help_wlc.png", "User Manual Documentation.");
    m_aboutAction = make("aboutAction", "About", "about_wlc.png", "About Plugin Information.");

    connect(m_syncAction, &QAction::triggered, this, &MainWindow::syncODDBActionClicked);
    connect(m_importAction, &QAction::triggered, this, &MainWindow::importWellLogsActionClicked);
    connect(m_exportAction, &QAction::triggered, this, &MainWindow::exportWellLogsActionClicked);
    connect(m_printAction, &QAction::triggered, this, &MainWindow::printActionClicked);
    connect(m_exitAction, &QAction::triggered, this, &MainWindow::close);
    connect(m_wellsReportAction, &QAction::triggered, this, &MainWindow::generateReportActionClicked);
    connect(m_markersReportAction, &QAction::triggered, this, &MainWindow::generateMarkersReportActionClicked);
    connect(m_documentationAction, &QAction::triggered, this, &MainWindow::documentActionClicked);

    // Their dialogs do not exist yet.
    m_importAction->setEnabled(false);
    m_exportAction->setEnabled(false);
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
    addDockWidget(Qt::LeftDockWidgetArea, m_propertiesDock);
}

void MainWindow::createTabs()
{
    m_tabs = new QTabWidget(this);
    m_tabs->setObjectName(QStringLiteral("centralTabs"));
    m_tabs->setMovable(false);
    m_tabs->setTabsClosable(false);
    for (const char *title : {"Well Logs View", "Correlation View", "Well Data Manager"})
        m_tabs->addTab(new QWidget, QString::fromLatin1(title));
    setCentralWidget(m_tabs);
}

void MainWindow::createMenus()
{
    QMenu *file = menuBar()->addMenu(QStringLiteral("&File"));
    file->addAction(m_syncAction);
    file->addSeparator();
    file->addActions({m_importAction, m_exportAction});
    file->addSeparator();
    file->addActions({m_printAction, m_exitAction});
    QMenu *utilities = menuBar()->addMenu(QStringLiteral("&Utilities"));
    utilities->addActions({m_wellsReportAction, m_markersReportAction});
    QMenu *view = menuBar()->addMenu(QStringLiteral("&View"));
    view->addActions({m_projectDock->toggleViewAction(), m_propertiesDock->toggleViewAction()});
    QMenu *help = menuBar()->addMenu(QStringLiteral("&Help"));
    help->addActions({m_documentationAction, m_aboutAction});

    QToolBar *toolBar = addToolBar(QStringLiteral("Toolbar"));
    toolBar->setObjectName(QStringLiteral("toolBar"));
    toolBar->addAction(m_syncAction);
    toolBar->addSeparator();
}

void MainWindow::markersChanged(int well)
{
    m_projectTree->synchroniseMarkers(well);
}

void MainWindow::syncODDBActionClicked()
{
    m_data.catalogue.build();
    m_data.project.globalTemplateNames = globalTemplateNames(m_data.project);
    m_projectTree->synchronise();
    m_data.asker.inform(QStringLiteral("Sync Data"), QStringLiteral("synchronization done !"));
}

void MainWindow::importWellLogsActionClicked() { }

void MainWindow::exportWellLogsActionClicked() { }

void MainWindow::printActionClicked()
{
    QPrinter printer(QPrinter::ScreenResolution);
    QPrintPreviewDialog preview(&printer, this, Qt::Window);
    connect(&preview, &QPrintPreviewDialog::paintRequested, this, &MainWindow::printPreView);
    preview.exec();
}

// The views hand their pages over once they exist; until then, as for the well data manager, the page stays empty.
void MainWindow::printPreView(QPrinter *) { }

void MainWindow::generateReportActionClicked()
{
    writeLogsReport(m_data);
}

void MainWindow::generateMarkersReportActionClicked()
{
    writeMarkersReport(m_data);
}

void MainWindow::documentActionClicked()
{
    const QString path = m_data.host.documentationFolder() + QStringLiteral("/LORVA_doc.pdf");
    if (QFileInfo::exists(path))
        QDesktopServices::openUrl(QUrl(QStringLiteral("file:///") + path));
}

void MainWindow::closeEvent(QCloseEvent *event)
{
    const base::Box question {base::BoxIcon::Warning,
                              QStringLiteral("Exit"),
                              QStringLiteral("Do you really want to exit ?"),
                              {base::BoxButton::Yes, base::BoxButton::No}};
    event->setAccepted(m_data.asker.show(question) == base::BoxButton::Yes);
}
