// The whole program on the demo survey, used by a monkey. One seed runs in this process; several each in one of its own.
//
//     campaign_monkey --seeds 20 --events 5000 [--first 1]
//     campaign_monkey --seed 7 --events 5000 [--talk]

#include "monkey.h"
#include "watchdog.h"

#include "base/messageboxasker.h"
#include "demo/demosurvey.h"
#include "programs/surveypreparation.h"
#include "support/files.h"
#include "support/testmain.h"
#include "workbench/filechooser.h"
#include "workbench/pluginloader.h"
#include "workbench/workbenchhost.h"
#include "workbench/workbenchwindow.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDesktopServices>
#include <QDir>
#include <QMenu>
#include <QPointer>
#include <QProcess>
#include <QTemporaryDir>

#include <cstdio>

namespace {

QPointer<Monkey> monkey; ///< for the handler of messages

void handleMessage(QtMsgType type, const QMessageLogContext &, const QString &text)
{
    if (text.startsWith(QLatin1String("This plugin does not support"))
        || text.startsWith(QLatin1String("QStandardPaths: ")))
        return;
    std::fprintf(stderr, "%s\n", qUtf8Printable(text));
    if (monkey && (type == QtWarningMsg || type == QtCriticalMsg))
        monkey->addFinding(QStringLiteral("warning: ") + text);
    if (type == QtFatalMsg)
        watchdog::giveUp(text);
}

/// Opens what the program asks the desktop to open: nothing.
class NoDesktop : public QObject
{
    Q_OBJECT
public:
    NoDesktop() { QDesktopServices::setUrlHandler(QStringLiteral("file"), this, "open"); }
    ~NoDesktop() override { QDesktopServices::unsetUrlHandler(QStringLiteral("file")); }
public slots:
    void open(const QUrl &) { }
};

/// Another program that writes into the survey.
class OtherWriter
{
public:
    explicit OtherWriter(quint32 seed)
        : m_random(seed)
    {
    }

    void write(const QString &survey)
    {
        survey::SurveyStore store(survey);
        const auto wells = store.list();
        if (!wells.ok() || wells.value.isEmpty())
            return;
        const QString key = wells.value.at(below(wells.value.size())).key;
        switch (below(6)) {
        case 0: {
            survey::WellProperties well;
            well.name = QStringLiteral("Other %1").arg(below(1000));
            well.totalDepth = below(3000);
            if (wells.value.size() < 12)
                (void)store.addWell(well);
            break;
        }
        case 1:
            if (wells.value.size() > 3)
                (void)store.removeWell(key);
            break;
        case 2:
            (void)store.renameWell(key, QStringLiteral("Renamed %1").arg(below(1000)));
            break;
        case 3:
            (void)store.removeLog(key, 0);
            break;
        case 4: {
            const float top = static_cast<float>(below(2000));
            (void)store.writeLog(key, {QStringLiteral("GR"), QStringLiteral("gapi"), {top, top + 10}, {10, 90}});
            break;
        }
        default: {
            QVector<host::Marker> markers = store.markers(key).value;
            if (!markers.isEmpty() && below(2) == 0)
                markers.remove(below(markers.size()));
            else
                markers.append(
                    {QStringLiteral("Other %1").arg(below(1000)), static_cast<float>(below(2500)), Qt::red});
            (void)store.writeMarkers(key, markers);
        }
        }
    }

private:
    int below(int end) { return static_cast<int>(m_random.bounded(end)); }

