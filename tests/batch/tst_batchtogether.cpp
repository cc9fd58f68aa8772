// The batch tool beside other writers of the same survey, and ended at any moment.

#include "base/filelock.h"
#include "batchfixture.h"
#include "support/testmain.h"
#include "survey/surveystore.h"

#include <csignal>

namespace {

constexpr int fileCount = 12;

QByteArray lasText(const QString &well, int log)
{
    QByteArray text =
        "~V\nVERS. 2.0 :\nWRAP. NO :\n~W\nSTRT.M 1000 :\nSTOP.M 1999 :\nSTEP.M 1 :\nNULL. -999.25 :\nUWI. "
        + well.toUtf8() + " :\nWELL. " + well.toUtf8() + " :\n~C\nDEPT.M :\n";
    for (const char *name : {"A", "B", "C"})
        text += name + QByteArray::number(log) + ".API :\n";
    text += "~A\n";
    for (int i = 1000; i < 2000; ++i)
        text += QByteArray::number(i) + " 1 2 3\n";
    return text;
}

QStringList hiddenFiles(const QString &folder)
{
    QStringList hidden;
    const auto all = files::snapshot(folder);
    for (auto file = all.begin(); file != all.end(); ++file)
        if (('/' + file.key()).contains("/.lorva-"))
            hidden.append(file.key());
    return hidden;
}

} // namespace

