#include "support/files.h"
#include "support/testmain.h"
#include "survey/surveyfolder.h"
#include "workbench/commandline.h"

#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

using workbench::CommandLine;
using Action = workbench::CommandLine::Action;

Q_DECLARE_METATYPE(workbench::CommandLine::Action)

namespace {

struct Run
{
    int exitCode = -1;
    QString output;
    QString errors;
};

/// Runs the built program with settings of its own.
class Program
{
public:
    Run run(const QStringList &arguments, const QString &pluginPath = {}) const
    {
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("XDG_CONFIG_HOME"), m_settings.path());
        environment.insert(QStringLiteral("HOME"), m_settings.path());
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        environment.insert(QStringLiteral("LORVA_PLUGIN_PATH"), pluginPath);
        // Under the leak checker: what the offscreen platform itself leaves behind is not the program's.
        files::write(path(QStringLiteral("leaks")), "leak:libqoffscreen.so\n");
        if (!arguments.contains(QLatin1String("--demo")))
            environment.insert(QStringLiteral("ASAN_OPTIONS"), QStringLiteral("fast_unwind_on_malloc=0")); // slow
        environment.insert(QStringLiteral("LSAN_OPTIONS"),
                           QStringLiteral("suppressions=") + path(QStringLiteral("leaks")));
        process.setProcessEnvironment(environment);
        process.setWorkingDirectory(m_settings.path());
        process.start(QStringLiteral(LORVA_BINARY_DIR "/bin/lorva-workbench"), arguments);
        Run result;
        if (!process.waitForFinished(120000)) {
            process.kill();
            process.waitForFinished();
            return result;
        }
        if (process.exitStatus() != QProcess::NormalExit)
            return result;
        result.exitCode = process.exitCode();
        result.output = QString::fromUtf8(process.readAllStandardOutput());
        result.errors = QString::fromUtf8(process.readAllStandardError());
        return result;
    }
    QString path(const QString &name) const { return m_settings.path() + QLatin1Char('/') + name; }

private:
    QTemporaryDir m_settings;
};

} // namespace

class TestCommandLine : public QObject
{
    Q_OBJECT

private slots:
    void parses_data();
    void parses();
    void refuses_data();
    void refuses();
    void helpNamesEveryOption();
    void programPrintsVersionAndHelp();
    void programRefusesWithCodeTwo_data();
    void programRefusesWithCodeTwo();
    void programMakesTheDemo();
    void programStartsAndEndsInOrder();
    void programReopensTheLastSurvey();
};

void TestCommandLine::parses_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<Action>("action");
    QTest::addColumn<QString>("survey");
    QTest::addColumn<QStringList>("plugins");
    QTest::addColumn<QString>("demo");
    const auto row = [](const char *arguments, Action action, const char *survey, const char *plugins,
                        const char *demo) {
        const auto words = [](const char *text) {
            return QString::fromUtf8(text).split(QLatin1Char(' '), Qt::SkipEmptyParts);
        };
        QTest::newRow(*arguments ? arguments : "nothing")
            << words(arguments) << action << QString::fromUtf8(survey) << words(plugins) << QString::fromUtf8(demo);
    };
    row("", Action::Run, "", "", "");
    row("--survey /a", Action::Run, "/a", "", "");
    row("--survey=/a", Action::Run, "/a", "", "");
    row("--survey=-a", Action::Run, "-a", "", "");
    row("--survey=a=b", Action::Run, "a=b", "", "");
    row("/a", Action::Run, "/a", "", "");
    row("a=b", Action::Run, "a=b", "", "");
    row("-- -a", Action::Run, "-a", "", "");
    row("-- --survey", Action::Run, "--survey", "", "");
    row("--plugin-dir p", Action::Run, "", "p", "");
    row("--plugin-dir p /a --plugin-dir=q", Action::Run, "/a", "p q", "");
    row("--demo d", Action::MakeDemo, "", "", "d");
    row("--demo=d --plugin-dir p", Action::MakeDemo, "", "p", "d");
    row("--help", Action::ShowHelp, "", "", "");
    row("--version", Action::ShowVersion, "", "", "");
    row("--survey /a --help", Action::ShowHelp, "/a", "", "");
    row("--version --bogus", Action::ShowVersion, "", "", "");
    row("--tour", Action::Run, "", "", "");
    row("/a --tour", Action::Run, "/a", "", "");
    row("b.las", Action::Run, "", "", "");
    row("b.las /a C.LAS", Action::Run, "/a", "", "");
    row("--survey=/x.las b.las", Action::Run, "/x.las", "", "");
    row("Øst/Å", Action::Run, "Øst/Å", "", "");
}

