#include "base/filesystemcalls.h"
#include "support/testmain.h"
#include "support/unprivileged.h"
#include "surveyfixture.h"

#include <QDir>
#include <QFile>

#include <cerrno>
#include <cmath>
#include <fcntl.h>
#include <limits>
#include <sys/stat.h>
#include <unistd.h>

using namespace survey_fixture;
using survey::SurveyStore;
using survey::WellProperties;

namespace {

constexpr float udf = host::undefinedValue;

QStringList names(const QVector<host::LogInfo> &logs)
{
    QStringList result;
    for (const host::LogInfo &log : logs)
        result.append(log.name);
    return result;
}

QStringList names(const QVector<host::WellEntry> &wells)
{
    QStringList result;
    for (const host::WellEntry &well : wells)
        result.append(well.name);
    return result;
}

QSet<QString> asSet(const QStringList &texts)
{
    return QSet<QString>(texts.begin(), texts.end());
}

// A survey with the well "A" (100050.2, files "a…") and its logs.
struct OneWell : Survey
{
    explicit OneWell(const QVector<QByteArray> &logNames = {})
        : store(path())
    {
        write(".omf", wellList({{"A", "a.well"}}));
        write("a.well", wellFile());
        int number = 0;
        for (const QByteArray &name : logNames) {
            ++number;
            const auto value = static_cast<float>(number);
            write("a^" + QByteArray::number(number) + ".wll", logFile(name, {100, value, 101, value}));
        }
    }

    const QString key = QStringLiteral("100050.2");
    SurveyStore store;
};

// Overwrites without changing size, inode or modification time.
void overwriteInPlace(const QString &path, const QByteArray &bytes)
{
    struct stat info
    { };
    const QByteArray name = QFile::encodeName(path);
    QCOMPARE(::stat(name.constData(), &info), 0);
    QCOMPARE(static_cast<int>(info.st_size), bytes.size());
    const int file = ::open(name.constData(), O_WRONLY);
    QCOMPARE(static_cast<int>(::write(file, bytes.constData(), static_cast<size_t>(bytes.size()))), bytes.size());
    const timespec times[2] = {info.st_atim, info.st_mtim};
    ::futimens(file, times);
    ::close(file);
}

} // namespace

class TestSurveyStore : public QObject
{
    Q_OBJECT

private slots:
    void listsWellsAsTheHostSorts();
    void listsEmptySurvey();
    void tellsWhatItPassesOverInTheListAtEveryRead();
    void forgetsProblemsOfFilesThatChanged();
    void readsHeaderLogsAndMarkers();
    void refusesKeysThatAreNoWells();

    void readsATrackFileBeforeTheTrack();
    void reportsATrackFileItCannotUse();

    void readsLogsUpToTheFirstMissingNumber();
    void readsALongHeader();
    void readsALongLog();
    void givesANamelessLogAStandInName();
    void readsTheRightLogAfterAnotherProgramChangedThem();
    void refusesIndexesOutsideTheLogs();

    void writesANewLogAsTheNextNumber();
    void replacesTheLogOfThatName();
    void replacesALogWhateverBlanksAreAroundItsName();
    void refusesALogWithoutDefinedSamplesAndKeepsTheOldOne();
    void writesAfterAFileItCannotRead();
    void doesNotMakeASecondLogOfOneNameBesideAnotherProgram();
    void removesALogWithoutLeavingAGap();
    void removesTheLastLogAndTheOnlyLog();
    void removesNothingWhenRenamingFails();
    void writesManyLogs();

    void writesMarkersAndTellsOfThem();
    void keepsWhatAnotherProgramWroteIntoTheMarkers();
    void doesNotReplaceMarkersItCannotRead();
    void keepsMarkersThatItCannotShow();
    void doesNotRewriteWhatIsNoListOfMarkers_data();
    void doesNotRewriteWhatIsNoListOfMarkers();
    void doesNotTellOfMarkersThatWereNotWritten();

    void addsAWell();
    void addsWellsWithStrangeNames_data();
    void addsWellsWithStrangeNames();
    void givesNamesThatCleanAlikeDistinctFiles();
    void doesNotTakeOverFilesThatWereLeftBehind();
    void refusesNamesTheListCannotHold_data();
    void refusesNamesTheListCannotHold();
    void refusesPropertiesThatAreNoNumbers();
    void takesAVeryLongName();
    void undoesAWellWhoseListCannotBeWritten();
    void changesAWellAndKeepsTheRest();
    void changesAWellWithATrackFile();
    void keepsTheOldWellWhileATrackFileGoes();
    void doesNotChangeAWellWithADamagedTrack();
    void renamesAWell();
    void renamesWellsOnly();
    void removesAWellWithExactlyItsFiles();
    void removesAWellButNotFilesElsewhere();
    void keepsFilesThatAnotherEntryUses();
    void keepsUnknownKeysOfEveryFile();
    void keepsWhatAnotherProgramWroteIntoTheList();
    void seesAListThatChangedWithoutChangingSizeOrTime();
    void refusesToWriteADamagedList_data();
    void refusesToWriteADamagedList();
    void startsAfreshInAnotherSurvey();

    void readingChangesNothing();
    void failedWritesChangeNothing();
    void writesNothingInAWriteProtectedSurvey();
};

void TestSurveyStore::listsWellsAsTheHostSorts()
{
    Survey survey;
    survey.write(".omf",
                 wellList({{"b", "1.well"},
                           {"A", "2.well"},
                           {"B", "3.well"},
                           {"_x", "4.well"},
                           {"a", "5.well"},
                           {"Z", "6.well"},
                           {"Ärger", "7.well"},
                           {"10", "8.well"},
                           {"9", "9.well"},
                           {"a 2", "10.well"},
                           {"b", "11.well"}}));
    SurveyStore store(survey.path());
    const host::Outcome<QVector<host::WellEntry>> wells = store.list();
    QVERIFY(wells.ok());
    QStringList found;
    for (const host::WellEntry &well : wells.value)
        found.append(well.name + QLatin1Char('=') + well.key);
    QCOMPARE(found,
             (QStringList{"10=100050.9", "9=100050.10", "A=100050.3", "a=100050.6", "a 2=100050.11", "b=100050.2",
                          "B=100050.4", "b=100050.12", "Z=100050.7", "_x=100050.5", "Ärger=100050.8"}));
}

void TestSurveyStore::listsEmptySurvey()
{
    Survey survey;
    SurveyStore store(survey.path());
    QVERIFY(store.list().ok());
    QVERIFY(store.list().value.isEmpty());
    QVERIFY(store.takeProblems().isEmpty());
}

void TestSurveyStore::tellsWhatItPassesOverInTheListAtEveryRead()
{
    OneWell survey;
    survey.write(".omf", survey.read(".omf") + "Lost\nWell: dGB`Stream\n!\n");
    QTest::qWait(20); // once its time is settled the list is kept and not parsed again
    for (int i = 0; i < 3; ++i) {
        QCOMPARE(names(survey.store.list().value), QStringList{"A"});
        const QStringList problems = survey.store.takeProblems();
        QCOMPARE(problems.size(), 1);
        QVERIFY(problems.first().contains(survey.file(".omf")));
    }
    survey.write(".omf", wellList({{"A", "a.well"}}));
    QVERIFY(survey.store.list().ok());
    QVERIFY(survey.store.takeProblems().isEmpty());
}

