// What large surveys and projects cost of a slow disk: calls to the file system, which must grow no faster than they do.

#include "datastore/curvegroups.h"
#include "datastore/curvegrouptable.h"
#include "datastore/defaultlogs.h"
#include "datastore/projectdata.h"
#include "datastore/projectseeds.h"
#include "mainwin/mainwindow.h"
#include "mainwin/projecttreeitems.h"
#include "mainwin/projecttreewidget.h"
#include "mainwin/reportwriter.h"
#include "support/alikewells.h"
#include "support/countedcalls.h"
#include "support/files.h"
#include "support/memoryhost.h"
#include "support/projectfixture.h"
#include "support/scriptedasker.h"
#include "support/testmain.h"
#include "survey/surveyfolder.h"
#include "workbench/workbenchhost.h"

#include <QApplication>
#include <QTreeWidget>

#include <functional>
#include <memory>

namespace {

constexpr int logCount = 30;
constexpr int markerCount = 20;
constexpr long few = 40; ///< what settings and the like cost now and then
constexpr int fileCount = logCount + 2; ///< of a well

/// Remembers the cursor's shape whenever a well is read.
class CursorWatchingHost : public MemoryHost
{
public:
    host::Outcome<host::WellHeader> header(const QString &key) override
    {
        const QCursor *cursor = QGuiApplication::overrideCursor();
        shapes.append(cursor ? cursor->shape() : Qt::ArrowCursor);
        return MemoryHost::header(key);
    }
    QVector<Qt::CursorShape> shapes;
};

/// A survey of so many alike wells on disk, opened in the plug-in's window.
class Window
{
public:
    explicit Window(int wells)
        : m_survey(m_folder.filePath("Survey"))
        , m_host(QStringLiteral(LORVA_SOURCE_DIR "/icons"))
    {
        makeSurvey(wells);
        m_host.setSurvey(m_survey);
        CurveGroupTable::instance().clear();
    }

    /// All that a launch does.
    void launch()
    {
        window.reset();
        data = std::make_unique<ProjectData>(m_host, asker);
        data->project.groupNames = curveGroupNames();
        data->catalogue.build();
        openProject(m_host, &data->project);
        seedProject(data->project.projectFolder);
        window = std::make_unique<MainWindow>(*data);
        runDefaultLogsPass(*data);
        window->show();
    }
    QTreeWidgetItem *well(int index) const { return window->projectTree()->wellsItem()->child(index); }
    void click(QTreeWidgetItem *item, Qt::CheckState state) const
    {
        item->setCheckState(0, state);
        emit window->projectTree()->itemClicked(item, 0);
    }
    QString projectFile(const QString &name) const { return m_survey + "/WLC/" + name; }
    host::Wells &wells() { return m_host.wells(); }

    ScriptedAsker asker;
    std::unique_ptr<ProjectData> data;
    std::unique_ptr<MainWindow> window;

private:
    void makeSurvey(int wells)
    {
        QVERIFY(survey::createSurvey(m_survey, {}).ok());
        survey::SurveyStore store(m_survey);
        survey::WellProperties properties;
        properties.name = "Well_0";
        properties.x = 500000;
        properties.y = 6000000;
        properties.totalDepth = 1000;
        const QString key = store.addWell(properties).value;
        for (int i = 0; i < logCount; ++i)
            QVERIFY(store.writeLog(key, {QStringLiteral("LOG%1").arg(i), "gapi", {100, 200}, {1, 2}}).ok());
        QVector<host::Marker> markers;
        for (int i = 0; i < markerCount; ++i)
            markers.append({QStringLiteral("Top %1").arg(i), 10.0F * static_cast<float>(i + 1), Qt::red});
        QVERIFY(store.writeMarkers(key, markers).ok());
        testing_support::addAlikeWells(m_survey, "Well_0", "Well_", wells);
        QTest::qWait(150); // a file that was changed just now is read again
    }

    QTemporaryDir m_folder;
    QString m_survey;
    workbench::WorkbenchHost m_host;
};

long callsOf(const std::function<void()> &work)
{
    const long before = counted_calls::total();
    work();
    return counted_calls::total() - before;
}

using Operation = std::function<void(Window &)>;

/// An operation and what may come before it uncounted.
struct Measured
{
    Operation prepare;
    Operation work;
};

void nothing(Window &)
{
}

void launch(Window &window)
{
    window.launch();
}

} // namespace
Q_DECLARE_METATYPE(Measured)