    QRandomGenerator m_random;
};

QStringList makeSurveys(const QDir &scratch)
{
    const QStringList surveys{scratch.filePath(QStringLiteral("surveys/First")),
                              scratch.filePath(QStringLiteral("surveys/Second"))};
    QDir().mkpath(scratch.filePath(QStringLiteral("surveys")));
    const QString problem = demo::makeDemoSurvey(surveys.first());
    if (!problem.isEmpty())
        qFatal("%s", qPrintable(problem));
    files::copyFolder(surveys.first(), surveys.last());
    survey::SurveyStore second(surveys.last());
    (void)second.removeWell(second.list().value.first().key);
    return surveys;
}

// Something for each dialog to open.
void makeFiles(const QString &survey, const QString &folder)
{
    files::copyFolder(survey + QStringLiteral("/Import"), folder);
    files::write(folder + QStringLiteral("/markers.txt"), "Name\tDepth\nA\t1200\nB\t1300.5\nC\tdeep\n");
    files::write(folder + QStringLiteral("/zones.txt"), "1200\t1250\tPerf\n1300\t1290\t\n");
    files::write(folder + QStringLiteral("/points.txt"), "1200 0.1\n1300 0.2\n1400 nan\n");
    files::write(folder + QStringLiteral("/no.las"), QByteArray("\0\xff~A\n1 2\n3", 10));
    files::write(folder + QStringLiteral("/empty.txt"), "");
    QDir(folder).mkpath(QStringLiteral("folder"));
}

int openFilesIn(const QString &folder)
{
    int count = 0;
    const QDir own(QStringLiteral("/proc/self/fd"));
    for (const QString &number : own.entryList(QDir::Files | QDir::System))
        count += QFile::symLinkTarget(own.filePath(number)).startsWith(folder);
    return count;
}

/// All of the program, built up and taken down as its main function does it.
void play(const QStringList &surveys, quint32 seed)
{
    const NoDesktop noDesktop;
    workbench::WorkbenchHost host(QStringLiteral(LORVA_SOURCE_DIR "/icons"));
    base::MessageBoxAsker asker;
    workbench::PluginLoader loader;
    workbench::WorkbenchWindow window(host, asker, workbench::dialogFileChooser());
    window.setSurveyPreparation(programs::prepareSurvey);
    host.setWindow(&window, window.utilitiesMenu());
    window.show();
    loader.loadAll({QStringLiteral(LORVA_BINARY_DIR "/lib/lorva/plugins")});
    window.setPluginReports(loader.reports());
    if (window.utilitiesMenu()->actions().isEmpty())
        qFatal("The plug-in was not loaded.");
    window.openSurvey(surveys.first());

    int survey = 0;
    OtherWriter other(seed);
    const auto changeSurvey = [&] { window.openSurvey(surveys.at(++survey % surveys.size())); };
    monkey->setKeptOpen(&window);
    monkey->addHappening(QStringLiteral("launch"), 30, false, [&window] {
        for (const QWidget *one : QApplication::topLevelWidgets())
            if (one->objectName() == QLatin1String("MainWindow") && one->isVisible())
                return;
        window.utilitiesMenu()->actions().constLast()->trigger();
    });
    monkey->addHappening(QStringLiteral("launch again"), 1500, false,
                         [&window] { window.utilitiesMenu()->actions().constLast()->trigger(); });
    monkey->addHappening(QStringLiteral("another survey"), 700, false, changeSurvey);
    monkey->addHappening(QStringLiteral("another survey, a dialog being up"), 2500, true, changeSurvey);
    monkey->addHappening(QStringLiteral("another program writes"), 300, true,
                         [&] { other.write(host.surveyDirectory()); });
    monkey->run();
    QApplication::exec();
}

int runOne(Monkey::Options options, int argc, char **argv)
{
    testing_support::prepare();
    QTemporaryDir scratch;
    const QString files = scratch.filePath(QStringLiteral("files"));
    QDir::setCurrent(scratch.path());
    qputenv("HOME", QFile::encodeName(scratch.path()));
    QApplication application(argc, argv);
    QApplication::setOrganizationName(QStringLiteral("LORVA"));
    QApplication::setApplicationName(QStringLiteral("monkey"));
    const QStringList surveys = makeSurveys(QDir(scratch.path()));
    makeFiles(surveys.first(), files);
    QDir::setCurrent(files);

    options.scratch = files;
    Monkey one(options);
    monkey = &one;
    qInstallMessageHandler(handleMessage);
    watchdog::start();
    play(surveys, options.seed);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    for (const QWidget *left : QApplication::allWidgets())
        if (!left->inherits("QDesktopWidget") && !left->inherits("QDesktopScreenWidget"))
            one.addFinding(QStringLiteral("left behind: %1 %2")
                               .arg(QString::fromLatin1(left->metaObject()->className()), left->objectName()));
    const int openFiles = openFilesIn(scratch.path());
    if (openFiles > 0)
        one.addFinding(QStringLiteral("%1 files are still open").arg(openFiles));
    watchdog::stop();
    QDir::setCurrent(QStringLiteral("/"));
    for (const QString &finding : one.findings())
        std::fprintf(stderr, "FINDING of seed %u: %s\n", options.seed, qUtf8Printable(finding));
    std::printf("seed %u: %d events, %d findings, slowest %.2f s\n", options.seed, one.eventsGiven(),
                static_cast<int>(one.findings().size()), one.slowestSeconds());
    monkey = nullptr;
    return one.findings().isEmpty() ? 0 : 1;
}

// Each in a process of its own, so that one that crashes ends alone.
int runMany(int first, int seeds, int events, const char *program)
{
    int failed = 0;
    for (int seed = first; seed < first + seeds; ++seed) {
        QProcess process;
        process.setProcessChannelMode(QProcess::ForwardedChannels);
        process.start(
            QString::fromLocal8Bit(program),
            {QStringLiteral("--seed"), QString::number(seed), QStringLiteral("--events"), QString::number(events)});
        process.waitForFinished(-1);
        const bool isGood = process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
        if (!isGood)
            std::printf("seed %d failed\n", seed);
        std::fflush(stdout);
        failed += !isGood;
    }
    std::printf("%d seeds of %d events, %d failed\n", seeds, events, failed);
    return failed == 0 ? 0 : 1;
}

} // namespace

int main(int argc, char *argv[])
{
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments.append(QString::fromLocal8Bit(argv[i]));
    QCommandLineParser parser;
    const QCommandLineOption seed(QStringLiteral("seed"), {}, QStringLiteral("number"));
    const QCommandLineOption events(QStringLiteral("events"), {}, QStringLiteral("count"), QStringLiteral("600"));
    const QCommandLineOption seeds(QStringLiteral("seeds"), {}, QStringLiteral("count"), QStringLiteral("1"));
    const QCommandLineOption first(QStringLiteral("first"), {}, QStringLiteral("number"), QStringLiteral("1"));
    const QCommandLineOption talk(QStringLiteral("talk"));
    parser.addOptions({seed, events, seeds, first, talk});
    if (!parser.parse(arguments)) {
        std::fprintf(stderr, "%s\n", qUtf8Printable(parser.errorText()));
        return 2;
    }
    if (parser.isSet(seed)) {
        Monkey::Options options;
        options.seed = parser.value(seed).toUInt();
        options.events = parser.value(events).toInt();
        options.isTalking = parser.isSet(talk);
        return runOne(options, argc, argv);
    }
    return runMany(parser.value(first).toInt(), parser.value(seeds).toInt(), parser.value(events).toInt(), argv[0]);
}

#include "main.moc"