void TestSurveyStore::forgetsProblemsOfFilesThatChanged()
{
    OneWell survey({"GR", "RHOB"});
    int found = 0;
    survey.store.setProblemFound([&found] { ++found; });
    const QByteArray whole = survey.read("a^2.wll");
    survey.write("a^2.wll", whole.left(whole.size() - 3));
    for (int i = 0; i < 2; ++i) {
        QCOMPARE(survey.store.logs(survey.key).value.size(), 2);
        QVERIFY(survey.store.log(survey.key, 1).ok());
        QCOMPARE(found, 1); // announced once, whoever finds it again
        QCOMPARE(survey.store.problems(), QStringList{survey.file("a^2.wll") + ": its last sample is cut off."});
    }
    QCOMPARE(survey.store.logProblem(survey.key, 0), QString());
    QCOMPARE(survey.store.logProblem(survey.key, 1), survey.store.problems().first());
    QCOMPARE(survey.store.logProblem(survey.key, 2), QString());
    survey.write("a^2.wll", whole);
    QVERIFY(survey.store.problems().isEmpty());
    QCOMPARE(survey.store.logProblem(survey.key, 1), QString());
    survey.write("a^2.wll", logFile("RHOB", {}));
    QCOMPARE(survey.store.logs(survey.key).value.size(), 2);
    QCOMPARE(survey.store.problems(), QStringList{survey.file("a^2.wll") + ": it holds no samples."});
    QCOMPARE(found, 2);
    survey.store.setSurveyDirectory(survey.path());
    QVERIFY(survey.store.problems().isEmpty());
}

void TestSurveyStore::readsHeaderLogsAndMarkers()
{
    OneWell survey({"GR", "RHOB"});
    survey.write("a.wlm",
                 header("Well Markers")
                     + "1.Name: Deep\n1.Depth along hole: 2000\n1.Color: 1`2`3\n"
                       "2.Name: Below\n2.Depth along hole: 2500.5\n");
    const host::Outcome<host::WellHeader> well = survey.store.header(survey.key);
    QVERIFY(well.ok());
    QCOMPARE(well.value.name, QStringLiteral("A"));
    QVERIFY(well.value.x == 502500 && well.value.y == 6003000 && well.value.kbElevation == 25
            && well.value.totalDepth == 2500);
    QCOMPARE(names(survey.store.logs(survey.key).value), (QStringList{"GR", "RHOB"}));
    QCOMPARE(survey.store.logs(survey.key).value.at(1).unit, QStringLiteral("gAPI"));
    QCOMPARE(survey.store.log(survey.key, 1).value.values, (QVector<float>{2, 2}));
    QVERIFY(survey.store.takeProblems().isEmpty());
    QCOMPARE(summary(survey.store.markers(survey.key).value), QStringLiteral("Deep@2000"));
    const QStringList problems = survey.store.takeProblems();
    QCOMPARE(problems.size(), 1);
    QVERIFY(problems.first().contains(survey.file("a.wlm")));
    QVERIFY(survey.store.takeProblems().isEmpty());
    QFile::remove(survey.file("a.wlm"));
    QVERIFY(survey.store.markers(survey.key).ok());
    QVERIFY(survey.store.markers(survey.key).value.isEmpty());
}

void TestSurveyStore::refusesKeysThatAreNoWells()
{
    OneWell survey({"GR"});
    const auto before = files::snapshot(survey.path());
    for (const QString &key :
         {QString(), QStringLiteral("100050.1"), QStringLiteral("100050.7"), QStringLiteral("100010.2"),
          QStringLiteral("100050"), QStringLiteral("2"), QStringLiteral("100050.2.1"), QStringLiteral("100050.-2"),
          QStringLiteral("100050.0"), QStringLiteral("100050.x")}) {
        QVERIFY(!survey.store.header(key).ok());
        QVERIFY(!survey.store.properties(key).ok());
        QVERIFY(!survey.store.logs(key).ok());
        QVERIFY(!survey.store.log(key, 0).ok());
        QVERIFY(!survey.store.markers(key).ok());
        QVERIFY(!survey.store.writeLog(key, log("X", {1})).ok());
        QVERIFY(!survey.store.writeMarkers(key, {marker("M", 1)}).ok());
        QVERIFY(!survey.store.changeWell(key, properties("X")).ok());
        QVERIFY(!survey.store.renameWell(key, QStringLiteral("X")).ok());
        QVERIFY(!survey.store.removeLog(key, 0).ok());
        const host::Status removed = survey.store.removeWell(key);
        QVERIFY(removed.error.contains(survey.file(".omf")));
    }
    QCOMPARE(files::snapshot(survey.path()), before);
}

void TestSurveyStore::readsATrackFileBeforeTheTrack()
{
    for (const QByteArray &head : {QByteArray(), header("Well Track")}) {
        OneWell survey;
        survey.write("a.track", head + "502500 6003000 -40 0\n502600 6003000 960 1000\n");
        const host::WellHeader well = survey.store.header(survey.key).value;
        QVERIFY(well.kbElevation == 40 && well.totalDepth == 1000);
        survey.write("a.wlm",
                     header("Well Markers")
                         + "1.Name: In\n1.Depth along hole: 900\n2.Name: Out\n2.Depth along hole: 1500\n");
        QCOMPARE(summary(survey.store.markers(survey.key).value), QStringLiteral("In@900"));
        // A main file without a track of its own is enough then.
        survey.write("a.well", header("Well") + "Depth-Unit: Meter\n!\n");
        QVERIFY(survey.store.header(survey.key).value.totalDepth == 1000);
        QVERIFY(survey.store.header(survey.key).value.x == 502500);
        survey.write("a.well", "rubbish");
        QVERIFY(survey.store.header(survey.key).error.contains(survey.file("a.well")));
    }
}

void TestSurveyStore::reportsATrackFileItCannotUse()
{
    OneWell survey;
    survey.write("a.track", "rubbish\n");
    QVERIFY(survey.store.header(survey.key).value.totalDepth == 2500);
    QVERIFY(survey.store.takeProblems().value(0).contains(survey.file("a.track")));
    QFile::remove(survey.file("a.track"));
    QVERIFY(QDir().mkdir(survey.file("a.track")));
    QVERIFY(survey.store.header(survey.key).value.totalDepth == 2500);
    QVERIFY(survey.store.takeProblems().value(0).contains(survey.file("a.track")));
}

void TestSurveyStore::readsLogsUpToTheFirstMissingNumber()
{
    OneWell survey({"GR", "RHOB", "DT", "NPHI"});
    QFile::remove(survey.file("a^3.wll"));
    QCOMPARE(names(survey.store.logs(survey.key).value), (QStringList{"GR", "RHOB"}));
    // A damaged file in between hides nothing.
    survey.write("a^3.wll", "rubbish");
    QCOMPARE(names(survey.store.logs(survey.key).value), (QStringList{"GR", "RHOB", "NPHI"}));
    QCOMPARE(survey.store.log(survey.key, 2).value.values, (QVector<float>{4, 4}));
    QVERIFY(survey.store.takeProblems().value(0).contains(survey.file("a^3.wll")));
    survey.write("a^3.wll", logFile("GR", {100, 9}));
    QCOMPARE(names(survey.store.logs(survey.key).value), (QStringList{"GR", "RHOB", "NPHI"}));
    QVERIFY(survey.store.takeProblems().value(0).contains(survey.file("a^3.wll")));
}

