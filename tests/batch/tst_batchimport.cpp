#include "importfixture.h"
#include "support/testmain.h"

#include <optional>

namespace {

/// What lies in the survey but for the time in the third line of its files, at which each was written.
QMap<QString, QByteArray> withoutTimes(const QString &survey)
{
    auto files = files::snapshot(survey);
    for (auto file = files.begin(); file != files.end(); ++file)
        if (file.key().startsWith("WellInfo/") && file.value().startsWith("dTect")) {
            const int second = file.value().indexOf('\n', file.value().indexOf('\n') + 1) + 1;
            *file = file.value().left(second) + file.value().mid(file.value().indexOf('\n', second));
        }
    return files;
}

} // namespace

class TestBatchImport : public BatchImportTest
{
    Q_OBJECT

private slots:
    void initTestCase() { m_demo.make(); }
    void init() { setUp(); }

    void curvesGoIntoTheWellOfTheFile()
    {
        const BatchRun run = import({m_las, "--json"});
        VERIFY_EXIT(0, run);
        QCOMPARE(run.list("imports").size(), 1);
        const QJsonObject record = run.record("imports");
        QCOMPARE(record.value("well").toString(), QString("Aldra-1"));
        QCOMPARE(record.value("isNew").toBool(true), false);
        QCOMPARE(record.value("isWritten").toBool(), true);
        QCOMPARE(record.value("logs").toArray().size(), 2); // not the depths
        const host::LogData log = logOf(m_survey, "Aldra-1", "NEW");
        QCOMPARE(log.depths, (QVector<float>{1000, 1001, 1002, 1003, 1004}));
        QCOMPARE(log.values, (QVector<float>{0, 10, 20, 30, 40}));
        QCOMPARE(log.unit, QString("API"));
        QVERIFY(host::isUndefined(logOf(m_survey, "Aldra-1", "RES").values.at(2)));
        QVERIFY(logOf(m_survey, "Aldra-1", "DEPT").values.isEmpty());
    }

    void optionsChooseAndName()
    {
        VERIFY_EXIT(0,
                    import({m_las, "--well", "Brisk-1", "--curves", "NEW,DEPT", "--rename", "NEW=Fresh", "--map",
                            "NEW=Gamma", "--interval", "0.5"}));
        QCOMPARE(logOf(m_survey, "Brisk-1", "Fresh").values, (QVector<float>{0, 5, 10, 15, 20, 25, 30, 35, 40}));
        QCOMPARE(logOf(m_survey, "Brisk-1", "DEPT").values.size(), 9);
        QVERIFY(logOf(m_survey, "Brisk-1", "RES").values.isEmpty());
        QVERIFY(logOf(m_survey, "Aldra-1", "Fresh").values.isEmpty());
        QVERIFY(files::read(m_survey + "/WLC/CurveGroups/Gamma.txt").contains("Fresh\n"));
        QVERIFY(files::read(m_survey + "/WLC/CurveGroups/CurveGroupTable.txt").contains("Fresh | Gamma"));
        const BatchRun logs = runBatch({"logs", "Brisk-1", "--json"}, m_survey);
        QCOMPARE(logs.record("logs", logs.list("logs").size() - 1).value("group").toString(), QString("Gamma"));
    }

    void aLogThatIsThereStaysUnlessForced()
    {
        VERIFY_EXIT(0, import({m_las}));
        const auto before = files::snapshot(m_survey);
        files::write(m_las, lasText("Aldra-1").replace("1001 10", "1001 11"));
        const BatchRun refused = import({m_las});
        VERIFY_EXIT(1, refused);
        QVERIFY2(refused.errors.contains(m_las) && refused.errors.contains("NEW, RES")
                     && refused.errors.contains("--force"),
                 qPrintable(refused.errors));
        QCOMPARE(files::snapshot(m_survey), before);
        VERIFY_EXIT(0, import({m_las, "--force"}));
        QCOMPARE(logOf(m_survey, "Aldra-1", "NEW").values.at(1), 11.0f);
    }

