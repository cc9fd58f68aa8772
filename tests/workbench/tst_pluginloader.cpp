#include "support/files.h"
#include "support/testmain.h"
#include "workbench/pluginloader.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <cstdio>
#include <fcntl.h>
#include <memory>
#include <unistd.h>

using workbench::PluginLoader;
using workbench::PluginReport;

namespace {

// What is written to the standard error while it lives.
class ErrorOutput
{
public:
    explicit ErrorOutput(const QString &path)
        : m_path(path)
        , m_saved(::dup(2))
    {
        std::fflush(stderr);
        const int file = ::open(QFile::encodeName(path).constData(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
        ::dup2(file, 2);
        ::close(file);
    }
    ~ErrorOutput() { take(); }
    QString take()
    {
        if (m_saved >= 0) {
            std::fflush(stderr);
            ::dup2(m_saved, 2);
            ::close(m_saved);
            m_saved = -1;
        }
        return QString::fromUtf8(files::read(m_path));
    }

private:
    QString m_path;
    int m_saved;
};

} // namespace

class TestPluginLoader : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void derivesTheName_data();
    void derivesTheName();
    void looksIntoFoldersInOrder();
    void callsInfoAndInitOnceAndUnloadsLater();
    void loadsALibraryWithTwoDotsInItsName();
    void leavesOutAFailingPlugin_data();
    void leavesOutAFailingPlugin();
    void leavesOutAFileThatIsNoLibrary();
    void goesOnAfterAFailingPlugin();
    void loadsAFileNameOnce();
    void doesNotTryAFailedNameAgain();
    void passesOverOtherFilesAndMissingFolders();
    void unloadsInTheOppositeOrder();

private:
    QString folder(const char *name) const
    {
        const QString path = m_folder->filePath(QString::fromUtf8(name));
        QDir().mkpath(path);
        return path;
    }
    // Copies the test plug-in into a folder of the test, under another name if one is given.
    void install(const QString &plugin, const char *to, const QString &fileName = {}) const
    {
        const QString built = QStringLiteral(LORVA_BINARY_DIR "/tests/loaderplugins/lib%1.so").arg(plugin);
        const QString target =
            folder(to) + QLatin1Char('/') + (fileName.isEmpty() ? QStringLiteral("lib%1.so").arg(plugin) : fileName);
        if (!QFile::copy(built, target))
            qFatal("cannot copy %s", qUtf8Printable(built));
    }
    QStringList notes() const
    {
        const QString path = m_folder->filePath(QStringLiteral("notes"));
        return QFile::exists(path) ? QString::fromUtf8(files::read(path)).split(QLatin1Char('\n'), Qt::SkipEmptyParts)
                                   : QStringList();
    }
    QString errorFile() const { return m_folder->filePath(QStringLiteral("stderr")); }

    std::unique_ptr<QTemporaryDir> m_folder;
};

void TestPluginLoader::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    qputenv("LORVA_TEST_PLUGIN_NOTES", QFile::encodeName(m_folder->filePath(QStringLiteral("notes"))));
    qunsetenv("LORVA_PLUGIN_PATH");
}

void TestPluginLoader::cleanup()
{
    qunsetenv("LORVA_TEST_PLUGIN_NOTES");
    qunsetenv("LORVA_PLUGIN_PATH");
}

void TestPluginLoader::derivesTheName_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("name");
    QTest::newRow("plain") << "libLORVAOS.so"
                           << "LORVAOS";
    QTest::newRow("from the first dot") << "libA.b.so"
                                        << "A";
    QTest::newRow("version") << "libA.so.1.2"
                             << "A";
    QTest::newRow("lib within") << "libMylib.so"
                                << "Mylib";
    QTest::newRow("lib twice") << "liblibA.so"
                               << "libA";
    QTest::newRow("without lib") << "A.so"
                                 << "A";
    QTest::newRow("without dot") << "libA"
                                 << "A";
    QTest::newRow("nothing left") << "lib.so"
                                  << "";
}

void TestPluginLoader::derivesTheName()
{
    QFETCH(QString, file);
    QFETCH(QString, name);
    QCOMPARE(PluginLoader::pluginName(file), name);
}