void TestSurveyStore::readsALongHeader()
{
    for (const int size : {4000, 4090, 4096, 5000, 40000, 300000}) {
        OneWell survey({"GR"});
        const QByteArray head = header("Well Log") + "Name: Long\nStorage type: Binary\nNote: ";
        survey.write("a^1.wll", head + QByteArray(size, 'x') + "!\n!\n" + samples({100, 7, 101, 8}));
        survey.write("a^2.wll",
                     header("Well Log") + "Name: Parameters\nStorage type: Binary\nHeader info: Yes\n!\nNote: "
                         + QByteArray(size, 'y') + "\n!\n" + samples({100, 9, 101, 10}));
        QCOMPARE(names(survey.store.logs(survey.key).value), (QStringList{"Long", "Parameters"}));
        QCOMPARE(survey.store.log(survey.key, 0).value.values, (QVector<float>{7, 8}));
        QCOMPARE(survey.store.log(survey.key, 1).value.values, (QVector<float>{9, 10}));
        QVERIFY(survey.store.takeProblems().isEmpty());
    }
    // A block that ends right behind a value that looks like the mark.
    OneWell survey({"GR"});
    QByteArray head = header("Well Log") + "Name: Block\nStorage type: Binary\nNote: ";
    head += QByteArray(4096 - head.size() - 2, 'x') + "!\n";
    QCOMPARE(head.size(), 4096);
    survey.write("a^1.wll", head + "Unit of Measure: m\n!\n" + samples({100, 7}));
    QCOMPARE(survey.store.logs(survey.key).value.at(0).unit, QStringLiteral("m"));
    QCOMPARE(survey.store.log(survey.key, 0).value.values, (QVector<float>{7}));
}

void TestSurveyStore::readsALongLog()
{
    constexpr int count = 200000; // more than any block that a reader may take at once
    QVector<float> numbers;
    host::LogData expected;
    for (int i = 0; i < count; ++i) {
        const auto depth = static_cast<float>(i);
        const bool isEnd = i < 3 || i >= count - 3;
        const float value = isEnd || i % 7 == 0 ? udf
            : i % 50021 == 1                    ? std::numeric_limits<float>::quiet_NaN()
                                                : depth * 0.5f;
        const bool hasDepth = i % 60013 != 5;
        numbers << (hasDepth ? depth : udf) << value;
        if (hasDepth && i >= 3 && i < count - 3) {
            expected.depths.append(depth);
            expected.values.append(std::isfinite(value) ? value : udf);
        }
    }
    while (host::isUndefined(expected.values.last())) {
        expected.depths.removeLast();
        expected.values.removeLast();
    }
    for (const bool isBigEndian : {false, true}) {
        for (const int headerSize : {0, 5000, 300000}) {
            for (const int missing : {0, 5}) {
                OneWell survey({"GR"});
                const QByteArray bytes = header("Well Log") + "Name: Long\nNote: " + QByteArray(headerSize, 'x')
                    + (isBigEndian ? "\nStorage type: Swapped\n!\n" : "\nStorage type: Binary\n!\n")
                    + samples(numbers, isBigEndian);
                survey.write("a^1.wll", bytes.left(bytes.size() - missing));
                const host::Outcome<host::LogData> read = survey.store.log(survey.key, 0);
                QCOMPARE(read.error, QString());
                QVERIFY(read.value.depths == expected.depths);
                QVERIFY(read.value.values == expected.values);
                QCOMPARE(survey.store.takeProblems().size(), missing == 0 ? 0 : 1);
            }
        }
    }
}

void TestSurveyStore::givesANamelessLogAStandInName()
{
    OneWell survey({"GR"});
    survey.write("a^2.wll", header("Well Log") + "Storage type: Binary\n!\n" + samples({100, 7}));
    QCOMPARE(names(survey.store.logs(survey.key).value), (QStringList{"GR", "[2]"}));
    QVERIFY(survey.store.takeProblems().value(0).contains(survey.file("a^2.wll")));
    const host::LogData data = survey.store.log(survey.key, 1).value;
    QCOMPARE(data.name, QStringLiteral("[2]"));
    QCOMPARE(data.values, (QVector<float>{7}));
}

void TestSurveyStore::readsTheRightLogAfterAnotherProgramChangedThem()
{
    OneWell survey({"GR", "RHOB", "DT"});
    QCOMPARE(survey.store.logs(survey.key).value.size(), 3);
    survey.write("a^2.wll", logFile("NPHI", {100, 8}));
    QCOMPARE(survey.store.log(survey.key, 1).value.name, QStringLiteral("NPHI"));
    QFile::remove(survey.file("a^3.wll"));
    QVERIFY(!survey.store.log(survey.key, 2).ok());
    QCOMPARE(names(survey.store.logs(survey.key).value), (QStringList{"GR", "NPHI"}));
    survey.write("a^2.wll", "rubbish");
    QVERIFY(survey.store.log(survey.key, 1).error.contains(QStringLiteral("1")));
    QCOMPARE(names(survey.store.logs(survey.key).value), (QStringList{QStringLiteral("GR")}));
}

