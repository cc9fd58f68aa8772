// Two programs write into one survey at the same time: what each was told is done is there afterwards.

#include "base/filelock.h"
#include "base/threewaymerge.h"
#include "support/testmain.h"
#include "surveyfixture.h"

#include <QDir>

#include <functional>
#include <sys/wait.h>
#include <unistd.h>

using namespace survey_fixture;
using survey::SurveyStore;

namespace {

constexpr char well[] = "100050.2";
constexpr int saves = 60;

struct Item
{
    QString name;
    int value = 0;
};

QString text(const base::Merged<Item> &merged)
{
    QStringList parts;
    for (const Item &item : merged.records)
        parts.append(item.name + QString::number(item.value));
    return merged.conflicts.isEmpty() ? parts.join(' ') : QStringLiteral("! ") + merged.conflicts.join(' ');
}

// "A1 B2" as items.
QVector<Item> items(const char *text)
{
    QVector<Item> result;
    for (const QString &part : QString::fromLatin1(text).split(' ', Qt::SkipEmptyParts))
        result.append({part.left(1), part.midRef(1).toInt()});
    return result;
}

// Runs the work in this many programs at once; true when each says that all went well.
bool runPrograms(int count, const std::function<bool(int)> &work)
{
    QVector<pid_t> programs;
    for (int program = 0; program < count; ++program) {
        const pid_t child = ::fork();
        if (child == 0)
            ::_exit(work(program) ? 0 : 1);
        programs.append(child);
    }
    bool isDone = true;
    for (const pid_t program : programs) {
        int status = 0;
        ::waitpid(program, &status, 0);
        isDone = isDone && WIFEXITED(status) && WEXITSTATUS(status) == 0;
    }
    return isDone;
}

QString name(const char *kind, int program, int number)
{
    return QStringLiteral("%1 %2 %3").arg(QString::fromLatin1(kind)).arg(program).arg(number);
}

// Several tries for what is refused because of the other program, as a user would make them.
template<class Work>
bool retried(const Work &work)
{
    for (int i = 0; i < 1000; ++i)
        if (work())
            return true;
    return false;
}

} // namespace

class TestTwoWriters : public QObject
{
    Q_OBJECT

private slots:
    void merging_data();
    void merging();
    void noSaveIsLost();
    void theSameLogFromTwoPrograms();
    void aMarkerOfAnotherProgramStays();
    void aMarkerThatBothChangedIsRefused();
    void aLogThatCameMeanwhileIsNotReplaced();
    void aLogThatChangedMeanwhileIsNotReplaced();
    void anotherLogIsNotDeleted();
    void aWellThatChangedMeanwhileIsNotWrittenOver();
    void aWriterThatDoesNotEndIsTold();
    void aDamagedLockFileHindersNobody();

private:
    static void fill(const Survey &survey)
    {
        survey.write(".omf", wellList({{"A", "a.well"}}));
        survey.write("a.well", wellFile());
    }
};

void TestTwoWriters::merging_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QByteArray>("theirs");
    QTest::addColumn<QByteArray>("mine");
    QTest::addColumn<QString>("result");
    const auto row = [](const char *what, const char *before, const char *theirs, const char *mine,
                        const char *result) {
        QTest::newRow(what) << QByteArray(before) << QByteArray(theirs) << QByteArray(mine)
                            << QString::fromLatin1(result);
    };
    row("nobody changed", "A1 B2", "A1 B2", "A1 B2", "A1 B2");
    row("I changed", "A1 B2", "A1 B2", "B3 C4", "B3 C4");
    row("they changed", "A1 B2", "B3 C4", "A1 B2", "B3 C4");
    row("both added", "A1", "A1 B2", "A1 C3", "A1 C3 B2");
    row("both removed others", "A1 B2 C3", "A1 B2", "B2 C3", "B2");
    row("both changed others", "A1 B2", "A9 B2", "A1 B8", "A9 B8");
    row("both the same", "A1 B2", "A5", "A5", "A5");
    row("both added the same", "", "A1", "A1", "A1");
    row("both changed one", "A1", "A2", "A3", "! A");
    row("I changed, they removed", "A1", "", "A3", "! A");
    row("they changed, I removed", "A1", "A3", "", "! A");
    row("both added one", "", "A1", "A2", "! A");
}

void TestTwoWriters::merging()
{
    QFETCH(QByteArray, before);
    QFETCH(QByteArray, theirs);
    QFETCH(QByteArray, mine);
    QFETCH(QString, result);
    const auto isSame = [](const Item &a, const Item &b) { return a.value == b.value; };
    QCOMPARE(text(base::threeWayMerge(items(before), items(theirs), items(mine), isSame)), result);
}