void TestPluginLoader::looksIntoFoldersInOrder()
{
    const QString installed =
        QDir::cleanPath(QCoreApplication::applicationDirPath() + QStringLiteral("/../lib/lorva/plugins"));
    QCOMPARE(PluginLoader::searchFolders({}), QStringList{installed});
    qputenv("LORVA_PLUGIN_PATH", "/first::/second plug-ins:");
    QCOMPARE(PluginLoader::searchFolders({QStringLiteral("/given"), QStringLiteral("/also")}),
             (QStringList{QStringLiteral("/given"), QStringLiteral("/also"), QStringLiteral("/first"),
                          QStringLiteral("/second plug-ins"), installed}));
}

void TestPluginLoader::callsInfoAndInitOnceAndUnloadsLater()
{
    install(QStringLiteral("Good"), "a");
    ErrorOutput errors(errorFile());
    {
        PluginLoader loader;
        loader.loadAll({folder("a")});
        QCOMPARE(errors.take(), QString());
        QCOMPARE(notes(), (QStringList{QStringLiteral("Good info"), QStringLiteral("Good init")}));
        QCOMPARE(loader.reports().size(), 1);
        const PluginReport &report = loader.reports().first();
        QCOMPARE(report.error, QString());
        QCOMPARE(report.file, folder("a") + QStringLiteral("/libGood.so"));
        QCOMPARE(report.name, QStringLiteral("Good"));
        QCOMPARE(report.displayName, QStringLiteral("Good plug-in"));
        QCOMPARE(report.productName, QStringLiteral("Product"));
        QCOMPARE(report.creator, QStringLiteral("Creator"));
        QCOMPARE(report.version, QStringLiteral("1.2"));
        QCOMPARE(report.text, QString());
        QCOMPARE(report.license, 2);
    }
    QCOMPARE(
        notes(),
        (QStringList{QStringLiteral("Good info"), QStringLiteral("Good init"), QStringLiteral("Good unloaded")}));
}

void TestPluginLoader::loadsALibraryWithTwoDotsInItsName()
{
    install(QStringLiteral("Good"), "a", QStringLiteral("libGood.debug.so"));
    PluginLoader loader;
    loader.loadAll({folder("a")});
    QCOMPARE(loader.reports().value(0).error, QString());
    QCOMPARE(loader.reports().value(0).name, QStringLiteral("Good"));
}

void TestPluginLoader::leavesOutAFailingPlugin_data()
{
    QTest::addColumn<QString>("plugin");
    QTest::addColumn<QString>("says");
    QTest::addColumn<QString>("noted");
    QTest::newRow("neither symbol") << "NoSymbols"
                                    << "\"GetNoSymbolsPluginInfo\""
                                    << "";
    QTest::newRow("no info function") << "NoInfo"
                                      << "\"GetNoInfoPluginInfo\""
                                      << "";
    QTest::newRow("no init function") << "NoInit"
                                      << "\"InitNoInitPlugin\""
                                      << "";
    QTest::newRow("no record") << "NoRecord"
                               << "no record"
                               << "NoRecord info";
    QTest::newRow("init returns a text") << "Refusing"
                                         << "no licence today"
                                         << "Refusing info,Refusing init";
    QTest::newRow("throws") << "Throwing"
                            << "the disk is full of eels"
                            << "Throwing info,Throwing init";
    QTest::newRow("throws a number") << "ThrowingNumber"
                                     << "exception"
                                     << "ThrowingNumber info,ThrowingNumber init";
    QTest::newRow("undefined symbol") << "Undefined"
                                      << "lorvaFunctionThatNobodyHas"
                                      << "";
}

void TestPluginLoader::leavesOutAFailingPlugin()
{
    QFETCH(QString, plugin);
    QFETCH(QString, says);
    QFETCH(QString, noted);
    install(plugin, "a");
    ErrorOutput errors(errorFile());
    PluginLoader loader;
    loader.loadAll({folder("a")});
    const QString output = errors.take();
    QCOMPARE(loader.reports().size(), 1);
    const PluginReport &report = loader.reports().first();
    QVERIFY2(report.error.contains(says), qPrintable(report.error));
    QCOMPARE(report.name, plugin);
    QCOMPARE(report.file, folder("a") + QStringLiteral("/lib%1.so").arg(plugin));
    QVERIFY2(output.contains(report.file) && output.contains(report.error), qPrintable(output));
    QStringList called = notes();
    called.removeAll(plugin + QStringLiteral(" unloaded"));
    QCOMPARE(called.join(QLatin1Char(',')), noted);
}