void TestSurveyStore::refusesIndexesOutsideTheLogs()
{
    OneWell survey({"GR"});
    for (const int index : {-1, 1, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
        QVERIFY(!survey.store.log(survey.key, index).ok());
        QVERIFY(!survey.store.removeLog(survey.key, index).ok());
    }
    QCOMPARE(survey.store.logs(survey.key).value.size(), 1);
}

void TestSurveyStore::writesANewLogAsTheNextNumber()
{
    OneWell survey({"GR", "RHOB"});
    QVERIFY(survey.store.writeLog(survey.key, log("DT", {udf, 1, udf, 2, udf})).ok());
    QVERIFY(survey.read("a^3.wll").endsWith("!\n" + samples({100.5f, 1, 101, udf, 101.5f, 2})));
    QCOMPARE(names(survey.store.logs(survey.key).value), (QStringList{"GR", "RHOB", "DT"}));
    OneWell empty;
    QVERIFY(empty.store.writeLog(empty.key, log("GR", {1})).ok());
    QVERIFY(empty.names().contains(QStringLiteral("a^1.wll")));
}

void TestSurveyStore::replacesTheLogOfThatName()
{
    OneWell survey({"GR", "RHOB", "DT"});
    const QByteArray first = survey.read("a^1.wll");
    const QByteArray third = survey.read("a^3.wll");
    QVERIFY(survey.store.writeLog(survey.key, log("RHOB", {5, 6, 7})).ok());
    QCOMPARE(survey.store.log(survey.key, 1).value.values, (QVector<float>{5, 6, 7}));
    QCOMPARE(survey.read("a^1.wll"), first);
    QCOMPARE(survey.read("a^3.wll"), third);
    QCOMPARE(survey.names(), (QStringList{".omf", "a.well", "a^1.wll", "a^2.wll", "a^3.wll"}));
    QVERIFY(survey.store.writeLog(survey.key, log("rhob", {1})).ok());
    QCOMPARE(names(survey.store.logs(survey.key).value), (QStringList{"GR", "RHOB", "DT", "rhob"}));
}

void TestSurveyStore::replacesALogWhateverBlanksAreAroundItsName()
{
    OneWell survey;
    for (const char *name : {"GR", " GR", "GR \t", "GR\r"})
        QVERIFY(survey.store.writeLog(survey.key, log(name, {1, 2})).ok());
    QCOMPARE(names(survey.store.logs(survey.key).value), QStringList{QStringLiteral("GR")});
    QCOMPARE(survey.names(), (QStringList{".omf", "a.well", "a^1.wll"}));
}

void TestSurveyStore::refusesALogWithoutDefinedSamplesAndKeepsTheOldOne()
{
    OneWell survey({"GR"});
    const auto before = files::snapshot(survey.path());
    for (const QVector<float> &values : {QVector<float>{}, QVector<float>{udf, udf}}) {
        const host::Status status = survey.store.writeLog(survey.key, log("GR", values));
        QVERIFY(status.error.contains(QStringLiteral("\"GR\"")));
        QVERIFY(!survey.store.writeLog(survey.key, log("New", values)).ok());
    }
    host::LogData uneven = log("GR", {1, 2});
    uneven.values.append(3);
    QVERIFY(!survey.store.writeLog(survey.key, uneven).ok());
    QVERIFY(!survey.store.writeLog(survey.key, log(" ", {1})).ok());
    QCOMPARE(files::snapshot(survey.path()), before);
}

void TestSurveyStore::writesAfterAFileItCannotRead()
{
    OneWell survey({"GR", "RHOB"});
    survey.write("a^2.wll", "rubbish");
    QVERIFY(survey.store.writeLog(survey.key, log("RHOB", {1})).ok());
    QCOMPARE(survey.read("a^2.wll"), QByteArray("rubbish"));
    QCOMPARE(names(survey.store.logs(survey.key).value), (QStringList{"GR", "RHOB"}));
    QVERIFY(survey.names().contains(QStringLiteral("a^3.wll")));
}

void TestSurveyStore::doesNotMakeASecondLogOfOneNameBesideAnotherProgram()
{
    OneWell survey({"GR"});
    QCOMPARE(survey.store.logs(survey.key).value.size(), 1);
    survey.write("a^2.wll", logFile("DT", {100, 8}));
    QVERIFY(!survey.store.writeLog(survey.key, log("DT", {5})).ok()); // nobody here has seen the other one
    QCOMPARE(survey.read("a^2.wll"), logFile("DT", {100, 8}));
    QVERIFY(survey.store.writeLog(survey.key, log("DT", {5})).ok());
    QVERIFY(survey.store.writeLog(survey.key, log("GR", {6})).ok());
    QCOMPARE(survey.names(), (QStringList{".omf", "a.well", "a^1.wll", "a^2.wll"}));
    QCOMPARE(survey.store.log(survey.key, 1).value.values, (QVector<float>{5}));
}

void TestSurveyStore::removesALogWithoutLeavingAGap()
{
    OneWell survey({"GR", "RHOB", "DT"});
    QVERIFY(survey.store.removeLog(survey.key, 0).ok());
    QCOMPARE(survey.names(), (QStringList{".omf", "a.well", "a^1.wll", "a^2.wll"}));
    QCOMPARE(names(survey.store.logs(survey.key).value), (QStringList{"DT", "RHOB"}));
    QCOMPARE(survey.store.log(survey.key, 0).value.values, (QVector<float>{3, 3}));
    // What cannot be read keeps its file too.
    survey.write("a^3.wll", "rubbish");
    QVERIFY(survey.store.removeLog(survey.key, 1).ok());
    QCOMPARE(survey.read("a^2.wll"), QByteArray("rubbish"));
    QCOMPARE(names(survey.store.logs(survey.key).value), (QStringList{"DT"}));
}

void TestSurveyStore::removesTheLastLogAndTheOnlyLog()
{
    OneWell survey({"GR", "RHOB"});
    QVERIFY(survey.store.removeLog(survey.key, 1).ok());
    QCOMPARE(names(survey.store.logs(survey.key).value), QStringList{QStringLiteral("GR")});
    QVERIFY(survey.store.removeLog(survey.key, 0).ok());
    QVERIFY(survey.store.logs(survey.key).value.isEmpty());
    QCOMPARE(survey.names(), (QStringList{".omf", "a.well"}));
}

void TestSurveyStore::removesNothingWhenRenamingFails()
{
    class NoRename : public base::FileSystemCalls
    {
        int rename(const char *, const char *) override
        {
            errno = EACCES;
            return -1;
        }
    };
    OneWell survey({"GR", "RHOB"});
    const auto before = files::snapshot(survey.path());
    NoRename calls;
    base::ScopedFileSystemCalls scope(calls);
    QVERIFY(survey.store.removeLog(survey.key, 0).error.contains(survey.file("a^1.wll")));
    QCOMPARE(files::snapshot(survey.path()), before);
}

void TestSurveyStore::writesManyLogs()
{
    OneWell survey;
    QStringList expected;
    for (int i = 1; i <= 60; ++i) {
        expected.append(QStringLiteral("L%1").arg(i));
        QVERIFY(survey.store.writeLog(survey.key, log(qPrintable(expected.last()), {static_cast<float>(i)})).ok());
    }
    QCOMPARE(names(survey.store.logs(survey.key).value), expected);
    for (int i = 0; i < 60; ++i) {
        QCOMPARE(survey.store.log(survey.key, i).value.name, expected.at(i));
        QCOMPARE(survey.store.log(survey.key, i).value.values, (QVector<float>{static_cast<float>(i + 1)}));
    }
    survey.store.reload(survey.key);
    QCOMPARE(survey.store.log(survey.key, 59).value.name, expected.last());
}

void TestSurveyStore::writesMarkersAndTellsOfThem()
{
    OneWell survey;
    QStringList told;
    survey.store.setMarkersChanged(
        [&](const QString &key) { told.append(key + QLatin1Char(' ') + summary(survey.store.markers(key).value)); });
    QVERIFY(survey.store.writeMarkers(survey.key, {marker("B", 200), marker("A", 100), marker("B", 50)}).ok());
    QCOMPARE(told, QStringList{QStringLiteral("100050.2 A@100 B@200")});
    QVERIFY(survey.store.writeMarkers(survey.key, {}).ok());
    QCOMPARE(told.size(), 2);
    QVERIFY(survey.store.markers(survey.key).value.isEmpty());
}

void TestSurveyStore::keepsWhatAnotherProgramWroteIntoTheMarkers()
{
    OneWell survey;
    QVERIFY(survey.store.writeMarkers(survey.key, {marker("A", 100), marker("B", 200)}).ok());
    QByteArray bytes = survey.read("a.wlm");
    bytes.replace("1.Color: 255`0`0\n", "1.Color: 255`0`0`77\n1.Note:  by hand \n");
    survey.write("a.wlm", bytes + "Whole: x\n");
    QVERIFY(survey.store.writeMarkers(survey.key, {marker("Z", 1), marker("A", 150)}).ok());
    QCOMPARE(
        withoutDate(survey.read("a.wlm")),
        QByteArray(
            "!\nDepth-Unit: Meter\nWhole: x\n1.Name: Z\n1.Depth along hole: 1\n1.Strat Level: -1\n1.Color: 255`0`0\n"
            "2.Name: A\n2.Depth along hole: 150\n2.Strat Level: -1\n2.Color: 255`0`0`77\n2.Note:  by hand \n"));
}

void TestSurveyStore::doesNotReplaceMarkersItCannotRead()
{
    OneWell survey;
    QVERIFY(QDir().mkdir(survey.file("a.wlm")));
    QVERIFY(survey.store.writeMarkers(survey.key, {marker("A", 1)}).error.contains(survey.file("a.wlm")));
    QVERIFY(survey.store.markers(survey.key).error.contains(survey.file("a.wlm")));
    QVERIFY(!survey.store.takeProblems().isEmpty());
}

void TestSurveyStore::keepsMarkersThatItCannotShow()
{
    OneWell survey;
    QVERIFY(survey.store.writeMarkers(survey.key, {marker("A", 100), marker("Deep", 2400), marker("B", 2200)}).ok());
    WellProperties well = survey.store.properties(survey.key).value;
    well.totalDepth = 2300;
    QVERIFY(survey.store.changeWell(survey.key, well).ok());
    QVector<host::Marker> shown = survey.store.markers(survey.key).value;
    QCOMPARE(summary(shown), QStringLiteral("A@100 B@2200"));
    shown.append(marker("New", 50));
    const host::Outcome<QStringList> lost = survey.store.markersLostByWriting(survey.key, shown);
    QCOMPARE(lost.error, QString());
    QCOMPARE(lost.value, QStringList());
    QVERIFY(survey.store.writeMarkers(survey.key, shown).ok());
    QCOMPARE(summary(survey.store.markers(survey.key).value), QStringLiteral("New@50 A@100 B@2200"));
    well.totalDepth = 2500;
    QVERIFY(survey.store.changeWell(survey.key, well).ok());
    QCOMPARE(summary(survey.store.markers(survey.key).value), QStringLiteral("New@50 A@100 B@2200 Deep@2400"));
    QVERIFY(!survey.store.markersLostByWriting(QStringLiteral("100050.99"), {}).ok());
}

void TestSurveyStore::doesNotRewriteWhatIsNoListOfMarkers_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("rubbish") << QByteArray("rubbish\n");
    QTest::newRow("of another kind") << wellFile();
    QTest::newRow("cut in its header") << QByteArray("dTect V6.6\nWell Mar");
}

