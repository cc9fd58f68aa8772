#include "datastore/curvegrouptable.h"
#include "datastore/hostwriter.h"
#include "datastore/projectdata.h"
#include "launchrecorder.h"
#include "mainwin/projecttreeitems.h"
#include "mainwin/projecttreewidget.h"
#include "plugin/lorvaosmgr.h"
#include "support/boxdriver.h"
#include "support/files.h"
#include "support/scriptedasker.h"
#include "support/testmain.h"
#include "watchfulhost.h"

#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTemporaryDir>

#include <memory>

namespace {

/// Counts how often a launcher is painted.
class PaintCounter : public QObject
{
public:
    explicit PaintCounter(int *painted)
        : m_painted(painted)
    {
        qApp->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Paint && qobject_cast<Launcher *>(watched))
            ++*m_painted;
        return false;
    }

private:
    int *m_painted;
};

} // namespace

class tst_lorvaosmgr : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        CurveGroupTable::instance().clear();
        m_asker = {};
        m_folder = std::make_unique<QTemporaryDir>();
        QVERIFY(m_folder->isValid());
        m_window = new QWidget;
        m_window->show();
        m_host = std::make_unique<WatchfulHost>();
        m_host->survey = newSurvey("Survey");
        m_host->dataFolder = QStringLiteral(LORVA_SOURCE_DIR "/icons");
        m_host->window = m_window;
        m_wellKey = addWell("Well A");
        m_manager = std::make_unique<lorvaosMgr>(*m_host);
    }

    void cleanup()
    {
        m_manager.reset();
        m_host.reset();
        delete m_window;
    }

    // ---- installing

    void installingAddsTheActionAndNothingElse()
    {
        QCOMPARE(m_host->actions.size(), 1);
        QCOMPARE(m_host->actions.first().text, QString("&LORVA OS 0.0"));
        QCOMPARE(m_host->actions.first().iconName, QString("LORVA_wlc.png"));
        QVERIFY(!m_manager->launcher());
        QVERIFY(!m_manager->mainWindow());
        QVERIFY(files::snapshot(m_host->survey).isEmpty());
        QVERIFY(m_window->children().isEmpty());
        QCOMPARE(m_host->listeners.size(), 1);
    }

    void goingTakesEverythingAlong()
    {
        m_host->trigger();
        const QPointer<MainWindow> mainWindow(m_manager->mainWindow());
        const QPointer<Launcher> launcher(m_manager->launcher());
        QVERIFY(mainWindow && launcher);
        m_manager.reset();
        QVERIFY(!mainWindow);
        QVERIFY(!launcher);
        QVERIFY(m_host->actions.isEmpty());
        QVERIFY(m_host->listeners.isEmpty());
        QVERIFY(m_window->children().isEmpty());
    }

    // ---- one launch

    void aLaunchGoesThroughItsSteps()
    {
        LaunchRecorder recorder([this] { return state(); });
        m_host->trigger();
        const QStringList expected{
            "10 Loading Main Ui Dialog... | launcher shown | no main window | no default logs",
            "10 Loading Main Ui Dialog... | launcher shown | main window hidden | no default logs",
            "50 Parsing Data according to its contain... | launcher shown | main window hidden | no default logs",
            "50 Parsing Data according to its contain... | launcher shown | main window hidden | default logs",
            "100 Done... | launcher shown | main window hidden | default logs",
            "100 Done... | launcher hidden | main window hidden | default logs",
        };
        QCOMPARE(recorder.states, expected);
        QCOMPARE(recorder.progress, (QVector<int>{10, 50, 100}));
        QCOMPARE(recorder.mainWindowShows, 1);
        QVERIFY(m_manager->mainWindow()->isVisible());
        QVERIFY(m_manager->mainWindow()->isMaximized());
        QVERIFY(m_host->errors.isEmpty());
    }

    void bothWindowsBelongToTheHostsWindow()
    {
        m_host->trigger();
        QCOMPARE(m_manager->launcher()->parentWidget(), m_window);
        QCOMPARE(m_manager->mainWindow()->parentWidget(), m_window);
        QVERIFY(m_manager->mainWindow()->isWindow());
        QVERIFY(!m_manager->mainWindow()->isModal());
    }

    void theLauncherIsModeless()
    {
        bool isModal = true;
        LaunchRecorder recorder([this] { return state(); });
        recorder.onState = [&](int number) {
            if (number == 1)
                isModal = m_manager->launcher()->isModal() || QApplication::activeModalWidget();
        };
        m_host->trigger();
        QVERIFY(!isModal);
    }

    void theLauncherStaysHiddenUntilTheNextClick()
    {
        m_host->trigger();
        const QPointer<Launcher> launcher(m_manager->launcher());
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(launcher);
        QVERIFY(!launcher->isVisible());
        m_host->trigger();
        QVERIFY(!launcher);
        QVERIFY(m_manager->launcher());
    }

    void theProjectIsMadeAndSeededBeforeTheMainWindow()
    {
        QStringList order;
        m_host->onList = [&] { order.append(hasProject() ? "wells, project" : "wells, no project"); };
        LaunchRecorder recorder([this] { return state(); });
        recorder.onState = [&](int number) {
            if (number == 1)
                order.append(isSeeded() && !m_manager->mainWindow() ? "seeded, no main window" : "wrong");
        };
        m_host->trigger();
        QCOMPARE(order.first(), QString("wells, no project"));
        QCOMPARE(order.last(), QString("seeded, no main window"));
    }

    void defaultLogsAreBroughtUpToDate()
    {
        m_host->trigger();
        QCOMPARE(files::read(defaultLogsFile()), QByteArray("Well A\nGamma|GR\n"));
    }

    void theLauncherIsRepaintedWhileThePassRuns()
    {
        // Of a log that the table knows already no well is read: each has one of its own.
        for (const char *name : {"Well B", "Well C", "Well D"})
            m_host->find(addWell(name))->logs = {{QString("Log of ") + name, "?", {1, 2}, {3, 4}}};
        int painted = 0;
        QVector<int> paintedAtRead;
        const PaintCounter counter(&painted);
        m_host->onLogs = [&] {
            const Launcher *launcher = m_manager->launcher();
            if (!launcher || launcher->findChild<QProgressBar *>()->value() != 50)
                return;
            paintedAtRead.append(painted);
            m_manager->launcher()->update(); // as when another window was drawn over it
        };
        m_host->find(m_wellKey)->logs = {{"X", "?", {1, 2}, {3, 4}}};
        m_host->trigger();
        QVERIFY(paintedAtRead.size() >= 3);
        for (int i = 1; i < paintedAtRead.size(); ++i)
            QVERIFY(paintedAtRead.at(i) > paintedAtRead.at(i - 1));
    }

    // The launcher is not there yet: the host shows that its menu is done with, and the cursor that something goes on.
    void theHostIsPaintedAndTheCursorWaitsWhenWellsAreRead()
    {
        QVERIFY(QTest::qWaitForWindowExposed(m_window));
        struct Paints : QObject
        {
            bool eventFilter(QObject *, QEvent *event) override
            {
                count += event->type() == QEvent::Paint ? 1 : 0;
                return false;
            }
            int count = 0;
        } paints;
        m_window->installEventFilter(&paints);
        int painted = -1;
        Qt::CursorShape shape = Qt::ArrowCursor;
        m_host->onList = [&] {
            if (painted >= 0)
                return;
            painted = paints.count;
            if (const QCursor *cursor = QGuiApplication::overrideCursor())
                shape = cursor->shape();
        };
        m_host->trigger();
        QVERIFY(painted > 0);
        QCOMPARE(shape, Qt::WaitCursor);
        QVERIFY(!QGuiApplication::overrideCursor());
    }

    void aBrokenWellIsWarnedOfBeforeTheLauncherIsVisible()
    {
        m_host->find(m_wellKey)->isUnreadable = true;
        LaunchRecorder recorder([this] { return state(); });
        BoxDriver driver;
        m_host->trigger();
        QCOMPARE(driver.seen.size(), 1);
        QCOMPARE(driver.seen.first().title, QString("Reading Wells Data"));
        QCOMPARE(driver.seen.first().text,
                 QString("Cannot get data for the well :Well A.\n"
                         "If you used this well in this Plugin then it may be get crashed.\n"
                         "Please first check this well in Opendtect's Well Manager."));
        QCOMPARE(driver.seen.first().icon, QMessageBox::Warning);
        QCOMPARE(driver.seen.first().buttons, QStringList{"OK"});
        // Events were handled while the box stood there: no launcher yet.
        QCOMPARE(recorder.states.first(), QString("no launcher"));
        QVERIFY(recorder.states.at(1).contains("launcher shown"));
        QVERIFY(m_manager->mainWindow()->isVisible());
    }

    void closeCancelsNothing_data()
    {
        QTest::addColumn<int>("when");
        for (int when = 1; when <= 5; ++when)
            QTest::addRow("state %d", when) << when;
    }

    void closeCancelsNothing()
    {
        QFETCH(int, when);
        LaunchRecorder recorder([this] { return state(); });
        recorder.onState = [&](int number) {
            if (number == when)
                QTest::mouseClick(m_manager->launcher()->findChild<QPushButton *>("closeButton"), Qt::LeftButton);
        };
        m_host->trigger();
        QCOMPARE(recorder.progress, (QVector<int>{10, 50, 100}));
        QVERIFY(m_manager->launcher() && !m_manager->launcher()->isVisible());
        QVERIFY(m_manager->mainWindow()->isMaximized());
        QVERIFY(QFileInfo::exists(defaultLogsFile()));
    }

    void theCloseOfTheLauncherDoesNotEndAProgramWithoutOtherWindows()
    {
        m_host->window = nullptr;
        m_window->hide();
        QTimer::singleShot(0, this, [this] {
            m_host->trigger();
            QTimer::singleShot(0, this, [] { QCoreApplication::exit(7); });
        });
        QCOMPARE(QCoreApplication::exec(), 7);
        QVERIFY(m_manager->mainWindow()->isVisible());
    }

    // ---- more than one

    void aSecondClickReplacesTheFirstMainWindow()
    {
        m_host->trigger();
        const QPointer<MainWindow> firstWindow(m_manager->mainWindow());
        const QPointer<Launcher> firstLauncher(m_manager->launcher());
        bool areGone = false;
        m_host->onList = [&] { areGone = areGone || (!firstWindow && !firstLauncher); };
        LaunchRecorder recorder([this] { return state(); });
        m_host->trigger();
        QVERIFY2(areGone, "the first windows go before the second launch reads the wells");
        QVERIFY(recorder.states.first().contains("no main window"));
        QCOMPARE(m_window->findChildren<MainWindow *>().size(), 1);
        QCOMPARE(m_window->findChildren<Launcher *>().size(), 1);
        QVERIFY(m_manager->mainWindow()->isMaximized());
        QCOMPARE(recorder.progress, (QVector<int>{10, 50, 100}));
    }

    void aSecondClickReadsEverythingAnew()
    {
        m_host->trigger();
        addWell("Well B");
        QVERIFY(QFile::remove(m_host->survey + "/WLC/CurveGroups/Sonic.txt"));
        m_host->trigger();
        QVERIFY(QFileInfo::exists(m_host->survey + "/WLC/DefaultLogs/Well B.txt"));
        QCOMPARE(files::read(m_host->survey + "/WLC/CurveGroups/Sonic.txt"), QByteArray("DT"));
    }

    void aMainWindowThatTheUserClosedComesBack()
    {
        m_host->trigger();
        BoxDriver driver;
        driver.answers = QStringList{"Yes"};
        m_manager->mainWindow()->close();
        QVERIFY(!m_manager->mainWindow()->isVisible());
        m_host->trigger();
        QVERIFY(m_manager->mainWindow()->isMaximized());
    }

    void aClickWhileALaunchRunsIsIgnored_data()
    {
        QTest::addColumn<int>("when");
        QTest::newRow("while the wells are read") << 0;
        for (int when = 1; when <= 6; ++when)
            QTest::addRow("state %d", when) << when;
    }

    void aClickWhileALaunchRunsIsIgnored()
    {
        QFETCH(int, when);
        int lists = 0;
        m_host->onList = [&] {
            ++lists;
            if (when == 0)
                m_host->trigger();
        };
        LaunchRecorder recorder([this] { return state(); });
        recorder.onState = [&](int number) {
            if (number == when)
                m_host->trigger();
        };
        m_host->trigger();
        QCOMPARE(recorder.progress, (QVector<int>{10, 50, 100}));
        QCOMPARE(recorder.states.size(), 6);
        QCOMPARE(m_window->findChildren<MainWindow *>().size(), 1);
        QCOMPARE(m_window->findChildren<Launcher *>().size(), 1);
        QVERIFY(m_manager->mainWindow()->isMaximized());
        // The next click counts again.
        m_host->onList = nullptr;
        recorder.onState = nullptr;
        const QPointer<MainWindow> first(m_manager->mainWindow());
        m_host->trigger();
        QVERIFY(!first);
        QVERIFY(m_manager->mainWindow());
    }

    // ---- the survey changes

    void aChangeOfSurveyDeletesTheWindows()
    {
        m_host->trigger();
        const QPointer<MainWindow> mainWindow(m_manager->mainWindow());
        const QPointer<Launcher> launcher(m_manager->launcher());
        const auto oldSurvey = files::snapshot(m_host->survey);
        const QString oldPath = m_host->survey;
        m_host->changeSurvey(newSurvey("Other"));
        QVERIFY(!mainWindow && !launcher);
        QVERIFY(!m_manager->mainWindow() && !m_manager->launcher());
        QVERIFY(files::snapshot(m_host->survey).isEmpty());
        m_host->trigger();
        QVERIFY(m_manager->mainWindow()->isMaximized());
        QVERIFY(isSeeded());
        QVERIFY(files::snapshot(oldPath) == oldSurvey);
    }

    void aChangeOfSurveyBeforeTheFirstClickIsNothing()
    {
        m_host->changeSurvey(newSurvey("Other"));
        QVERIFY(!m_manager->mainWindow() && !m_manager->launcher());
        m_host->trigger();
        QVERIFY(isSeeded());
    }

    void aChangeOfSurveyEndsTheLaunch_data()
    {
        QTest::addColumn<int>("when");
        QTest::newRow("while the wells are read") << 0;
        for (int when = 1; when <= 6; ++when)
            QTest::addRow("state %d", when) << when;
    }

    void aChangeOfSurveyEndsTheLaunch()
    {
        QFETCH(int, when);
        const auto change = [this] { m_host->changeSurvey(newSurvey("Other")); };
        m_host->onList = [&] {
            if (when == 0)
                change();
        };
        LaunchRecorder recorder([this] { return state(); });
        recorder.onState = [&](int number) {
            if (number == when)
                change();
        };
        m_host->trigger();
        QVERIFY(!m_manager->mainWindow());
        QVERIFY(!m_manager->launcher());
        QVERIFY(m_window->findChildren<QWidget *>().isEmpty());
        QCOMPARE(recorder.mainWindowShows, 0);
        QCOMPARE(recorder.states.size(), when);
        QCOMPARE(recorder.launcherShows, when == 0 ? 0 : 1);
        QVERIFY(!m_host->survey.endsWith("/Survey"));
        QVERIFY2(files::snapshot(m_host->survey).isEmpty(), "the new survey is untouched");

        m_host->onList = nullptr;
        recorder.onState = nullptr;
        m_host->trigger();
        QVERIFY(m_manager->mainWindow()->isMaximized());
    }

    // ---- the host's window

    void theHostsWindowMayGoBeforeTheManager()
    {
        m_host->trigger();
        dropHostWindow();
        QVERIFY(!m_manager->mainWindow() && !m_manager->launcher());
        m_host->changeSurvey(newSurvey("Other"));
        m_manager.reset();
    }

    void aLaunchAfterTheHostsWindowWentStandsOnItsOwn()
    {
        m_host->trigger();
        dropHostWindow();
        m_host->find(m_wellKey)->isUnreadable = true;
        BoxDriver driver;
        m_host->trigger();
        QCOMPARE(driver.seen.size(), 1);
        QVERIFY(m_manager->mainWindow()->isMaximized());
        QVERIFY(!m_manager->mainWindow()->parentWidget());
    }

    void theHostsWindowMayGoWhileALaunchRuns_data()
    {
        QTest::addColumn<int>("when");
        for (int when = 1; when <= 6; ++when)
            QTest::addRow("state %d", when) << when;
    }

    void theHostsWindowMayGoWhileALaunchRuns()
    {
        QFETCH(int, when);
        LaunchRecorder recorder([this] { return state(); });
        recorder.onState = [&](int number) {
            if (number == when)
                dropHostWindow();
        };
        m_host->trigger();
        QVERIFY(!m_manager->mainWindow());
        QVERIFY(!m_manager->launcher());
        recorder.onState = nullptr;
        m_host->trigger();
        QVERIFY(m_manager->mainWindow()->isMaximized());
    }

    void aHostWithoutAWindowWillDo()
    {
        m_manager.reset();
        m_host->window = nullptr;
        m_manager = std::make_unique<lorvaosMgr>(*m_host);
        m_host->trigger();
        m_host->trigger();
        const QPointer<MainWindow> mainWindow(m_manager->mainWindow());
        QVERIFY(mainWindow->isMaximized());
        QVERIFY(!mainWindow->parentWidget());
        m_manager.reset();
        QVERIFY(!mainWindow);
    }

    // ---- markers

    void aChangedMarkerSetIsReadAgain()
    {
        const QString otherKey = addWell("Well B");
        m_host->trigger();
        QSet<QString> read;
        m_host->onMarkers = [&read](const QString &key) { read.insert(key); };
        QVERIFY(m_host->writeMarkers(m_wellKey, {{"Top", 10, Qt::red}}).ok());
        QCOMPARE(read, QSet<QString>{m_wellKey});
        read.clear();
        QVERIFY(m_host->writeMarkers(otherKey, {}).ok());
        QCOMPARE(read, QSet<QString>{otherKey});
        QVERIFY(m_host->errors.isEmpty());
    }

    void writtenMarkersArriveInTheTreeAndInTheCatalogue()
    {
        m_host->trigger();
        ProjectData data(*m_host, m_asker); // reads the same host as the launch does
        data.catalogue.build();
        const auto *tree = m_manager->mainWindow()->findChild<ProjectTreeWidget *>();
        QVERIFY(tree);
        QCOMPARE(markersOf(tree), QStringList());

        HostWriter writer(*m_host, data.catalogue, m_asker, [this](const QString &text) { m_host->showError(text); });
        MarkerSetRecord set;
        set.wellName = "Well A";
        set.names = QStringList{"Top", "Base"};
        set.measuredDepths = {100.5f, 250};
        set.colors = {QColor(255, 0, 0), QColor(0, 0, 255)};
        QVERIFY(writer.writeMarkers(0, set));
        QCOMPARE(markersOf(tree), (QStringList{"Top", "Base"}));
        data.catalogue.refreshMarkerNames(0);
        const QVector<WellMarker> markers = data.catalogue.markers(0);
        QCOMPARE(markers.size(), 2);
        QCOMPARE(markers.at(0).name, QString("Top"));
        QCOMPARE(markers.at(0).measuredDepth, 100.5f);
        QCOMPARE(markers.at(0).subseaDepth, 100.5); // the well has no elevations
        QCOMPARE(markers.at(1).color, QColor(0, 0, 255));

        QVERIFY(writer.writeMarkers(0, {}));
        QCOMPARE(markersOf(tree), QStringList());
        QVERIFY(m_host->errors.isEmpty() && m_asker.boxes.isEmpty());
    }

    void markersOfAWellOutsideTheLaunchAreNobodysConcern()
    {
        QVERIFY(m_host->writeMarkers(m_wellKey, {}).ok()); // before the first launch
        m_host->trigger();
        const QString newKey = addWell("Later");
        QVERIFY(m_host->writeMarkers(newKey, {}).ok());
        QVERIFY(m_host->errors.isEmpty());
    }

