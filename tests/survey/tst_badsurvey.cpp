// Files that are missing, damaged or malicious: a message that names the file, everything else still opens, and
// nothing on disk changes.

#include "support/testmain.h"
#include "support/unprivileged.h"
#include "surveyfixture.h"

#include <QDir>

#include <random>
#include <sys/stat.h>

using namespace survey_fixture;
using survey::SurveyStore;

namespace {

constexpr char damaged[] = "100050.2";
constexpr char healthy[] = "100050.3";

// Two wells alike: "bad.…", of which the tests damage files, and "good.…".
struct TwoWells : Survey
{
    TwoWells()
    {
        write(".omf", wellList({{"Bad", "bad.well"}, {"Good", "good.well"}}));
        for (const QByteArray &stem : {QByteArray("bad"), QByteArray("good")}) {
            const auto file = [&](const char *ending, const QByteArray &bytes) {
                write((stem + ending).constData(), bytes);
            };
            file(".well", wellFile());
            file(".wlm",
                 header("Well Markers")
                     + "Depth-Unit: Meter\n1.Name: M\n1.Depth along hole: 5\n1.Color: 1`2`3\n"
                       "2.Name: N\n2.Depth along hole: 6\n2.Color: 1`2`3\n");
            file("^1.wll", logFile("GR", {100, 1, 101, 2, 102, 3}));
            file("^2.wll",
                 header("Well Log")
                     + "Name: TXT\nHeader info: Yes\nStorage type: Ascii\n!\nMud: oil\n!\n100 1\n101 2\n");
            file("^3.wll",
                 header("Well Log") + "Name: BIG\nStorage type: Swapped\n!\n" + samples({100, 1, 101, 2}, true));
        }
    }
};

struct ReadAll
{
    QStringList texts; ///< every error and problem
    QStringList wells;
    QStringList logs;
    int samples = 0;
    int markers = 0;
    bool hasHeader = false;
};

// Reads what there is of a well, in the way the program does.
ReadAll readAll(SurveyStore &store, const QString &key)
{
    ReadAll result;
    const auto note = [&result](const QString &error) {
        if (!error.isEmpty())
            result.texts.append(error);
    };
    const host::Outcome<QVector<host::WellEntry>> wells = store.list();
    note(wells.error);
    for (const host::WellEntry &well : wells.value)
        result.wells.append(well.key);
    const host::Outcome<host::WellHeader> header = store.header(key);
    note(header.error);
    result.hasHeader = header.ok();
    note(store.properties(key).error);
    const host::Outcome<QVector<host::LogInfo>> logs = store.logs(key);
    note(logs.error);
    for (int i = 0; i < logs.value.size(); ++i) {
        const host::Outcome<host::LogData> log = store.log(key, i);
        note(log.error);
        if (log.value.depths.size() != log.value.values.size())
            qFatal("depths and values differ");
        result.logs.append(logs.value.at(i).name);
        result.samples += log.value.values.size();
    }
    const host::Outcome<QVector<host::Marker>> markers = store.markers(key);
    note(markers.error);
    result.markers = markers.value.size();
    result.texts += store.takeProblems();
    return result;
}

// Empty when the well reads as it was made.
QString whatIsWrong(const ReadAll &all)
{
    if (!all.texts.isEmpty())
        return all.texts.first();
    if (!all.hasHeader || all.samples != 7 || all.markers != 2 || all.logs.size() != 3)
        return QStringLiteral("something is missing");
    return {};
}

bool namesFile(const QStringList &texts, const QString &path)
{
    for (const QString &text : texts)
        if (text.contains(path))
            return true;
    return false;
}

QVector<QByteArray> rubbish()
{
    QByteArray zeros(3000, '\0');
    QByteArray random;
    std::mt19937 generator(3);
    for (int i = 0; i < 20000; ++i)
        random += static_cast<char>(generator());
    QByteArray lines("dTect V6.6\n");
    return {QByteArray(),
            zeros,
            random,
            QByteArray("\n\n\n!\n!\n"),
            QByteArray("\x7f"
                       "ELF")
                + zeros,
            lines + random,
            lines + QByteArray(100000, '!'),
            QByteArray(100000, '\n'),
            QByteArray("\xff\xfe"
                       "d\0T\0e\0c\0t\0",
                       12)};
}

const char *const wellFiles[] = {"bad.well", "bad.wlm", "bad^1.wll", "bad^2.wll", "bad^3.wll"};

QByteArray typeOf(const QByteArray &name)
{
    return name.endsWith(".well") ? "Well" : name.endsWith(".wlm") ? "Well Markers" : "Well Log";
}

} // namespace