class TestManyWells : public QObject
{
    Q_OBJECT

private slots:
    // A test that counts nothing would always pass.
    void callsAreCounted()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath("f");
        QCOMPARE(callsOf([] {}), 0L);
        QVERIFY(callsOf([&path] { files::write(path, "x"); }) >= 2);
        QVERIFY(callsOf([&path] { QFileInfo::exists(path); }) >= 1);
        QVERIFY(callsOf([&path] { QVERIFY(base::writeFileAtomically(path, "y").ok()); }) >= 5);
        QVERIFY(callsOf([&folder] { QDir(folder.path()).entryList(); }) >= 1);
    }

    void theWaitCursorIsShownWhileWellsAreSynchronised()
    {
        ProjectFixture fixture;
        CursorWatchingHost host;
        host.survey = fixture.survey.path();
        host.dataFolder = fixture.host.dataFolder;
        fixture.addWell("A", {"GR"}, {"Top"});
        fixture.addWell("B", {"GR"}, {"Top"});
        host.storedWells = fixture.host.storedWells;
        fixture.launch = std::make_unique<ProjectData>(host, fixture.asker);
        fixture.open();
        MainWindow window(*fixture.launch);
        host.shapes.clear();
        window.syncODDBActionClicked();
        QVERIFY(host.shapes.size() >= 2);
        QCOMPARE(host.shapes.mid(0, 2), QVector<Qt::CursorShape>(2, Qt::WaitCursor));
        QVERIFY(!QGuiApplication::overrideCursor());
        QCOMPARE(fixture.asker.boxes.size(), 1);
    }

    // The number of calls a well, and of those that come whatever the number of wells.
    void callsGrowWithTheWells_data()
    {
        QTest::addColumn<Measured>("measured");
        QTest::addColumn<int>("mostPerWell");
        const auto markers = [](Window &window) { writeMarkersReport(*window.data); };
        const auto logs = [](Window &window) { writeLogsReport(*window.data); };
        const auto sync = [](Window &window) { window.window->syncODDBActionClicked(); };
        const auto display = [](Window &window) { window.click(window.well(0), Qt::Checked); };
        const auto tick = [](Window &window) {
            window.click(markersBranch(window.well(0)), Qt::Checked);
            window.click(markersBranch(window.well(0)), Qt::Unchecked);
        };
        const auto displayed = [display](Window &window) {
            window.launch();
            display(window);
        };
        const auto saveMarkers = [](Window &window) {
            const QString key = window.data->catalogue.wellKey(0);
            QVERIFY(window.wells().writeMarkers(key, {{"New", 5, Qt::red}}).ok());
        };
        const auto search = [](Window &window) { QTest::keyClicks(window.window->projectTree(), "Well_1"); };
        const auto dialogs = [](Window &window) {
            window.window->importWellLogsActionClicked();
            window.window->exportWellLogsActionClicked();
        };
        QTest::newRow("first launch") << Measured{nothing, launch} << 4 * fileCount + 20;
        QTest::newRow("second launch") << Measured{launch, launch} << 4 * fileCount + 10;
        QTest::newRow("synchronising") << Measured{launch, sync} << 4 * fileCount + 10;
        QTest::newRow("report of logs") << Measured{launch, logs} << 8 * fileCount + 10;
        QTest::newRow("report of markers") << Measured{launch, markers} << 32;
        QTest::newRow("opening a display") << Measured{launch, display} << 0;
        QTest::newRow("ticking markers") << Measured{displayed, tick} << 0;
        QTest::newRow("saving markers") << Measured{launch, saveMarkers} << 0;
        QTest::newRow("searching the tree") << Measured{launch, search} << 0;
        QTest::newRow("dialogs with combo boxes of wells") << Measured{launch, dialogs} << 0;
    }

    void callsGrowWithTheWells()
    {
        Window(1).launch(); // what a process reads once
        QFETCH(Measured, measured);
        QFETCH(int, mostPerWell);
        long calls[3] = {};
        for (int i = 0; i < 3; ++i) {
            Window window(5 << i);
            measured.prepare(window);
            calls[i] = callsOf([&] { measured.work(window); });
        }
        const QString figures = QStringLiteral("%1, %2, %3").arg(calls[0]).arg(calls[1]).arg(calls[2]);
        qInfo("5, 10 and 20 wells: %s calls", qUtf8Printable(figures));
        QVERIFY2(calls[2] - calls[1] <= 2 * (calls[1] - calls[0]) + few, qPrintable(figures));
        QVERIFY2(calls[2] - calls[1] <= 10L * mostPerWell + few, qPrintable(figures));
    }

    // What others put into the folders of a project is listed, and not looked at file by file.
    void callsGrowWithTheFilesOfTheProject()
    {
        long calls[3] = {};
        for (int i = 0; i < 3; ++i) {
            Window window(2);
            window.launch();
            for (const char *place : {"", "DefaultLogs/", "CurveGroups/", "Templates/", "Correlations/"})
                for (int file = 0; file < 100 << i; ++file)
                    files::write(window.projectFile(place + QStringLiteral("foreign %1.txt").arg(file)), "x");
            calls[i] = callsOf([&window] {
                window.launch();
                window.window->syncODDBActionClicked();
            });
        }
        const QString figures = QStringLiteral("%1, %2, %3").arg(calls[0]).arg(calls[1]).arg(calls[2]);
        qInfo("500, 1,000 and 2,000 files: %s calls", qUtf8Printable(figures));
        QVERIFY2(calls[2] - calls[1] <= few, qPrintable(figures));
    }
};

LORVA_TEST_MAIN(TestManyWells)
#include "tst_manywells.moc"