private:
    QString newSurvey(const QString &name)
    {
        const QString path = m_folder->filePath(name);
        if (!QDir().mkdir(path))
            qFatal("the test cannot make a folder");
        return path;
    }

    QString addWell(const QString &name)
    {
        host::WellHeader header;
        header.name = name;
        const QString key = m_host->addWell(header);
        m_host->find(key)->logs = {{"GR", "gapi", {1, 2}, {3, 4}}};
        return key;
    }

    static QStringList markersOf(const ProjectTreeWidget *tree)
    {
        QStringList texts;
        const QTreeWidgetItem *branch = markersBranch(tree->wellsItem()->child(0));
        for (int i = 0; i < branch->childCount(); ++i)
            texts.append(branch->child(i)->text(0));
        return texts;
    }

    void dropHostWindow()
    {
        m_host->window = nullptr;
        delete m_window;
    }

    bool hasProject() const { return QFileInfo::exists(m_host->survey + "/WLC"); }
    bool isSeeded() const
    {
        return QFileInfo::exists(m_host->survey + "/WLC/CurveGroups/Others.txt")
            && QFileInfo::exists(m_host->survey + "/WLC/Templates/Global/Simple/Track_4.txt");
    }
    QString defaultLogsFile() const { return m_host->survey + "/WLC/DefaultLogs/Well A.txt"; }

    // The launch as a user sees it.
    QString state() const
    {
        if (!m_manager)
            return {};
        const Launcher *launcher = m_manager->launcher();
        const MainWindow *mainWindow = m_manager->mainWindow();
        if (!launcher)
            return QStringLiteral("no launcher");
        QString text = QString::number(launcher->findChild<QProgressBar *>()->value()) + ' '
            + launcher->findChild<QLabel *>("statusLabel")->text();
        text += launcher->isVisible() ? " | launcher shown" : " | launcher hidden";
        text += !mainWindow           ? " | no main window"
            : mainWindow->isVisible() ? " | main window shown"
                                      : " | main window hidden";
        return text + (QFileInfo::exists(defaultLogsFile()) ? " | default logs" : " | no default logs");
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QPointer<QWidget> m_window;
    std::unique_ptr<WatchfulHost> m_host;
    QString m_wellKey;
    ScriptedAsker m_asker;
    std::unique_ptr<lorvaosMgr> m_manager;
};

LORVA_TEST_MAIN(tst_lorvaosmgr)
#include "tst_lorvaosmgr.moc"