void TestTwoWriters::noSaveIsLost()
{
    Survey survey;
    fill(survey);
    QVERIFY(runPrograms(3, [&survey](int program) {
        SurveyStore store(survey.path());
        for (int i = 0; i < saves; ++i) {
            host::LogData data = log("", {1, 2, static_cast<float>(i)});
            data.name = name("log", program, i);
            (void)store.logs(well);
            if (!store.writeLog(well, data).ok())
                return false;
            const bool isSaved = retried([&] {
                QVector<host::Marker> markers = store.markers(well).value;
                markers.append({name("marker", program, i), static_cast<float>(i), Qt::red});
                return store.writeMarkers(well, markers).ok();
            });
            if (!isSaved)
                return false;
            if (i % 4 == 0 && !store.addWell(properties(qPrintable(name("well", program, i)))).ok())
                return false;
        }
        return true;
    }));
    SurveyStore store(survey.path());
    QStringList expectedLogs;
    QStringList expectedMarkers;
    QStringList expectedWells{QStringLiteral("A")};
    for (int program = 0; program < 3; ++program) {
        for (int i = 0; i < saves; ++i) {
            expectedLogs.append(name("log", program, i));
            expectedMarkers.append(name("marker", program, i));
            if (i % 4 == 0)
                expectedWells.append(name("well", program, i));
        }
    }
    QStringList logs;
    for (const host::LogInfo &info : store.logs(well).value)
        logs.append(info.name);
    QStringList markers;
    for (const host::Marker &marker : store.markers(well).value)
        markers.append(marker.name);
    QStringList wells;
    for (const host::WellEntry &entry : store.list().value) {
        QVERIFY(store.header(entry.key).ok());
        wells.append(entry.name);
    }
    for (QStringList *list : {&expectedLogs, &expectedMarkers, &expectedWells, &logs, &markers, &wells})
        list->sort();
    QCOMPARE(logs, expectedLogs);
    QCOMPARE(markers, expectedMarkers);
    QCOMPARE(wells, expectedWells);
    QVERIFY(store.takeProblems().isEmpty());
    QVERIFY(survey.names().filter(QStringLiteral(".lorva-")).isEmpty());
}

void TestTwoWriters::theSameLogFromTwoPrograms()
{
    Survey survey;
    fill(survey);
    QVERIFY(runPrograms(2, [&survey](int program) {
        SurveyStore store(survey.path());
        for (int i = 0; i < saves; ++i)
            if (!retried([&] {
                    (void)store.logs(well);
                    return store.writeLog(well, log("GR", {static_cast<float>(program), 2, 3})).ok();
                }))
                return false;
        return true;
    }));
    SurveyStore store(survey.path());
    QCOMPARE(store.logs(well).value.size(), 1);
    QCOMPARE(store.log(well, 0).value.values.size(), 3);
    QVERIFY(store.takeProblems().isEmpty());
}

void TestTwoWriters::aMarkerOfAnotherProgramStays()
{
    Survey survey;
    fill(survey);
    SurveyStore mine(survey.path());
    SurveyStore theirs(survey.path());
    QVERIFY(mine.writeMarkers(well, {marker("A", 10), marker("B", 20)}).ok());
    QCOMPARE(mine.markers(well).value.size(), 2);
    QCOMPARE(theirs.markers(well).value.size(), 2);
    QVERIFY(theirs.writeMarkers(well, {marker("A", 10), marker("B", 20), marker("C", 30)}).ok());
    QVERIFY(mine.writeMarkers(well, {marker("A", 11)}).ok());
    QCOMPARE(summary(theirs.markers(well).value), QStringLiteral("A@11 C@30"));
    // What was written is what a further change begins with.
    QVERIFY(mine.writeMarkers(well, {marker("C", 30)}).ok());
    QCOMPARE(summary(theirs.markers(well).value), QStringLiteral("C@30"));
}

void TestTwoWriters::aMarkerThatBothChangedIsRefused()
{
    Survey survey;
    fill(survey);
    SurveyStore mine(survey.path());
    SurveyStore theirs(survey.path());
    QVERIFY(mine.writeMarkers(well, {marker("A", 10)}).ok());
    QCOMPARE(mine.markers(well).value.size(), 1);
    QVERIFY(theirs.writeMarkers(well, {marker("A", 12)}).ok());
    const host::Status status = mine.writeMarkers(well, {marker("A", 14)});
    QVERIFY(!status.ok());
    QVERIFY2(status.error.contains(QStringLiteral("\"A\"")), qPrintable(status.error));
    QCOMPARE(summary(theirs.markers(well).value), QStringLiteral("A@12"));
    QVERIFY(mine.writeMarkers(well, {marker("A", 14)}).ok()); // they know now
    QCOMPARE(summary(theirs.markers(well).value), QStringLiteral("A@14"));
}

