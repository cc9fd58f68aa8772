// The command line of the batch tool: read by tables, told by tables.

#include "batchfixture.h"
#include "programs/batch/command.h"
#include "programs/batch/helptext.h"
#include "programs/batch/tables.h"
#include "support/testmain.h"

using namespace batch;

namespace {

Command command(const char *name)
{
    Command result;
    result.name = name;
    result.summary = "Do it";
    result.description = "Does it.";
    result.example = "do";
    return result;
}

QVector<Command> table()
{
    Command plain = command("plain");
    plain.usesSurvey = false;
    Command rich = command("rich");
    rich.writes = true;
    rich.replaces = true;
    rich.usesCores = true;
    rich.form.key = "things";
    rich.form.fields = {textField("name", "Name", "its name")};
    rich.operands = {wellOperand(), operand("FILE", "a file", {WordKind::File})};
    rich.operands.last().isRepeatable = true;
    rich.operands.last().isOptional = true;
    rich.options = {valueOption("--out", "DIR", "The folder", {WordKind::Folder}),
                    listOption("--logs", "A,B", "The logs"), valueOption("--map", "A=B", "Some pairs"),
                    valueOption("--step", "M", "The step", numberRule(0.5, 10)),
                    valueOption("--format", "FORMAT", "The format", choiceOf({"las", "columns"}))};
    rich.options[0].isRequired = true;
    rich.options[2].isRepeatable = true;
    rich.problem = [](const Arguments &arguments) {
        return arguments.has("--logs") && arguments.has("--map") ? QString("Not both.") : QString();
    };
    return {plain, rich, command("report logs"), command("report markers")};
}

} // namespace

class TestBatchLine : public QObject
{
    Q_OBJECT

private slots:
    void wordsAreRead()
    {
        const auto commands = table();
        const CommandLine line = parseCommandLine({"--survey", "S", "rich", "--out=a=b", "W 1", "--logs", "GR, RHOB",
                                                   "f1", "--step", "-0.5e1", "--", "--f2", "--"},
                                                  commands);
        QCOMPARE(line.error, QString("M of the option --step is a number from 0.5 to 10, not \"-0.5e1\"."));
        const CommandLine good = parseCommandLine({"--survey", "S", "rich", "--out=a=b", "W 1", "--logs", "GR, RHOB",
                                                   "f1", "--step", "5", "--jobs", "3", "--force", "--", "--f2", "--"},
                                                  commands);
        QCOMPARE(good.error, QString());
        QCOMPARE(good.action, CommandLine::Action::Run);
        QCOMPARE(good.command, &commands.at(1));
        QCOMPARE(good.arguments.operands(), (QStringList{"W 1", "f1", "--f2", "--"}));
        QCOMPARE(good.arguments.value("--survey"), QString("S"));
        QCOMPARE(good.arguments.value("--out"), QString("a=b"));
        QCOMPARE(good.arguments.values("--logs"), (QStringList{"GR", "RHOB"}));
        QCOMPARE(*good.arguments.number("--step"), 5.0);
        QCOMPARE(good.arguments.count("--jobs", 9), 3);
        QCOMPARE(good.arguments.count("--other", 9), 9);
        QVERIFY(good.arguments.has("--force") && !good.arguments.has("--dry-run"));
        QVERIFY(!good.arguments.number("--other"));
    }

    void twoWordsNameACommand()
    {
        const auto commands = table();
        QCOMPARE(parseCommandLine({"report", "markers"}, commands).command, &commands.at(3));
        QCOMPARE(parseCommandLine({"--survey=x", "report", "logs"}, commands).command, &commands.at(2));
        const CommandLine family = parseCommandLine({"report", "--help"}, commands);
        QCOMPARE(family.action, CommandLine::Action::ShowHelp);
        QCOMPARE(family.family, QString("report"));
        QVERIFY(helpOfAll(commands, "report").contains("report markers"));
        QVERIFY(!helpOfAll(commands, "report").contains("rich"));
        QVERIFY(!parseCommandLine({"report"}, commands).error.isEmpty());
        QVERIFY(!parseCommandLine({"report", "none"}, commands).error.isEmpty());
    }

    void bothEndsOfARangeBelongToIt()
    {
        for (const char *step : {"0.5", "10"})
            QCOMPARE(parseCommandLine({"rich", "W", "--out", "o", "--step", step}, table()).error, QString());
    }

    void choicesAreReadInAnyLetters()
    {
        const CommandLine line = parseCommandLine({"rich", "W", "--out", "o", "--format", "Columns"}, table());
        QCOMPARE(line.error, QString());
        QCOMPARE(line.arguments.value("--format"), QString("columns"));
        QVector<Command> commands = table();
        commands[0].operands = {operand("GROUP", "a group", choiceOf({"Gamma", "Shale Volume"}))};
        QCOMPARE(parseCommandLine({"plain", "shale VOLUME"}, commands).arguments.operand(0), QString("Shale Volume"));
    }

