// What is made from the tables beside the help: the manual page, the completion. And the examples of the users' manual.

#include "batchfixture.h"
#include "programs/batch/command.h"
#include "programs/batch/helptext.h"
#include "support/testmain.h"

#include <QRegularExpression>

using namespace batch;

class TestBatchTexts : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        m_demo.make();
        m_folder = m_demo.newPath();
        files::copyFolder(m_demo.original(), m_folder + "/Demo");
    }

    void theManualPageNamesAll()
    {
        const BatchRun run = runBatch({"_manual-page"});
        VERIFY_EXIT(0, run);
        const QString page = QString::fromUtf8(run.output).replace("\\-", "-");
        QCOMPARE(run.output, manualPage(commands()).toUtf8());
        for (const Command &command : commands()) {
            QVERIFY2(command.isHidden != page.contains(".SS \"" + usageOf(command) + '"'), qPrintable(command.name));
            if (command.isHidden)
                continue;
            for (const Option &option : options(command))
                QVERIFY2(page.contains(".B " + shownOption(option) + '\n'), qPrintable(option.name));
            for (const Field &field : command.form.fields)
                QVERIFY2(page.contains(".B " + field.key + '\n'), qPrintable(field.key));
        }
        QCOMPARE(files::read(QStringLiteral(LORVA_BINARY_DIR "/share/man/man1/lorva-batch.1")), run.output);
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
        row("t", "template");
        row("template ", "list show copy delete");
        row("report m", "markers");
        row("wells --j", "--json");
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
        row("wells Al", "");
        row("logs --survey /none Al", "");
        row("_", "");
    }
    void theShellCompletes()
    {
        QFETCH(QString, line);
        QFETCH(QString, offer);
        const QString script = QStringLiteral(
            "source \"$0\"; read -ra COMP_WORDS <<< \"$(printf %s \"$2\" | sed 's/\\\\ /\\x01/g')\"; "
            "[[ $2 == *\" \" && $2 != *\"\\\\ \" ]] && COMP_WORDS+=(''); "
            "COMP_WORDS=(\"$1\" \"${COMP_WORDS[@]//$'\\x01'/\\\\ }\"); COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); "
            "_lorva_batch; echo \"${COMPREPLY[*]}\"");
        QProcess shell;
        shell.setWorkingDirectory(m_folder);
        shell.start("bash",
                    {"-c", script, QStringLiteral(LORVA_BINARY_DIR "/share/bash-completion/completions/lorva-batch"),
                     QStringLiteral(LORVA_BINARY_DIR "/bin/lorva-batch"), line});
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