void TestTwoWriters::aLogThatCameMeanwhileIsNotReplaced()
{
    Survey survey;
    fill(survey);
    SurveyStore mine(survey.path());
    SurveyStore theirs(survey.path());
    QVERIFY(mine.logs(well).value.isEmpty());
    QVERIFY(theirs.writeLog(well, log("GR", {1, 2})).ok());
    QVERIFY(mine.writeLog(well, log("SP", {5, 6})).ok());
    const host::Status status = mine.writeLog(well, log("GR", {3, 4}));
    QVERIFY(!status.ok());
    QVERIFY2(status.error.contains(QStringLiteral("\"GR\"")), qPrintable(status.error));
    QCOMPARE(theirs.logs(well).value.size(), 2);
    QCOMPARE(theirs.log(well, 0).value.values, (QVector<float>{1, 2}));
    QVERIFY(mine.writeLog(well, log("GR", {3, 4})).ok()); // on a second wish
    QCOMPARE(theirs.log(well, 0).value.values, (QVector<float>{3, 4}));
}

void TestTwoWriters::aLogThatChangedMeanwhileIsNotReplaced()
{
    Survey survey;
    fill(survey);
    SurveyStore mine(survey.path());
    QVERIFY(mine.writeLog(well, log("GR", {1, 2})).ok());
    QCOMPARE(mine.logs(well).value.size(), 1);
    QVERIFY(mine.writeLog(well, log("GR", {3, 4})).ok()); // our own change is none of another
    QVERIFY(mine.writeLog(well, log("GR", {5, 6})).ok());
    SurveyStore theirs(survey.path());
    QVERIFY(theirs.writeLog(well, log("GR", {7, 8})).ok());
    QVERIFY(!mine.writeLog(well, log("GR", {9, 10})).ok());
    QCOMPARE(theirs.log(well, 0).value.values, (QVector<float>{7, 8}));
}

void TestTwoWriters::anotherLogIsNotDeleted()
{
    Survey survey;
    fill(survey);
    SurveyStore mine(survey.path());
    for (const char *name : {"K", "L", "M"})
        QVERIFY(mine.writeLog(well, log(name, {1, 2})).ok());
    QCOMPARE(mine.logs(well).value.size(), 3);
    SurveyStore theirs(survey.path());
    QVERIFY(theirs.removeLog(well, 0).ok()); // M takes its place
    QVERIFY(!mine.removeLog(well, 0).ok());
    QCOMPARE(theirs.logs(well).value.size(), 2);
    QCOMPARE(mine.logs(well).value.size(), 2);
    QVERIFY(mine.removeLog(well, 0).ok());
    QCOMPARE(theirs.logs(well).value.first().name, QStringLiteral("L"));
}

void TestTwoWriters::aWellThatChangedMeanwhileIsNotWrittenOver()
{
    Survey survey;
    fill(survey);
    SurveyStore mine(survey.path());
    SurveyStore theirs(survey.path());
    survey::WellProperties first = mine.properties(well).value;
    first.totalDepth = 2600;
    survey::WellProperties second = theirs.properties(well).value;
    second.groundElevation = 3;
    QVERIFY(theirs.changeWell(well, second).ok());
    QVERIFY(!mine.changeWell(well, first).ok());
    QCOMPARE(theirs.header(well).value.totalDepth, 2500.0);
    first = mine.properties(well).value;
    first.totalDepth = 2600;
    QVERIFY(mine.changeWell(well, first).ok());
    first.totalDepth = 2700;
    QVERIFY(mine.changeWell(well, first).ok()); // after a change of our own
    QCOMPARE(theirs.header(well).value.totalDepth, 2700.0);
    QCOMPARE(theirs.header(well).value.groundElevation, 3.0f);
}

void TestTwoWriters::aWriterThatDoesNotEndIsTold()
{
    Survey survey;
    fill(survey);
    const base::FolderLock lock(survey.wells());
    SurveyStore store(survey.path());
    QElapsedTimer clock;
    clock.start();
    const host::Status status = store.writeLog(well, log("GR", {1, 2}));
    QVERIFY(!status.ok());
    QVERIFY2(status.error.contains(QStringLiteral("Another program")), qPrintable(status.error));
    QVERIFY(clock.elapsed() < 60000);
    QVERIFY(store.logs(well).value.isEmpty());
}

void TestTwoWriters::aDamagedLockFileHindersNobody()
{
    Survey survey;
    fill(survey);
    QVERIFY(QDir(survey.wells()).mkdir(QStringLiteral(".lorva.lock")));
    SurveyStore store(survey.path());
    QVERIFY(store.writeLog(well, log("GR", {1, 2})).ok());
    QVERIFY(store.writeMarkers(well, {marker("A", 10)}).ok());
}

LORVA_TEST_MAIN(TestTwoWriters)
#include "tst_twowriters.moc"
