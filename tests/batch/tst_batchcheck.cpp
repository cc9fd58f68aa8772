// The check of a survey, and the unwrapping of LAS files.

#include "batchfixture.h"
#include "datastore/calibrationfile.h"
#include "datastore/perforationfile.h"
#include "host/hostrecords.h"
#include "las/importnotices.h"
#include "las/lasheader.h"
#include "las/logreader.h"
#include "las/wellinfo.h"
#include "support/testmain.h"
#include "survey/surveystore.h"

#include <QElapsedTimer>
#include <QStandardPaths>

namespace {

/// Files that the import cannot take as they stand; all hold the logs A and B.
const char wrapped[] =
    "~V\nVERS. 2.0 :\nWRAP. YES :\n~W\nSTRT.F 100 :\nSTOP.F 102 :\nSTEP.F 1 :\nNULL. -9999 :\n"
    "WELL. W-1 : the well\nCOMP. A: B :company\n~C\nDEPT.F :\nA.API : first one\nB.OHMM :\n~P\nMUD.K "
    "7 : heavy\n~A\n100\n1.5 2\n101\n-9999 4\n102\n5 6\n";
const char commas[] = "~Version\nVERS. 3.0 :\nWRAP. NO :\nDLM. COMMA :\n~Well\nSTRT.F 100 :\nSTOP.F 102 :\nSTEP.F 1 "
                      ":\nNULL. -9999 :\n~Log_Definition\nDEPT.F :\nA.API :\nLITH. :\nB.OHMM :\n~Log_Data | "
                      "Log_Definition\n100,1.5,sand,2\n101,-9999,\"clay, grey\",4\n102,5,sand,6\n";
const char tabs[] = "~V\nVERS. 1.20 :\nWRAP. NO :\n~W\nSTRT.F 100 :\nSTOP.F 102 :\nSTEP.F 1 :\nNULL. -9999 "
                    ":\n~C\nDEPT.F :\nA.API :\nB.OHMM :\n~A\n100\t1.5\t2\n101\t\t4\n102\t5\t6\n";

} // namespace