class TestBatchTogether : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        for (const int signal : {SIGINT, SIGTERM, SIGHUP})
            std::signal(signal, SIG_DFL); // a job in the background ignores some, and so would the tool
        m_demo.make();
    }
    void init() { m_survey = m_demo.copy(); }

    // The other store is that of a workbench which has the survey open.
    void eachSeesWhatTheOtherWrote()
    {
        survey::SurveyStore open(m_survey);
        const host::WellEntry well = open.list().value.first();
        const int logs = open.logs(well.key).value.size();
        const int markers = open.markers(well.key).value.size();
        const QString las = m_demo.newPath() + ".las";
        files::write(las, lasText(well.name, 1));
        VERIFY_EXIT(0, runBatch({"import", las}, m_survey));
        QCOMPARE(open.logs(well.key).value.size(), logs + 3);
        QVERIFY(open.writeLog(well.key, {"OWN", "m", {100, 101}, {1, 2}}).ok());
        QCOMPARE(runBatch({"logs", well.name, "--json"}, m_survey).list("logs").size(), logs + 4);

        // Markers of both are kept.
        auto set = open.markers(well.key).value;
        const QString tops = m_demo.newPath() + ".txt";
        QByteArray text = "Batch top\t1234\n";
        for (const host::Marker &marker : set)
            text +=
                marker.name.toUtf8() + '\t' + QByteArray::number(static_cast<double>(marker.depth), 'f', 2) + '\n';
        files::write(tops, text);
        VERIFY_EXIT(0, runBatch({"markers", well.name, "--import", tops, "--force"}, m_survey));
        QCOMPARE(open.markers(well.key).value.size(), markers + 1);
        set = open.markers(well.key).value;
        set.append({"Open top", 1300, Qt::red});
        QVERIFY(open.writeMarkers(well.key, set).ok());
        QCOMPARE(runBatch({"markers", well.name, "--json"}, m_survey).list("markers").size(), markers + 2);
    }

    void bothWriteAtOnce()
    {
        survey::SurveyStore open(m_survey);
        const host::WellEntry well = open.list().value.first();
        const int before = open.logs(well.key).value.size();
        QStringList words{"import", "--survey", m_survey, "--jobs", "3"};
        for (int i = 0; i < fileCount; ++i) {
            words.append(m_demo.newPath() + ".las");
            files::write(words.last(), lasText(i % 2 == 0 ? well.name : QString("Brisk-1"), i));
        }
        QProcess batch;
        batch.start(QStringLiteral(LORVA_BINARY_DIR "/bin/lorva-batch"), words);
        QVERIFY(batch.waitForStarted());
        int own = 0;
        while (!batch.waitForFinished(1))
            own += open.writeLog(well.key, {QStringLiteral("OWN%1").arg(own), "m", {100, 101}, {1, 2}}).ok() ? 1 : 0;
        QCOMPARE(batch.exitCode(), 0);
        QVERIFY(own > 0);
        open.reload(well.key);
        QCOMPARE(open.logs(well.key).value.size(), before + own + fileCount / 2 * 3);
        QCOMPARE(open.takeProblems(), QStringList());
        VERIFY_EXIT(0, runBatch({"check"}, m_survey));
    }

    void aLockedSurveyIsToldAndLeftAlone()
    {
        const auto before = files::snapshot(m_survey);
        const QString las = m_demo.newPath() + ".las";
        files::write(las, lasText("Nova", 1));
        const base::FolderLock lock(m_survey + "/WellInfo");
        VERIFY_EXIT(0, runBatch({"wells"}, m_survey)); // reading waits for nobody
        const BatchRun run = runBatch({"import", las, "--new-wells"}, m_survey);
        VERIFY_EXIT(1, run);
        QVERIFY2(run.errors.contains("Nova: Another program has been writing"), qPrintable(run.errors));
        QCOMPARE(files::snapshot(m_survey), before);
    }

    void aFullDiskLeavesNoHalfWell()
    {
        const auto before = files::snapshot(m_survey);
        const QString las = m_demo.newPath() + ".las";
        files::write(las, lasText("Nova", 1));
        QProcess shell;
        shell.setWorkingDirectory(m_survey);
        shell.start("bash",
                    {"-c", "trap '' XFSZ; ulimit -f 4; exec \"$0\" import \"$1\" --new-wells",
                     QStringLiteral(LORVA_BINARY_DIR "/bin/lorva-batch"), las});
        QVERIFY(shell.waitForFinished());
        QCOMPARE(shell.exitCode(), 1);
        const QByteArray errors = shell.readAllStandardError();
        QVERIFY2(errors.contains("Nova: "), errors);
        QCOMPARE(files::snapshot(m_survey), before);
    }

    void aSignalLeavesOldOrNew_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<int>("signal");
        QTest::newRow("new wells, SIGINT") << "new" << SIGINT;
        QTest::newRow("new wells, SIGTERM") << "new" << SIGTERM;
        QTest::newRow("logs, SIGTERM") << "logs" << SIGTERM;
        QTest::newRow("template, SIGINT") << "template" << SIGINT;
        QTest::newRow("export, SIGTERM") << "export" << SIGTERM;
        QTest::newRow("report, SIGHUP") << "report" << SIGHUP;
        QTest::newRow("picture of a well, SIGTERM") << "render" << SIGTERM;
        QTest::newRow("picture of a correlation, SIGINT") << "correlate" << SIGINT;
    }
    void aSignalLeavesOldOrNew()
    {
        QFETCH(QString, command);
        QFETCH(int, signal);
        const QString out = m_demo.newPath();
        QVERIFY(QDir().mkpath(out));
        QStringList words;
        if (command == "new" || command == "logs") {
            words = QStringList{"import", "--jobs", "3"};
            if (command == "new")
                words.append("--new-wells");
            else
                words.append("--force");
            for (int i = 0; i < fileCount; ++i) {
                words.append(m_demo.newPath() + ".las");
                files::write(words.last(),
                             lasText(command == "new" ? QStringLiteral("Nova-%1").arg(i)
                                                      : QString(i % 2 == 0 ? "Brisk-1" : "Brisk-2"),
                                     i / 2));
            }
        } else if (command == "template") {
            words = QStringList{"template", "copy", "Petrophysics", "Simple", "--force"};
        } else if (command == "export") {
            words = QStringList{"export", "Aldra-1", "Aldra-2", "Brisk-1", "--out", out, "--force", "--jobs", "2"};
        } else if (command == "render") {
            words = QStringList{"render", "Aldra-1", "--out", out + "/a.png", "--scale", "20", "--force"};
        } else if (command == "correlate") {
            words =
                QStringList{"correlate", "Kestrane reservoir", "--out", out + "/b.png", "--scale", "100", "--force"};
        } else {
            words = QStringList{"report", "logs", "--force"};
        }
        const bool isPicture = command == "render" || command == "correlate";
        int ended = 0;
        for (int i = 0; i < 14; ++i) {
            QProcess batch;
            batch.setWorkingDirectory(m_survey);
            batch.start(QStringLiteral(LORVA_BINARY_DIR "/bin/lorva-batch"), words);
            QVERIFY(batch.waitForStarted());
            const int wait = isPicture ? 100 + i * 50 : 4 + i * i * 2; // what is drawn is read first
            if (!batch.waitForFinished(wait)) {
                ::kill(static_cast<pid_t>(batch.processId()), signal);
                QVERIFY(batch.waitForFinished());
            }
            ended += batch.exitStatus() == QProcess::CrashExit ? 1 : 0;
            const QStringList hidden = hiddenFiles(m_survey) + hiddenFiles(out);
            QVERIFY2(hidden.isEmpty(), qPrintable(hidden.join(' ')));
        }
        QVERIFY(ended > 0);
        VERIFY_EXIT(0, runBatch({"check"}, m_survey));
        for (const QString &name : QDir(out).entryList(QDir::Files))
            QVERIFY2(name.endsWith(".png") || files::read(out + '/' + name).endsWith('\n'), qPrintable(name));
    }

private:
    BatchFixture m_demo;
    QString m_survey;
};

LORVA_TEST_MAIN(TestBatchTogether)
#include "tst_batchtogether.moc"
