#include "demo/demosurvey.h"
#include "support/boxdriver.h"
#include "support/files.h"
#include "support/testmain.h"
#include "workbench/hostaccess.h"
#include "workbench/plugininforecord.h"
#include "workbench/pluginloader.h"
#include "workbench/workbenchhost.h"

#include <QClipboard>
#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QMainWindow>
#include <QMenuBar>
#include <QProcess>
#include <QProgressBar>
#include <QPushButton>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTreeWidget>

#include <dlfcn.h>
#include <fcntl.h>
#include <memory>
#include <sys/mman.h>
#include <unistd.h>

namespace {

const QString pluginFolder = QStringLiteral(LORVA_BINARY_DIR "/lib/lorva/plugins");
const QString pluginFile = pluginFolder + QStringLiteral("/libLORVAOS.so");
const QString actionText = QStringLiteral("&LORVA OS 0.0");

using InfoFunction = const workbench::PluginInfoRecord *(*)();
using InitFunction = const char *(*)();
using Files = QMap<QString, QByteArray>;

bool isLoaded()
{
    void *handle = ::dlopen(QFile::encodeName(pluginFile).constData(), RTLD_NOLOAD | RTLD_LAZY);
    if (!handle)
        return false;
    ::dlclose(handle);
    return true;
}

/// The addresses at which the plug-in lies in memory. Once it is unloaded they are closed to everybody: whatever
/// still holds something of it crashes here and now instead of spoiling somebody else's memory one day.
class PluginMemory
{
public:
    PluginMemory()
    {
        QFile maps(QStringLiteral("/proc/self/maps"));
        if (!maps.open(QIODevice::ReadOnly))
            return;
        const QByteArray name = QFile::encodeName(QFileInfo(pluginFile).canonicalFilePath());
        for (const QByteArray &line : maps.readAll().split('\n')) {
            if (!line.endsWith(name))
                continue;
            const QList<QByteArray> ends = line.left(line.indexOf(' ')).split('-');
            if (m_begin == 0)
                m_begin = ends.first().toULongLong(nullptr, 16);
            m_end = ends.last().toULongLong(nullptr, 16);
        }
    }

    bool isKnown() const { return m_begin != 0; }

    /// False when the addresses are in use again.
    bool close() const
    {
        void *begin = reinterpret_cast<void *>(m_begin);
        return ::mmap(begin, m_end - m_begin, PROT_NONE,
                      MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE | MAP_FIXED_NOREPLACE, -1, 0)
            == begin;
    }

private:
    quintptr m_begin = 0;
    quintptr m_end = 0;
};

/// The superuser becomes an ordinary user while it lives: permissions count again.
class WithoutPrivileges
{
public:
    WithoutPrivileges()
    {
        if (::geteuid() == 0)
            m_isChanged = ::seteuid(nobody) == 0;
    }
    ~WithoutPrivileges()
    {
        if (m_isChanged && ::seteuid(0) != 0)
            qFatal("The test cannot go on");
    }
    WithoutPrivileges(const WithoutPrivileges &) = delete;
    WithoutPrivileges &operator=(const WithoutPrivileges &) = delete;

private:
    static constexpr uid_t nobody = 65534;
    bool m_isChanged = false;
};

Files onlyProject(const Files &survey, bool wanted)
{
    Files part;
    for (auto entry = survey.begin(); entry != survey.end(); ++entry)
        if (entry.key().startsWith("WLC/") == wanted)
            part.insert(entry.key(), entry.value());
    return part;
}

} // namespace

