// What is made from the tables beside the help: the manual page, the completion. And the examples of the users' manual.

#include "batchfixture.h"
#include "programs/batch/command.h"
#include "programs/batch/helptext.h"
#include "support/testmain.h"

#include <QRegularExpression>

using namespace batch;

namespace {

/// The words of a line as bash breaks them for a completion: at blanks, and at "=" and ":", which are words themselves, but not
/// in quotes or behind a backslash. The last one is what stands at the end of the line, if only nothing.
QStringList brokenWords(const QString &line)
{
    QStringList words{QString()};
    QChar quote;
    for (int i = 0; i < line.size(); ++i) {
        const QChar c = line.at(i);
        const bool isBreak = QStringLiteral("=:").contains(c);
        const QString before = words.last();
        const bool isBehindBreak = before == "=" || before == ":";
        if (!quote.isNull())
            quote = c == quote ? QChar() : quote;
        else if (c == '"' || c == '\'')
            quote = c;
        else if (c == ' ' || (isBreak && !before.isEmpty()) || (!isBreak && isBehindBreak))
            words.append(QString());
        if (c != ' ' || !quote.isNull())
            words.last() += c;
        if (c == '\\')
            words.last() += line.at(++i);
    }
    return words;
}

} // namespace

class TestBatchTexts : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        m_demo.make();
        m_folder = m_demo.newPath();
        files::copyFolder(m_demo.original(), m_folder + "/Demo");
        const QString rows = m_folder + "/tops.txt";
        files::write(rows, "Top, upper\t1000\nOstrel Sandstone\t1200\n");
        VERIFY_EXIT(0, runBatch({"markers", "Brisk-2", "--import", rows, "--force", "--survey", m_folder + "/Demo"}));
        QVERIFY(QFile::remove(rows));
    }

    void theManualPageNamesAll()
    {
        const BatchRun run = runBatch({"_manual-page"});
        VERIFY_EXIT(0, run);
        const QString page = QString::fromUtf8(run.output).replace("\\-", "-");
        QCOMPARE(run.output, manualPage(commands()).toUtf8());
        for (const Command &command : commands()) {
            QVERIFY2(command.isHidden
                         != page.contains(".SS \"" + usageOf(command).replace(QChar(QChar::Nbsp), "\\ ") + '"'),
                     qPrintable(command.name));
            if (command.isHidden)
                continue;
            for (const Option &option : options(command))
                QVERIFY2(page.contains(".B " + shownOption(option) + '\n' + toldHelp(option) + ".\n"),
                         qPrintable(option.name));
            for (const Field &field : command.form.fields)
                QVERIFY2(page.contains(".B " + field.key + '\n'), qPrintable(field.key));
        }
        QCOMPARE(files::read(QStringLiteral(LORVA_BINARY_DIR "/share/man/man1/lorva-batch.1")), run.output);
    }

    // What the command line refuses is told before.
    void limitsOfNumbersAreTold()
    {
        const auto help = [](const char *command) {
            return QString::fromUtf8(runBatch({command, "--help"}).output).simplified();
        };
        const QString render = help("render");
        QVERIFY2(render.contains("1000 without it (a number from 1 to 1000000)"), qPrintable(render));
        QVERIFY2(render.contains("of the printer, 600 (a whole number from 50 to 2400)"), qPrintable(render));
        QVERIFY2(render.contains("A3, no more than 200 of them"), qPrintable(render));
        const QString exported = help("export");
        QVERIFY2(exported.contains("0.1524 without it (a number from 0.0001 to 1000000)"), qPrintable(exported));
        QVERIFY2(exported.contains("without it (a whole number from 1 to 1024)"), qPrintable(exported));
        QVERIFY(!exported.contains("FILE ("));
    }

    // The programs lead to each other.
    void thePageOfTheWorkbenchNamesThis()
    {
        const QByteArray page = files::read(QStringLiteral(LORVA_SOURCE_DIR "/packaging/lorva-workbench.1"));
        QVERIFY(page.contains(".SH SEE ALSO\n.BR lorva\\-batch (1)\n"));
    }

    void theManualPageIsGoodTroff()
    {
        if (QProcess::execute("sh", {"-c", "command -v groff > /dev/null"}) != 0)
            QSKIP("groff is not installed");
        QProcess groff;
        groff.start(
            "groff",
            {"-man", "-ww", "-Tutf8", "-P-cbou", QStringLiteral(LORVA_BINARY_DIR "/share/man/man1/lorva-batch.1")});
        QVERIFY(groff.waitForFinished());
        QCOMPARE(groff.readAllStandardError(), QByteArray());
        QVERIFY(groff.readAllStandardOutput().contains("EXIT STATUS"));
    }

    void theShellCompletes_data()
    {
        QTest::addColumn<QString>("line"); ///< the last word is the one to complete
        QTest::addColumn<QString>("offer");
        const auto row = [](const char *line, const char *offer) { QTest::newRow(line) << line << offer; };
        row("we", "wells");
        row("t", "tops template");
        row("template ", "list show copy delete");
        row("report m", "markers");
        row("wells --j", "--json");
        row("tops x.csv --survey Demo --wells Aldra-1,Bri", "Aldra-1,Brisk-1 Aldra-1,Brisk-2");
        row("template copy --to", "--to-well");
        row("logs --survey Demo Al", "Aldra-1 Aldra-2 Aldra-3\\ A");
        row("--survey Demo logs Br", "Brisk-1 Brisk-2");
        row("logs --survey Demo Aldra-3\\ ", "Aldra-3\\ A");
        row("import f.las --survey Demo --well Cor", "Corrin-1\\ Deep");
        row("export --survey Demo Aldra-1 Bri", "Brisk-1 Brisk-2");
        row("export A --format ", "las columns");
        row("points Aldra-1 Eff", "Effective\\ Porosity");
        row("wells --survey De", "Demo");
        row("las Demo/Import/Aldra-1_f", "Demo/Import/Aldra-1_feet.las");
        row("render --survey Demo Aldra-3\\ A:Sim", "Simple"); // behind the ":", where the shell breaks the word
        row("render --survey Demo Aldra-1:", "Default Density-Neutron Petrophysics Saturation Simple Triple\\ Combo");
        row("render --survey Demo Aldra-1", "Aldra-1");
        row("render --survey Demo Ald", "Aldra-1 Aldra-2 Aldra-3\\ A");
        row("render --survey Demo \"Aldra-3 A:Sim", "Aldra-3 A:Simple"); // nor in quotes
        row("render Aldra-1 --out x.pdf --survey Demo --markers Kestrane\\ Up", "Kestrane\\ Upper\\ Sst");
        row("render Aldra-1:Simple --survey Demo --markers n", "none");
        row("render Aldra-1:Simple --survey Demo --markers=n", "none");
        row("render Aldra-1 --survey Demo --markers Kestrane\\ Upper\\ Sst,Ostr",
            "Kestrane\\ Upper\\ Sst,Ostrel\\ Sandstone");
        row("render Aldra-1 --paper a", "");
        row("correlate --survey=Demo K", "Kestrane\\ reservoir");
        row("correlate --survey Demo 'Kestrane reservoir' --flat Kestrane\\ U", "Kestrane\\ Upper\\ Sst");
        row("correlate --survey Demo Nothing --flat Kestrane\\ U", "");
        row("template show --survey Demo P", "Petrophysics");
        row("template copy --survey Demo --well Aldra-1 P", "");
        row("template delete --survey=Demo Si", "Simple");
        row("export Aldra-1 --survey Demo --logs G", "GR");
        row("export --survey Demo --logs MS", "MSFL"); // of any well
        row("export Brisk-2 --survey Demo --logs MS", "");
        row("export Aldra-1 --survey Demo --logs RHOB,G", "RHOB,GR");
        // A comma of a name stands behind a backslash, which the shell wants behind another one.
        row("render Brisk-2 --survey Demo --markers Top", "Top\\\\,\\ upper");
        row("render Brisk-2 --survey Demo --markers Top\\\\,\\ u", "Top\\\\,\\ upper");
        row("render Brisk-2 --survey Demo --markers 'To", "Top\\, upper");
        row("render Brisk-2 --survey Demo --markers 'Top\\, upper,To", "Top\\, upper,Top\\, upper");
        row("render Brisk-2 --survey Demo --markers Top\\\\,\\ upper,Ostr", "Top\\\\,\\ upper,Ostrel\\ Sandstone");
        row("default-logs --survey Demo Aldra-1 Gam", "Gamma=");
        row("default-logs --survey Demo Aldra-1 Gamma=G", "GR");
        row("default-logs --survey Demo Aldra-1 Effective\\ P", "Effective\\ Porosity=");
        row("import Demo/Import/Aldra-1.las --survey Demo --curves GR,RH", "GR,RHOB");
        row("import Demo/Import/Aldra-1.las --survey Demo --rename RH", "RHOB=");
        row("import Demo/Import/Aldra-1.las --survey Demo --map RHOB=Den", "Density");
        row("import Demo/Import/Aldra-1.las --survey Demo --map RHOB=Density --map GR=G", "Gamma");
        row("points --survey Demo 'Aldra-3 A' Eff", "Effective\\ Porosity");
        row("wells Al", "");
        row("logs --survey /none Al", "");
        row("_", "");
    }
    void theShellCompletes()
    {
        QFETCH(QString, line);
        QFETCH(QString, offer);
        const QString script = QStringLiteral("source \"$0\"; COMP_LINE=$1; shift; COMP_WORDS=(\"$@\"); "
                                              "COMP_CWORD=$(($# - 1)); _lorva_batch; echo \"${COMPREPLY[*]}\"");
        const QString program = QStringLiteral(LORVA_BINARY_DIR "/bin/lorva-batch");
        QProcess shell;
        shell.setWorkingDirectory(m_folder);
        shell.start("bash",
                    QStringList{"-c", script,
                                QStringLiteral(LORVA_BINARY_DIR "/share/bash-completion/completions/lorva-batch"),
                                program + ' ' + line, program}
                        + brokenWords(line));
        QVERIFY(shell.waitForFinished());
        QCOMPARE(QString::fromUtf8(shell.readAllStandardError()), QString());
        QCOMPARE(QString::fromUtf8(shell.readAllStandardOutput()).trimmed(), offer);
    }

    // In their order, in one folder: later ones build on earlier ones.
    void theExamplesOfTheManualRun()
    {
        const QString page = QString::fromUtf8(files::read(QStringLiteral(LORVA_SOURCE_DIR "/docs/manual/batch.md")));
        static const QRegularExpression block(QStringLiteral("^```sh\\n(.*?)^```$"),
                                              QRegularExpression::MultilineOption
                                                  | QRegularExpression::DotMatchesEverythingOption);
        const QString folder = m_demo.newPath();
        files::copyFolder(m_demo.original(), folder + "/Demo");
        QStringList run;
        auto blocks = block.globalMatch(page);
        while (blocks.hasNext()) {
            for (const QString &line : blocks.next().captured(1).split('\n', Qt::SkipEmptyParts)) {
                runLine(line, folder);
                if (QTest::currentTestFailed())
                    return;
                run.append(line);
            }
        }
        for (const Command &command : commands())
            QVERIFY2(command.isHidden || !run.filter("lorva-batch " + command.name).isEmpty(),
                     qPrintable(command.name));
    }

    void theExamplesOfTheHelpRun()
    {
        const QString folder = m_demo.newPath();
        files::copyFolder(m_demo.original(), folder + "/Demo");
        QVERIFY(QDir().mkpath(folder + "/exported"));
        for (const Command &command : commands()) {
            if (command.isHidden)
                continue;
            runLine("lorva-batch " + command.example, folder);
            if (QTest::currentTestFailed())
                return;
        }
    }

private:
    void runLine(const QString &line, const QString &folder)
    {
        QProcess shell;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("PATH", QStringLiteral(LORVA_BINARY_DIR "/bin:") + environment.value("PATH"));
        shell.setProcessEnvironment(environment);
        shell.setWorkingDirectory(folder);
        shell.start("bash", {"-c", line});
        QVERIFY(shell.waitForFinished());
        QVERIFY2(shell.exitCode() == 0, qPrintable(line + '\n' + shell.readAllStandardError()));
    }

    BatchFixture m_demo;
    QString m_folder;
};

LORVA_TEST_MAIN(TestBatchTexts)
#include "tst_batchtexts.moc"
