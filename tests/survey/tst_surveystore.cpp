#include "base/filesystemcalls.h"
#include "support/testmain.h"
#include "support/unprivileged.h"
#include "surveystorefixture.h"

#include <QDir>
#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace survey_fixture;
using survey::SurveyStore;
using survey::WellProperties;

namespace {

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

    void writesMarkersAndTellsOfThem();
    void keepsWhatAnotherProgramWroteIntoTheMarkers();
    void newFilesHaveTheUnitOfTheirWell();
    void doesNotReplaceMarkersItCannotRead();
    void keepsMarkersThatItCannotShow();
    void doesNotRewriteWhatIsNoListOfMarkers_data();
    void doesNotRewriteWhatIsNoListOfMarkers();
    void doesNotTellOfMarkersThatWereNotWritten();
    void keepsUnknownKeysOfEveryFile();
    void keepsWhatAnotherProgramWroteIntoTheList();
    void seesAListThatChangedWithoutChangingSizeOrTime();
    void refusesToWriteADamagedList_data();
    void refusesToWriteADamagedList();
    void startsAfreshInAnotherSurvey();
    void whatChangedWhileAnotherSurveyWasOpenIsNoChangeMeanwhile();

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

// A host's survey may hold wells in another unit than its own.
void TestSurveyStore::newFilesHaveTheUnitOfTheirWell()
{
    OneWell survey;
    survey.write("a.well", wellFile().replace("Depth-Unit: Meter", "Depth-Unit: Feet"));
    QVERIFY(survey.store.writeMarkers(survey.key, {marker("A", 1)}).ok());
    QVERIFY(survey.store.writeLog(survey.key, log("GR", {1})).ok());
    QVERIFY(survey.read("a.wlm").contains("\nDepth-Unit: Feet\n"));
    QVERIFY(survey.read("a^1.wll").contains("\nDepth-Unit: Feet\n"));
    survey.write("a.well", wellFile().replace("Depth-Unit: Meter\n", ""));
    QVERIFY(survey.store.writeLog(survey.key, log("DT", {1})).ok());
    QVERIFY(survey.read("a^2.wll").contains("\nDepth-Unit: Meter\n"));
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

void TestSurveyStore::whatChangedWhileAnotherSurveyWasOpenIsNoChangeMeanwhile()
{
    OneWell survey({"GR"});
    OneWell other;
    QVERIFY(survey.store.properties(survey.key).ok());
    QVERIFY(survey.store.markers(survey.key).ok());
    QCOMPARE(survey.store.logs(survey.key).value.size(), 1);
    survey.store.setSurveyDirectory(other.path());
    survey.write("a.well", wellFile() + "1 1 9000 9025\n");
    survey.write("a.wlm", header("Well Markers") + "1.Name: Theirs\n1.Depth along hole: 5\n");
    survey.write("a^1.wll", logFile("GR", {100, 5, 101, 5, 102, 5}));
    survey.store.setSurveyDirectory(survey.path());
    QCOMPARE(survey.store.changeWell(survey.key, properties("A")).error, QString());
    QCOMPARE(survey.store.writeLog(survey.key, log("GR", {1})).error, QString());
    QCOMPARE(survey.store.writeMarkers(survey.key, {marker("Ours", 1)}).error, QString());
    QCOMPARE(survey.store.markers(survey.key).value.size(), 1);
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
