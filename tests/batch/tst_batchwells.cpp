// What holds for every command, seen on the list of wells.

#include "batchfixture.h"
#include "support/testmain.h"
#include "survey/surveyfolder.h"
#include "survey/surveystore.h"

class TestBatchWells : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { m_demo.make(); }

    void wellsAreListedForPeople()
    {
        const BatchRun run = runBatch({"wells", "--survey", m_demo.original()});
        VERIFY_EXIT(0, run);
        QCOMPARE(run.errors, QString());
        const QStringList lines = run.lines();
        QCOMPARE(lines.size(), 7);
        QCOMPARE(lines.at(0).simplified(), QString("Well X Y KB (m) TD (m) Type Logs Markers"));
        survey::SurveyStore store(m_demo.original());
        const auto wells = store.list().value;
        for (int i = 0; i < wells.size(); ++i) {
            const QStringList cells = lines.at(i + 1).simplified().split(' ');
            QVERIFY(lines.at(i + 1).startsWith(wells.at(i).name + ' '));
            QCOMPARE(cells.last().toInt(), store.markers(wells.at(i).key).value.size());
            QCOMPARE(cells.at(cells.size() - 2).toInt(), store.logs(wells.at(i).key).value.size());
        }
    }

    // Read from above to below, numbers of several precisions are compared at their points.
    void numbersStandBelowEachOther()
    {
        QFile file(m_demo.newPath());
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("2021.5\t0.125\n995\t12\n1010.25\t7.5\n");
        file.close();
        const QString survey = m_demo.copy();
        const BatchRun run =
            runBatch({"points", "Brisk-1", "Porosity", "--import", file.fileName(), "--force"}, survey);
        VERIFY_EXIT(0, run);
        QCOMPARE(run.lines(), (QStringList{" MD (m)   Value", "2021.5    0.125", " 995     12", "1010.25   7.5"}));
        const QStringList wells = runBatch({"wells", "--survey", survey}).lines();
        QCOMPARE(wells.at(1).simplified(), QString("Aldra-1 504250.0 6005350.0 20.60 2610.00 Oil 15 15"));
    }

    void wellsAreListedForPrograms()
    {
        const BatchRun run = runBatch({"wells", "--json"}, m_demo.original());
        VERIFY_EXIT(0, run);
        QCOMPARE(run.json().keys(), (QStringList{"command", "failures", "notices", "survey", "wells"}));
        QCOMPARE(run.json().value("command").toString(), QString("wells"));
        QCOMPARE(QDir(run.json().value("survey").toString()).canonicalPath(),
                 QDir(m_demo.original()).canonicalPath());
        QCOMPARE(run.list("wells").size(), 6);
        survey::SurveyStore store(m_demo.original());
        const host::WellEntry entry = store.list().value.first();
        const host::WellHeader header = store.header(entry.key).value;
        const QJsonObject well = run.record("wells");
        QCOMPARE(
            well.keys(),
            (QStringList{"kbElevation", "key", "logCount", "markerCount", "name", "totalDepth", "type", "x", "y"}));
        QCOMPARE(well.value("name").toString(), entry.name);
        QCOMPARE(well.value("key").toString(), entry.key);
        QCOMPARE(well.value("x").toDouble(), header.x);
        QCOMPARE(well.value("y").toDouble(), header.y);
        QCOMPARE(static_cast<float>(well.value("kbElevation").toDouble()), header.kbElevation);
        QCOMPARE(well.value("totalDepth").toDouble(), header.totalDepth);
        QCOMPARE(well.value("logCount").toInt(), store.logs(entry.key).value.size());
    }

    void aSurveyInFeetIsToldInMetres()
    {
        const QString folder = m_demo.newPath();
        survey::NewSurvey feet;
        feet.name = "Feet";
        feet.depthUnit = survey::DepthUnit::Foot;
        QCOMPARE(survey::createSurvey(folder, feet).error, QString());
        survey::SurveyStore store(folder);
        survey::WellProperties well;
        well.name = "W-1";
        well.kbElevation = 100;
        well.totalDepth = 1000;
        QVERIFY(store.addWell(well).ok());
        const BatchRun run = runBatch({"wells", "--json", "--survey=" + folder});
        VERIFY_EXIT(0, run);
        QCOMPARE(run.record("wells").value("totalDepth").toDouble(), 304.8);
        QCOMPARE(run.record("wells").value("kbElevation").toDouble(), 30.48);
    }

    void aWellThatCannotBeReadIsToldAndTheOthersAreListed()
    {
        const QString survey = m_demo.copy();
        QString broken;
        for (const QString &file : QDir(survey + "/WellInfo").entryList({"*.well"}))
            broken = file;
        files::write(survey + "/WellInfo/" + broken, "no well");
        const BatchRun run = runBatch({"wells", "--json", "--survey", survey});
        VERIFY_EXIT(1, run);
        QCOMPARE(run.list("wells").size(), 6);
        QCOMPARE(run.list("failures").size(), 1);
        QVERIFY2(run.errors.contains(broken), qPrintable(run.errors));
        int unknown = 0;
        for (const QJsonValue &well : run.list("wells"))
            unknown += well.toObject().value("totalDepth").isNull() ? 1 : 0;
        QCOMPARE(unknown, 1);
    }

    void anEmptySurveySaysSo()
    {
        const QString folder = m_demo.newPath();
        QCOMPARE(survey::createSurvey(folder, {}).error, QString());
        const BatchRun people = runBatch({"wells", "--survey", folder});
        VERIFY_EXIT(0, people);
        QCOMPARE(people.output, QByteArray("The survey has no wells.\n"));
        QVERIFY(runBatch({"wells", "--json", "--survey", folder}).list("wells").isEmpty());
    }

    void aFolderThatIsNoSurveyFails()
    {
        const QString folder = m_demo.newPath();
        QVERIFY(QDir().mkpath(folder));
        const BatchRun named = runBatch({"wells", "--survey", folder});
        VERIFY_EXIT(1, named);
        QVERIFY(named.errors.contains(folder));
        const BatchRun current = runBatch({"wells"}, folder);
        VERIFY_EXIT(2, current);
        QVERIFY(current.errors.contains("--survey"));
        VERIFY_EXIT(1, runBatch({"wells", "--survey", folder + "/none"}));
    }

    void readingWritesNothing()
    {
        const QString survey = m_demo.copy();
        const auto before = files::snapshot(survey);
        VERIFY_EXIT(0, runBatch({"wells", "--survey", survey}));
        QCOMPARE(files::snapshot(survey), before);
    }

    void namesCannotCommandTheTerminal()
    {
        const QString survey = m_demo.copy();
        const QString list = survey + "/WellInfo/.omf";
        files::write(list, files::read(list).replace("Brisk-2", QByteArray("\xc3\x86r\xc3\xb8\x1b[31m")));
        const BatchRun run = runBatch({"wells", "--survey", survey}, "/", {{"LC_ALL", "C"}});
        QVERIFY(!run.output.contains('\x1b'));
        QVERIFY(run.output.contains("\xc3\x86r\xc3\xb8\xef\xbf\xbd[31m"));
    }

    void foldersMayHaveAnyName()
    {
        const QString survey = m_demo.newPath() + QString::fromUtf8("/Ærø survey");
        QVERIFY(QDir().mkpath(QFileInfo(survey).path()));
        QCOMPARE(survey::createSurvey(survey, {}).error, QString());
        for (const char *locale : {"C", "C.UTF-8"})
            VERIFY_EXIT(0, runBatch({"wells", "--survey", survey}, "/", {{"LC_ALL", locale}}));
    }

    void aReaderThatWentAwayEndsItQuietly()
    {
        QProcess shell;
        shell.setWorkingDirectory(m_demo.original());
        shell.start("bash",
                    {"-c", "\"$0\" wells > >(exec true; ) ; echo $?; (sleep 0.2; \"$0\" wells; echo $? >&2) | true",
                     QStringLiteral(LORVA_BINARY_DIR "/bin/lorva-batch")});
        QVERIFY(shell.waitForFinished());
        QCOMPARE(shell.readAllStandardError(), QByteArray("1\n"));
    }

    void aFullDiskUnderTheOutputIsTold()
    {
        QProcess shell;
        shell.setWorkingDirectory(m_demo.original());
        shell.start("bash",
                    {"-c", "\"$0\" wells > /dev/full; echo $?; \"$0\" wells >&-; echo $?",
                     QStringLiteral(LORVA_BINARY_DIR "/bin/lorva-batch")});
        QVERIFY(shell.waitForFinished());
        QCOMPARE(shell.readAllStandardOutput(), QByteArray("1\n1\n"));
        QCOMPARE(shell.readAllStandardError().count("Cannot write the output"), 2);
    }

private:
    BatchFixture m_demo;
};

LORVA_TEST_MAIN(TestBatchWells)
#include "tst_batchwells.moc"
