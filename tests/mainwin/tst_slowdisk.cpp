// On a disk that takes its time for each call no window looks dead: while many calls follow each other the wait cursor is
// shown, and between the wells of a long work the windows are painted.

#include "base/usersettings.h"
#include "correlation/correlationviewtabwidget.h"
#include "demo/demosurvey.h"
#include "las/wellimportdialog.h"
#include "logview/welllogsviewwidget.h"
#include "mainwin/mainwindow.h"
#include "mainwin/projecttreewidget.h"
#include "plugin/lorvaosmgr.h"
#include "support/alikewells.h"
#include "support/boxdriver.h"
#include "support/countedcalls.h"
#include "support/files.h"
#include "support/testmain.h"
#include "welldata/markerdatawidget.h"
#include "welldata/wellsdatamanagerwidget.h"
#include "workbench/workbenchhost.h"

#include <QAbstractEventDispatcher>
#include <QAction>
#include <QComboBox>
#include <QMainWindow>
#include <QMenuBar>
#include <QPushButton>
#include <QTabWidget>

#include <functional>

namespace {

/// Less than a second on a disk that takes 10 ms for a call. Icons and settings of a new window are among them.
constexpr long mostUnsaid = 70;
constexpr int wellCount = 30; ///< the demo's, and copies of one of them

/// Calls that follow each other in silence: without the wait cursor, and without an event in between.
struct Waiting
{
    long unsaid = 0;
    long longestUnsaid = 0;
    long unpainted = 0; ///< also under the wait cursor
    long longestUnpainted = 0;
    long all = 0;
} waiting;

void callIsMade()
{
    ++waiting.all;
    const QCursor *cursor = QGuiApplication::overrideCursor();
    waiting.unsaid = cursor && cursor->shape() == Qt::WaitCursor ? 0 : waiting.unsaid + 1;
    waiting.longestUnsaid = qMax(waiting.longestUnsaid, waiting.unsaid);
    waiting.longestUnpainted = qMax(waiting.longestUnpainted, ++waiting.unpainted);
}

void eventsAreHandled()
{
    waiting.unsaid = 0;
    waiting.unpainted = 0;
}

} // namespace