class TestBadSurvey : public QObject
{
    Q_OBJECT

private slots:
    void readsTheHealthySurvey();
    void namesAMissingOrDamagedList();
    void namesAFolderThatIsNoSurvey();
    void namesAMissingWellFile();
    void namesRubbishInEachKindOfFile();
    void namesRubbishBehindAGoodHeader();
    void namesADirectoryInPlaceOfAFile();
    void namesAFileThatMayNotBeRead();
    void namesACutLog();
    void survivesEveryCutOfEachKindOfFile_data();
    void survivesEveryCutOfEachKindOfFile();
    void survivesThousandsOfByteFlips_data();
    void survivesThousandsOfByteFlips();
    void readsNothingOutsideTheSurvey();
    void followsNoEndlessName();
};

void TestBadSurvey::readsTheHealthySurvey()
{
    TwoWells survey;
    SurveyStore store(survey.path());
    QCOMPARE(whatIsWrong(readAll(store, damaged)), QString());
    QCOMPARE(whatIsWrong(readAll(store, healthy)), QString());
}

void TestBadSurvey::namesAMissingOrDamagedList()
{
    for (const QByteArray &bytes : rubbish()) {
        TwoWells survey;
        survey.write(".omf", bytes);
        const auto before = files::snapshot(survey.path());
        SurveyStore store(survey.path());
        const ReadAll all = readAll(store, damaged);
        QVERIFY(all.wells.isEmpty() && !all.hasHeader);
        QVERIFY(namesFile(all.texts, survey.file(".omf")));
        QVERIFY(store.addWell(properties("New")).error.contains(survey.file(".omf")));
        QCOMPARE(files::snapshot(survey.path()), before);
    }
    TwoWells survey;
    QVERIFY(QFile::remove(survey.file(".omf")));
    SurveyStore store(survey.path());
    QVERIFY(store.list().error.contains(survey.file(".omf")));
    QVERIFY(!store.addWell(properties("New")).ok());
    QVERIFY(!survey.names().contains(QStringLiteral(".omf")));
}

void TestBadSurvey::namesAFolderThatIsNoSurvey()
{
    QTemporaryDir folder;
    for (const QString &path : {folder.path(), folder.filePath(QStringLiteral("none"))}) {
        SurveyStore store(path);
        QVERIFY(store.list().error.contains(path + QStringLiteral("/WellInfo/.omf")));
        QVERIFY(store.header(damaged).error.contains(path));
        QVERIFY(!store.addWell(properties("New")).ok());
    }
    QVERIFY(files::snapshot(folder.path()).isEmpty());
}

void TestBadSurvey::namesAMissingWellFile()
{
    TwoWells survey;
    QVERIFY(QFile::remove(survey.file("bad.well")));
    SurveyStore store(survey.path());
    const ReadAll all = readAll(store, damaged);
    QVERIFY(namesFile(all.texts, survey.file("bad.well")));
    QCOMPARE(all.wells.size(), 2);
    QCOMPARE(all.samples, 7); // the logs are of use without their well's track
    QVERIFY(!store.writeLog(damaged, log("X", {1})).ok());
    QCOMPARE(whatIsWrong(readAll(store, healthy)), QString());
}

void TestBadSurvey::namesRubbishInEachKindOfFile()
{
    for (const char *name : wellFiles) {
        for (const QByteArray &bytes : rubbish()) {
            TwoWells survey;
            survey.write(name, bytes);
            const auto before = files::snapshot(survey.path());
            SurveyStore store(survey.path());
            const ReadAll all = readAll(store, damaged);
            QVERIFY2(namesFile(all.texts, survey.file(name)), name);
            QCOMPARE(all.hasHeader, QByteArray(name) != "bad.well");
            if (QByteArray(name).endsWith(".wll"))
                QCOMPARE(all.logs.size(), 2);
            QCOMPARE(whatIsWrong(readAll(store, healthy)), QString());
            QCOMPARE(files::snapshot(survey.path()), before);
        }
    }
}