class TestBatchCheck : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { m_demo.make(); }
    void init()
    {
        m_survey = m_demo.copyWithoutDefaults();
        m_project = m_survey + "/WLC";
    }

    void aGoodSurveyHasNothingWrong()
    {
        const auto before = files::snapshot(m_survey);
        const BatchRun run = runBatch({"check"}, m_survey);
        VERIFY_EXIT(0, run);
        QCOMPARE(run.output, QByteArray("Everything is as it should be.\n"));
        VERIFY_EXIT(0, runBatch({"check", "--repair-nothing", "--jobs", "1"}, m_survey));
        QCOMPARE(files::snapshot(m_survey), before);
    }

    void whatIsWrongIsFound_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("state");
        const auto row = [](const char *name, const QString &file, const QByteArray &bytes, const char *state) {
            QTest::newRow(name) << file << bytes << QString::fromLatin1(state);
        };
        row("well", "WellInfo/Aldra-2.well", "nonsense", "damaged");
        row("log", "WellInfo/Aldra-2^3.wll", "nonsense", "damaged");
        row("markers", "WellInfo/Aldra-2.wlm", "nonsense", "damaged");
        row("zones", "WLC/Aldra-1_perforationZone.txt", "Aldra-1|1\na|b\n", "damaged");
        row("no zones", "WLC/Aldra-1_perforationZone.txt", "garbage", "damaged");
        row("no track", "WLC/Templates/Global/Petrophysics/Track_1.txt", "garbage", "damaged");
        row("points", "WLC/Aldra-1_Porosity_calibrationPoints.txt", "one\n", "damaged");
        row("points of another", "WLC/Aldra-1_Porosity_calibrationPoints.txt",
            "WellName :Other\nGroupName :Porosity\n1|2\n", "damaged");
        row("defaults of another", "WLC/DefaultLogs/Aldra-1.txt", "Other\nGamma|GR\n", "damaged");
        row("defaults", "WLC/DefaultLogs/Aldra-1.txt", "Aldra-1\nGamma\n", "damaged");
        row("default log", "WLC/DefaultLogs/Aldra-1.txt", "Aldra-1\nGamma|NONE\n", "missing");
        row("track", "WLC/Templates/Global/Petrophysics/Track_1.txt", "Linear\nno curve\n", "damaged");
        row("table", "WLC/CurveGroups/CurveGroupTable.txt", "GR Gamma\n", "damaged");
        row("orphaned well", "WellInfo/Other.well", "x", "orphaned");
        row("orphaned log", "WellInfo/Other^1.wll", "x", "orphaned");
        row("orphaned zones", "WLC/Other_perforationZone.txt", "Other|0\n", "orphaned");
        row("orphaned points", "WLC/Other_Sonic_calibrationPoints.txt", "x", "orphaned");
        row("orphaned defaults", "WLC/DefaultLogs/Other.txt", "Other\n", "orphaned");
        row("orphaned templates", "WLC/Templates/Other/Mine/Track_1.txt", "Depth\n", "orphaned");
        row("unfinished", "WellInfo/.lorva-a1B2c3", "x", "unfinished");
        row("unfinished in the project", "WLC/DefaultLogs/.lorva-a1B2c3", "x", "unfinished");
    }
    void whatIsWrongIsFound()
    {
        QFETCH(QString, file);
        QFETCH(QByteArray, bytes);
        QFETCH(QString, state);
        files::write(m_survey + '/' + file, bytes);
        const BatchRun run = runBatch({"check", "--json"}, m_survey);
        const bool isBad = state == "damaged" || state == "missing";
        VERIFY_EXIT(isBad ? 1 : 0, run);
        QCOMPARE(run.errors.isEmpty(), !isBad);
        QVERIFY2(run.list("findings").size() >= 1, run.output.constData());
        bool isFound = false;
        for (const QJsonValue &value : run.list("findings")) {
            const QJsonObject finding = value.toObject();
            QCOMPARE(finding.value("state").toString(), state);
            // The well's own files are named in the sentence.
            const QString told = finding.value("file").toString() + finding.value("text").toString();
            isFound = isFound || told.contains(QFileInfo(file).fileName()) || told.contains(file.section('/', 0, 2));
        }
        QVERIFY2(isFound, run.output.constData());
        QCOMPARE(runBatch({"check", "--json", "--jobs", "3"}, m_survey).output, run.output);
    }

    void whatIsMissingIsFound()
    {
        QVERIFY(QFile::remove(m_survey + "/WellInfo/Brisk-1.well"));
        const BatchRun run = runBatch({"check", "--json"}, m_survey);
        VERIFY_EXIT(1, run);
        bool isMissing = false;
        for (const QJsonValue &value : run.list("findings")) {
            const QJsonObject finding = value.toObject();
            isMissing = isMissing
                || (finding.value("state").toString() == "missing"
                    && finding.value("text").toString().contains("Brisk-1.well"));
        }
        QVERIFY2(isMissing, run.output.constData());
    }

    // A log that is gone from the middle takes those behind it with it.
    void aGapInTheLogsIsFound_data()
    {
        QTest::addColumn<QStringList>("removed");
        QTest::addColumn<QString>("added");
        QTest::addColumn<int>("hidden");
        QTest::newRow("one") << QStringList{"Aldra-1^3.wll"} << QString() << 12;
        QTest::newRow("two") << QStringList{"Aldra-1^3.wll", "Aldra-1^4.wll"} << QString() << 11;
        QTest::newRow("two gaps") << QStringList{"Aldra-1^3.wll", "Aldra-1^7.wll"} << QString() << 11;
        QTest::newRow("the first") << QStringList{"Aldra-1^1.wll"} << QString() << 14;
        QTest::newRow("far behind") << QStringList() << "Aldra-1^40.wll" << 1;
    }
    void aGapInTheLogsIsFound()
    {
        QFETCH(QStringList, removed);
        QFETCH(QString, added);
        QFETCH(int, hidden);
        const QString folder = m_survey + "/WellInfo/";
        for (const QString &name : qAsConst(removed))
            QVERIFY(QFile::remove(folder + name));
        if (!added.isEmpty())
            files::write(folder + added, "x");
        const BatchRun run = runBatch({"check", "--json"}, m_survey);
        VERIFY_EXIT(1, run);
        QStringList missing;
        QStringList orphaned;
        for (const QJsonValue &value : run.list("findings")) {
            const QJsonObject finding = value.toObject();
            (finding.value("state").toString() == "missing" ? missing : orphaned)
                .append(finding.value("file").toString());
        }
        QCOMPARE(missing.filter(".wll"), QStringList{folder + removed.value(0, "Aldra-1^16.wll")});
        QCOMPARE(orphaned.filter("/WellInfo/Aldra-1^").size(), hidden);
    }

    void aDamagedFileIsOneRow_data()
    {
        QTest::addColumn<int>("size");
        QTest::newRow("no header") << 50; // problem and error of the same words
        QTest::newRow("in a marker") << 100; // two problems
    }
    void aDamagedFileIsOneRow()
    {
        QFETCH(int, size);
        const QString path = m_survey + "/WellInfo/Brisk-1.wlm";
        files::write(path, files::read(path).left(size));
        const BatchRun run = runBatch({"check", "--json"}, m_survey);
        VERIFY_EXIT(1, run);
        QCOMPARE(run.list("findings").size(), 1);
        QVERIFY2(run.errors.contains("Damaged or missing: 1."), qPrintable(run.errors));
        const QString text = run.record("findings").value("text").toString();
        QCOMPARE(text.count(path), 1);
        if (size == 100)
            QVERIFY2(text.contains("has no depth") && text.contains("not understood"), qPrintable(text));
    }

    void correlationsAreChecked()
    {
        const QString folder = m_project + "/Correlations/";
        const QStringList names = QDir(folder).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
        QVERIFY(!names.isEmpty());
        const QString path = folder + names.first() + "/properties.txt";
        const QByteArray good = files::read(path);
        files::write(path, QByteArray(good).replace("Brisk-2", "Nowhere"));
        const BatchRun unknown = runBatch({"check", "--json"}, m_survey);
        VERIFY_EXIT(1, unknown);
        QCOMPARE(unknown.record("findings").value("state").toString(), QString("missing"));
        QVERIFY(unknown.output.contains("Nowhere"));
        files::write(path, good.left(good.size() / 2));
        VERIFY_EXIT(1, runBatch({"check"}, m_survey));
        QVERIFY(QFile::remove(path));
        const BatchRun none = runBatch({"check", "--json"}, m_survey);
        VERIFY_EXIT(1, none);
        QCOMPARE(none.record("findings").value("state").toString(), QString("missing"));
    }

    void linksOutOfTheSurveyAreTold()
    {
        QVERIFY(QFile::link("/", m_project + "/CurveGroups/away"));
        const BatchRun run = runBatch({"check", "--json"}, m_survey);
        VERIFY_EXIT(1, run);
        QVERIFY(run.output.contains("CurveGroups/away"));
    }

    void aSurveyWithoutAProjectIsFine()
    {
        QVERIFY(QDir(m_project).removeRecursively());
        VERIFY_EXIT(0, runBatch({"check"}, m_survey));
    }

    void unwrappedFilesCanBeImported_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<bool>("hasTexts");
        QTest::newRow("wrapped") << QByteArray(wrapped) << false;
        QTest::newRow("commas and texts") << QByteArray(commas) << true;
        QTest::newRow("tabs") << QByteArray(tabs) << false;
    }
    void unwrappedFilesCanBeImported()
    {
        QFETCH(QByteArray, text);
        QFETCH(bool, hasTexts);
        const QString in = m_demo.newPath() + ".las";
        const QString out = m_demo.newPath() + ".las";
        files::write(in, text);
        const BatchRun run = runBatch({"las-unwrap", in, "--out", out, "--json"});
        VERIFY_EXIT(0, run);
        QCOMPARE(run.record("files").value("rowCount").toInt(), 3);
        QCOMPARE(run.record("files").value("logs").toArray(), (QJsonArray{"A", "B"}));
        QCOMPARE(run.errors.contains("LITH"), hasTexts);
        WellInfo file;
        QCOMPARE(file.load(out), 0);
        QCOMPARE(file.wrapped, false);
        QCOMPARE(file.version, QString("2.0"));
        QCOMPARE(file.depthUnit, QString("F"));
        QCOMPARE(file.startDepth, 100.0);
        QCOMPARE(file.stopDepth, 102.0);
        QCOMPARE(file.step, 1.0);
        QCOMPARE(file.nullValue, -999.25);
        QCOMPARE(file.curves.size(), 3);
        QCOMPARE(file.curves.at(0).values, (QVector<double>{100, 101, 102}));
        QCOMPARE(file.curves.at(1).values, (QVector<double>{1.5, -999.25, 5}));
        QCOMPARE(file.curves.at(2).values, (QVector<double>{2, 4, 6}));
        QCOMPARE(file.curves.at(1).unit, QString("API"));
        QCOMPARE(las::importNotices(file, 100).size(), 1); // feet
        const las::LogFile again = las::readLogs(out);
        QCOMPARE(again.notices, QStringList());
        QCOMPARE(again.logCount(), 2);
    }

    void theHeaderGoesAlong()
    {
        const QString in = m_demo.newPath() + ".las";
        const QString out = m_demo.newPath() + ".las";
        files::write(in, wrapped);
        VERIFY_EXIT(0, runBatch({"las-unwrap", in, "--out", out}));
        const las::Header header = las::readHeader(out).header;
        const auto value = [&header](char section, const char *mnemonic) {
            const las::HeaderItem *item = header.find(QLatin1Char(section), {QString::fromLatin1(mnemonic)});
            return item ? item->value + '/' + item->description : QString();
        };
        QCOMPARE(value('W', "WELL"), QString("W-1/the well"));
        QCOMPARE(value('W', "COMP"), QString("A: B/company"));
        QCOMPARE(value('P', "MUD"), QString("7/heavy"));
        QCOMPARE(value('C', "A"), QString("/first one"));
        QCOMPARE(files::read(out).count("STRT"), 1);
    }

    void namesAreMadeMnemonics()
    {
        const QString in = m_demo.newPath() + ".las";
        const QString out = m_demo.newPath() + ".las";
        files::write(in,
                     "~V\nVERS. 3.0 :\nWRAP. NO :\nDLM. COMMA :\n~W\nSTRT.M 1 :\nNULL. -1 :\n~C\nDEPT.M :\nA B.API "
                     ":\nA.API :\nA.API :\n~A\n1,2,3,4\n2,3,4,5\n");
        const BatchRun run = runBatch({"las-unwrap", in, "--out", out, "--json"});
        VERIFY_EXIT(0, run);
        WellInfo file;
        QCOMPARE(file.load(out), 0);
        QCOMPARE(file.curves.size(), 4);
        for (int i = 0; i < 3; ++i)
            QCOMPARE(file.curves.at(i + 1).logName, run.record("files").value("logs").toArray().at(i).toString());
        QCOMPARE(las::importNotices(file, 100), QStringList());
    }

    void logsOfOtherDepthsGetAFileOfTheirOwn()
    {
        const QString in = m_demo.newPath() + ".las";
        const QString out = m_demo.newPath() + ".las";
        files::write(in,
                     "~V\nVERS. 2.0 :\nWRAP. NO :\n~W\nSTRT.M 1 :\nNULL. -1 :\n~C\nDEPT.M :\nA. :\n~A\n1 2\n2 "
                     "3\n~C\nDEPT.M :\nB. :\n~A\n1 5\n1.5 6\n~C\nDEPT.M :\nC. :\n~A\n1 7\n2 8\n");
        const BatchRun run = runBatch({"las-unwrap", in, "--out", out, "--json"});
        VERIFY_EXIT(0, run);
        QCOMPARE(run.list("files").size(), 2);
        QCOMPARE(run.record("files", 0).value("logs").toArray(), (QJsonArray{"A", "C"}));
        QCOMPARE(run.record("files", 1).value("file").toString(), QString(out).replace(".las", "_2.las"));
        QCOMPARE(run.record("files", 1).value("logs").toArray(), QJsonArray{"B"});
        WellInfo file;
        QCOMPARE(file.load(QString(out).replace(".las", "_2.las")), 0);
        QCOMPARE(file.curves.at(0).values, (QVector<double>{1, 1.5}));
    }

    void nothingIsReplacedUnasked()
    {
        const QString in = m_demo.newPath() + ".las";
        files::write(in, wrapped);
        VERIFY_EXIT(1, runBatch({"las-unwrap", in, "--out", in}));
        QCOMPARE(files::read(in), QByteArray(wrapped));
        const QString out = m_demo.newPath() + ".las";
        VERIFY_EXIT(0, runBatch({"las-unwrap", in, "--out", out, "--dry-run"}));
        QVERIFY(!QFileInfo::exists(out));
        const QString left = QFileInfo(in).path() + "/.lorva-abcDEF";
        files::write(left, "of a program that died");
        VERIFY_EXIT(0, runBatch({"las-unwrap", in, "--out", in, "--force"}));
        QVERIFY(!QFileInfo::exists(left));
        QVERIFY(files::read(in).contains("WRAP.          NO"));
        VERIFY_EXIT(1, runBatch({"las-unwrap", "/none.las", "--out", out}));
        VERIFY_EXIT(1, runBatch({"las-unwrap", in, "--out", "/none/such/folder.las"}));
        files::write(in, "no LAS file");
        VERIFY_EXIT(1, runBatch({"las-unwrap", in, "--out", out}));
        VERIFY_EXIT(2, runBatch({"las-unwrap", in}));
        QVERIFY(!QFileInfo::exists(out));
    }

    // On a terminal, which script(1) makes. How long a second is differs by machine: the file grows until it is enough.
    void aLongUnwrappingShowsHowFarItIs()
    {
        if (QStandardPaths::findExecutable("script").isEmpty())
            QSKIP("script is not installed");
        constexpr int longMs = 5000; // reading is about half of it
        const QString in = m_demo.newPath() + ".las";
        for (int rows = 400000; rows < 30000000; rows *= 3) {
            QByteArray text = "~V\nVERS. 2.0 :\nWRAP. NO :\n~W\nSTRT.M 0 :\nNULL. -1 :\n~C\nDEPT.M :\nA. :\n~A\n";
            for (int row = 0; row < rows; ++row)
                text += QByteArray::number(row) + " 5\n";
            files::write(in, text);
            QElapsedTimer timer;
            timer.start();
            QProcess terminal;
            terminal.start(
                "script",
                {"-qec", LORVA_BINARY_DIR "/bin/lorva-batch las-unwrap " + in + " --force --out " + in, "/dev/null"});
            QVERIFY(terminal.waitForFinished(120000));
            QCOMPARE(terminal.exitCode(), 0);
            const QByteArray shown = terminal.readAllStandardOutput();
            if (shown.contains("Writing rows: ")) {
                QVERIFY2(shown.contains(" of " + QByteArray::number(rows)), shown);
                return;
            }
            QVERIFY2(timer.elapsed() < longMs, shown);
        }
        QFAIL("No file took long enough");
    }

private:
    BatchFixture m_demo;
    QString m_survey;
    QString m_project;
};

LORVA_TEST_MAIN(TestBatchCheck)
#include "tst_batchcheck.moc"