void TestSurveyStore::doesNotRewriteWhatIsNoListOfMarkers()
{
    QFETCH(QByteArray, bytes);
    OneWell survey;
    survey.write("a.wlm", bytes);
    const host::Status status = survey.store.writeMarkers(survey.key, {marker("A", 1)});
    QVERIFY(status.error.contains(survey.file("a.wlm")));
    QCOMPARE(survey.read("a.wlm"), bytes);
    // Nor is it taken for a well without markers.
    QVERIFY(survey.store.markers(survey.key).error.contains(survey.file("a.wlm")));
    QVERIFY(survey.store.takeProblems().join(QLatin1Char('\n')).contains(survey.file("a.wlm")));
}

void TestSurveyStore::doesNotTellOfMarkersThatWereNotWritten()
{
    class FullDisk : public base::FileSystemCalls
    {
        ssize_t write(int, const void *, size_t) override
        {
            errno = ENOSPC;
            return -1;
        }
    };
    OneWell survey;
    QVERIFY(survey.store.writeMarkers(survey.key, {marker("A", 100)}).ok());
    const auto before = files::snapshot(survey.path());
    int told = 0;
    survey.store.setMarkersChanged([&told](const QString &) { ++told; });
    FullDisk calls;
    base::ScopedFileSystemCalls scope(calls);
    QVERIFY(survey.store.writeMarkers(survey.key, {marker("B", 1)}).error.contains(survey.file("a.wlm")));
    QCOMPARE(told, 0);
    QCOMPARE(files::snapshot(survey.path()), before);
}

void TestSurveyStore::addsAWell()
{
    Survey survey;
    SurveyStore store(survey.path());
    const host::Outcome<QString> key = store.addWell(properties("Probe 2/A"));
    QCOMPARE(key.error, QString());
    QCOMPARE(key.value, QStringLiteral("100050.2"));
    QCOMPARE(survey.names(), (QStringList{".omf", "Probe_2_A.well"}));
    const QByteArray list = survey.read(".omf");
    QVERIFY(list.contains("ID: 100050`2\n"));
    QVERIFY(list.contains("\nProbe 2/A: 2\nWell: dGB`Stream\n$Name: Probe_2_A.well\n#Version: 6.6\n#Created.At: "));
    QVERIFY(list.endsWith("\n!\n"));
    const host::WellHeader well = store.header(key.value).value;
    QCOMPARE(well.name, QStringLiteral("Probe 2/A"));
    QVERIFY(well.x == 502500 && well.y == 6003000 && well.kbElevation == 25 && well.groundElevation == 12.5f);
    QVERIFY(well.totalDepth == 2500);
    QCOMPARE(well.typeCode, int(host::GasWell));
    QVERIFY(survey.read("Probe_2_A.well").contains("\nWell type: Gas\n"));
    QCOMPARE(store.addWell(properties("Next")).value, QStringLiteral("100050.3"));
    QVERIFY(store.removeWell(QStringLiteral("100050.3")).ok());
    QCOMPARE(store.addWell(properties("Next")).value, QStringLiteral("100050.4"));
}

void TestSurveyStore::addsWellsWithStrangeNames_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("file");
    const auto row = [](const char *name, const char *file) {
        QTest::newRow(name) << QString::fromUtf8(name) << QString::fromUtf8(file);
    };
    row("15/9-F-1", "15_9-F-1.well");
    row("Скважина 1", "Скважина_1.well");
    row("井 7", "井_7.well");
    row("بئر 3", "بئر_3.well");
    row("é", "é.well");
    row("😀", "😀.well");
    row("a:b", "a_b.well");
    row("a: 7", "a__7.well");
    row("a\\:b", "a__b.well");
    row("../../x", "_.._.._x.well");
    row("..", "_...well");
    row(".hidden", "_.hidden.well");
    row("15.9", "15.9.well");
    row("A^1", "A_1.well");
    row("$Name", "_Name.well");
    row("#x", "_x.well");
    row("ID", "ID.well");
    row("7", "7.well");
    row("<b>x</b>", "_b_x__b_.well");
    row("`", "_.well");
}

void TestSurveyStore::addsWellsWithStrangeNames()
{
    QFETCH(QString, name);
    QFETCH(QString, file);
    Survey survey;
    SurveyStore store(survey.path());
    const host::Outcome<QString> key = store.addWell(properties(qPrintable(name)));
    QCOMPARE(key.error, QString());
    QVERIFY(store.writeLog(key.value, log("GR", {1})).ok());
    QCOMPARE(survey.names().size(), 3);
    QVERIFY2(survey.names().contains(file), qPrintable(survey.names().join(QLatin1Char(' '))));
    SurveyStore again(survey.path());
    QCOMPARE(names(again.list().value), QStringList{name});
    QCOMPARE(again.header(key.value).value.name, name);
    QCOMPARE(again.logs(key.value).value.size(), 1);
    QVERIFY(again.takeProblems().isEmpty());
    QVERIFY(again.removeWell(key.value).ok());
    QCOMPARE(survey.names(), QStringList{".omf"});
}

void TestSurveyStore::givesNamesThatCleanAlikeDistinctFiles()
{
    Survey survey;
    SurveyStore store(survey.path());
    QStringList keys;
    const QStringList wells{"Probe 2", "Probe/2", "Probe_2", "probe 2", "Probe 2", "Probe_2_2", "Probe 2.well"};
    for (const QString &name : wells)
        keys.append(store.addWell(properties(qPrintable(name))).value);
    QCOMPARE(asSet(keys).size(), wells.size());
    QCOMPARE(survey.names().size(), wells.size() + 1);
    for (int i = 0; i < keys.size(); ++i)
        QVERIFY(store.writeLog(keys.at(i), log("GR", {static_cast<float>(i)})).ok());
    for (int i = 0; i < keys.size(); ++i) {
        QCOMPARE(store.header(keys.at(i)).value.name, wells.at(i));
        QCOMPARE(store.log(keys.at(i), 0).value.values, (QVector<float>{static_cast<float>(i)}));
    }
}

void TestSurveyStore::doesNotTakeOverFilesThatWereLeftBehind()
{
    for (const char *left : {"X.well", "X.wlm", "X.track", "X^1.wll", "X.wlt"}) {
        Survey survey;
        survey.write(left, "left behind");
        SurveyStore store(survey.path());
        const host::Outcome<QString> key = store.addWell(properties("X"));
        QVERIFY(key.ok());
        QVERIFY2(survey.names().contains(QStringLiteral("X_2.well")), left);
        QCOMPARE(survey.read(left), QByteArray("left behind"));
        QVERIFY(store.header(key.value).value.totalDepth == 2500);
        QVERIFY(store.removeWell(key.value).ok());
        QCOMPARE(survey.names(), (QStringList{".omf", left}));
    }
}