void TestBadSurvey::namesRubbishBehindAGoodHeader()
{
    for (const char *name : wellFiles) {
        for (const QByteArray &bytes : rubbish()) {
            TwoWells survey;
            survey.write(name, header(typeOf(name)) + bytes);
            SurveyStore store(survey.path());
            const ReadAll all = readAll(store, damaged);
            // A marker file without markers is as good as one with them.
            if (!QByteArray(name).endsWith(".wlm"))
                QVERIFY2(namesFile(all.texts, survey.file(name)), name);
            QCOMPARE(whatIsWrong(readAll(store, healthy)), QString());
        }
    }
}

void TestBadSurvey::namesADirectoryInPlaceOfAFile()
{
    for (const char *name : wellFiles) {
        TwoWells survey;
        QVERIFY(QFile::remove(survey.file(name)));
        QVERIFY(QDir().mkdir(survey.file(name)));
        SurveyStore store(survey.path());
        const ReadAll all = readAll(store, damaged);
        QVERIFY2(namesFile(all.texts, survey.file(name)), name);
        if (QByteArray(name).endsWith(".wll"))
            QCOMPARE(all.logs.size(), 2);
        QCOMPARE(whatIsWrong(readAll(store, healthy)), QString());
    }
    TwoWells survey;
    QVERIFY(QFile::remove(survey.file(".omf")));
    QVERIFY(QDir().mkdir(survey.file(".omf")));
    SurveyStore store(survey.path());
    QVERIFY(store.list().error.contains(survey.file(".omf")));
}

void TestBadSurvey::namesAFileThatMayNotBeRead()
{
    for (const char *name : {".omf", "bad.well", "bad.wlm", "bad^1.wll", "bad.track"}) {
        TwoWells survey;
        survey.write("bad.track", "1 1 0 0\n1 1 2500 2500\n");
        ::chmod(QFile::encodeName(survey.path() + QStringLiteral("/..")).constData(), 0755);
        ::chmod(QFile::encodeName(survey.file(name)).constData(), 0);
        const int result = testing_support::runUnprivileged([&] {
            if (::access(QFile::encodeName(survey.file("good.well")).constData(), R_OK) != 0)
                return 9;
            SurveyStore store(survey.path());
            const bool isNamed = namesFile(readAll(store, damaged).texts, survey.file(name));
            const bool isRestGood = QByteArray(name) == ".omf" || whatIsWrong(readAll(store, healthy)).isEmpty();
            return isNamed && isRestGood ? 0 : 1;
        });
        if (result == 9 || result == 254)
            QSKIP("no user without rights can reach the temporary folder");
        QVERIFY2(result == 0, name);
    }
}

void TestBadSurvey::namesACutLog()
{
    TwoWells survey;
    const QByteArray whole = survey.read("bad^1.wll");
    survey.write("bad^1.wll", whole.left(whole.size() - 3));
    SurveyStore store(survey.path());
    const ReadAll all = readAll(store, damaged);
    QVERIFY(namesFile(all.texts, survey.file("bad^1.wll")));
    QCOMPARE(all.samples, 6);
    QCOMPARE(all.logs.size(), 3);
    survey.write("bad^1.wll", logFile("GR", {}));
    QVERIFY(namesFile(readAll(store, damaged).texts, survey.file("bad^1.wll")));
}

void TestBadSurvey::survivesEveryCutOfEachKindOfFile_data()
{
    QTest::addColumn<QByteArray>("name");
    for (const char *name : {".omf", "bad.well", "bad.wlm", "bad^1.wll", "bad^2.wll", "bad^3.wll", "bad.track"})
        QTest::newRow(name) << QByteArray(name);
}

void TestBadSurvey::survivesEveryCutOfEachKindOfFile()
{
    QFETCH(QByteArray, name);
    TwoWells survey;
    if (name == "bad.track")
        survey.write("bad.track", header("Well Track") + "1\t1\t0\t0\n1\t1\t2500\t2500\n");
    const QByteArray whole = survey.read(name.constData());
    const auto before = files::snapshot(survey.wells());
    SurveyStore store(survey.path());
    for (int size = 0; size < whole.size(); ++size) {
        survey.write(name.constData(), whole.left(size));
        const ReadAll all = readAll(store, damaged);
        QCOMPARE(survey.read(name.constData()), whole.left(size));
        // A total depth that lost its last digits shows only in the markers that then lie below it.
        const bool isTrack = name == "bad.well" || name == "bad.track";
        const QString concerned = survey.file(isTrack ? "bad" : name.constData());
        if (!all.texts.isEmpty())
            QVERIFY2(namesFile(all.texts, concerned), qPrintable(all.texts.join(QLatin1Char('\n'))));
        if (name != ".omf" && size % 16 == 0)
            QCOMPARE(whatIsWrong(readAll(store, healthy)), QString());
        // What cannot be seen from the bytes alone: a number that lost its last digits, a cut between two rows.
        if (name.endsWith(".wll") && size < whole.indexOf("!\n", whole.indexOf("Storage")))
            QCOMPARE(all.logs.size(), 2);
    }
    survey.write(name.constData(), whole);
    QCOMPARE(files::snapshot(survey.wells()), before);
    QVERIFY(whatIsWrong(readAll(store, damaged)).isEmpty() || name == "bad.track");
}