    void aCommaMayBelongToAName()
    {
        const CommandLine line =
            parseCommandLine({"rich", "W", "--out", "o", "--logs", "Top\\, upper,\\GR\\,,a\\"}, table());
        QCOMPARE(line.error, QString());
        QCOMPARE(line.arguments.values("--logs"), (QStringList{"Top, upper", "\\GR,", "a\\"}));
    }

    void whatIsGivenTwiceCountsOnce()
    {
        const CommandLine line =
            parseCommandLine({"rich", "W", "f", "g", "W", "f", "--out", "o", "--logs", "GR,A, GR,a"}, table());
        QCOMPARE(line.error, QString());
        QCOMPARE(line.arguments.operands(), (QStringList{"W", "f", "g", "W"})); // the first W is another operand
        QCOMPARE(line.arguments.values("--logs"), (QStringList{"GR", "A", "a"}));
    }

    void repeatedOptionsGather()
    {
        const CommandLine line = parseCommandLine({"rich", "W", "--out", "o", "--map", "A=B", "--map=C=D"}, table());
        QCOMPARE(line.error, QString());
        QCOMPARE(line.arguments.values("--map"), (QStringList{"A=B", "C=D"}));
    }

    void wrongLinesAreRefused_data()
    {
        QTest::addColumn<QStringList>("words");
        QTest::addColumn<QString>("error");
        const auto row = [](const char *words, const char *error) {
            QTest::newRow(words) << QString(words).split(' ', Qt::SkipEmptyParts) << QString(error);
        };
        row("", "A command is missing.");
        row("--survey S", "A command is missing.");
        row("other", "There is no command \"other\".");
        row("--other plain", "Unknown option \"--other\".");
        row("plain --other", "The command \"plain\" has no option \"--other\".");
        row("plain --survey S", "The command \"plain\" has no option \"--survey\".");
        row("--survey S plain", "The command \"plain\" has no option \"--survey\".");
        row("plain word", "The command \"plain\" takes no further word: \"word\".");
        row("rich --out o", "The command \"rich\" needs WELL.");
        row("rich W", "The command \"rich\" needs the option --out.");
        row("rich W --out", "The option --out needs a value (DIR).");
        row("rich W --out --force", "The option --out needs a value (DIR).");
        row("rich W --out=", "DIR of the option --out is empty.");
        row("rich W --out o --out o", "The option --out can be given once only.");
        row("rich W --out o --force --force", "The option --force can be given once only.");
        row("rich W --out o --force=1", "The option --force takes no value.");
        row("rich W --out o --logs GR,,A", "A,B of the option --logs is empty.");
        row("rich W --out o --step x", "M of the option --step is a number from 0.5 to 10, not \"x\".");
        row("rich W --out o --step nan", "M of the option --step is a number from 0.5 to 10, not \"nan\".");
        row("rich W --out o --step 1e400", "M of the option --step is a number from 0.5 to 10, not \"1e400\".");
        row("rich W --out o --step 11", "M of the option --step is a number from 0.5 to 10, not \"11\".");
        row("rich W --out o --jobs 1.5", "N of the option --jobs is a whole number from 1 to 1024, not \"1.5\".");
        row("rich W --out o --jobs 0", "N of the option --jobs is a whole number from 1 to 1024, not \"0\".");
        row("rich W --out o --jobs 1025", "N of the option --jobs is a whole number from 1 to 1024, not \"1025\".");
        row("rich W --out o --jobs 99999999999",
            "N of the option --jobs is a whole number from 1 to 1024, not \"99999999999\".");
        row("rich W --out o --format doc", "FORMAT of the option --format is one of las, columns, not \"doc\".");
        row("report", "The command \"report\" needs one more word: logs or markers.");
        row("report foo", "The command \"report\" needs one more word: logs or markers, not \"foo\".");
        row("report --force logs", "The command \"report\" needs one more word: logs or markers, not \"--force\".");
        row("rich W --out o --logs A --map B=C", "Not both.");
    }

    void wrongLinesAreRefused()
    {
        QFETCH(QStringList, words);
        QFETCH(QString, error);
        const auto commands = table();
        const CommandLine line = parseCommandLine(words, commands);
        QCOMPARE(line.error, error);
        QCOMPARE(line.action, CommandLine::Action::Refuse);
    }

    void anEmptyWordIsNoName()
    {
        QVERIFY(!parseCommandLine({"rich", "", "--out", "o"}, table()).error.isEmpty());
        QVERIFY(
            !parseCommandLine({"rich", QString("a\0b").left(1) + QChar(0), "--out", "o"}, table()).error.isEmpty());
    }