void TestSurveyStore::refusesNamesTheListCannotHold_data()
{
    QTest::addColumn<QString>("name");
    for (const char *name :
         {"", " ", "\t", "a\nb", "a\tb", "a\x7f", "@x", " @x", "!", "!x", "  !x", "--", "--x", ":x", "x\\", "x\\ "})
        QTest::newRow(name) << QString::fromUtf8(name);
    QTest::newRow("NUL") << QString(QStringLiteral("a") + QChar(0));
}

void TestSurveyStore::refusesNamesTheListCannotHold()
{
    QFETCH(QString, name);
    OneWell survey;
    const auto before = files::snapshot(survey.path());
    WellProperties well = properties("x");
    well.name = name;
    QVERIFY(!survey.store.addWell(well).ok());
    QVERIFY(!survey.store.renameWell(survey.key, name).ok());
    QCOMPARE(files::snapshot(survey.path()), before);
}

void TestSurveyStore::refusesPropertiesThatAreNoNumbers()
{
    OneWell survey;
    const auto before = files::snapshot(survey.path());
    for (double WellProperties::*field :
         {&WellProperties::x, &WellProperties::kbElevation, &WellProperties::totalDepth}) {
        WellProperties well = properties("New");
        well.*field = std::numeric_limits<double>::quiet_NaN();
        QVERIFY(!survey.store.addWell(well).ok());
        QVERIFY(!survey.store.changeWell(survey.key, well).ok());
    }
    QCOMPARE(files::snapshot(survey.path()), before);
}

void TestSurveyStore::takesAVeryLongName()
{
    for (const QString &letter :
         {QStringLiteral("n"), QString(QChar(0x4E95)), QString::fromUtf8("\xF0\x9F\x98\x80")}) {
        Survey survey;
        SurveyStore store(survey.path());
        const QString name = letter.repeated(100000);
        WellProperties well = properties("x");
        well.name = name;
        for (int i = 0; i < 2; ++i) {
            const host::Outcome<QString> key = store.addWell(well);
            QCOMPARE(key.error.left(200), QString());
            QVERIFY(store.writeLog(key.value, log("GR", {1})).ok());
            QCOMPARE(store.header(key.value).value.name, survey::shownText(name.toUtf8()));
        }
        const QStringList found = survey.names();
        for (const QString &file : found)
            QVERIFY(!file.contains(QChar(QChar::ReplacementCharacter)));
        QCOMPARE(found.size(), 5);
    }
}

void TestSurveyStore::undoesAWellWhoseListCannotBeWritten()
{
    class SecondRenameFails : public base::FileSystemCalls
    {
        int rename(const char *from, const char *to) override
        {
            if (++m_count == 2) {
                errno = EIO;
                return -1;
            }
            return FileSystemCalls::rename(from, to);
        }
        int m_count = 0;
    };
    OneWell survey;
    const auto before = files::snapshot(survey.path());
    SecondRenameFails calls;
    base::ScopedFileSystemCalls scope(calls);
    QVERIFY(survey.store.addWell(properties("New")).error.contains(survey.file(".omf")));
    QCOMPARE(files::snapshot(survey.path()), before);
    QCOMPARE(names(survey.store.list().value), QStringList{"A"});
}

void TestSurveyStore::changesAWellAndKeepsTheRest()
{
    OneWell survey({"GR"});
    survey.write("a.well",
                 header("Well")
                     + "Depth-Unit: Meter\nOwn:  key \nSurface coordinate: (1000,2000)\nReplacement velocity [from "
                       "KB to SRD]: 1900\n!\n"
                       "1000\t2000\t-30\t0\n1000\t2000\t470\t500\n1060\t2080\t643\t700\n");
    survey.write("a.wlt", "time depth");
    WellProperties well = survey.store.properties(survey.key).value;
    well.x += 100;
    well.kbElevation = 40;
    well.groundElevation = 7;
    well.totalDepth = 600;
    well.typeCode = host::DryWell;
    well.name = QStringLiteral("not changed here");
    const auto before = files::snapshot(survey.path());
    QVERIFY(survey.store.changeWell(survey.key, well).ok());
    auto after = files::snapshot(survey.path());
    QCOMPARE(withoutDate(after.value(QStringLiteral("WellInfo/a.well"))),
             QByteArray("!\nDepth-Unit: Meter\nOwn:  key \nSurface coordinate: (1100,2000)\nReplacement velocity "
                        "[from KB to SRD]: 1900\n"
                        "Ground Level elevation [GL]: 7\nWell type: Dry\n!\n"
                        "1100\t2000\t-40\t0\n1100\t2000\t460\t500\n1130\t2040\t546.5\t600\n"));
    after.insert(QStringLiteral("WellInfo/a.well"), before.value(QStringLiteral("WellInfo/a.well")));
    QCOMPARE(after, before);
    QCOMPARE(survey.store.header(survey.key).value.name, QStringLiteral("A"));
}

void TestSurveyStore::changesAWellWithATrackFile()
{
    OneWell survey;
    survey.write("a.track", "502500 6003000 -40 0\n502600 6003000 960 1000\n");
    WellProperties well = survey.store.properties(survey.key).value;
    well.kbElevation = 50;
    QVERIFY(survey.store.changeWell(survey.key, well).ok());
    QVERIFY(!survey.names().contains(QStringLiteral("a.track")));
    const host::WellHeader header = survey.store.header(survey.key).value;
    QVERIFY(header.kbElevation == 50 && header.totalDepth == 1000);
    // One that is of no use is not ours to delete.
    survey.write("a.track", "rubbish\n");
    well.kbElevation = 60;
    QVERIFY(survey.store.changeWell(survey.key, well).ok());
    QVERIFY(survey.store.header(survey.key).value.kbElevation == 60);
    QCOMPARE(survey.read("a.track"), QByteArray("rubbish\n"));
}

void TestSurveyStore::keepsTheOldWellWhileATrackFileGoes()
{
    // Whichever rename fails, and thus wherever a crash comes, the well is what it was.
    class NthRenameFails : public base::FileSystemCalls
    {
    public:
        explicit NthRenameFails(int n)
            : m_n(n)
        {
        }
        int rename(const char *from, const char *to) override
        {
            if (--m_n == 0) {
                errno = EIO;
                return -1;
            }
            return FileSystemCalls::rename(from, to);
        }

    private:
        int m_n;
    };
    for (const int n : {1, 2}) {
        OneWell survey;
        survey.write("a.track", "502500 6003000 -40 0\n502600 6003000 960 1000\n");
        WellProperties well = survey.store.properties(survey.key).value;
        well.kbElevation = 50;
        well.x = 1;
        NthRenameFails calls(n);
        base::ScopedFileSystemCalls scope(calls);
        QVERIFY(survey.store.changeWell(survey.key, well).error.contains(survey.file("a.well")));
        const host::WellHeader header = survey.store.header(survey.key).value;
        QVERIFY(header.kbElevation == 40 && header.totalDepth == 1000 && header.x == 502500);
    }
}

void TestSurveyStore::doesNotChangeAWellWithADamagedTrack()
{
    OneWell survey;
    survey.write("a.well", wellFile() + "rubbish\n502500\t6003000\t2575\t2600\n");
    const auto before = files::snapshot(survey.path());
    WellProperties well = survey.store.properties(survey.key).value;
    QVERIFY(survey.store.takeProblems().value(0).contains(survey.file("a.well")));
    QVERIFY(well.totalDepth == 2500);
    well.kbElevation = 30;
    QVERIFY(!survey.store.changeWell(survey.key, well).ok());
    QCOMPARE(files::snapshot(survey.path()), before);
}

