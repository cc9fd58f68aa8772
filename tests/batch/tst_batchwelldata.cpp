// Markers, zones, points, default logs and templates.

#include "batchfixture.h"
#include "datastore/calibrationfile.h"
#include "datastore/perforationfile.h"
#include "support/testmain.h"
#include "survey/surveystore.h"

namespace {

QVector<host::Marker> markersOf(const QString &survey, int well)
{
    survey::SurveyStore store(survey);
    return store.markers(store.list().value.at(well).key).value;
}

} // namespace

class TestBatchWellData : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { m_demo.make(); }
    void init()
    {
        m_survey = m_demo.copyWithoutDefaults();
        m_file = m_demo.newPath() + ".txt";
    }

    void markersAreListed()
    {
        const BatchRun run = runBatch({"markers", "Brisk-1", "--json"}, m_survey);
        VERIFY_EXIT(0, run);
        const auto markers = markersOf(m_survey, 3);
        QCOMPARE(run.list("markers").size(), markers.size());
        for (int i = 0; i < markers.size(); ++i) {
            const QJsonObject record = run.record("markers", i);
            QCOMPARE(record.value("name").toString(), markers.at(i).name);
            QCOMPARE(static_cast<float>(record.value("depth").toDouble()), markers.at(i).depth);
            QCOMPARE(record.value("color").toString(), markers.at(i).color.name());
            QVERIFY(record.value("subseaDepth").toDouble() < record.value("depth").toDouble() + 30);
        }
    }

    void markersAreImported()
    {
        files::write(m_file, "heading\nanother\n1\t1500.5\tTop B\n2\t1400\tTop A\n");
        const QStringList words{"markers", "Brisk-1",       "--import", m_file,           "--skip",
                                "2",       "--name-column", "3",        "--depth-column", "2"};
        const auto before = files::snapshot(m_survey);
        const BatchRun refused = runBatch(words, m_survey);
        VERIFY_EXIT(1, refused);
        QVERIFY2(refused.errors.contains("Markers of Brisk-1: 14 are there already; --force replaces them."),
                 qPrintable(refused.errors));
        const BatchRun dry = runBatch(words + QStringList{"--force", "--dry-run", "--json"}, m_survey);
        VERIFY_EXIT(0, dry);
        QCOMPARE(dry.list("markers").size(), 2); // those that would be stored
        QCOMPARE(files::snapshot(m_survey), before);
        const BatchRun run = runBatch(words + QStringList{"--force", "--json"}, m_survey);
        VERIFY_EXIT(0, run);
        QCOMPARE(run.list("markers").size(), 2);
        const auto markers = markersOf(m_survey, 3);
        QCOMPARE(markers.size(), 2);
        QCOMPARE(markers.at(0).name, QString("Top A"));
        QCOMPARE(markers.at(1).depth, 1500.5f);
    }

    void markersThatTheWellCannotTakeNeedForce()
    {
        files::write(m_file, "Top A\t100\nTop A\t200\nDeep\t99999\nOdd\tx\n");
        survey::SurveyStore store(m_survey);
        QVERIFY(store.writeMarkers(store.list().value.at(3).key, {}).ok());
        const auto before = files::snapshot(m_survey);
        const BatchRun refused = runBatch({"markers", "Brisk-1", "--import", m_file}, m_survey);
        VERIFY_EXIT(1, refused);
        for (const char *text : {"occurs twice", "outside the well's track", "no number", "--force"})
            QVERIFY2(refused.errors.contains(text), qPrintable(refused.errors));
        QCOMPARE(files::snapshot(m_survey), before);
        const BatchRun dry = runBatch({"markers", "Brisk-1", "--import", m_file, "--dry-run"}, m_survey);
        VERIFY_EXIT(1, dry);
        QVERIFY(dry.errors.contains("occurs twice"));
        const BatchRun forced = runBatch({"markers", "Brisk-1", "--import", m_file, "--force"}, m_survey);
        VERIFY_EXIT(0, forced);
        for (const char *text : {"occurs twice", "outside the well's track", "no number"})
            QVERIFY2(forced.errors.contains(text), qPrintable(forced.errors)); // what was agreed to is told
        QCOMPARE(markersOf(m_survey, 3).size(), 2); // Odd at 0, Top A
        QVERIFY(!forced.errors.contains(".wlm")); // what was left out is not in the file either
    }

    void filesThatCannotBeReadAreNamed_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QStringList>("words");
        QTest::addColumn<QString>("named");
        QTest::newRow("too few fields") << QByteArray("A\t1\nB\n") << QStringList{} << "2";
        QTest::newRow("no such column") << QByteArray("A\t1\n") << QStringList{"--depth-column", "3"} << "1";
        QTest::newRow("nothing left") << QByteArray("A\t1\n") << QStringList{"--skip", "1"}
                                      << "has no line to import";
        QTest::newRow("empty") << QByteArray() << QStringList{} << "has no line to import";
        QTest::newRow("none") << QByteArray("A\t1\n") << QStringList{"--import=/none.txt"} << "/none.txt";
        QTest::newRow("folder") << QByteArray("A\t1\n") << QStringList{"--import=/"} << "Cannot read the file /";
    }
    void filesThatCannotBeReadAreNamed()
    {
        QFETCH(QByteArray, text);
        QFETCH(QStringList, words);
        QFETCH(QString, named);
        files::write(m_file, text);
        QStringList line{"markers", "Brisk-1", "--force"};
        if (words.isEmpty() || !words.first().startsWith("--import"))
            line += {"--import", m_file};
        const auto before = files::snapshot(m_survey);
        const BatchRun run = runBatch(line + words, m_survey);
        VERIFY_EXIT(1, run);
        QVERIFY2(run.errors.contains(named), qPrintable(run.errors));
        QCOMPARE(files::snapshot(m_survey), before);
    }

    void optionsOfTheImportBelongToIt()
    {
        for (const char *option : {"--skip=1", "--name-column=1", "--force", "--dry-run"})
            VERIFY_EXIT(2, runBatch({"markers", "Brisk-1", option}, m_survey));
        for (const char *option : {"--skip=-1", "--skip=x", "--name-column=0", "--depth-column=1.5", "--import="})
            VERIFY_EXIT(2, runBatch({"markers", "Brisk-1", "--import", m_file, option}, m_survey));
        VERIFY_EXIT(2, runBatch({"points", "Brisk-1"}, m_survey));
        VERIFY_EXIT(2, runBatch({"points", "Brisk-1", "Nonsense"}, m_survey));
    }

    // As in the window they are taken, but not without a word.
    void zonesUpsideDownAreTold()
    {
        files::write(m_file, "A\t10\t20\tGas\nB\t40\t30\tOil\nC\t50\t50\tOil\n");
        for (const char *option : {"--dry-run", "--json"}) {
            const BatchRun run = runBatch({"zones", "Aldra-1", "--import", m_file, "--force", option}, m_survey);
            VERIFY_EXIT(0, run);
            QVERIFY2(run.errors.contains("the start depth lies below the end depth in row 2."),
                     qPrintable(run.errors));
        }
        QCOMPARE(readPerforation(m_survey + "/WLC", "Aldra-1").tops, (QVector<float>{10, 40, 50}));
    }

    // What --force would not change is no matter of --force.
    void aLogThatIsMissingIsAllThatIsTold()
    {
        VERIFY_EXIT(0, runBatch({"default-logs", "Aldra-1", "Gamma=GR"}, m_survey));
        const BatchRun run = runBatch({"default-logs", "Aldra-1", "Gamma=NoLog"}, m_survey);
        VERIFY_EXIT(1, run);
        QVERIFY2(run.errors.contains("it has no log \"NoLog\"") && !run.errors.contains("--force"),
                 qPrintable(run.errors));
    }

    void zonesAreListedAndImported()
    {
        const BatchRun list = runBatch({"zones", "Aldra-1", "--json"}, m_survey);
        VERIFY_EXIT(0, list);
        QCOMPARE(list.list("zones").size(), 3);
        QCOMPARE(list.record("zones").value("name").toString(), QString("Perf 1"));
        QCOMPARE(list.record("zones").value("startDepth").toDouble(), 2026.5);
        QCOMPARE(list.record("zones").value("endDepth").toDouble(), 2040.5);
        QCOMPARE(list.record("zones").value("type").toString(), QString("Gas"));
        files::write(m_file, "Gas\t100\t90\tUpper\nOil\tx\t95\tLower\n");
        const QStringList words{"zones",          "Aldra-1", "--import",     m_file, "--name-column", "4",
                                "--start-column", "3",       "--end-column", "2",    "--type-column", "1"};
        VERIFY_EXIT(1, runBatch(words, m_survey));
        QCOMPARE(runBatch(words + QStringList{"--force", "--dry-run", "--json"}, m_survey).list("zones").size(), 2);
        QCOMPARE(readPerforation(m_survey + "/WLC", "Aldra-1").zoneCount, 3);
        const BatchRun run = runBatch(words + QStringList{"--force", "--json"}, m_survey);
        VERIFY_EXIT(0, run);
        QVERIFY2(run.errors.contains(m_file + ": no number in row 2; it is read as 0."), qPrintable(run.errors));
        const PerforationRecord zones = readPerforation(m_survey + "/WLC", "Aldra-1");
        QCOMPARE(zones.names, (QStringList{"Upper", "Lower"}));
        QCOMPARE(zones.tops, (QVector<float>{90, 95}));
        QCOMPARE(zones.bottoms, (QVector<float>{100, 0}));
        QCOMPARE(zones.zoneTypes, (QStringList{"Gas", "Oil"}));
        files::write(m_file, "a|b\t1\t2\tGas\n");
        const BatchRun bad = runBatch({"zones", "Aldra-1", "--import", m_file, "--force"}, m_survey);
        VERIFY_EXIT(1, bad);
        QVERIFY2(bad.errors.contains("\"|\""), qPrintable(bad.errors));
        VERIFY_EXIT(1, runBatch({"zones", "Aldra-1", "--import", m_file, "--force", "--dry-run"}, m_survey));
        QCOMPARE(readPerforation(m_survey + "/WLC", "Aldra-1").names, zones.names);
    }

    void withoutOptionsColumnsStandInTheirOrder()
    {
        files::write(m_file, "A\t2000\t2010\tGas\n");
        const BatchRun zones = runBatch({"zones", "Brisk-1", "--import", m_file, "--force", "--json"}, m_survey);
        VERIFY_EXIT(0, zones);
        QCOMPARE(zones.record("zones"),
                 (QJsonObject{
                     {"name", "A"}, {"startDepth", 2000}, {"endDepth", 2010}, {"type", "Gas"}, {"isWritten", true}}));
        const BatchRun markers = runBatch({"markers", "Brisk-1", "--import", m_file, "--force", "--json"}, m_survey);
        VERIFY_EXIT(0, markers);
        QCOMPARE(markers.record("markers").value("name").toString(), QString("A"));
        QCOMPARE(markers.record("markers").value("depth").toInt(), 2000);
        files::write(m_file, "2000\t0.25\t7\n");
        const BatchRun points =
            runBatch({"points", "Brisk-1", "Porosity", "--import", m_file, "--force", "--json"}, m_survey);
        VERIFY_EXIT(0, points);
        QCOMPARE(points.record("points"), (QJsonObject{{"depth", 2000}, {"value", 0.25}, {"isWritten", true}}));
    }

    void pointsAreListedAndImported()
    {
        const BatchRun list = runBatch({"points", "Aldra-1", "Porosity", "--json"}, m_survey);
        VERIFY_EXIT(0, list);
        const CalibrationRecord stored = [this] {
            const QByteArray bytes = files::read(calibrationPath(m_survey + "/WLC", "Aldra-1", "Porosity"));
            return parseCalibration(bytes, "Aldra-1", "Porosity").record;
        }();
        QCOMPARE(list.list("points").size(), stored.depths.size());
        QCOMPARE(static_cast<float>(list.record("points", 5).value("depth").toDouble()), stored.depths.at(5));
        QCOMPARE(static_cast<float>(list.record("points", 5).value("value").toDouble()), stored.values.at(5));
        files::write(m_file, "Value\tDepth\n0.25\t1000\n");
        const QStringList words{"points", "Aldra-1",        "Porosity", "--import",       m_file, "--skip",
                                "1",      "--depth-column", "2",        "--value-column", "1"};
        VERIFY_EXIT(1, runBatch(words, m_survey));
        QCOMPARE(runBatch(words + QStringList{"--force", "--dry-run", "--json"}, m_survey).list("points").size(), 1);
        QCOMPARE(runBatch({"points", "Aldra-1", "Porosity", "--json"}, m_survey).list("points"), list.list("points"));
        const BatchRun run = runBatch(words + QStringList{"--force", "--json"}, m_survey);
        VERIFY_EXIT(0, run);
        QCOMPARE(run.list("points").size(), 1);
        QCOMPARE(run.record("points").value("depth").toDouble(), 1000.0);
        QCOMPARE(run.record("points").value("value").toDouble(), 0.25);
        // A group without points needs no --force.
        QStringList sonic = words;
        sonic[2] = "Sonic";
        VERIFY_EXIT(0, runBatch(sonic, m_survey));
        QVERIFY(QFileInfo::exists(calibrationPath(m_survey + "/WLC", "Aldra-1", "Sonic")));
    }

    void defaultLogsAreSet()
    {
        QCOMPARE(runBatch({"default-logs", "Aldra-1"}, m_survey).output,
                 QByteArray("The project has no default logs for the well.\n"));
        VERIFY_EXIT(0, runBatch({"default-logs", "Aldra-1", "Gamma=GR", "Resistivity=LLD", "--dry-run"}, m_survey));
        QVERIFY(runBatch({"default-logs", "Aldra-1", "--json"}, m_survey).list("defaultLogs").isEmpty());
        VERIFY_EXIT(0, runBatch({"default-logs", "Aldra-1", "Gamma=GR", "Resistivity=LLD"}, m_survey));
        BatchRun run = runBatch({"default-logs", "Aldra-1", "--json"}, m_survey);
        VERIFY_EXIT(0, run);
        QCOMPARE(run.list("defaultLogs").size(), 2);
        QCOMPARE(run.record("defaultLogs", 1).value("group").toString(), QString("Resistivity"));
        QCOMPARE(run.record("defaultLogs", 1).value("log").toString(), QString("LLD"));
        const auto before = files::snapshot(m_survey);
        for (const char *option : {"--dry-run", "--json"}) {
            const BatchRun refused =
                runBatch({"default-logs", "Aldra-1", "Resistivity=LLS", "Gamma=", option}, m_survey);
            VERIFY_EXIT(1, refused);
            QVERIFY2(
                refused.errors.contains("Aldra-1: these default logs would be no more: Resistivity=LLD, Gamma=GR; "
                                        "--force replaces them."),
                qPrintable(refused.errors));
        }
        const BatchRun moved = runBatch({"default-logs", "Aldra-1", "Sonic=LLD"}, m_survey);
        VERIFY_EXIT(1, moved); // a log is the default of one group
        QVERIFY2(moved.errors.contains("Resistivity=LLD;"), qPrintable(moved.errors));
        QCOMPARE(files::snapshot(m_survey), before);
        VERIFY_EXIT(0, runBatch({"default-logs", "Aldra-1", "resistivity=LLD", "Gamma=GR", "Gamma=GR"}, m_survey));
        VERIFY_EXIT(0, runBatch({"default-logs", "Aldra-1", "Resistivity=LLS", "Gamma=", "--force"}, m_survey));
        run = runBatch({"default-logs", "Aldra-1", "--json"}, m_survey);
        QCOMPARE(run.list("defaultLogs").size(), 1);
        QCOMPARE(run.record("defaultLogs").value("log").toString(), QString("LLS"));
        // The log becomes one of its new group.
        VERIFY_EXIT(0, runBatch({"default-logs", "Aldra-1", "Density=DRHO"}, m_survey));
        const BatchRun logs = runBatch({"logs", "Aldra-1", "--json"}, m_survey);
        for (const QJsonValue &log : logs.list("logs")) {
            if (log.toObject().value("name").toString() == "DRHO") {
                QCOMPARE(log.toObject().value("group").toString(), QString("Density"));
                QVERIFY(log.toObject().value("isDefault").toBool());
            }
        }
        QVERIFY(QFileInfo::exists(m_survey + "/WLC/DefaultLogs/Brisk-2.txt")); // the pass ran
    }

    void wrongDefaultLogsAreRefused()
    {
        const auto before = files::snapshot(m_survey);
        VERIFY_EXIT(1, runBatch({"default-logs", "Aldra-1", "Gamma=NONE"}, m_survey));
        for (const QStringList &words : {QStringList{"Gamma"},
                                         {"Nonsense=GR"},
                                         {"None=GR"}, // no group of the editor
                                         {"Depth=GR"},
                                         {"Gamma=GR", "Gamma=SP"},
                                         {"--dry-run"},
                                         {"--force"}})
            VERIFY_EXIT(2, runBatch(QStringList{"default-logs", "Aldra-1"} + words, m_survey));
        QCOMPARE(files::snapshot(m_survey), before);
        files::write(m_survey + "/WLC/DefaultLogs/Aldra-1.txt", "Other well\nGamma|GR\n");
        const BatchRun run = runBatch({"default-logs", "Aldra-1", "Gamma=GR"}, m_survey);
        VERIFY_EXIT(1, run);
        QVERIFY(run.errors.contains("Other well") && run.errors.contains("--force"));
        QVERIFY(files::read(m_survey + "/WLC/DefaultLogs/Aldra-1.txt").startsWith("Other"));
        const BatchRun forced = runBatch({"default-logs", "Aldra-1", "Gamma=GR", "--force"}, m_survey);
        VERIFY_EXIT(0, forced);
        QVERIFY2(forced.errors.contains("Other well"), qPrintable(forced.errors));
        QCOMPARE(files::read(m_survey + "/WLC/DefaultLogs/Aldra-1.txt"), QByteArray("Aldra-1\nGamma|GR\n"));
    }

    void aDryRunTellsWhatTheRunDoes_data()
    {
        QTest::addColumn<QStringList>("words");
        QTest::addColumn<QByteArray>("text"); ///< of the file
        QTest::addColumn<QByteArray>("key");
        QTest::addColumn<QString>("heading");
        const auto row = [](const char *line, const char *text, const char *key, const QString &heading) {
            QTest::newRow(line) << QString(line).split(' ') << QByteArray(text) << QByteArray(key)
                                << "Nothing is written. " + heading;
        };
        row("markers Brisk-1 --import FILE --force", "Top A\t1500\nTop B\t1400.5\n", "markers",
            "Markers of Brisk-1 would be:");
        row("zones Aldra-1 --import FILE --force", "A\t10\t20\tGas\n", "zones",
            "Perforation zones of Aldra-1 would be:");
        row("points Aldra-1 Porosity --import FILE --force", "10\t0.5\n", "points",
            "Calibration points of Aldra-1, Porosity would be:");
        row("default-logs Aldra-1 Resistivity=LLD Gamma=GR", "", "defaultLogs",
            "The default logs of Aldra-1 would be:");
        row("template copy Simple Mine --to-well Aldra-1", "", "templates", "The copy would be:");
        row("template copy Simple Ours", "", "templates", "The copy would be:");
        row("template delete Petrophysics --force", "", "templates", "This template would be deleted:");
    }
    void aDryRunTellsWhatTheRunDoes()
    {
        QFETCH(QStringList, words);
        QFETCH(QByteArray, text);
        QFETCH(QByteArray, key);
        QFETCH(QString, heading);
        files::write(m_file, text);
        words.replaceInStrings("FILE", m_file);
        const auto before = files::snapshot(m_survey);
        const BatchRun people = runBatch(words + QStringList{"--dry-run"}, m_survey);
        VERIFY_EXIT(0, people);
        QCOMPARE(people.lines().first(), heading);
        const QJsonArray dry = runBatch(words + QStringList{"--dry-run", "--json"}, m_survey).list(key);
        QCOMPARE(files::snapshot(m_survey), before);
        const BatchRun run = runBatch(words + QStringList{"--json"}, m_survey);
        VERIFY_EXIT(0, run);
        QJsonArray expected;
        for (const QJsonValue &value : run.list(key)) {
            QJsonObject record = value.toObject();
            QVERIFY(record.value("isWritten").toBool());
            record["isWritten"] = false;
            expected.append(record);
        }
        QVERIFY(!expected.isEmpty());
        QCOMPARE(dry, expected);
    }

    void whatAnImportPassesOverNamesTheFile()
    {
        files::write(m_file, "Depth\tValue\nx\t1\n2\t3\n");
        const BatchRun points =
            runBatch({"points", "Brisk-2", "Density", "--import", m_file, "--skip", "1"}, m_survey);
        VERIFY_EXIT(0, points);
        QCOMPARE(points.errors, "lorva-batch: " + m_file + " behind line 1: no number in row 1; it is read as 0.\n");
        files::write(m_file, "A\tx\n");
        const QString told = m_file + ": Row 1: the depth \"x\" is no number";
        for (const QStringList &words : {QStringList{"--force"}, {"--force", "--dry-run"}}) {
            const BatchRun markers =
                runBatch(QStringList{"markers", "Brisk-2", "--import", m_file} + words, m_survey);
            VERIFY_EXIT(0, markers);
            QVERIFY2(markers.errors.contains(told), qPrintable(markers.errors));
        }
        files::write(m_file, "a|b\t1\t2\tGas\n");
        for (const QStringList &words : {QStringList{"--force"}, {"--force", "--dry-run"}}) {
            const BatchRun zones = runBatch(QStringList{"zones", "Brisk-2", "--import", m_file} + words, m_survey);
            VERIFY_EXIT(1, zones);
            QVERIFY2(zones.errors.contains(m_file + ": "), qPrintable(zones.errors));
        }
    }

    void whatCannotBeWrittenNamesTheWell()
    {
        files::write(m_file, "A\t1\t2\tGas\n");
        const QString path = perforationPath(m_survey + "/WLC", "Brisk-2");
        QVERIFY(QFile::remove(path) && QDir().mkpath(path));
        const BatchRun run = runBatch({"zones", "Brisk-2", "--import", m_file, "--force"}, m_survey);
        VERIFY_EXIT(1, run);
        QVERIFY2(run.errors.contains("Perforation zones of Brisk-2 from " + m_file + ": Unable to create file"),
                 qPrintable(run.errors));
    }

    void templatesAreListedAndShown()
    {
        const BatchRun list = runBatch({"template", "list", "--json"}, m_survey);
        VERIFY_EXIT(0, list);
        QStringList names;
        for (const QJsonValue &record : list.list("templates"))
            names.append(record.toObject().value("name").toString());
        QVERIFY(names.contains("Default") && names.contains("Simple") && names.contains("Petrophysics"));
        const BatchRun show = runBatch({"template", "show", "Petrophysics", "--json"}, m_survey);
        VERIFY_EXIT(0, show);
        QVERIFY(show.list("tracks").size() > 3);
        QCOMPARE(show.record("tracks").value("track").toString(), QString("Track_1"));
        bool hasCurves = false;
        int depths = 0;
        for (const QJsonValue &track : show.list("tracks")) {
            for (const QJsonValue &curve : track.toObject().value("curves").toArray()) {
                hasCurves = hasCurves || curve.toObject().value("group").toString() == "Gamma";
                const bool isDepth = track.toObject().value("type").toString() == "depth";
                depths += isDepth;
                QCOMPARE(curve.toObject().value("color").isNull(), isDepth); // it has no line
            }
        }
        QVERIFY(hasCurves);
        QVERIFY(depths > 0);
        const BatchRun none = runBatch({"template", "show", "petrophysics"}, m_survey);
        VERIFY_EXIT(1, none);
        QVERIFY2(none.errors.contains("\"petrophysics\" does not exist; it is \"Petrophysics\"."),
                 qPrintable(none.errors));
        VERIFY_EXIT(1, runBatch({"template", "show", "Petrophysics", "--well", "Aldra-1"}, m_survey));
    }

    void templatesAreCopiedAndDeleted()
    {
        const QString from = m_survey + "/WLC/Templates/Global/Petrophysics";
        VERIFY_EXIT(
            0, runBatch({"template", "copy", "Petrophysics", "Mine", "--to-well", "Aldra-1", "--dry-run"}, m_survey));
        QVERIFY(!QFileInfo::exists(m_survey + "/WLC/Templates/Aldra-1"));
        VERIFY_EXIT(0, runBatch({"template", "copy", "Petrophysics", "Mine", "--to-well", "Aldra-1"}, m_survey));
        QCOMPARE(files::snapshot(m_survey + "/WLC/Templates/Aldra-1/Mine"), files::snapshot(from));
        const BatchRun list = runBatch({"template", "list", "--well", "Aldra-1", "--json"}, m_survey);
        QCOMPARE(list.list("templates").size(), 1);
        QCOMPARE(list.record("templates").value("well").toString(), QString("Aldra-1"));
        VERIFY_EXIT(1, runBatch({"template", "copy", "Simple", "Mine", "--to-well", "Aldra-1"}, m_survey));
        VERIFY_EXIT(1, runBatch({"template", "copy", "Simple", " Mine ", "--to-well", "Aldra-1"}, m_survey));
        VERIFY_EXIT(1, runBatch({"template", "copy", "Simple", " "}, m_survey));
        QCOMPARE(files::snapshot(m_survey + "/WLC/Templates/Aldra-1/Mine"), files::snapshot(from));
        VERIFY_EXIT(0, runBatch({"template", "copy", "Simple", "Mine", "--to-well", "Aldra-1", "--force"}, m_survey));
        VERIFY_EXIT(0, runBatch({"template", "copy", "Mine", "Everybody's", "--well", "Aldra-1"}, m_survey));
        QVERIFY(QFileInfo::exists(m_survey + "/WLC/Templates/Global/Everybody's/Track_1.txt"));

        const BatchRun refused = runBatch({"template", "delete", "Mine", "--well", "Aldra-1"}, m_survey);
        VERIFY_EXIT(1, refused);
        QVERIFY(refused.errors.contains("--force"));
        VERIFY_EXIT(1, runBatch({"template", "delete", "Mine", "--well", "Aldra-1", "--dry-run"}, m_survey));
        const BatchRun dry =
            runBatch({"template", "delete", "Mine", "--well", "Aldra-1", "--dry-run", "--force"}, m_survey);
        VERIFY_EXIT(0, dry);
        QCOMPARE(dry.lines().first(), QString("Nothing is written. This template would be deleted:"));
        QVERIFY(QFileInfo::exists(m_survey + "/WLC/Templates/Aldra-1/Mine"));
        const BatchRun gone = runBatch({"template", "delete", "Mine", "--well", "Aldra-1", "--force"}, m_survey);
        VERIFY_EXIT(0, gone);
        QCOMPARE(gone.lines().first(), QString("This template is deleted:"));
        QVERIFY(!QFileInfo::exists(m_survey + "/WLC/Templates/Aldra-1/Mine"));
        VERIFY_EXIT(1, runBatch({"template", "delete", "Mine", "--well", "Aldra-1", "--force"}, m_survey));
        for (const char *name : {"..", "a/b", "."})
            VERIFY_EXIT(1, runBatch({"template", "copy", "Simple", name}, m_survey));
    }

private:
    BatchFixture m_demo;
    QString m_survey;
    QString m_file;
};

LORVA_TEST_MAIN(TestBatchWellData)
#include "tst_batchwelldata.moc"