/// The built plug-in, loaded from its file into the workbench as on a user's machine, on surveys on disk.
class tst_plugininworkbench : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QVERIFY(m_root.isValid());
        QVERIFY2(QFileInfo::exists(pluginFile), "the plug-in is built before this test");
        m_demo = m_root.filePath("original/Demo");
        QCOMPARE(demo::makeDemoSurvey(m_demo), QString());
        QVERIFY(QDir(m_demo + "/WLC").removeRecursively());
        QVERIFY(QDir(m_demo + "/Import").removeRecursively()); // large, and nothing reads it
    }

    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_survey = m_folder->filePath("root/Demo");
        files::copyFolder(m_demo, m_survey);
        start(m_survey);
    }

    void cleanup()
    {
        stop();
        if (m_isProtected)
            setPermissions(0x7777, 0x6666); // so that it can be removed
        m_isProtected = false;
    }

    // ---- loading

    void theInfoRecordHoldsItsTexts()
    {
        loadPlugin();
        const workbench::PluginReport report = pluginReport();
        QCOMPARE(report.name, QString("LORVAOS"));
        QCOMPARE(report.displayName, QString("LORVA plugin Open source"));
        QCOMPARE(report.productName, QString("Hesko"));
        QCOMPARE(report.creator, QString("KUB-TLM"));
        QCOMPARE(report.version, QString("0.0"));
        QCOMPARE(report.text, QString("HESKO Log Interpretation Software."));
        QCOMPARE(report.license, 0);
        QCOMPARE(report.error, QString());
    }

    void theInfoRecordIsOne()
    {
        QLibrary library(pluginFile);
        const auto info = reinterpret_cast<InfoFunction>(library.resolve("GetLORVAOSPluginInfo"));
        QVERIFY(info);
        const workbench::PluginInfoRecord *record = info();
        QVERIFY(record);
        for (int i = 0; i < 3; ++i)
            QCOMPARE(info(), record);
        QVERIFY(menuTexts() == QStringList{"Own entry"}); // describing installs nothing
        QVERIFY(library.unload());
    }

    void theActionIsLastInTheMenu()
    {
        loadPlugin();
        QCOMPARE(menuTexts(), (QStringList{"Own entry", actionText}));
        QVERIFY(!m_menu->actions().last()->icon().isNull());
    }

    void loadingOpensNoWindowAndTouchesNoFile()
    {
        const Files before = files::snapshot(m_survey);
        loadPlugin();
        QVERIFY(!mainWindow() && !launcher());
        QVERIFY(files::snapshot(m_survey) == before);
    }

    void startingTwiceInstallsOneAction()
    {
        loadPlugin();
        QLibrary library(pluginFile);
        const auto init = reinterpret_cast<InitFunction>(library.resolve("InitLORVAOSPlugin"));
        QVERIFY(init);
        click();
        const QPointer<QAction> action(m_menu->actions().last());
        const QPointer<QWidget> window(mainWindow());
        QVERIFY(window);
        for (int i = 0; i < 3; ++i)
            QVERIFY(init() == nullptr);
        QCOMPARE(menuTexts(), (QStringList{"Own entry", actionText}));
        QVERIFY2(action && window, "the manager is the one there was");
        library.unload();
    }

    void withoutAHostItCannotBeInstantiated()
    {
        QLibrary library(pluginFile);
        const auto init = reinterpret_cast<InitFunction>(library.resolve("InitLORVAOSPlugin"));
        QVERIFY(init);
        lorvaSetWorkbenchHost(nullptr);
        QCOMPARE(QString::fromUtf8(init()), QString("Cannot instantiate LORVA OS plugin"));
        QCOMPARE(menuTexts(), QStringList{"Own entry"});
        lorvaSetWorkbenchHost(m_host.get());
        QVERIFY(init() == nullptr); // a later call may succeed
        QCOMPARE(menuTexts(), (QStringList{"Own entry", actionText}));
        QVERIFY(library.unload());
    }

    void exactlyTwoSymbolsAreExported()
    {
        const QString nm = QStandardPaths::findExecutable("nm");
        if (nm.isEmpty())
            QSKIP("the program nm is not installed");
        QProcess process;
        process.start(nm, {"-D", "--defined-only", pluginFile});
        QVERIFY(process.waitForFinished());
        QCOMPARE(process.exitCode(), 0);
        QStringList symbols;
        for (const QString &line :
             QString::fromLatin1(process.readAllStandardOutput()).split('\n', Qt::SkipEmptyParts))
            symbols.append(line.section(' ', -1));
        symbols.sort();
        QCOMPARE(symbols, (QStringList{"GetLORVAOSPluginInfo", "InitLORVAOSPlugin"}));
    }

    // ---- launching

    void theFirstClickOpensTheMainWindow()
    {
        loadPlugin();
        click();
        QVERIFY(mainWindow());
        QVERIFY(mainWindow()->isVisible());
        QVERIFY(mainWindow()->isMaximized());
        QVERIFY(mainWindow()->isWindow());
        QVERIFY(launcher());
        QVERIFY(!launcher()->isVisible());
        QCOMPARE(launcher()->findChild<QProgressBar *>()->value(), 100);
        expectSilence();
    }

    void theFirstClickMakesAndSeedsTheProject()
    {
        loadPlugin();
        QVERIFY(!QFileInfo::exists(m_survey + "/WLC"));
        click();
        for (const char *folder : {"Correlations", "CurveGroups", "Templates", "Templates/Global", "DefaultLogs"})
            QVERIFY2(QFileInfo(m_survey + "/WLC/" + folder).isDir(), folder);
        QVERIFY(QDir(m_survey + "/WLC/CurveGroups").entryList(QDir::Files).size() >= 21);
        for (const char *name : {"Default", "Simple"})
            QCOMPARE(QDir(m_survey + "/WLC/Templates/Global/" + name).entryList(QDir::Files),
                     (QStringList{"Track_1.txt", "Track_2.txt", "Track_3.txt", "Track_4.txt"}));
        const auto wells = m_host->wells().list().value;
        QVERIFY(!wells.isEmpty());
        for (const host::WellEntry &well : wells)
            QVERIFY2(QFileInfo::exists(m_survey + "/WLC/DefaultLogs/" + well.name + ".txt"), qPrintable(well.name));
    }

    void theProjectIsSeededBeforeTheMainWindowIsBuilt()
    {
        loadPlugin();
        SeenAtBirth seen(m_survey);
        m_window->installEventFilter(&seen);
        click();
        QCOMPARE(seen.children, 2); // the launcher and the main window, in this order
        QVERIFY(!seen.wasSeededAtFirst);
        QVERIFY(seen.wasSeededAtLast);
    }

    void aLaunchChangesNothingOfTheHosts()
    {
        const Files before = files::snapshot(m_survey);
        loadPlugin();
        click();
        QVERIFY(onlyProject(files::snapshot(m_survey), false) == onlyProject(before, false));
    }

    void twoClicksGiveOneMainWindowAndOneLauncher()
    {
        loadPlugin();
        click();
        const QPointer<QWidget> firstWindow(mainWindow());
        const QPointer<QWidget> firstLauncher(launcher());
        click();
        QVERIFY(!firstWindow);
        QVERIFY(!firstLauncher);
        QCOMPARE(namedChildren("MainWindow").size(), 1);
        QCOMPARE(namedChildren("Launcher").size(), 1);
        QVERIFY(mainWindow()->isMaximized());
    }

    void theLogsOfTheDemoAreClassified()
    {
        loadPlugin();
        click();
        QCOMPARE(
            files::read(m_survey + "/WLC/CurveGroups/CurveGroupTable.txt"),
            QByteArray("BS | Caliper\nCALI | Caliper\nDRHO | Density\nDT | Sonic\nGR | Gamma\nLLD | Resistivity\n"
                       "LLS | Resistivity\nMSFL | Resistivity\nNPHI | Others\nPEF | Others\nPHIE_log | Others\n"
                       "RHOB | Density\nSP | Sp\nVSH_log | Others\nWS_log | Others\n"));
        QCOMPARE(files::read(m_survey + "/WLC/DefaultLogs/Aldra-1.txt"),
                 QByteArray("Aldra-1\nGamma|GR\nSp|SP\nCaliper|CALI\nResistivity|LLD\nDensity|RHOB\nOthers|NPHI\n"
                            "Sonic|DT\n"));
    }

    void openedTwiceTheSurveyStaysTheSameToTheByte_data()
    {
        QTest::addColumn<QString>("kind");
        for (const char *kind : {"demo", "survey of the host", "odd log names"})
            QTest::newRow(kind) << QString(kind);
    }

    void openedTwiceTheSurveyStaysTheSameToTheByte()
    {
        QFETCH(QString, kind);
        if (kind == "survey of the host") {
            const QString sample = files::sharedFolder("od-survey");
            if (sample.isEmpty())
                QSKIP("the sample survey of the host is not there");
            m_survey = m_folder->filePath("host/F3");
            files::copyFolder(sample, m_survey);
            m_host->setSurvey(m_survey);
        } else if (kind == "odd log names") {
            writeOddLogs();
        }
        Files afterFirst;
        for (int i = 0; i < 2; ++i) {
            loadPlugin();
            click();
            m_boxes->answers = QStringList{"Yes"};
            mainWindow()->close();
            QVERIFY(!mainWindow()->isVisible());
            stop();
            QVERIFY(!isLoaded());
            if (i == 0) {
                afterFirst = files::snapshot(m_survey);
                start(m_survey);
            }
        }
        QVERIFY(afterFirst.contains("WLC/CurveGroups/CurveGroupTable.txt"));
        const Files afterSecond = files::snapshot(m_survey);
        QCOMPARE(afterSecond.keys(), afterFirst.keys());
        for (auto entry = afterFirst.begin(); entry != afterFirst.end(); ++entry)
            QVERIFY2(afterSecond.value(entry.key()) == entry.value(), qPrintable(entry.key()));
    }

    void aSurveyThatCannotBeWrittenIsLaunchedInSilence_data()
    {
        QTest::addColumn<bool>("hasProject");
        QTest::newRow("without a project") << false;
        QTest::newRow("with a project that lacks files") << true;
    }

    void aSurveyThatCannotBeWrittenIsLaunchedInSilence()
    {
        QFETCH(bool, hasProject);
        loadPlugin();
        if (hasProject) {
            click();
            for (const char *file :
                 {"DefaultLogs/Aldra-1.txt", "CurveGroups/CurveGroupTable.txt", "CurveGroups/Sonic.txt"})
                QVERIFY2(QFile::remove(m_survey + "/WLC/" + file), file);
        }
        const Files before = files::snapshot(m_survey);
        m_isProtected = true;
        setPermissions(0x5555, 0x4444);
        const WithoutPrivileges user;
        if (::faccessat(AT_FDCWD, QFile::encodeName(m_survey).constData(), W_OK, AT_EACCESS) == 0)
            QSKIP("permissions do not bind this user");
        click();
        QVERIFY(mainWindow()->isVisible());
        expectSilence();
        QVERIFY(files::snapshot(m_survey) == before);
    }

    void aFileInPlaceOfTheProjectIsLaunchedInSilence()
    {
        files::write(m_survey + "/WLC", "in the way");
        const Files before = files::snapshot(m_survey);
        loadPlugin();
        click();
        QVERIFY(mainWindow()->isVisible());
        expectSilence();
        QVERIFY(files::snapshot(m_survey) == before);
    }

    void aSurveyOfTheHostIsLaunched()
    {
        const QString sample = files::sharedFolder("od-survey");
        if (sample.isEmpty())
            QSKIP("the sample survey of the host is not there");
        const QString survey = m_folder->filePath("host/F3");
        files::copyFolder(sample, survey);
        m_host->setSurvey(survey);
        const Files before = files::snapshot(survey);
        loadPlugin();
        click();
        QVERIFY(mainWindow()->isMaximized());
        const Files after = files::snapshot(survey);
        QVERIFY(onlyProject(after, false) == onlyProject(before, false));
        QCOMPARE(after.value("WLC/CurveGroups/Sonic.txt").left(2), QByteArray("DT"));
        for (const host::WellEntry &well : m_host->wells().list().value) {
            const QByteArray firstLine = well.name.toUtf8() + '\n';
            bool hasFile = false;
            for (auto entry = after.begin(); entry != after.end(); ++entry)
                hasFile =
                    hasFile || (entry.key().startsWith("WLC/DefaultLogs/") && entry.value().startsWith(firstLine));
            QVERIFY2(hasFile, qPrintable(well.name));
        }
        expectSilence();
    }

    void aDamagedWellIsWarnedOfAndTheLaunchGoesOn()
    {
        const host::WellEntry well = m_host->wells().list().value.at(1);
        const QStringList wellFiles =
            QDir(m_survey + "/WellInfo").entryList({"*.well"}, QDir::Files, QDir::Name | QDir::IgnoreCase);
        for (const QString &file : wellFiles)
            if (!m_host->wells().header(well.key).ok())
                break;
            else if (QString(file).replace('_', ' ').startsWith(well.name))
                files::write(m_survey + "/WellInfo/" + file, "damaged");
        QVERIFY(!m_host->wells().header(well.key).ok());
        loadPlugin();
        click();
        QCOMPARE(m_boxes->seen.size(), 1);
        QCOMPARE(m_boxes->seen.first().title, QString("Reading Wells Data"));
        QCOMPARE(m_boxes->seen.first().text,
                 "Cannot get data for the well :" + well.name
                     + ".\nIf you used this well in this Plugin then it may be get crashed.\n"
                       "Please first check this well in Opendtect's Well Manager.");
        QCOMPARE(m_boxes->seen.first().buttons, QStringList{"OK"});
        m_boxes->seen.clear();
        QVERIFY(mainWindow()->isMaximized());
    }

    void anotherSurveyClosesTheWindows()
    {
        loadPlugin();
        click();
        const QString other = m_folder->filePath("root/Other");
        files::copyFolder(m_demo, other);
        m_host->setSurvey(other);
        QVERIFY(!mainWindow());
        QVERIFY(!launcher());
        QVERIFY(!QFileInfo::exists(other + "/WLC"));
        click();
        QVERIFY(mainWindow()->isMaximized());
        QVERIFY(QFileInfo::exists(other + "/WLC/Templates/Global/Simple/Track_4.txt"));
        expectSilence();
    }

    // ---- unloading

    void unloadingTakesEverythingAlong()
    {
        loadPlugin();
        click();
        const QPointer<QWidget> window(mainWindow());
        m_loader.reset();
        QVERIFY(!isLoaded());
        QVERIFY(!window);
        QCOMPARE(menuTexts(), QStringList{"Own entry"});
        QVERIFY(!mainWindow() && !launcher());
        // Nothing of the library is needed any more.
        QCoreApplication::processEvents();
        m_host->setSurvey(m_survey);
        const host::WellEntry well = m_host->wells().list().value.first();
        const QVector<host::Marker> markers = m_host->wells().markers(well.key).value;
        QVERIFY(m_host->wells().writeMarkers(well.key, markers).ok());
        m_window->repaint();
    }

    void loadedAgainItWorksAgain()
    {
        for (int i = 0; i < 3; ++i) {
            loadPlugin();
            click();
            QVERIFY(mainWindow()->isMaximized());
            m_loader.reset();
            QVERIFY(!isLoaded());
        }
        QCOMPARE(menuTexts(), QStringList{"Own entry"});
    }

    void theWindowMayGoBeforeThePlugin()
    {
        loadPlugin();
        click();
        m_window.reset();
        m_loader.reset();
        QVERIFY(!isLoaded());
    }

    // The last test: the end of the program must not need the library either.
    void nothingOfTheUnloadedLibraryIsHeld()
    {
        loadPlugin();
        const PluginMemory memory;
        QVERIFY(memory.isKnown());
        click();
        m_boxes->answers = QStringList{"Yes"};
        mainWindow()->close();
        click();
        auto *tree = mainWindow()->findChild<QTreeWidget *>("ProjectTreeWidget");
        tree->setCurrentItem(tree->topLevelItem(0));
        QTest::keyClick(tree, Qt::Key_C, Qt::ControlModifier);
        m_loader.reset();
        QVERIFY(!isLoaded());
        QVERIFY(memory.close());
        QCOMPARE(QApplication::clipboard()->text(), QString("Wells"));
        QApplication::clipboard()->clear();
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
        stop();
        start(m_survey);
        loadPlugin();
        click();
    }

