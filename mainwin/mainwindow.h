#pragma once

#include "mainwin/sheetsaving.h"

#include <QMainWindow>
#include <QPointer>

#include <memory>

QT_BEGIN_NAMESPACE
class QLabel;
class QPrinter;
class QTabWidget;
QT_END_NAMESPACE

class CorrelationViewTabWidget;
class PrintedPage;
class PrintPreview;
class ProjectTreeWidget;
class WellLogsViewWidget;
class WellsDataManagerWidget;
struct ProjectData;

/// The plug-in's main window: menus, tool bar, the docks "Project Data" and "Properties", and the three work areas as
/// tabs. It owns no data; its slots start the work of others.
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    /// \a projectData must outlive the window.
    explicit MainWindow(ProjectData &projectData, QWidget *parent = nullptr);
    ~MainWindow() override;

    ProjectTreeWidget *projectTree() const { return m_projectTree; }

    /// Closes the window without the question whether to exit.
    void closeWithoutAsking();

    /// Saves the display in front as PDF at its true scale, on the paper and in the file that the user chooses.
    void saveAtTrueScale();
    /// A file dialog unless it is replaced.
    sheetsaving::PathChooser choosePath = sheetsaving::fileDialog();

    /// The markers of a well of the catalogue changed in the host.
    void markersChanged(int well);

public slots:
    void syncODDBActionClicked();
    void importWellLogsActionClicked();
    void exportWellLogsActionClicked();
    void printActionClicked();
    void generateReportActionClicked();
    void generateMarkersReportActionClicked();
    void documentActionClicked();
    void printPreView(QPrinter *printer);

protected:
    void closeEvent(QCloseEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    void createActions();
    void createMenus();
    void createDocks();
    void createTabs();
    void connectCorrelations();
    void connectWellData();
    void showPanelOfPage();
    void closeCurrentTab();
    void tellPlace(const QString &text);
    void logsImported(int well);
    void redrawCorrelationsOf(int well);
    std::unique_ptr<PrintedPage> currentPage() const;
    sheetsaving::Display currentSheet() const;

    ProjectData &m_data;
    QAction *m_syncAction = nullptr;
    QAction *m_importAction = nullptr;
    QAction *m_exportAction = nullptr;
    QAction *m_printAction = nullptr;
    QAction *m_exitAction = nullptr;
    QAction *m_wellsReportAction = nullptr;
    QAction *m_markersReportAction = nullptr;
    QAction *m_documentationAction = nullptr;
    QAction *m_aboutAction = nullptr;
    QDockWidget *m_projectDock = nullptr;
    QDockWidget *m_propertiesDock = nullptr;
    QTabWidget *m_tabs = nullptr;
    ProjectTreeWidget *m_projectTree = nullptr;
    WellLogsViewWidget *m_logsView = nullptr;
    CorrelationViewTabWidget *m_correlations = nullptr;
    WellsDataManagerWidget *m_wellData = nullptr;
    QLabel *m_place = nullptr; ///< in the status bar: where the last report or export lies
    bool m_closesWithoutAsking = false;
    bool m_wasShown = false;
    QPointer<PrintPreview> m_preview; ///< that is shown
};