    void aDryRunWritesNothing()
    {
        QVERIFY(QDir(m_survey + "/WLC").removeRecursively());
        const auto before = files::snapshot(m_survey);
        const BatchRun run = import({m_las, "--dry-run", "--json"});
        VERIFY_EXIT(0, run);
        QCOMPARE(run.record("imports").value("isWritten").toBool(true), false);
        QCOMPARE(run.record("imports").value("logs").toArray().size(), 2);
        files::write(m_las, lasText("New one"));
        VERIFY_EXIT(0, import({m_las, "--new-wells", "--dry-run"}));
        QCOMPARE(files::snapshot(m_survey), before);
    }

    void whatIsRefusedIsNamed_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QStringList>("words");
        QTest::addColumn<QString>("named");
        const QByteArray good = lasText("Aldra-1");
        QTest::newRow("unknown well") << lasText("Nowhere") << QStringList{} << "--new-wells";
        QTest::newRow("given well") << good << QStringList{"--well", "Nowhere"} << "\"Nowhere\"";
        QTest::newRow("no well") << lasText("") << QStringList{} << "--well";
        QTest::newRow("wrapped") << lasText("Aldra-1", "M", "YES") << QStringList{} << "las-unwrap";
        QTest::newRow("too deep") << QByteArray(good).replace("STOP.M 1004", "STOP.M 99999") << QStringList{}
                                  << "maximum depth is less than LAS files end depth";
        QTest::newRow("no curve wanted") << good << QStringList{"--curves", "NONE"}
                                         << "it has no curve \"NONE\" with samples; there are DEPT, NEW, RES.";
        QTest::newRow("curve in other letters")
            << good << QStringList{"--curves", "new"} << "no curve \"new\" with samples; it is \"NEW\".";
        QTest::newRow("feet below the well")
            << lasText("Aldra-1", "F").replace("STOP.F 1004", "STOP.F 8900") << QStringList{}
            << "The depths of the file are in feet: with --convert-feet they become metres.";
        QTest::newRow("no data") << good.left(good.indexOf("~A")) << QStringList{} << "no curve with samples";
        QTest::newRow("existing well") << good << QStringList{"--new-wells"} << "without --new-wells";
        const char *onto = "the curves NEW and RES would both become the log \"RES\"; --rename gives other names, "
                           "--curves leaves one out.";
        QTest::newRow("renamed onto another") << good << QStringList{"--rename", "NEW=RES"} << onto;
        QTest::newRow("by force, too") << good << QStringList{"--rename", "NEW=RES", "--force"} << onto;
        QTest::newRow("two of a name") << good << QStringList{"--rename", "NEW=X", "--rename", "RES=X"}
                                       << "the curves NEW and RES would both become the log \"X\"";
        QTest::newRow("two of a name in a new well")
            << lasText("Nova-1") << QStringList{"--rename", "NEW=X", "--rename", "RES=X", "--new-wells"}
            << "Nova-1: the curves NEW and RES would both become the log \"X\"";
        QTest::newRow("no LAS file") << QByteArray("hello\n") << QStringList{"--well", "Aldra-1"}
                                     << ".las is no LAS file: it has no line with a \"~\" in front.";
        QTest::newRow("depths without a range") << QByteArray(good)
                                                       .replace("1000 0", "0 0")
                                                       .replace("1001 ", "0 ")
                                                       .replace("1002 ", "0 ")
                                                       .replace("1003 ", "0 ")
                                                       .replace("1004 ", "0 ")
                                                << QStringList{} << "all its depths are 0: no sample has a place.";
        QTest::newRow("no logs") << good.left(good.indexOf("NEW.API")) + "~A\n1000\n1001\n"
                                 << QStringList{} << "it has no curve but its depths.";
    }
    void whatIsRefusedIsNamed()
    {
        QFETCH(QByteArray, text);
        QFETCH(QStringList, words);
        QFETCH(QString, named);
        files::write(m_las, text);
        const auto before = files::snapshot(m_survey);
        const BatchRun run = import(QStringList{m_las} + words);
        VERIFY_EXIT(1, run);
        QVERIFY2(run.errors.contains(named), qPrintable(run.errors));
        QCOMPARE(files::snapshot(m_survey), before);
    }

    // A name that the well has and a name that two curves would share are two things.
    void aNameThatIsFreeAgainIsNoClash()
    {
        VERIFY_EXIT(0, import({m_las, "--rename", "NEW=RES", "--rename", "RES=NEW"}));
        QCOMPARE(logOf(m_survey, "Aldra-1", "RES").values.at(4), 40.0f);
    }

    void filesThatAreGivenTwiceCountOnce()
    {
        const QString again = QFileInfo(m_las).path() + "/./" + QFileInfo(m_las).fileName();
        const BatchRun run = import({m_las, m_las, again, "--json"});
        VERIFY_EXIT(0, run);
        QCOMPARE(run.record("imports").value("files").toArray(), QJsonArray{m_las});
    }

    // Logs of the group Others go into the group of their unit at each launch, and so at the end of the import.
    void groupsAreToldAsTheyCome()
    {
        const BatchRun dry = import({m_las, "--map", "RES=others", "--dry-run", "--json"});
        const BatchRun run = import({m_las, "--map", "RES=Others", "--json"});
        VERIFY_EXIT(0, run);
        QStringList told;
        for (const QJsonValue &log : run.record("imports").value("logs").toArray())
            told.append(log.toObject().value("group").toString());
        QCOMPARE(told, (QStringList{"Gamma", "Resistivity"})); // of API and OHMM
        QCOMPARE(dry.record("imports").value("logs"), run.record("imports").value("logs"));
        QStringList known;
        for (const QJsonValue &log : runBatch({"logs", "Aldra-1", "--json"}, m_survey).list("logs"))
            known.append(log.toObject().value("group").toString());
        QCOMPARE(known.mid(known.size() - 2), told);
        QVERIFY2(run.errors.isEmpty() && run.output.contains("Others") && run.output.contains("by name and unit"),
                 run.output);
        const BatchRun none = import({m_las, "--map", "RES=None", "--force", "--json"});
        QCOMPARE(none.record("imports").value("logs"), run.record("imports").value("logs"));
        QVERIFY2(none.output.contains("RES goes into the group Resistivity, not into None"), none.output);
        files::write(m_las, lasText("Nova-1"));
        const BatchRun made = import({m_las, "--new-wells", "--json"});
        QCOMPARE(made.record("imports").value("logs"), run.record("imports").value("logs"));
    }

    void theWellOfAFileIsOne()
    {
        const QString list = m_survey + "/WellInfo/.omf";
        files::write(list, files::read(list).replace("Aldra-2", "Aldra-1"));
        const BatchRun several = import({m_las});
        VERIFY_EXIT(1, several);
        QVERIFY2(
            several.errors.contains(m_las + ": Several wells are called \"Aldra-1\": give the key of one instead (")
                && several.errors.contains("--well takes it."),
            qPrintable(several.errors));
        files::write(m_las, lasText("Nowhere"));
        const BatchRun none = import({m_las});
        QVERIFY2(none.errors.contains("is of the well \"Nowhere\", which the survey has not; --well names another"),
                 qPrintable(none.errors));
    }

    void wrongOptionsAreUsage()
    {
        for (const QStringList &words : {QStringList{"--well", "a", "--new-wells"},
                                         {"--map", "GR"},
                                         {"--map", "GR=Nonsense"},
                                         {"--rename", "=B"},
                                         {"--rename", "NEW= "},
                                         {"--rename", " =B"},
                                         {"--rename", "A=B", "--rename", "A=C"},
                                         {"--interval", "0"},
                                         {"--interval", "x"},
                                         {"--interval", "-1"},
                                         {"--curves", ""},
                                         {"--curves", "A,,B"},
                                         {"--nonsense"}}) {
            VERIFY_EXIT(2, import(QStringList{m_las} + words));
        }
        VERIFY_EXIT(2, import({}));
        VERIFY_EXIT(1, import({"/none.las"}));
    }

    void feetAreConvertedWhenAsked()
    {
        files::write(m_las, lasText("Aldra-1", "F"));
        const BatchRun plain = import({m_las, "--json", "--rename", "NEW=P1", "--rename", "RES=P2"});
        VERIFY_EXIT(0, plain);
        QVERIFY(plain.output.contains("in feet (F). They are taken as metres unless --convert-feet is given."));
        QCOMPARE(logOf(m_survey, "Aldra-1", "P1").depths.first(), 1000.0f);
        VERIFY_EXIT(0, import({m_las, "--convert-feet"}));
        QCOMPARE(logOf(m_survey, "Aldra-1", "NEW").depths.first(), 304.8f);
    }

    void namesOfNoCurveAreTold()
    {
        const BatchRun run = import({m_las, "--rename", "ZZ=Q2", "--rename", "RES=Deep", "--map", "YY=Gamma", "--map",
                                     "NEW=Gamma", "--json"});
        VERIFY_EXIT(0, run);
        const QString notices = run.output;
        for (const char *told : {"The option --rename names \\\"ZZ\\\"", "The option --map names \\\"YY\\\""})
            QVERIFY2(notices.contains(told), qPrintable(notices));
        QVERIFY(!notices.contains("RES\\\"") && !notices.contains("NEW\\\""));
    }

    // A curve that was refused is one that was imported as far as the options go.
    void namesOfCurvesOfRefusedFilesAreNotTold()
    {
        VERIFY_EXIT(0, import({m_las}));
        const BatchRun run = import({m_las, "--rename", "NEW=RES", "--rename", "new=X", "--json"});
        VERIFY_EXIT(1, run);
        QCOMPARE(run.list("notices").size(), 1);
        QVERIFY2(run.errors.contains("\"new\""), qPrintable(run.errors));
    }

    void ofCurvesOfOneNameTheFirstCounts()
    {
        files::write(m_las, lasText("Aldra-1").replace("RES.OHMM", "NEW.OHMM"));
        const BatchRun run = import({m_las, "--json"});
        VERIFY_EXIT(0, run);
        QCOMPARE(run.record("imports").value("logs").toArray().size(), 1);
        QCOMPARE(run.record("imports").value("notices").toArray().size(), 1);
        QVERIFY2(run.output.contains("more than once: NEW. The first of each counts."), run.output);
        QCOMPARE(logOf(m_survey, "Aldra-1", "NEW").values.at(1), 10.0f);
    }

    void whoConvertsFeetIsNotToldOfIt()
    {
        files::write(m_las, lasText("Aldra-1", "F").replace("STOP.F 1004", "STOP.F 8900"));
        const BatchRun run = import({m_las, "--convert-feet"});
        VERIFY_EXIT(1, run);
        QVERIFY2(run.errors.contains("maximum depth is less") && !run.errors.contains("--convert-feet"),
                 qPrintable(run.errors));
    }

    void aCurveWithoutANameIsLeftOut()
    {
        files::write(m_las, lasText("Aldra-1").replace("RES.OHMM", " .OHMM"));
        const BatchRun run = import({m_las, "--json"});
        VERIFY_EXIT(0, run);
        QCOMPARE(run.record("imports").value("logs").toArray().size(), 1);
        QVERIFY2(run.output.contains("the curve 3 has no name and is left out."), run.output);
    }

    void severalFilesOfAWellFollowEachOther()
    {
        const QString second = m_demo.newPath() + ".las";
        files::write(second, lasText("Aldra-1").replace("NEW.", "TWO.").replace("RES.", "SIX."));
        const QString third = m_demo.newPath() + ".las";
        files::write(third, lasText("Aldra-1").replace("RES.", "SEVEN."));
        const BatchRun run = import({m_las, second, third, "--json"});
        VERIFY_EXIT(1, run); // the third repeats NEW
        QCOMPARE(run.list("imports").size(), 1);
        QCOMPARE(run.record("imports").value("files").toArray().size(), 2);
        QCOMPARE(run.record("imports").value("logs").toArray().size(), 4);
        QVERIFY(run.errors.contains(third));
    }

    void childrenImportWhatOneProcessImports()
    {
        QStringList files;
        for (const char *name : {"Aldra-1", "Aldra-2", "Aldra-3 A", "Brisk-1", "Brisk-2"}) {
            files.append(m_demo.newPath() + ".las");
            files::write(files.last(), lasText(name));
        }
        const QString other = m_demo.copy();
        VERIFY_EXIT(0, import(files + QStringList{"--jobs", "1"}));
        VERIFY_EXIT(0, runBatch(QStringList{"import"} + files + QStringList{"--jobs", "4"}, other));
        QCOMPARE(withoutTimes(other), withoutTimes(m_survey));
    }

    // A folder in the place of a file: nobody writes it, not even the machine's owner.
    void groupsThatCannotBeKeptAreTold_data()
    {
        QTest::addColumn<QString>("blocked");
        QTest::newRow("table") << "CurveGroups/CurveGroupTable.txt";
        QTest::newRow("group") << "CurveGroups/Sonic.txt";
    }
    void groupsThatCannotBeKeptAreTold()
    {
        QFETCH(QString, blocked);
        const QString path = m_survey + "/WLC/" + blocked;
        QVERIFY(QFile::remove(path));
        QVERIFY(QDir().mkpath(path));
        const BatchRun run = import({m_las, "--curves", "NEW", "--map", "NEW=Sonic", "--rename", "NEW=G9", "--json"});
        VERIFY_EXIT(1, run);
        QCOMPARE(run.list("failures").size(), 1);
        QVERIFY2(run.errors.contains("the file " + path + " cannot be written."), qPrintable(run.errors));
        QCOMPARE(run.errors.contains("not kept: G9;"), blocked.endsWith("Table.txt"));
        QCOMPARE(logOf(m_survey, "Aldra-1", "G9").values.size(), 5); // the log is there all the same
    }

    void aProjectThatCannotBeSeededIsTold()
    {
        const QString folder = m_survey + "/WLC/CurveGroups";
        QVERIFY(QDir(folder).removeRecursively());
        files::write(folder, "no folder");
        const BatchRun run = runBatch({"template", "copy", "Petrophysics", "Mine"}, m_survey);
        VERIFY_EXIT(1, run);
        QVERIFY2(run.errors.contains("could be made in the folder " + m_survey + "/WLC"), qPrintable(run.errors));
    }

    void aReadOnlySurveyFails()
    {
        QProcess::execute("chmod", {"-R", "a-w", m_survey});
        const std::optional<BatchRun> run = importAsAnother({m_las, "--json"});
        QProcess::execute("chmod", {"-R", "u+w", m_survey});
        if (!run)
            QSKIP("Needs to become another user");
        VERIFY_EXIT(1, *run);
        QVERIFY2(run->errors.contains("Aldra-1"), qPrintable(run->errors));
        QVERIFY(logOf(m_survey, "Aldra-1", "NEW").values.isEmpty());
    }

    // All of the project may be written, and no log.
    void aLogThatCannotBeWrittenIsNoneOfTheRecord()
    {
        QProcess::execute("chmod", {"-R", "a+w", m_survey});
        QProcess::execute("chmod", {"-R", "a-w", m_survey + "/WellInfo"});
        const std::optional<BatchRun> run = importAsAnother({m_las, "--json"});
        QProcess::execute("chmod", {"-R", "u+w", m_survey});
        if (!run)
            QSKIP("Needs to become another user");
        VERIFY_EXIT(1, *run);
        QCOMPARE(run->list("imports"), QJsonArray());
        QCOMPARE(run->list("failures").size(), 2);
        const QString failure = run->list("failures").first().toString();
        QVERIFY2(failure.startsWith(m_las + ": the log \"NEW\" was not written into the well \"Aldra-1\": ")
                     && failure.contains(m_survey + "/WellInfo"),
                 qPrintable(failure));
    }

private:
    /// As a user to whom file modes mean something; nothing where there is no other user to become.
    std::optional<BatchRun> importAsAnother(const QStringList &words)
    {
        QProcess::execute("chmod", {"-R", "a+rX", QFileInfo(m_survey).path(), m_las});
        QProcess::execute("chmod", {"a+rx", QFileInfo(m_las).path()});
        QProcess process;
        process.start("setpriv",
                      QStringList{"--reuid=65534", "--clear-groups", LORVA_BINARY_DIR "/bin/lorva-batch", "import",
                                  "--survey", m_survey}
                          + words);
        BatchRun run;
        run.hasEnded = process.waitForFinished() && process.exitStatus() == QProcess::NormalExit;
        run.exitCode = process.exitCode();
        run.output = process.readAllStandardOutput();
        run.errors = QString::fromUtf8(process.readAllStandardError());
        if (!run.hasEnded || run.errors.contains("setpriv") || run.errors.contains("ermission denied\n"))
            return std::nullopt;
        return run;
    }
};

LORVA_TEST_MAIN(TestBatchImport)
#include "tst_batchimport.moc"
