// The commands that tell: logs, info, las, and the reports.

#include "batchfixture.h"
#include "datastore/calibrationfile.h"
#include "datastore/perforationfile.h"
#include "las/rowcheck.h"
#include "las/wellinfo.h"
#include "support/testmain.h"
#include "survey/surveyfolder.h"
#include "survey/surveystore.h"

namespace {

QStringList texts(const QJsonValue &list)
{
    QStringList result;
    for (const QJsonValue &text : list.toArray())
        result.append(text.toString());
    return result;
}

const char oddFile[] =
    "~V\nVERS. 2.0 :\nWRAP. NO :\n~W\nSTRT.M 10 :\nSTOP.M 15 :\nSTEP.M 1 :\nNULL. -999.25 :\nUWI. W-7 :\n"
    "~C\nDEPT.M :\nGR.API :\nLITH. :\n~A\n"
    "10 1 2\n11 -999.25 sand\n11 3 4\nxx 5 6\n12 7 8\n# a comment\n12.5 9 shale\n9 1 2\n10 1\n";

} // namespace

class TestBatchRead : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { m_demo.make(); }

    void logsTellTheirSamples()
    {
        const BatchRun run = runBatch({"logs", "Aldra-1", "--json", "--survey", m_demo.original()});
        VERIFY_EXIT(0, run);
        survey::SurveyStore store(m_demo.original());
        const QString key = store.list().value.first().key;
        const auto infos = store.logs(key).value;
        QCOMPARE(run.list("logs").size(), infos.size());
        for (int i = 0; i < infos.size(); ++i) {
            const QJsonObject record = run.record("logs", i);
            const host::LogData log = store.log(key, i).value;
            QCOMPARE(record.value("name").toString(), infos.at(i).name);
            QCOMPARE(record.value("unit").toString(), infos.at(i).unit);
            QCOMPARE(record.value("sampleCount").toInt(), log.values.size());
            QCOMPARE(static_cast<float>(record.value("startDepth").toDouble()), log.depths.first());
            QCOMPARE(static_cast<float>(record.value("endDepth").toDouble()), log.depths.last());
            QCOMPARE(record.value("step").toDouble(), 0.1524);
            int missing = 0;
            float least = 1e9f;
            float most = -1e9f;
            for (const float value : log.values) {
                missing += host::isUndefined(value) ? 1 : 0;
                if (!host::isUndefined(value)) {
                    least = qMin(least, value);
                    most = qMax(most, value);
                }
            }
            QCOMPARE(record.value("missingCount").toInt(), missing);
            QCOMPARE(static_cast<float>(record.value("minimum").toDouble()), least);
            QCOMPARE(static_cast<float>(record.value("maximum").toDouble()), most);
        }
        QCOMPARE(run.record("logs", 0).value("group").toString(), QString("Gamma"));
        QCOMPARE(run.record("logs", 0).value("isDefault").toBool(), true);
        const BatchRun unlaunched = runBatch({"logs", "Aldra-1", "--json"}, m_demo.copyWithoutDefaults());
        QCOMPARE(unlaunched.record("logs", 0).value("isDefault").toBool(), false);
        QCOMPARE(runBatch({"logs", "Aldra-1"}, m_demo.original()).lines().size(), infos.size() + 1);
    }

    void anUnevenLogHasNoStep()
    {
        const QString survey = m_demo.copy();
        survey::SurveyStore store(survey);
        const QString key = store.list().value.first().key;
        QVERIFY(store.writeLog(key, {"ODD", "m", {100, 101, 103}, {1, 2, 3}}).ok());
        files::write(survey + "/WLC/DefaultLogs/Aldra-1.txt", "Aldra-1\nOthers|ODD\n");
        const BatchRun run = runBatch({"logs", "Aldra-1", "--json"}, survey);
        const QJsonObject odd = run.record("logs", run.list("logs").size() - 1);
        QCOMPARE(odd.value("name").toString(), QString("ODD"));
        QVERIFY(odd.value("step").isNull());
        QVERIFY(odd.value("isDefault").toBool());
    }

    void wellsAreFoundByNameOrKey()
    {
        survey::SurveyStore store(m_demo.original());
        const host::WellEntry well = store.list().value.at(2);
        for (const QString &word : {well.name, well.key}) {
            const BatchRun run = runBatch({"info", word, "--json"}, m_demo.original());
            VERIFY_EXIT(0, run);
            QCOMPARE(run.record("wells").value("name").toString(), well.name);
        }
        for (const char *command : {"info", "logs"}) {
            const BatchRun unknown = runBatch({command, "None such"}, m_demo.original());
            VERIFY_EXIT(1, unknown);
            QVERIFY(unknown.errors.contains("\"None such\""));
        }
        const QString survey = m_demo.copy();
        const QString list = survey + "/WellInfo/.omf";
        files::write(list, files::read(list).replace("Aldra-2", "Aldra-1"));
        const BatchRun twice = runBatch({"info", "Aldra-1"}, survey);
        VERIFY_EXIT(1, twice);
        QVERIFY2(twice.errors.contains(store.list().value.at(1).key), qPrintable(twice.errors));
    }

    void infoTellsWhatThereIs()
    {
        const BatchRun run = runBatch({"info", "Aldra-1", "--json"}, m_demo.original());
        VERIFY_EXIT(0, run);
        const QJsonObject well = run.record("wells");
        survey::SurveyStore store(m_demo.original());
        const QString key = store.list().value.first().key;
        QCOMPARE(well.value("key").toString(), key);
        QCOMPARE(well.value("surveyUnit").toString(), QString("metres"));
        QCOMPARE(well.value("totalDepth").toDouble(), store.header(key).value.totalDepth);
        QCOMPARE(well.value("groundElevation").toDouble(), -20.6);
        QCOMPARE(well.value("type").toString(), QString("Oil"));
        QStringList logs;
        for (const host::LogInfo &log : store.logs(key).value)
            logs.append(log.name);
        QCOMPARE(texts(well.value("logs")), logs);
        QCOMPARE(well.value("markers").toArray().size(), store.markers(key).value.size());
        QCOMPARE(well.value("zoneCount").toInt(), 3);
        QCOMPARE(well.value("points").toArray().size(), 2);
        QCOMPARE(well.value("points").toArray().first().toObject().value("group").toString(), QString("Porosity"));
        QVERIFY(well.value("points").toArray().first().toObject().value("count").toInt() > 100);
        const BatchRun people = runBatch({"info", "Aldra-1"}, m_demo.original());
        QVERIFY(people.output.startsWith("Well:                Aldra-1\n"));
        QVERIFY(people.output.contains("\n  Porosity "));
    }

    // What is damaged is not there for the survey; nobody may take the rest for all.
    void aDamagedLogIsTold()
    {
        const QString survey = m_demo.copy();
        const QString path = survey + "/WellInfo/Aldra-1^1.wll"; // GR
        files::write(path, "no log");
        const QString out = m_demo.newPath();
        QVERIFY(QDir().mkpath(out));
        const QVector<QStringList> failing{{"logs", "Aldra-1"},
                                           {"export", "Aldra-1", "--out", out, "--dry-run"},
                                           {"export", "Aldra-1", "--out", out, "--format", "columns"},
                                           {"export", "Aldra-1", "--out", out, "--logs", "GR", "--dry-run"}};
        for (const QStringList &words : failing) {
            const BatchRun run = runBatch(words + QStringList{"--json"}, survey);
            VERIFY_EXIT(1, run);
            QVERIFY2(run.errors.count(path) == 1, qPrintable(words.join(' ') + run.errors));
            QVERIFY2(texts(run.json().value("failures")).join(' ').contains(path), run.output);
        }
        QCOMPARE(runBatch({"logs", "Aldra-1", "--json"}, survey).list("logs").size(), 14);
        QCOMPARE(QDir(out + "/Aldra-1").entryList(QDir::Files).size(), 14);
        // Where it is not what was asked for it is a notice.
        const QVector<QStringList> passing{{"export", "Aldra-1", "--out", out, "--logs", "SP", "--dry-run"},
                                           {"export", "Brisk-1", "--out", out, "--dry-run"},
                                           {"render", "Aldra-1", "--out", out + "/a.png", "--dry-run"},
                                           {"wells"}};
        for (const QStringList &words : passing) {
            const BatchRun run = runBatch(words, survey);
            VERIFY_EXIT(0, run);
            QVERIFY2(run.errors.count(path) == 1, qPrintable(words.join(' ') + run.errors));
        }
    }

    void aDamagedSideFileIsTold()
    {
        const QString survey = m_demo.copy();
        files::write(calibrationPath(survey + "/WLC", "Aldra-1", "Porosity"), "no calibration file\n");
        for (const QStringList &words : {QStringList{"info", "Aldra-1"}, {"points", "Aldra-1", "Porosity"}}) {
            const BatchRun run = runBatch(words, survey);
            VERIFY_EXIT(1, run);
            QVERIFY2(run.errors.contains(calibrationPath(survey + "/WLC", "Aldra-1", "Porosity")
                                         + ": Its two heading lines"),
                     qPrintable(run.errors));
            QVERIFY2(!run.errors.contains("permission"), qPrintable(run.errors));
        }
        const QString zones = perforationPath(survey + "/WLC", "Aldra-1");
        files::write(zones, "no zones\n");
        const BatchRun run = runBatch({"zones", "Aldra-1"}, survey);
        VERIFY_EXIT(1, run);
        QVERIFY2(run.errors.contains("Aldra-1: the file " + zones + " holds no zones that can be read."),
                 qPrintable(run.errors));
        files::write(zones, "0\n");
        VERIFY_EXIT(0, runBatch({"zones", "Aldra-1"}, survey));
        const QString rows = m_demo.newPath();
        files::write(rows, "A\t1\t2\tGas\n");
        const BatchRun import = runBatch({"zones", "Aldra-1", "--import", rows}, survey);
        VERIFY_EXIT(1, import);
        QVERIFY2(import.errors.contains(zones + " exists; --force replaces it."), qPrintable(import.errors));
    }

    // Of paper there are pages and no pixels, of a picture the other way round.
    void peopleReadTheFieldsOfTheirFile()
    {
        const QString file = m_demo.newPath() + ".png";
        const BatchRun run =
            runBatch({"render", "Aldra-1", "--out", file, "--dry-run", "--survey", m_demo.original()});
        VERIFY_EXIT(0, run);
        QVERIFY2(run.output.contains("Width (pixels):") && !run.output.contains("Pages"), run.output);
    }

    void lasTellsAGoodFile()
    {
        const QString path = m_demo.importFile("Aldra-1.las");
        const BatchRun run = runBatch({"las", path, "--json"});
        VERIFY_EXIT(0, run);
        const QJsonObject file = run.record("files");
        QCOMPARE(file.value("file").toString(), path);
        QCOMPARE(file.value("well").toString(), QString("Aldra-1"));
        QCOMPARE(file.value("uwi").toString(), QString("Aldra-1"));
        QCOMPARE(file.value("isWrapped").toBool(), false);
        QCOMPARE(file.value("isImportable").toBool(), true);
        QCOMPARE(file.value("nullValue").toDouble(), -999.25);
        QCOMPARE(file.value("curves").toArray().size(), 16);
        QCOMPARE(file.value("sections").toArray().first().toObject().value("curveCount").toInt(), 16);
        QVERIFY(file.value("notices").toArray().isEmpty());
        QVERIFY(file.value("findings").toArray().isEmpty());
        QCOMPARE(run.json().value("survey").toString(), QString());
    }

    void lasNamesOddLines()
    {
        const QString path = m_demo.newPath() + ".las";
        files::write(path, oddFile);
        const BatchRun run = runBatch({"las", path, "--json"});
        VERIFY_EXIT(0, run);
        QStringList found;
        for (const QJsonValue &value : run.record("files").value("findings").toArray()) {
            const QJsonObject finding = value.toObject();
            found.append(QStringLiteral("%1 %2 %3 %4")
                             .arg(finding.value("line").toInt())
                             .arg(finding.value("kind").toString(), finding.value("text").toString())
                             .arg(finding.value("lineCount").toInt()));
        }
        QCOMPARE(
            found,
            (QStringList{"16 no number sand 2", "17 repeated depth 11 1", "18 no depth xx 1", "21 other step 12.5 1",
                         "21 no number shale 2", "22 depth turns 9 1", "23 number of values 2 instead of 3 1"}));
        QVERIFY(texts(run.record("files").value("notices")).join(' ').contains("1 of 8"));
    }

    void ofManyOddLinesTheFirstAreNamed()
    {
        const QString path = m_demo.newPath() + ".las";
        QByteArray text(oddFile);
        for (int i = 0; i < 30; ++i)
            text += QByteArray::number(100 + i) + " 1 clay\n";
        files::write(path, text);
        WellInfo file;
        QCOMPARE(file.load(path), 0);
        const las::RowFindings findings = las::checkRows(file);
        QCOMPARE(findings.count(las::RowFinding::Kind::Text), 32);
        int listed = 0;
        for (const las::RowFinding &finding : findings.first)
            listed += finding.kind == las::RowFinding::Kind::Text ? 1 : 0;
        QCOMPARE(listed, las::RowFindings::mostListed);
    }

    void lasTellsAWrappedFile()
    {
        const QString path = m_demo.newPath() + ".las";
        files::write(path,
                     "~V\nVERS. 2.0 :\nWRAP. YES :\n~W\nSTRT.M 10 :\nSTOP.M 11 :\nSTEP.M 1 :\nNULL. -999.25 :\n"
                     "~C\nDEPT.M :\nA. :\nB. :\n~A\n10\n1 2\n11\n3 4\n");
        const BatchRun run = runBatch({"las", path, "--json"});
        VERIFY_EXIT(0, run);
        QCOMPARE(run.record("files").value("isWrapped").toBool(), true);
        QCOMPARE(run.record("files").value("isImportable").toBool(), false);
        QVERIFY(texts(run.record("files").value("notices")).join(' ').contains("a file of 2 logs"));
        QVERIFY(run.record("files").value("findings").toArray().isEmpty());
    }

    void lasGoesOnBehindAFileThatIsNone()
    {
        const BatchRun run = runBatch({"las", "/none.las", m_demo.importFile("Brisk-1.las"), "/", "--json"});
        VERIFY_EXIT(1, run);
        QCOMPARE(run.list("files").size(), 1);
        QCOMPARE(run.list("failures").size(), 2);
        QVERIFY(run.errors.contains("The LAS file /none.las does not exist."));
    }

    // What is no LAS file is a failure; of one that an import refuses it is said why.
    void lasTellsWhatNoImportTakes()
    {
        const QString head = "~V\nVERS. 2.0 :\nWRAP. NO :\n~W\nSTRT.M 0 :\nNULL. -999.25 :\n~C\nDEPT.M :\n";
        const QVector<QPair<QString, QString>> files{
            {"no LAS file\n", {}},
            {"", {}},
            {QString("\u0089PNG\n") + QChar(1) + "\n~" + QChar(3) + "x\n~Version" + QChar(2) + "\n~9 1\n", {}},
            {"a text\n~ about tildes\n~Parameter\n1 2\n~A\n1 2\n", {}},
            {head + "GR.API :\n~A\n0 1\n0 2\n0 3\n", "all its depths are 0: no sample has a place."},
            {head + "GR.API :\n~A\n7 1\n7 2\n", "all its depths are 7: no sample has a place."},
            {head + "GR.API :\n~A\n", "it has no curve with samples."},
            {head + "~A\n1\n2\n", "it has no curve but its depths."},
            {head + "GR.API :\n~A\n7 1\n", {}},
        };
        QStringList words{"las", "--json"};
        for (const auto &file : files) {
            words.append(m_demo.newPath() + ".las");
            files::write(words.last(), file.first.toUtf8());
        }
        const BatchRun run = runBatch(words);
        VERIFY_EXIT(1, run);
        constexpr int strangers = 4;
        for (int i = 0; i < strangers; ++i)
            QVERIFY2(run.errors.contains("The file " + words.at(2 + i) + " is no LAS file"), qPrintable(run.errors));
        QCOMPARE(run.list("failures").size(), strangers);
        QCOMPARE(run.list("files").size(), files.size() - strangers);
        for (int i = strangers; i < files.size(); ++i) {
            const QJsonObject file = run.record("files", i - strangers);
            QCOMPARE(file.value("file").toString(), words.at(2 + i));
            QCOMPARE(file.value("isImportable").toBool(), files.at(i).second.isEmpty());
            const QStringList notices = texts(file.value("notices"));
            QCOMPARE(notices,
                     files.at(i).second.isEmpty() ? QStringList()
                                                  : QStringList{"The import refuses it: " + files.at(i).second});
        }
        for (int i = 0; i < strangers; ++i)
            words.removeAt(2);
        VERIFY_EXIT(0, runBatch(words));
    }

    void lasNamesUnevenLines()
    {
        const QString path = m_demo.newPath() + ".las";
        files::write(path,
                     "~V\nVERS. 2.0 :\nWRAP. NO :\n~W\nSTRT.M 0 :\nNULL. -999.25 :\n~C\nDEPT.M :\nA. :\nB. :\n"
                     "~A\n0 1 2\n1 1\n2 1 2\n3 1 2 3\n");
        const BatchRun run = runBatch({"las", path, "--json"});
        VERIFY_EXIT(0, run);
        const QJsonArray findings = run.record("files").value("findings").toArray();
        QCOMPARE(findings.size(), 2);
        const auto text = [&findings](int i, const char *key) {
            return findings.at(i).toObject().value(QLatin1String(key)).toVariant().toString();
        };
        QCOMPARE(text(0, "kind"), QString("number of values"));
        QCOMPARE(text(0, "line") + ": " + text(0, "text"), QString("13: 2 instead of 3"));
        QCOMPARE(text(1, "line") + ": " + text(1, "text"), QString("15: 4 instead of 3"));
        QCOMPARE(text(1, "lineCount"), QString("2"));
    }

    void reportsAreThoseOfTheWindow()
    {
        const QString survey = m_demo.copy();
        const BatchRun logs = runBatch({"report", "logs", "--json"}, survey);
        VERIFY_EXIT(0, logs);
        QCOMPARE(logs.list("files").size(), 6);
        const QByteArray report = files::read(survey + "/WLC/Aldra-3 A_logsInfo.txt");
        QVERIFY(report.startsWith("Curve Name      Start Depth End Depth  Break Zone Depth\n"));
        QVERIFY(report.count('\n') > 10);
        const BatchRun markers = runBatch({"report", "markers"}, survey);
        VERIFY_EXIT(0, markers);
        const QString path = survey + "/WLC/Well_Markers_Info.txt";
        const QByteArray bytes = files::read(path);
        QVERIFY(bytes.startsWith("Well Name"));
        QCOMPARE(bytes.count('\n'), 91);

        files::write(path, "mine");
        const BatchRun refused = runBatch({"report", "markers"}, survey);
        VERIFY_EXIT(1, refused);
        QVERIFY(refused.errors.contains(path) && refused.errors.contains("--force"));
        QCOMPARE(files::read(path), QByteArray("mine"));
        VERIFY_EXIT(0, runBatch({"report", "markers", "--force"}, survey));
        QCOMPARE(files::read(path), bytes);
    }

    void aDryReportWritesNothing()
    {
        const QString survey = m_demo.copy();
        QVERIFY(QDir(survey + "/WLC").removeRecursively());
        const auto before = files::snapshot(survey);
        const BatchRun run = runBatch({"report", "logs", "--dry-run", "--json"}, survey);
        VERIFY_EXIT(0, run);
        QCOMPARE(run.record("files").value("isWritten").toBool(true), false);
        QCOMPARE(files::snapshot(survey), before);
        VERIFY_EXIT(0, runBatch({"report", "logs"}, survey)); // makes the project
        QVERIFY(QFileInfo::exists(survey + "/WLC/Brisk-1_logsInfo.txt"));
        QVERIFY(QFileInfo::exists(survey + "/WLC/CurveGroups/Others.txt"));
    }

    void aReportThatCannotBeWrittenFails()
    {
        const QString survey = m_demo.copy();
        QVERIFY(QDir().mkpath(survey + "/WLC/Well_Markers_Info.txt"));
        const BatchRun run = runBatch({"report", "markers", "--force"}, survey);
        VERIFY_EXIT(1, run);
        QVERIFY2(run.errors.contains("Unable to create logs information file."), qPrintable(run.errors));
    }

    void aWellWithoutLogsIsANoticeOfTheReport()
    {
        const QString survey = m_demo.copy();
        survey::SurveyStore store(survey);
        survey::WellProperties well;
        well.name = "Empty";
        well.totalDepth = 100;
        QVERIFY(store.addWell(well).ok());
        const BatchRun run = runBatch({"report", "logs", "--json"}, survey);
        VERIFY_EXIT(0, run);
        QCOMPARE(run.list("notices").size(), 1);
        QVERIFY(run.errors.contains("Empty"));
    }

private:
    BatchFixture m_demo;
};

LORVA_TEST_MAIN(TestBatchRead)
#include "tst_batchread.moc"