class TestSlowDisk : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        base::keepSettingsIn(m_folder.filePath("settings"));
        m_survey = m_folder.filePath("Demo");
        QCOMPARE(demo::makeDemoSurvey(m_survey), QString());
        testing_support::addAlikeWells(m_survey, "Aldra-1", "Alike_", wellCount);
        connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::awake, this, eventsAreHandled);
    }

    void init()
    {
        m_window = std::make_unique<QMainWindow>();
        m_host = std::make_unique<workbench::WorkbenchHost>(QStringLiteral(LORVA_SOURCE_DIR "/icons"));
        QMenu *menu = m_window->menuBar()->addMenu("&Utilities");
        m_window->show();
        m_host->setWindow(m_window.get(), menu);
        m_host->setSurvey(m_survey);
        m_manager = std::make_unique<lorvaosMgr>(*m_host);
        m_launch = menu->actions().constLast();
    }

    void cleanup()
    {
        m_manager.reset();
        m_host.reset();
        m_window.reset();
    }

    // A test that counts nothing would always pass.
    void silenceIsFound()
    {
        const Waiting silent = waitingIn([this] {
            for (int i = 0; i < 100; ++i)
                files::read(m_survey + "/.survey");
        });
        QVERIFY(silent.longestUnsaid > 2 * mostUnsaid);
        const Waiting told = waitingIn([this] {
            QGuiApplication::setOverrideCursor(Qt::WaitCursor);
            for (int i = 0; i < 100; ++i)
                files::read(m_survey + "/.survey");
            QGuiApplication::restoreOverrideCursor();
        });
        QCOMPARE(told.longestUnsaid, 0L);
        QVERIFY(told.longestUnpainted > 2 * mostUnsaid);
    }

    void theLaunch()
    {
        const Waiting first = waitingIn([this] { m_launch->trigger(); });
        expectSaid(first, 20 * wellCount);
        const Waiting again = waitingIn([this] { m_launch->trigger(); });
        expectSaid(again, 20 * wellCount);
    }

    void theWindow_data()
    {
        QTest::addColumn<QString>("what");
        QTest::addColumn<int>("atLeast");
        QTest::newRow("sync") << "syncAction" << 20 * wellCount;
        QTest::newRow("logs report") << "wellsReportAction" << 60 * wellCount;
        QTest::newRow("markers report") << "markersReportAction" << 10 * wellCount;
        QTest::newRow("import") << "importAction" << 1;
        QTest::newRow("export") << "exportAction" << 1;
    }

    void theWindow()
    {
        QFETCH(QString, what);
        QFETCH(int, atLeast);
        m_launch->trigger();
        auto *action = mainWindow()->findChild<QAction *>(what);
        QVERIFY(action);
        expectSaid(waitingIn([action] { action->trigger(); }), atLeast);
    }

    // The windows are painted between the wells.
    void reportsPaintBetweenWells()
    {
        m_launch->trigger();
        const Waiting wait =
            waitingIn([this] { mainWindow()->findChild<QAction *>("wellsReportAction")->trigger(); });
        QVERIFY2(wait.longestUnpainted < wait.all / (wellCount / 3), qPrintable(text(wait)));
    }

    void displays()
    {
        m_launch->trigger();
        auto *logs = mainWindow()->findChild<WellLogsViewWidget *>();
        expectSaid(waitingIn([logs] { logs->addWellDisWidget("Aldra-1", "Default"); }), 5);
        auto *correlations = mainWindow()->findChild<CorrelationViewTabWidget *>();
        QTreeWidgetItem *item = mainWindow()->projectTree()->correlationsItem()->child(0);
        QVERIFY(item);
        expectSaid(waitingIn([=] { correlations->addCorrelation(item); }), 5);
    }

    void wellData()
    {
        m_launch->trigger();
        auto *manager = mainWindow()->findChild<WellsDataManagerWidget *>();
        auto *editors = manager->findChild<QTabWidget *>("editorTabs");
        for (int i = 0; i < editors->count(); ++i)
            expectSaid(waitingIn([&] {
                           editors->setCurrentIndex(i);
                           manager->findChild<QComboBox *>("wellBox")->setCurrentText(
                               QStringLiteral("Aldra-%1").arg(i + 1));
                       }),
                       0);
        manager->findChild<QComboBox *>("wellBox")->setCurrentText("Aldra-1");
        editors->setCurrentWidget(manager->markers());
        manager->markers()->addRow();
        expectSaid(waitingIn([&] { manager->markers()->updateBtnClicked(); }), 10);
    }

private:
    MainWindow *mainWindow() const { return m_window->findChild<MainWindow *>(); }
    static QString text(const Waiting &wait)
    {
        return QStringLiteral("%1 calls, %2 in silence, %3 unpainted")
            .arg(wait.all)
            .arg(wait.longestUnsaid)
            .arg(wait.longestUnpainted);
    }
    static Waiting waitingIn(const std::function<void()> &work)
    {
        QCoreApplication::processEvents();
        waiting = {};
        counted_calls::setOnCall(callIsMade);
        work();
        counted_calls::setOnCall(nullptr);
        return waiting;
    }
    static void expectSaid(const Waiting &wait, long atLeast)
    {
        qInfo("%s", qUtf8Printable(text(wait)));
        QVERIFY2(wait.all >= atLeast, qPrintable(text(wait)));
        QVERIFY2(wait.longestUnsaid <= mostUnsaid, qPrintable(text(wait)));
    }

    QTemporaryDir m_folder;
    QString m_survey;
    BoxDriver m_boxes;
    std::unique_ptr<QMainWindow> m_window;
    std::unique_ptr<workbench::WorkbenchHost> m_host;
    std::unique_ptr<lorvaosMgr> m_manager;
    QAction *m_launch = nullptr;
};

LORVA_TEST_MAIN(TestSlowDisk)
#include "tst_slowdisk.moc"