private:
    /// Looks at the project each time a window is born into the workbench's window.
    class SeenAtBirth : public QObject
    {
    public:
        explicit SeenAtBirth(const QString &survey)
            : m_survey(survey)
        {
        }
        bool eventFilter(QObject *, QEvent *event) override
        {
            // A window that is only just being made is no more than a plain widget yet.
            if (event->type() != QEvent::ChildAdded
                || static_cast<QChildEvent *>(event)->child()->metaObject() != &QWidget::staticMetaObject)
                return false;
            wasSeededAtLast = QFileInfo::exists(m_survey + "/WLC/Templates/Global/Simple/Track_4.txt");
            if (++children == 1)
                wasSeededAtFirst = wasSeededAtLast;
            return false;
        }
        int children = 0;
        bool wasSeededAtFirst = false;
        bool wasSeededAtLast = false;

    private:
        QString m_survey;
    };

    void start(const QString &survey)
    {
        m_boxes = std::make_unique<BoxDriver>();
        m_window = std::make_unique<QMainWindow>();
        m_menu = m_window->menuBar()->addMenu("&Utilities");
        m_menu->addAction("Own entry");
        m_window->show();
        m_host = std::make_unique<workbench::WorkbenchHost>(QStringLiteral(LORVA_SOURCE_DIR "/icons"));
        m_host->setWindow(m_window.get(), m_menu);
        m_host->setSurvey(survey);
    }

    // As the workbench ends: plug-ins first, then the host.
    void stop()
    {
        m_loader.reset();
        m_host.reset();
        m_window.reset();
        m_boxes.reset();
    }

    // Logs whose names no line of a file can hold as they are.
    void writeOddLogs()
    {
        const QVector<host::WellEntry> wells = m_host->wells().list().value;
        int unit = 0;
        const QStringList units{"gapi", "mv", "furlong", "ohmm"};
        for (const QString &name : {QString("G|Density"), QString("G"), QString("A\nB"), QString("A B"), QString("|"),
                                    QString("x/y"), QString(QChar(0x03A9)), QString("%2F")}) {
            const host::LogData log{name, units.at(unit++ % units.size()), {100, 200}, {1, 2}};
            for (const host::WellEntry &well : wells.mid(0, 2))
                QVERIFY(m_host->wells().writeLog(well.key, log).ok());
        }
    }

    // Of the survey's folders and files; 0x4444 lets everybody read.
    void setPermissions(int folders, int plainFiles)
    {
        const QFile::Permissions folder(folders);
        for (const QString &path : {m_folder->path(), QFileInfo(m_survey).path(), m_survey})
            QVERIFY(QFile::setPermissions(path, folder));
        QDirIterator entries(m_survey, QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot,
                             QDirIterator::Subdirectories);
        while (entries.hasNext()) {
            const QString path = entries.next();
            QVERIFY(
                QFile::setPermissions(path, entries.fileInfo().isDir() ? folder : QFile::Permissions(plainFiles)));
        }
    }

    void loadPlugin()
    {
        m_loader = std::make_unique<workbench::PluginLoader>();
        m_loader->loadAll({pluginFolder});
        QVERIFY(isLoaded());
    }

    workbench::PluginReport pluginReport() const
    {
        for (const workbench::PluginReport &report : m_loader->reports())
            if (report.file == pluginFile)
                return report;
        return {};
    }

    QStringList menuTexts() const
    {
        QStringList texts;
        for (const QAction *action : m_menu->actions())
            texts.append(action->text());
        return texts;
    }

    void click() { m_menu->actions().at(menuTexts().indexOf(actionText))->trigger(); }

    // The plug-in's classes are its own: this program knows its windows by their names only.
    QList<QWidget *> namedChildren(const QString &name) const
    {
        QList<QWidget *> found;
        if (m_window)
            for (QWidget *child : m_window->findChildren<QWidget *>(name, Qt::FindDirectChildrenOnly))
                if (child->metaObject()->className() == name.toLatin1())
                    found.append(child);
        return found;
    }
    QWidget *mainWindow() const { return namedChildren("MainWindow").value(0); }
    QWidget *launcher() const { return namedChildren("Launcher").value(0); }

    void expectSilence()
    {
        for (const BoxDriver::Seen &box : qAsConst(m_boxes->seen))
            QFAIL(qPrintable("Unexpected box: " + box.title + ": " + box.text));
    }

    QTemporaryDir m_root;
    QString m_demo;
    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_survey;
    bool m_isProtected = false;
    std::unique_ptr<BoxDriver> m_boxes;
    std::unique_ptr<QMainWindow> m_window;
    QMenu *m_menu = nullptr;
    std::unique_ptr<workbench::WorkbenchHost> m_host;
    std::unique_ptr<workbench::PluginLoader> m_loader;
};

LORVA_TEST_MAIN(tst_plugininworkbench)
#include "tst_plugininworkbench.moc"