    void whoAsksForHelpGetsIt()
    {
        const auto commands = table();
        for (const char *words : {"rich --help", "rich --nonsense --help", "rich W X Y --out --help"}) {
            const CommandLine line = parseCommandLine(QString(words).split(' '), commands);
            QCOMPARE(line.action, CommandLine::Action::ShowHelp);
            QCOMPARE(line.command, &commands.at(1));
        }
        QCOMPARE(parseCommandLine({"rich", "W", "--out", "o", "--", "--help"}, commands).action,
                 CommandLine::Action::Run);
        for (const char *words : {"rich -h", "-h rich", "help rich", "help rich -h", "rich W -h --out o"}) {
            const CommandLine line = parseCommandLine(QString(words).split(' '), commands);
            QVERIFY2(line.action == CommandLine::Action::ShowHelp, words);
            QVERIFY2(QString(words).startsWith('-') || line.command == &commands.at(1), words);
        }
        QCOMPARE(parseCommandLine({"help"}, commands).action, CommandLine::Action::ShowHelp);
        QCOMPARE(parseCommandLine({"help", "report"}, commands).family, QString("report"));
        QCOMPARE(parseCommandLine({"rich", "W", "--out", "o", "--", "-h"}, commands).arguments.operands(),
                 (QStringList{"W", "-h"}));
        QCOMPARE(parseCommandLine({"--help"}, commands).action, CommandLine::Action::ShowHelp);
        QCOMPARE(parseCommandLine({"--version"}, commands).action, CommandLine::Action::ShowVersion);
    }

    void pairsHaveTwoSides()
    {
        QCOMPARE(pairProblem("--map", "A=B=C"), QString());
        for (const char *text : {"A", "A=", "=B", "="})
            QVERIFY2(pairProblem("--map", text).contains("--map"), text);
    }

    void helpNamesAll()
    {
        const QString help = helpOf(table().at(1));
        for (const char *text :
             {"lorva-batch rich WELL [FILE...] --out DIR [--logs A,B] [--map A=B]...", "--step M", "The format",
              "--dry-run", "--jobs N", "--survey DIR", "--json", "name", "its name", "\"things\"", "lorva-batch do"})
            QVERIFY2(help.simplified().contains(text), text);
        for (const QString &line : help.split('\n')) {
            QVERIFY2(line.size() <= 100, qPrintable(line));
            QVERIFY2(line.count('[') == line.count(']'), qPrintable(line)); // an option stands on one line
        }
    }

    // The real tables.
    void everyCommandIsDescribed()
    {
        QStringList names;
        for (const Command &command : commands()) {
            QVERIFY2(!names.contains(command.name), qPrintable(command.name));
            names.append(command.name);
            QVERIFY2(command.run, qPrintable(command.name));
            QVERIFY2(!command.summary.isEmpty() && !command.summary.endsWith('.'), qPrintable(command.name));
            QVERIFY2(command.description.endsWith('.'), qPrintable(command.name));
            const auto &fields = command.form.fields;
            QCOMPARE(std::any_of(fields.begin(), fields.end(),
                                 [](const Field &field) { return field.key == isWrittenField().key; }),
                     command.writes);
            QStringList optionNames;
            for (const Option &option : options(command)) {
                QVERIFY2(option.name.startsWith("--") && !optionNames.contains(option.name), qPrintable(option.name));
                QVERIFY2(!option.help.isEmpty() && !option.help.endsWith('.'), qPrintable(option.name));
                optionNames.append(option.name);
            }
            // A value that is no option's stands nowhere: the example reads as it stands.
            const CommandLine example = parseCommandLine(QProcess::splitCommand(command.example), commands());
            QCOMPARE(example.error, QString());
            QCOMPARE(example.command, &command);
        }
    }

    void helpComesFromTheProgram()
    {
        const BatchRun all = runBatch({"--help"});
        VERIFY_EXIT(0, all);
        QCOMPARE(QString::fromUtf8(all.output), helpOfAll(commands()));
        for (const Command &command : commands()) {
            const BatchRun one = runBatch(command.name.split(' ') + QStringList{"--help"});
            VERIFY_EXIT(0, one);
            QCOMPARE(QString::fromUtf8(one.output), helpOf(command));
            QVERIFY(command.isHidden == !all.output.contains(("  " + command.name + ' ').toUtf8()));
        }
        const BatchRun version = runBatch({"--version"});
        VERIFY_EXIT(0, version);
        QCOMPARE(version.output, QByteArray("lorva-batch 0.0\n"));
        const BatchRun wrong = runBatch({"wells", "--platform", "xcb"});
        VERIFY_EXIT(2, wrong);
        QCOMPARE(wrong.output, QByteArray());
        QCOMPARE(wrong.errors,
                 QString("lorva-batch: The command \"wells\" has no option \"--platform\".\n"
                         "lorva-batch: Try \"lorva-batch wells --help\".\n"));
    }
};

LORVA_TEST_MAIN(TestBatchLine)
#include "tst_batchline.moc"