void TestSurveyStore::renamesAWell()
{
    OneWell survey({"GR"});
    const auto before = files::snapshot(survey.wells());
    QVERIFY(survey.store.renameWell(survey.key, QStringLiteral(" New: name ")).ok());
    QCOMPARE(names(survey.store.list().value), QStringList{"New: name"});
    QCOMPARE(survey.store.list().value.first().key, survey.key);
    QCOMPARE(survey.store.logs(survey.key).value.size(), 1);
    auto after = files::snapshot(survey.wells());
    QVERIFY(after.take(QStringLiteral(".omf")).contains("\nNew\\: name: 2\nWell: dGB`Stream\n$Name: a.well\n"));
    for (const QString &name : after.keys())
        QCOMPARE(after.value(name), before.value(name));
    QVERIFY(survey.store.renameWell(survey.key, QStringLiteral("New: name")).ok());
}

void TestSurveyStore::renamesWellsOnly()
{
    OneWell survey;
    const QByteArray list = survey.read(".omf") + "Other: 3\nSomething: dGB`Stream\n$Name: o.x\n!\n";
    survey.write(".omf", list);
    for (const char *key : {"100050.1", "100050.3"}) {
        QVERIFY(!survey.store.renameWell(QString::fromLatin1(key), QStringLiteral("X")).ok());
        QVERIFY(!survey.store.removeWell(QString::fromLatin1(key)).ok());
    }
    QCOMPARE(survey.read(".omf"), list);
    QCOMPARE(names(survey.store.list().value), QStringList{"A"});
}

void TestSurveyStore::removesAWellWithExactlyItsFiles()
{
    Survey survey;
    survey.write(".omf", wellList({{"Probe 2", "Probe_2.well"}, {"Probe 2/A", "Probe_2_A.well"}}));
    const QStringList own{"Probe_2.well", "Probe_2.track", "Probe_2.wlm",   "Probe_2.wlt",   "Probe_2.csmdl",
                          "Probe_2.disp", "Probe_2^1.wll", "Probe_2^2.wll", "Probe_2^10.wll"};
    QStringList others{"Probe_2_A.well", "Probe_2_A^1.wll", "Probe_2_A.wlm", "Probe_2.txt",  "Probe_2^1.wll.bak",
                       "Probe_2^x.wll",  "XProbe_2.well",   "Probe_2.wells", "Probe.2.well", "probe_2.well",
                       "Probe_2^.wll",   "Probe_2",         ".lorva-abc",    "Probe_2.well~"};
    for (const QString &name : own + others)
        survey.write(qPrintable(name), name.endsWith(QLatin1String(".well")) ? wellFile() : QByteArray("x"));
    SurveyStore store(survey.path());
    QVERIFY(store.removeWell(QStringLiteral("100050.2")).ok());
    others.append(QStringLiteral(".omf"));
    QCOMPARE(asSet(survey.names()), asSet(others));
    QCOMPARE(names(store.list().value), QStringList{"Probe 2/A"});
    QVERIFY(store.header(QStringLiteral("100050.3")).ok());
}

void TestSurveyStore::removesAWellButNotFilesElsewhere()
{
    for (const char *file : {"../../outside.well", "/outside.well", "sub/x.well", "", ".omf", ".", ".."}) {
        OneWell survey;
        survey.write(".omf", wellList({{"Bad", file}, {"A", "a.well"}}));
        survey.write("sub/x.well", wellFile());
        files::write(survey.path() + QStringLiteral("/../outside.well"), wellFile());
        const auto before = files::snapshot(survey.path() + QStringLiteral("/.."));
        QCOMPARE(names(survey.store.list().value), (QStringList{"A", "Bad"}));
        const QString error = survey.store.header(survey.key).error;
        QVERIFY2(error.contains(survey.file(".omf")) && error.contains(QStringLiteral("\"Bad\"")), qPrintable(error));
        QVERIFY(!survey.store.writeLog(survey.key, log("GR", {1})).ok());
        QVERIFY(!survey.store.writeMarkers(survey.key, {marker("A", 1)}).ok());
        QVERIFY(!survey.store.changeWell(survey.key, properties("x")).ok());
        QCOMPARE(files::snapshot(survey.path() + QStringLiteral("/..")), before);
        QVERIFY(survey.store.header(QStringLiteral("100050.3")).ok());
        // The entry alone can go.
        QVERIFY(survey.store.removeWell(survey.key).ok());
        auto after = files::snapshot(survey.path() + QStringLiteral("/.."));
        after.insert(QStringLiteral("survey/WellInfo/.omf"), before.value(QStringLiteral("survey/WellInfo/.omf")));
        QCOMPARE(after, before);
        QCOMPARE(names(survey.store.list().value), QStringList{"A"});
    }
}

void TestSurveyStore::keepsFilesThatAnotherEntryUses()
{
    OneWell survey({"GR"});
    survey.write(".omf", wellList({{"A", "a.well"}, {"Again", "a"}}));
    QVERIFY(survey.store.removeWell(survey.key).ok());
    QVERIFY(survey.store.header(QStringLiteral("100050.3")).ok());
    QCOMPARE(survey.names(), (QStringList{".omf", "a.well", "a^1.wll"}));
}

void TestSurveyStore::keepsUnknownKeysOfEveryFile()
{
    OneWell survey;
    const QByteArray list =
        "!\nBefore:  x \nID: 100050`2\n!\nWellInfo: 1\nWell Info directory: dGB`Stream\n$Name: WellInfo\n!\n"
        "A: 2\nWell: dGB`Stream\n$Name: a.well\n#Owner:  me \nstrange\n!\n";
    survey.write(".omf", "dTect V6.6\nObject Management file\ndate\n" + list);
    survey.write("a.well", header("Well") + "Operator:  Own \nstrange\nState: X\n!\n1\t1\t0\t0\n1\t1\t10\t10\n");
    survey.write("a^1.wll",
                 header("Well Log") + "Name: GR\nMnemonic:  GR \nstrange\nStorage type: Binary\n!\n"
                     + samples({1, 1}));
    survey.write("a.wlm", header("Well Markers") + "Own:  x \n1.Name: M\n1.Depth along hole: 5\n1.Own:  y \n");
    WellProperties well = survey.store.properties(survey.key).value;
    well.kbElevation = 3;
    QVERIFY(survey.store.changeWell(survey.key, well).ok());
    QVERIFY(survey.store.writeLog(survey.key, log("GR", {2})).ok());
    QVERIFY(survey.store.writeMarkers(survey.key, {marker("L", 1), marker("M", 5)}).ok());
    QVERIFY(survey.store.addWell(properties("B")).ok());
    QVERIFY(survey.read("a.well").contains("!\nOperator:  Own \nstrange\nState: X\n"));
    QVERIFY(survey.read("a^1.wll").contains("!\nName: GR\nMnemonic:  GR \nstrange\nStorage type: Binary\n"));
    QVERIFY(survey.read("a.wlm").contains("!\nOwn:  x \n"));
    QVERIFY(survey.read("a.wlm").endsWith("\n2.Own:  y \n"));
    QByteArray expected = list;
    expected.replace("`2\n", "`3\n");
    QVERIFY(withoutDate(survey.read(".omf")).startsWith(expected));
}