void TestPluginLoader::leavesOutAFileThatIsNoLibrary()
{
    files::write(folder("a") + QStringLiteral("/libText.so"), "this is no library\n");
    files::write(folder("a") + QStringLiteral("/libEmpty.so"), {});
    files::write(folder("a") + QStringLiteral("/lib.so"), "x");
    ErrorOutput errors(errorFile());
    PluginLoader loader;
    loader.loadAll({folder("a")});
    const QString output = errors.take();
    QCOMPARE(loader.reports().size(), 3);
    for (const PluginReport &report : loader.reports()) {
        QVERIFY(!report.error.isEmpty());
        QVERIFY(output.contains(
            QStringLiteral("lorva-workbench: the plug-in %1 was left out. %2\n").arg(report.file, report.error)));
    }
    QVERIFY(output.contains(QStringLiteral("libText.so")) && output.contains(QStringLiteral("libEmpty.so")));
}

void TestPluginLoader::goesOnAfterAFailingPlugin()
{
    for (const char *plugin : {"NoSymbols", "Refusing", "Throwing", "Undefined", "Good"})
        install(QString::fromLatin1(plugin), "a");
    files::write(folder("a") + QStringLiteral("/libAText.so"), "text");
    ErrorOutput errors(errorFile());
    PluginLoader loader;
    loader.loadAll({folder("a")});
    errors.take();
    QCOMPARE(loader.reports().size(), 6);
    QStringList running;
    for (const PluginReport &report : loader.reports())
        if (report.error.isEmpty())
            running.append(report.name);
    QCOMPARE(running, QStringList{QStringLiteral("Good")});
    QCOMPARE(notes().filter(QStringLiteral("Good")),
             (QStringList{QStringLiteral("Good info"), QStringLiteral("Good init")}));
}

void TestPluginLoader::loadsAFileNameOnce()
{
    install(QStringLiteral("Good"), "first");
    install(QStringLiteral("Good"), "second");
    PluginLoader loader;
    loader.loadAll({folder("first"), folder("second"), folder("first")});
    loader.loadAll({folder("second")});
    QCOMPARE(loader.reports().size(), 1);
    QCOMPARE(loader.reports().first().file, folder("first") + QStringLiteral("/libGood.so"));
    QCOMPARE(notes(), (QStringList{QStringLiteral("Good info"), QStringLiteral("Good init")}));
}

void TestPluginLoader::doesNotTryAFailedNameAgain()
{
    files::write(folder("first") + QStringLiteral("/libGood.so"), "text");
    install(QStringLiteral("Good"), "second");
    ErrorOutput errors(errorFile());
    PluginLoader loader;
    loader.loadAll({folder("first"), folder("second")});
    errors.take();
    QCOMPARE(loader.reports().size(), 1);
    QVERIFY(!loader.reports().first().error.isEmpty());
    QVERIFY(notes().isEmpty());
}

void TestPluginLoader::passesOverOtherFilesAndMissingFolders()
{
    install(QStringLiteral("Good"), "a", QStringLiteral("Good.so"));
    install(QStringLiteral("Good"), "a", QStringLiteral("libGood.so.bak"));
    QDir().mkpath(folder("a") + QStringLiteral("/libGood.so"));
    PluginLoader loader;
    loader.loadAll({folder("a"), m_folder->filePath(QStringLiteral("none"))});
    QVERIFY(loader.reports().isEmpty());
    QVERIFY(notes().isEmpty());
}

void TestPluginLoader::unloadsInTheOppositeOrder()
{
    install(QStringLiteral("Good"), "a");
    install(QStringLiteral("Refusing"), "b");
    ErrorOutput errors(errorFile());
    {
        PluginLoader loader;
        loader.loadAll({folder("a"), folder("b")});
        errors.take();
        // A plug-in that ran and failed stays in memory as long as the others: something of it may still be in use.
        QCOMPARE(notes().filter(QStringLiteral("unloaded")), QStringList());
    }
    QCOMPARE(notes().filter(QStringLiteral("unloaded")),
             (QStringList{QStringLiteral("Refusing unloaded"), QStringLiteral("Good unloaded")}));
}

LORVA_TEST_MAIN(TestPluginLoader)
#include "tst_pluginloader.moc"
