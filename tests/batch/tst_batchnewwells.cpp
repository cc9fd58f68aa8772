// The import that makes wells: --new-wells.

#include "importfixture.h"
#include "support/testmain.h"
#include "survey/surveyfolder.h"

class TestBatchNewWells : public BatchImportTest
{
    Q_OBJECT

private slots:
    void initTestCase() { m_demo.make(); }
    void init() { setUp(); }

    void newWellsAreMade()
    {
        const QString folder = m_demo.newPath();
        files::write(folder + "/a.las", lasText("Nova-1"));
        files::write(folder + "/b.las", lasText("Nova-2", "M", "YES"));
        files::write(folder + "/deep/c.LAS", lasText("Nova-3", "F"));
        files::write(folder + "/readme.txt", "no");
        const BatchRun run = import({folder, "--new-wells", "--json", "--jobs", "3"});
        VERIFY_EXIT(0, run);
        QCOMPARE(run.list("imports").size(), 3);
        survey::SurveyStore store(m_survey);
        QCOMPARE(store.list().value.size(), 9);
        QCOMPARE(logOf(m_survey, "Nova-1", "NEW").values.size(), 5);
        QCOMPARE(logOf(m_survey, "Nova-2", "NEW").values, (QVector<float>{0, 10, 20, 30, 40})); // wrapped
        QCOMPARE(logOf(m_survey, "Nova-3", "NEW").depths.first(), 304.8f);
        QVERIFY(files::read(m_survey + "/WLC/DefaultLogs/Nova-1.txt").contains("|RES"));
    }

    // A file of which one curve repeats another and one has no sample.
    void aDryRunOfNewWellsTellsWhatTheRunDoes()
    {
        QByteArray text = lasText("Nova-1").replace("RES.OHMM :\n", "RES.OHMM :\nNEW.API :\nGAP.M :\n");
        const int data = text.indexOf("~A\n") + 3;
        const QByteArrayList lines = text.mid(data).trimmed().split('\n');
        text.truncate(data);
        for (const QByteArray &line : lines)
            text += line + ' ' + line.split(' ').at(1) + " -999.25\n";
        files::write(m_las, text);
        const auto before = files::snapshot(m_survey);
        const BatchRun dry = import({m_las, "--new-wells", "--dry-run", "--json"});
        VERIFY_EXIT(0, dry);
        QCOMPARE(files::snapshot(m_survey), before);
        const BatchRun run = import({m_las, "--new-wells", "--json"});
        VERIFY_EXIT(0, run);
        QJsonObject expected = run.record("imports");
        QCOMPARE(expected.value("logs").toArray().size(), 2);
        QCOMPARE(runBatch({"logs", "Nova-1", "--json"}, m_survey).list("logs").size(), 2);
        expected["isWritten"] = false;
        QCOMPARE(dry.record("imports"), expected);
    }

    void newWellsObeyTheOptions()
    {
        files::write(m_las, lasText("Nova-1"));
        VERIFY_EXIT(
            0,
            import({m_las, "--new-wells", "--interval", "0.5", "--rename", "RES=Deep", "--map", "RES=Resistivity"}));
        const host::LogData log = logOf(m_survey, "Nova-1", "Deep");
        QCOMPARE(log.depths.size(), 9);
        QCOMPARE(log.values.at(1), 0.5f);
        for (int i : {3, 4, 5})
            QVERIFY(host::isUndefined(log.values.at(i))); // nothing is made of the gap at 1002
        QCOMPARE(log.values.at(6), 3.0f);
        QVERIFY(files::read(m_survey + "/WLC/CurveGroups/Resistivity.txt").contains("Deep\n"));
        files::write(m_las, lasText("Nova-2"));
        VERIFY_EXIT(0, import({m_las, "--new-wells", "--curves", "NEW"}));
        QCOMPARE(runBatch({"logs", "Nova-2", "--json"}, m_survey).list("logs").size(), 1);
    }

    void aSurveyInFeetGetsFeet()
    {
        const QString survey = m_demo.newPath();
        survey::NewSurvey feet;
        feet.name = "Feet";
        feet.depthUnit = survey::DepthUnit::Foot;
        QCOMPARE(survey::createSurvey(survey, feet).error, QString());
        files::write(m_las, lasText("F-1", "F"));
        VERIFY_EXIT(0, runBatch({"import", m_las, "--new-wells", "--survey", survey, "--interval", "0.3048"}));
        const BatchRun run = runBatch({"logs", "F-1", "--json"}, survey);
        QCOMPARE(run.record("logs").value("sampleCount").toInt(), 5);
        QCOMPARE(run.record("logs").value("startDepth").toDouble(), 304.8);
    }

    // As in the workbench: it has a head, and nothing of it is lost.
    void aFileWithoutLogsMakesAWellWithoutLogs()
    {
        const QByteArray text = lasText("Nova-1");
        files::write(m_las, text.left(text.indexOf("NEW.API")) + "~A\n1000\n1001\n");
        const BatchRun run = import({m_las, "--new-wells", "--json"});
        VERIFY_EXIT(0, run);
        QCOMPARE(run.record("imports").value("logs").toArray(), QJsonArray());
        QVERIFY2(run.output.contains("no logs"), run.output);
        QVERIFY(runBatch({"logs", "Nova-1", "--json"}, m_survey).list("logs").isEmpty());
    }

    void defaultLogsThatCannotBeMadeAreTold()
    {
        files::write(m_las, lasText("Nova-1"));
        const QString folder = m_survey + "/WLC/DefaultLogs";
        QVERIFY(QDir(folder).removeRecursively());
        files::write(folder, "no folder");
        const BatchRun run = import({m_las, "--new-wells", "--json"});
        VERIFY_EXIT(1, run);
        QVERIFY2(run.errors.contains("The well \"Nova-1\" has no default logs: the file " + folder
                                     + "/Nova-1.txt cannot be written."),
                 qPrintable(run.errors));
        QCOMPARE(runBatch({"logs", "Nova-1", "--json"}, m_survey).list("logs").size(), 2);
    }
};

LORVA_TEST_MAIN(TestBatchNewWells)
#include "tst_batchnewwells.moc"