void TestBadSurvey::survivesThousandsOfByteFlips_data()
{
    survivesEveryCutOfEachKindOfFile_data();
}

void TestBadSurvey::survivesThousandsOfByteFlips()
{
    QFETCH(QByteArray, name);
    TwoWells survey;
    if (name == "bad.track")
        survey.write("bad.track", header("Well Track") + "1\t1\t0\t0\n1\t1\t2500\t2500\n");
    const QByteArray whole = survey.read(name.constData());
    const QByteArray good = survey.read("good.well");
    SurveyStore store(survey.path());
    std::mt19937 random(5);
    for (int round = 0; round < 3000; ++round) {
        QByteArray bytes = whole;
        for (int flips = 1 + static_cast<int>(random() % 3); flips > 0; --flips) {
            const int at = static_cast<int>(random() % static_cast<unsigned>(bytes.size()));
            bytes[at] = static_cast<char>(random() % 2 ? static_cast<int>(random() % 256)
                                                       : bytes.at(at) ^ (1 << random() % 8));
        }
        survey.write(name.constData(), bytes);
        const ReadAll all = readAll(store, damaged);
        QVERIFY(all.samples <= 10 && all.markers <= 2 && all.wells.size() <= 2);
        if (name != ".omf" && round % 20 == 0)
            QCOMPARE(whatIsWrong(readAll(store, healthy)), QString());
        QCOMPARE(survey.read(name.constData()), bytes);
        // Writing beside damage must not crash either, nor touch the other well.
        if (round % 10 == 0) {
            const host::Status log = store.writeLog(damaged, survey_fixture::log("GR", {1, 2}));
            const host::Status markers = store.writeMarkers(damaged, {marker("M", 5)});
            const host::Status changed = store.changeWell(damaged, properties("x"));
            const host::Status removed = store.removeLog(damaged, 0);
            Q_UNUSED(log)
            Q_UNUSED(markers)
            Q_UNUSED(changed)
            Q_UNUSED(removed)
            QCOMPARE(survey.read("good.well"), good);
        }
    }
}

void TestBadSurvey::readsNothingOutsideTheSurvey()
{
    for (const char *file : {"../../x.well", "/etc/passwd", "../x.well", "./x.well", "..", "x/../../../x.well"}) {
        TwoWells survey;
        survey.write(".omf", wellList({{"Bad", file}, {"Good", "good.well"}}));
        files::write(survey.path() + QStringLiteral("/../x.well"), wellFile());
        files::write(survey.path() + QStringLiteral("/x.well"), wellFile());
        SurveyStore store(survey.path());
        const ReadAll all = readAll(store, damaged);
        QVERIFY(!all.hasHeader && all.logs.isEmpty() && all.markers == 0);
        QVERIFY(namesFile(all.texts, survey.file(".omf")));
        QCOMPARE(whatIsWrong(readAll(store, healthy)), QString());
    }
}

void TestBadSurvey::followsNoEndlessName()
{
    // A name for which no file can exist must not be searched for "^1", "^2", … without end.
    TwoWells survey;
    survey.write(".omf", wellList({{"Bad", QByteArray(250, 'n') + ".well"}, {"Good", "good.well"}}));
    SurveyStore store(survey.path());
    QVERIFY(readAll(store, damaged).logs.isEmpty());
    QVERIFY(QFile::link(survey.file("loop.well"), survey.file("loop.well")));
    QVERIFY(QFile::link(survey.file("loop^1.wll"), survey.file("loop^1.wll")));
    survey.write(".omf", wellList({{"Bad", "loop.well"}, {"Good", "good.well"}}));
    QVERIFY(namesFile(readAll(store, damaged).texts, survey.file("loop.well")));
    QCOMPARE(whatIsWrong(readAll(store, healthy)), QString());
}

LORVA_TEST_MAIN(TestBadSurvey)
#include "tst_badsurvey.moc"
