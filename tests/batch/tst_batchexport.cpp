#include "batchfixture.h"
#include "las/wellinfo.h"
#include "support/testmain.h"
#include "survey/surveystore.h"

class TestBatchExport : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { m_demo.make(); }

    void init()
    {
        m_out = m_demo.newPath();
        QVERIFY(QDir().mkpath(m_out));
    }

    void wellsBecomeFiles()
    {
        const BatchRun run = exportLogs({"Aldra-1", "Corrin-1 Deep", "--json"});
        VERIFY_EXIT(0, run);
        QCOMPARE(QDir(m_out).entryList(QDir::Files | QDir::Hidden),
                 (QStringList{"Aldra-1.las", "Corrin-1 Deep.las"}));
        QCOMPARE(run.list("files").size(), 2);
        QCOMPARE(run.record("files").value("file").toString(), m_out + "/Aldra-1.las");
        QCOMPARE(run.record("files").value("logs").toArray().size(), 15);
        WellInfo file;
        QCOMPARE(file.load(m_out + "/Aldra-1.las"), 0);
        QCOMPARE(file.curves.size(), 16);
        QCOMPARE(file.step, 0.1524);
        QCOMPARE(file.uwi, QString("Aldra-1"));
    }

    void onlyTheNamedLogsAtTheGivenStep()
    {
        VERIFY_EXIT(0, exportLogs({"Aldra-1", "--logs", "RHOB,GR", "--interval", "0.5"}));
        WellInfo file;
        QCOMPARE(file.load(m_out + "/Aldra-1.las"), 0);
        QCOMPARE(file.curves.size(), 3);
        QCOMPARE(file.curves.at(1).logName, QString("GR")); // the well's own order
        QCOMPARE(file.step, 0.5);
        QCOMPARE(file.curves.at(0).values.at(1) - file.curves.at(0).values.at(0), 0.5);
    }

    void childrenWriteWhatOneProcessWrites()
    {
        const QStringList wells{"Aldra-1", "Aldra-2", "Aldra-3 A", "Brisk-1", "Brisk-2", "Corrin-1 Deep"};
        VERIFY_EXIT(0, exportLogs(wells + QStringList{"--jobs", "1"}));
        const auto alone = files::snapshot(m_out);
        VERIFY_EXIT(0, exportLogs(wells + QStringList{"--jobs", "4", "--force"}));
        QCOMPARE(files::snapshot(m_out), alone);
        QCOMPARE(alone.size(), 6);
    }

    void columnsAreOneFileALog()
    {
        const BatchRun run = exportLogs({"Aldra-1", "--format", "columns", "--logs", "GR,RHOB", "--json"});
        VERIFY_EXIT(0, run);
        QCOMPARE(run.list("files").size(), 2);
        const QByteArray text = files::read(m_out + "/Aldra-1/GR.txt");
        QVERIFY(text.startsWith("Aldra-1\tGR\nDepth\tValue\n800.1\t83.45\n"));
        VERIFY_EXIT(2, exportLogs({"Aldra-1", "--format", "columns", "--interval", "1"}));
        VERIFY_EXIT(1, exportLogs({"Aldra-1", "--format", "columns", "--logs", "GR"}));
        files::write(m_out + "/Aldra-1/.lorva-abcDEF", "of a program that died");
        VERIFY_EXIT(0, exportLogs({"Aldra-1", "--format", "columns", "--logs", "GR", "--force"}));
        QVERIFY(!QFileInfo::exists(m_out + "/Aldra-1/.lorva-abcDEF"));
    }

    void whatIsThereStays()
    {
        const QString path = m_out + "/Aldra-1.las";
        files::write(path, "mine");
        const BatchRun run = exportLogs({"Aldra-1", "Aldra-2"});
        VERIFY_EXIT(1, run);
        QVERIFY(run.errors.contains(path) && run.errors.contains("--force"));
        QCOMPARE(files::read(path), QByteArray("mine"));
        QVERIFY(QFileInfo::exists(m_out + "/Aldra-2.las"));
        VERIFY_EXIT(0, exportLogs({"Aldra-1", "--force"}));
        QVERIFY(files::read(path).startsWith("~V"));
    }

    void aDryRunWritesNothing()
    {
        const BatchRun run = exportLogs({"Aldra-1", "--dry-run", "--json"});
        VERIFY_EXIT(0, run);
        QCOMPARE(run.record("files").value("isWritten").toBool(true), false);
        QVERIFY(QDir(m_out).isEmpty());
        VERIFY_EXIT(0, exportLogs({"Aldra-1", "--dry-run", "--format", "columns"}));
        QVERIFY(QDir(m_out).isEmpty());
    }

    void whatCannotBeDoneIsNamed_data()
    {
        QTest::addColumn<QStringList>("words");
        QTest::addColumn<QString>("named");
        QTest::newRow("well") << QStringList{"None such"} << "None such";
        QTest::newRow("log") << QStringList{"Aldra-1", "--logs", "GR,NONE"}
                             << "Aldra-1: it has no log \"NONE\"; there are GR, SP, ";
        QTest::newRow("log in other letters")
            << QStringList{"Aldra-1", "--logs", "rhob"} << "Aldra-1: it has no log \"rhob\"; it is \"RHOB\".";
        QTest::newRow("grid") << QStringList{"Aldra-1", "--interval", "0.00001"} << "from 0.0001 to 1000000";
    }
    void whatCannotBeDoneIsNamed()
    {
        QFETCH(QStringList, words);
        QFETCH(QString, named);
        const BatchRun run = exportLogs(words);
        QVERIFY(run.exitCode != 0);
        QVERIFY2(run.errors.contains(named), qPrintable(run.errors));
    }

    void aWellThatIsGivenTwiceCountsOnce()
    {
        const QString key = survey::SurveyStore(m_demo.original()).list().value.first().key;
        const BatchRun run = exportLogs({"Aldra-1", key, "Aldra-1", "--logs", "GR,GR", "--json"});
        VERIFY_EXIT(0, run);
        QCOMPARE(run.list("files").size(), 1);
        QCOMPARE(run.record("files").value("logs").toArray(), QJsonArray{"GR"});
    }

    void theFolderMustExist()
    {
        const BatchRun run = runBatch({"export", "Aldra-1", "--out", m_out + "/none"}, m_demo.original());
        VERIFY_EXIT(1, run);
        QVERIFY(run.errors.contains(m_out + "/none"));
        VERIFY_EXIT(2, runBatch({"export", "Aldra-1"}, m_demo.original()));
    }

    void theOutFolderIsThatOfTheUser()
    {
        VERIFY_EXIT(
            0, runBatch({"export", "Aldra-1", "--logs", "GR", "--out", ".", "--survey", m_demo.original()}, m_out));
        QVERIFY(QFileInfo::exists(m_out + "/Aldra-1.las"));
    }

    void aFullDiskLeavesNothing()
    {
        QProcess shell;
        shell.setWorkingDirectory(m_demo.original());
        shell.start("bash",
                    {"-c", "trap '' XFSZ; ulimit -f 100; exec \"$0\" export Aldra-1 Aldra-2 --out \"$1\"",
                     QStringLiteral(LORVA_BINARY_DIR "/bin/lorva-batch"), m_out});
        QVERIFY(shell.waitForFinished());
        QCOMPARE(shell.exitCode(), 1);
        const QByteArray errors = shell.readAllStandardError();
        QVERIFY2(errors.contains("Aldra-2: cannot write the file"), errors);
        QVERIFY(QDir(m_out).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot));
    }

private:
    BatchRun exportLogs(const QStringList &words)
    {
        return runBatch(QStringList{"export", "--out", m_out} + words, m_demo.original());
    }

    BatchFixture m_demo;
    QString m_out;
};

LORVA_TEST_MAIN(TestBatchExport)
#include "tst_batchexport.moc"
