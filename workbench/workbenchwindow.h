#pragma once

#include "survey/surveyuse.h"
#include "workbench/filechooser.h"
#include "workbench/pluginloader.h"
#include "workbench/wellactions.h"

#include <QDateTime>
#include <QMainWindow>

#include <functional>

QT_BEGIN_NAMESPACE
class QLabel;
class QMenu;
class QStackedWidget;
QT_END_NAMESPACE

namespace base {
class Asker;
}

namespace survey {
struct WellSummary;
}

namespace workbench {

class HintPage;
class MessagesPanel;
class RecentSurveysMenu;
class SurveyOverview;
class WorkbenchHost;

/// The workbench's main window: opens surveys, shows their wells, and carries the menu in which plug-ins add their
/// actions. Windows of plug-ins are its children.
class WorkbenchWindow : public QMainWindow
{
    Q_OBJECT

public:
    /// All must outlive the window.
    WorkbenchWindow(WorkbenchHost &host, base::Asker &asker, const FileChooser &chooser, QWidget *parent = nullptr);
    ~WorkbenchWindow() override;

    /// The menu for WorkbenchHost::setWindow().
    QMenu *utilitiesMenu() const { return m_utilities; }
    /// The menu that carries what works on wells; plug-ins may append to it.
    QMenu *wellsMenu() const { return m_wells; }
    void setPluginReports(const QVector<PluginReport> &reports);

    /// Offers the demo survey: \a make makes it in \a folder where it is not there yet, and gives why it could not.
    void setDemoSurvey(const QString &folder, const std::function<QString(const QString &)> &make);
    /// \a prepare is called with the folder of each new survey before it is opened: it makes what plug-ins need there.
    void setSurveyPreparation(const std::function<void(const QString &)> &prepare) { m_prepare = prepare; }

    /// Opens the folder; when it is no survey a box says why, and the survey that was open stays.
    bool openSurvey(const QString &path);
    /// Opens the survey given on the command line, or else the last one if it is still there.
    void openAtStart(const QString &given);
    /// Proposes wells from LAS files; where no survey is open a new one is made first. Waits for the user.
    void openLasFiles(const QStringList &paths);
    bool hasSurvey() const;

signals:
    /// The user closed the window, and no window of a plug-in refused.
    void closed();

public slots:
    /// Reads the wells again.
    void refresh();

protected:
    void changeEvent(QEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    QAction *addEntry(QMenu *menu, const char *objectName, const QString &text, void (WorkbenchWindow::*triggered)(),
                      const QString &iconName = {});
    void buildMenus();
    void buildCentre();
    void restoreLook();
    void saveLook() const;
    void showSurveyName();
    void openDemo();
    void showHint();
    void enableActions();
    host::Outcome<QVector<survey::WellSummary>> readWells();
    QDateTime wellsTime() const;
    QWidgetList pluginWindows() const;
    void showListError(const QString &error);
    void showMessagesSoon();
    void showMessages();

    void newSurvey();
    void chooseSurvey();
    void openRecent(const QString &path);
    void manageWells();
    void showWellMenu(const QString &key, const QPoint &place);
    void changeWell(const QString &key, WellAction change);
    void deleteStored(const QString &key);
    void warnOfOthers(const QString &folder);
    void newWellsFromFiles();
    void newWells(const QStringList &paths);
    void importTopsOfFiles();
    void importTops(const QStringList &paths);
    void showAbout();
    void showLoadedPlugins();
    void showManual();

    WorkbenchHost &m_host;
    base::Asker &m_asker;
    FileChooser m_chooser;
    QVector<PluginReport> m_reports;
    std::function<void(const QString &)> m_prepare;
    QString m_demoFolder;
    std::function<QString(const QString &)> m_makeDemo;
    QAction *m_demoAction = nullptr; ///< null as long as none is offered

    RecentSurveysMenu *m_recent = nullptr;
    QMenu *m_wells = nullptr;
    QMenu *m_utilities = nullptr;
    QAction *m_newAction = nullptr;
    QAction *m_openAction = nullptr;
    QAction *m_manageAction = nullptr;
    QAction *m_newWellsAction = nullptr;
    QAction *m_topsAction = nullptr;
    QAction *m_refreshAction = nullptr;

    QStackedWidget *m_pages = nullptr;
    HintPage *m_hint = nullptr;
    SurveyOverview *m_overview = nullptr;
    MessagesPanel *m_messages = nullptr;
    QLabel *m_status = nullptr;

    survey::SurveyUse m_use; ///< of the open survey
    QDateTime m_wellsTime; ///< of the folder of wells when it was read last
    QString m_listError; ///< the one that was told in a box
    QStringList m_readErrors; ///< of the last reading of the wells
    int m_wellCount = 0;
    bool m_isReading = false;
    bool m_areMessagesDue = false;
};

} // namespace workbench