void TestCommandLine::parses()
{
    QFETCH(QStringList, arguments);
    QFETCH(Action, action);
    QFETCH(QString, survey);
    QFETCH(QStringList, plugins);
    QFETCH(QString, demo);
    const CommandLine line = workbench::parseCommandLine(arguments);
    QCOMPARE(line.error, QString());
    QCOMPARE(line.showsTour, arguments.contains(QStringLiteral("--tour")));
    QCOMPARE(line.lasFiles, arguments.filter(QRegularExpression(QStringLiteral("^[^-].*\\.(las|LAS)$"))));
    QCOMPARE(line.action, action);
    QCOMPARE(line.surveyFolder, survey);
    QCOMPARE(line.pluginFolders, plugins);
    QCOMPARE(line.demoFolder, demo);
}

void TestCommandLine::refuses_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("error");
    const auto row = [](const QStringList &arguments, const char *error) {
        QTest::newRow(qPrintable(arguments.join(QLatin1Char(' ')))) << arguments << QString::fromUtf8(error);
    };
    row({"--bogus"}, "Unknown option \"--bogus\".");
    row({"-s", "/a"}, "Unknown option \"-s\".");
    row({"-"}, "Unknown option \"-\".");
    row({"--Survey", "/a"}, "Unknown option \"--Survey\".");
    row({"--help=yes"}, "Unknown option \"--help=yes\".");
    row({"--survey"}, "The option --survey needs a folder.");
    row({"--survey="}, "The option --survey needs a folder.");
    row({"--survey", ""}, "The option --survey needs a folder.");
    row({"--survey", "--demo", "d"}, "The option --survey needs a folder.");
    row({"--plugin-dir"}, "The option --plugin-dir needs a folder.");
    row({"--demo"}, "The option --demo needs a folder.");
    row({"--survey", "/a", "--survey", "/b"}, "Only one survey can be given.");
    row({"/a", "/b"}, "Only one survey can be given.");
    row({"--survey", "/a", "/b"}, "Only one survey can be given.");
    row({"--demo", "d", "--demo", "e"}, "The option --demo can be given once only.");
    row({"--demo", "d", "--survey", "/a"}, "The option --demo makes a survey and cannot open one as well.");
    row({"--survey", "/a", "--demo", "d"}, "The option --demo makes a survey and cannot open one as well.");
    row({"/a", "--demo", "d"}, "The option --demo makes a survey and cannot open one as well.");
    row({"b.las", "--demo", "d"}, "The option --demo makes a survey and cannot open one as well.");
    row({"--tour", "--demo", "d"}, "The option --demo makes a survey and cannot open one as well.");
    row({"--tour=yes"}, "Unknown option \"--tour=yes\".");
    row({""}, "An argument is empty.");
    row({"--bogus", "--help"}, "Unknown option \"--bogus\".");
}

void TestCommandLine::refuses()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, error);
    const CommandLine line = workbench::parseCommandLine(arguments);
    QCOMPARE(line.action, Action::Refuse);
    QCOMPARE(line.error, error);
}

void TestCommandLine::helpNamesEveryOption()
{
    for (const char *option : {"--survey", "FILE.las", "--tour", "--plugin-dir", "--demo", "--help", "--version"}) {
        QVERIFY2(workbench::helpText().contains(QLatin1String(option)), option);
        QVERIFY2(workbench::usageLine().contains(QLatin1String(option)), option);
    }
    const QString manPage =
        QString::fromUtf8(files::read(QStringLiteral(LORVA_SOURCE_DIR "/packaging/lorva-workbench.1")))
            .remove(QLatin1Char('\\'));
    const QRegularExpression option(QStringLiteral("--[a-z-]+"));
    auto options = option.globalMatch(workbench::helpText());
    QVERIFY(options.hasNext());
    while (options.hasNext()) {
        const QString name = options.next().captured();
        QVERIFY2(manPage.contains(name), qPrintable(name));
    }
    QVERIFY(workbench::usageLine().startsWith(QLatin1String("Usage: lorva-workbench [")));
    QVERIFY(!workbench::usageLine().contains(QLatin1Char('\n')));
}