void TestSurveyStore::keepsWhatAnotherProgramWroteIntoTheList()
{
    OneWell survey;
    QCOMPARE(survey.store.list().value.size(), 1);
    survey.write("b.well", wellFile());
    survey.write(".omf", wellList({{"A", "a.well"}, {"B", "b.well"}}));
    QCOMPARE(survey.store.addWell(properties("C")).value, QStringLiteral("100050.4"));
    QCOMPARE(names(survey.store.list().value), (QStringList{"A", "B", "C"}));
    SurveyStore other(survey.path());
    QVERIFY(other.renameWell(QStringLiteral("100050.3"), QStringLiteral("Renamed")).ok());
    QVERIFY(survey.store.removeWell(survey.key).ok());
    QCOMPARE(names(survey.store.list().value), (QStringList{"C", "Renamed"}));
}

void TestSurveyStore::seesAListThatChangedWithoutChangingSizeOrTime()
{
    OneWell survey;
    for (int i = 0; i < 200; ++i) {
        const QByteArray name(1, static_cast<char>('A' + i % 26));
        overwriteInPlace(survey.file(".omf"), wellList({{name, "a.well"}}));
        QCOMPARE(names(survey.store.list().value), QStringList{QString::fromLatin1(name)});
        QCOMPARE(survey.store.header(survey.key).value.name, QString::fromLatin1(name));
    }
    QVERIFY(QFile::remove(survey.file(".omf")));
    QVERIFY(!survey.store.list().ok());
}

void TestSurveyStore::refusesToWriteADamagedList_data()
{
    QTest::addColumn<QByteArray>("list");
    const QByteArray whole = wellList({{"A", "a.well"}, {"B", "b.well"}});
    QTest::newRow("missing") << QByteArray();
    QTest::newRow("empty") << QByteArray("");
    QTest::newRow("rubbish") << QByteArray("\x01\x02\xff rubbish\n");
    QTest::newRow("other type") << wellFile();
    QTest::newRow("no ID") << header("Object Management file") + "!\n";
    QTest::newRow("cut within an entry") << whole.left(whole.size() - 10);
    QTest::newRow("cut within the header") << whole.left(20);
    QTest::newRow("cut within the first section") << whole.left(whole.indexOf("`3"));
}

void TestSurveyStore::refusesToWriteADamagedList()
{
    QFETCH(QByteArray, list);
    OneWell survey;
    if (list.isNull())
        QVERIFY(QFile::remove(survey.file(".omf")));
    else
        survey.write(".omf", list);
    const auto before = files::snapshot(survey.path());
    for (const QString &error :
         {survey.store.addWell(properties("New")).error, survey.store.removeWell(survey.key).error,
          survey.store.renameWell(survey.key, QStringLiteral("New")).error})
        QVERIFY2(error.contains(survey.file(".omf")), qPrintable(error));
    QCOMPARE(files::snapshot(survey.path()), before);
}

void TestSurveyStore::startsAfreshInAnotherSurvey()
{
    OneWell first({"GR"});
    OneWell second({"DT", "NPHI"});
    second.write(".omf", wellList({{"B", "a.well"}}));
    first.write("a^2.wll", "rubbish");
    QCOMPARE(first.store.logs(first.key).value.size(), 1);
    first.store.setSurveyDirectory(second.path());
    QVERIFY(first.store.takeProblems().isEmpty());
    QCOMPARE(names(first.store.list().value), QStringList{"B"});
    QCOMPARE(first.store.log(first.key, 0).value.name, QStringLiteral("DT"));
    first.store.setSurveyDirectory({});
    QVERIFY(!first.store.list().ok());
}

void TestSurveyStore::readingChangesNothing()
{
    OneWell survey({"GR", "RHOB"});
    survey.write("a.wlm", header("Well Markers") + "1.Name: M\n1.Depth along hole: 5\n");
    survey.write("a.track", "1 1 -3 0\n1 1 10 13\n");
    survey.write("a^3.wll", "rubbish");
    const auto before = files::snapshot(survey.path());
    for (int i = 0; i < 2; ++i) {
        QVERIFY(survey.store.list().ok());
        QVERIFY(survey.store.header(survey.key).ok());
        QVERIFY(survey.store.properties(survey.key).ok());
        QVERIFY(survey.store.logs(survey.key).ok());
        QVERIFY(survey.store.log(survey.key, 1).ok());
        QVERIFY(survey.store.markers(survey.key).ok());
        survey.store.reload(survey.key);
    }
    QCOMPARE(files::snapshot(survey.path()), before);
}

void TestSurveyStore::failedWritesChangeNothing()
{
    class FullDisk : public base::FileSystemCalls
    {
        ssize_t write(int, const void *, size_t) override
        {
            errno = ENOSPC;
            return -1;
        }
    };
    OneWell survey({"GR"});
    survey.write("a.wlm", header("Well Markers") + "1.Name: M\n1.Depth along hole: 5\n");
    const auto before = files::snapshot(survey.path());
    FullDisk calls;
    base::ScopedFileSystemCalls scope(calls);
    const QStringList errors{survey.store.writeLog(survey.key, log("GR", {1})).error,
                             survey.store.writeLog(survey.key, log("New", {1})).error,
                             survey.store.writeMarkers(survey.key, {marker("A", 1)}).error,
                             survey.store.addWell(properties("New")).error,
                             survey.store.changeWell(survey.key, properties("A")).error,
                             survey.store.renameWell(survey.key, QStringLiteral("New")).error,
                             survey.store.removeWell(survey.key).error};
    const QStringList about{"a^1.wll", "a^2.wll", "a.wlm", "New.well", "a.well", ".omf", ".omf"};
    for (int i = 0; i < errors.size(); ++i) {
        QVERIFY2(errors.at(i).contains(survey.wells() + QLatin1Char('/') + about.at(i)), qPrintable(errors.at(i)));
        QVERIFY2(errors.at(i).contains(QString::fromLocal8Bit(std::strerror(ENOSPC))), qPrintable(errors.at(i)));
    }
    QCOMPARE(files::snapshot(survey.path()), before);
}

void TestSurveyStore::writesNothingInAWriteProtectedSurvey()
{
    OneWell survey({"GR"});
    survey.write("a.wlm", header("Well Markers") + "1.Name: M\n1.Depth along hole: 5\n");
    ::chmod(QFile::encodeName(survey.path() + QStringLiteral("/..")).constData(), 0755);
    ::chmod(QFile::encodeName(survey.wells()).constData(), 0555);
    const auto before = files::snapshot(survey.path());
    const int result = testing_support::runUnprivileged([&] {
        if (::access(QFile::encodeName(survey.wells()).constData(), R_OK | X_OK) != 0)
            return 9;
        const bool reads = survey.store.header(survey.key).ok() && survey.store.log(survey.key, 0).ok();
        const bool writes = survey.store.writeLog(survey.key, log("GR", {1})).ok()
            || survey.store.writeMarkers(survey.key, {marker("A", 1)}).ok()
            || survey.store.addWell(properties("New")).ok()
            || survey.store.changeWell(survey.key, properties("A")).ok() || survey.store.removeWell(survey.key).ok()
            || survey.store.removeLog(survey.key, 0).ok()
            || survey.store.renameWell(survey.key, QStringLiteral("N")).ok();
        return reads && !writes ? 0 : 1;
    });
    ::chmod(QFile::encodeName(survey.wells()).constData(), 0755);
    if (result == 9 || result == 254)
        QSKIP("no user without rights can reach the temporary folder");
    QCOMPARE(result, 0);
    QCOMPARE(files::snapshot(survey.path()), before);
}

LORVA_TEST_MAIN(TestSurveyStore)
#include "tst_surveystore.moc"