void TestCommandLine::programPrintsVersionAndHelp()
{
    const Run version = Program().run({QStringLiteral("--version")});
    QCOMPARE(version.exitCode, 0);
    QCOMPARE(version.output, QStringLiteral("lorva-workbench 0.0\n"));
    const Run help = Program().run({QStringLiteral("--help")});
    QCOMPARE(help.exitCode, 0);
    QVERIFY(help.output.startsWith(workbench::usageLine()));
}

void TestCommandLine::programRefusesWithCodeTwo_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("unknown option") << QStringList{"--bogus"};
    QTest::newRow("missing value") << QStringList{"--survey"};
    QTest::newRow("two surveys") << QStringList{"--survey", "a", "--survey", "b"};
    QTest::newRow("two folders") << QStringList{"a", "b"};
    QTest::newRow("demo and survey") << QStringList{"--demo", "a", "--survey", "b"};
}

void TestCommandLine::programRefusesWithCodeTwo()
{
    QFETCH(QStringList, arguments);
    const Run run = Program().run(arguments);
    QCOMPARE(run.exitCode, 2);
    QCOMPARE(run.output, QString());
    QVERIFY2(run.errors.contains(workbench::usageLine()), qPrintable(run.errors));
}

void TestCommandLine::programMakesTheDemo()
{
    const Program program;
    const QString folder = program.path(QStringLiteral("demo field"));
    const Run made = program.run({QStringLiteral("--demo"), QStringLiteral("demo field")}); // relative
    QCOMPARE(made.exitCode, 0);
    QCOMPARE(made.output, folder + QLatin1Char('\n'));
    QVERIFY(survey::isSurveyFolder(folder));
    const Run again = program.run({QStringLiteral("--demo"), folder});
    QCOMPARE(again.exitCode, 1);
    QCOMPARE(again.output, QString());
    QVERIFY2(again.errors.contains(folder), qPrintable(again.errors));
}

void TestCommandLine::programStartsAndEndsInOrder()
{
    const Program program;
    const QString survey = program.path(QStringLiteral("survey"));
    survey::NewSurvey description;
    description.name = QStringLiteral("Test field");
    QCOMPARE(survey::createSurvey(survey, description).error, QString());
    const Run run = program.run({QStringLiteral("--plugin-dir"), QStringLiteral(LORVA_BINARY_DIR "/tests/plugins"),
                                 QStringLiteral("--survey"), QStringLiteral("survey")});
    QCOMPARE(run.exitCode, 0);
    // Windows of plug-ins go while their code is loaded, plug-ins while the host is there.
    QCOMPARE(run.output,
             QStringLiteral("started, window there: yes\n"
                            "survey: %1\n"
                            "title: Test field - LORVA Workbench\n"
                            "window gone, host there: yes\n"
                            "manager gone, host there: yes\n")
                 .arg(survey));
}

void TestCommandLine::programReopensTheLastSurvey()
{
    const Program program;
    const QString plugins = QStringLiteral(LORVA_BINARY_DIR "/tests/plugins");
    const QString survey = program.path(QStringLiteral("survey"));
    QVERIFY(program.run({}, plugins).output.contains(QLatin1String("survey: \ntitle: LORVA Workbench\n")));
    QCOMPARE(survey::createSurvey(survey, {}).error, QString());
    QVERIFY(program.run({survey}, plugins).output.contains(QStringLiteral("survey: %1\n").arg(survey)));
    QVERIFY(program.run({}, plugins).output.contains(QStringLiteral("survey: %1\n").arg(survey)));
    QVERIFY(QFile::remove(survey + QStringLiteral("/.survey")));
    QVERIFY(
        program.run({}, plugins).output.contains(QLatin1String("survey: \n"))); // without a box that would hang here
}

LORVA_TEST_MAIN(TestCommandLine)
#include "tst_commandline.moc"
