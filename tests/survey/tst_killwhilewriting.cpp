// Programs are killed while they write into a survey: afterwards it holds the old or the new state of what was
// written, and all the rest as it was.

#include "base/filesystemcalls.h"
#include "support/testmain.h"
#include "surveyfixture.h"

#include <QDir>

#include <csignal>
#include <random>
#include <sys/wait.h>
#include <unistd.h>

using namespace survey_fixture;
using survey::SurveyStore;
using survey::WellProperties;

namespace {

constexpr char firstWell[] = "100050.2";
constexpr char secondWell[] = "100050.3";
constexpr char doomedWell[] = "100050.4";
constexpr int sampleCount = 400;
constexpr int markerCount = 40;

enum class What { Log, NewLogs, Well, TrackFile, List, NewWells, Markers, RemovedWell, RemovedLog, RemovedLastLog };

// Writes in small pieces, so that a kill can come between them, and does not wait for the disk. Kills the program at
// the n-th call when told to.
class SlowCalls : public base::FileSystemCalls
{
public:
    int openTemporary(char *path) override
    {
        count();
        return FileSystemCalls::openTemporary(path);
    }
    ssize_t write(int file, const void *bytes, size_t size) override
    {
        count();
        return FileSystemCalls::write(file, bytes, qMin<size_t>(size, 200));
    }
    int fsync(int) override
    {
        count();
        return 0;
    }
    int close(int file) override
    {
        count();
        return FileSystemCalls::close(file);
    }
    int rename(const char *from, const char *to) override
    {
        count();
        const int result = FileSystemCalls::rename(from, to);
        count();
        return result;
    }
    int renameToNew(const char *from, const char *to) override
    {
        count();
        const int result = FileSystemCalls::renameToNew(from, to);
        count();
        return result;
    }
    int unlink(const char *path) override
    {
        count();
        const int result = FileSystemCalls::unlink(path);
        count();
        return result;
    }
    int killAt = -1;

private:
    void count()
    {
        if (killAt >= 0 && killAt-- == 0)
            ::raise(SIGKILL);
    }
};

host::LogData logOf(int state)
{
    return log("GR", QVector<float>(sampleCount, static_cast<float>(state)), static_cast<float>(state));
}

QVector<host::Marker> markersOf(int state)
{
    QVector<host::Marker> markers;
    for (int i = 0; i < markerCount; ++i)
        markers.append(
            {QStringLiteral("M%1 %2").arg(state).arg(i), static_cast<float>(i), QColor(state % 256, 0, 0)});
    return markers;
}

WellProperties wellOf(int state)
{
    WellProperties well = properties("A");
    well.x = 500000 + state;
    well.kbElevation = state;
    well.totalDepth = 3000 + state;
    well.groundElevation = state;
    return well;
}

// One write, which takes the object from any state to this one.
bool writeState(const QString &path, What what, int state)
{
    SurveyStore store(path);
    switch (what) {
    case What::Log:
        return store.writeLog(firstWell, logOf(state)).ok();
    case What::NewLogs: {
        host::LogData data = logOf(state);
        data.name = QStringLiteral("L%1").arg(state);
        return store.writeLog(firstWell, data).ok();
    }
    case What::Well:
    case What::TrackFile:
        return store.changeWell(firstWell, wellOf(state)).ok();
    case What::List:
        return store.renameWell(firstWell, QStringLiteral("State %1").arg(state)).ok();
    case What::NewWells:
        return store.addWell(properties("New")).ok();
    case What::Markers:
        return store.writeMarkers(firstWell, markersOf(state)).ok();
    case What::RemovedWell:
        return store.removeWell(doomedWell).ok();
    case What::RemovedLog:
        return store.removeLog(doomedWell, 1).ok();
    case What::RemovedLastLog:
        return store.removeLog(doomedWell, 3).ok();
    }
    return false;
}

// Kills a child that writes one state after the other, at some moment; or one that writes a single state, at its n-th
// system call. False when the child was through before.
bool killWriter(const QString &path, What what, int firstState, int delayUs, int killAt)
{
    const pid_t child = ::fork();
    if (child == 0) {
        SlowCalls calls;
        calls.killAt = killAt;
        base::ScopedFileSystemCalls scope(calls);
        for (int state = firstState; killAt < 0 || state == firstState; ++state)
            if (!writeState(path, what, state))
                ::_exit(3);
        ::_exit(0);
    }
    if (killAt < 0) {
        ::usleep(static_cast<useconds_t>(delayUs));
        ::kill(child, SIGKILL);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    if (WIFEXITED(status) && WEXITSTATUS(status) != 0)
        qFatal("the writing child failed");
    return WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL;
}

// The well that is to lose a log, or to go: 0 when it is whole, 1 when that is done.
int stateOfDoomed(SurveyStore &store, What what)
{
    if (what == What::RemovedWell && store.list().value.size() == 2)
        return 1;
    if (!store.header(doomedWell).ok() || store.markers(doomedWell).value.size() != 1)
        return -1;
    QString names;
    const QVector<host::LogInfo> logs = store.logs(doomedWell).value;
    for (int i = 0; i < logs.size(); ++i) {
        const host::LogData log = store.log(doomedWell, i).value;
        if (log.values != QVector<float>{1, 2})
            return -1;
        names += log.name;
    }
    if (names == QLatin1String("KLMN"))
        return 0;
    return (what == What::RemovedLog && names == QLatin1String("KNM"))
            || (what == What::RemovedLastLog && names == QLatin1String("KLM"))
        ? 1
        : -1;
}

// What the survey holds of the object: one number for a whole state; -1 when it is none.
int stateOf(SurveyStore &store, What what)
{
    switch (what) {
    case What::Log: {
        const host::LogData log = store.log(firstWell, 0).value;
        for (int i = 0; i < log.values.size(); ++i)
            if (log.values.at(i) != log.values.first()
                || log.depths.at(i) != log.values.first() + 0.5f * static_cast<float>(i))
                return -1;
        return log.values.size() == sampleCount && log.name == QLatin1String("GR")
            ? static_cast<int>(log.values.first())
            : -1;
    }
    case What::NewLogs: {
        const int count = store.logs(firstWell).value.size();
        for (int i = 1; i < count; ++i) {
            const host::LogData log = store.log(firstWell, i).value;
            if (log.values.size() != sampleCount
                || log.name != QStringLiteral("L%1").arg(static_cast<int>(log.values.first())))
                return -1;
        }
        return count;
    }
    case What::Well:
    case What::TrackFile: {
        const host::WellHeader well = store.header(firstWell).value;
        const int state = static_cast<int>(well.kbElevation);
        return well.x == 500000 + state && well.totalDepth == 3000 + state && well.groundElevation == well.kbElevation
            ? state
            : -1;
    }
    case What::List: {
        const host::Outcome<QVector<host::WellEntry>> wells = store.list();
        for (const host::WellEntry &well : wells.value)
            if (well.key == QLatin1String(firstWell) && well.name.startsWith(QLatin1String("State ")))
                return well.name.midRef(6).toInt();
        return -1;
    }
    case What::NewWells: {
        const host::Outcome<QVector<host::WellEntry>> wells = store.list();
        for (const host::WellEntry &well : wells.value)
            if (!store.header(well.key).ok())
                return -1;
        return wells.value.size();
    }
    case What::Markers: {
        const QVector<host::Marker> markers = store.markers(firstWell).value;
        if (markers.size() != markerCount)
            return -1;
        const int state = markers.first().name.section(QLatin1Char(' '), 0, 0).midRef(1).toInt();
        return summary(markers) == summary(markersOf(state)) ? state : -1;
    }
    case What::RemovedWell:
    case What::RemovedLog:
    case What::RemovedLastLog:
        return stateOfDoomed(store, what);
    }
    return -1;
}

bool isOfObject(const QString &name, What what)
{
    switch (what) {
    case What::Log:
        return name == QLatin1String("a^1.wll");
    case What::NewLogs:
        return name.startsWith(QLatin1String("a^")) && name != QLatin1String("a^1.wll");
    case What::Well:
        return name == QLatin1String("a.well");
    case What::TrackFile:
        return name == QLatin1String("a.well") || name == QLatin1String("a.track");
    case What::List:
        return name == QLatin1String(".omf");
    case What::NewWells:
        return name == QLatin1String(".omf") || name.startsWith(QLatin1String("New"));
    case What::Markers:
        return name == QLatin1String("a.wlm");
    case What::RemovedWell:
        return name == QLatin1String(".omf") || name.startsWith(QLatin1String("doomed"));
    case What::RemovedLog:
    case What::RemovedLastLog:
        return name.startsWith(QLatin1String("doomed^"));
    }
    return false;
}

QMap<QString, QByteArray> theRest(const Survey &survey, What what)
{
    QMap<QString, QByteArray> rest = files::snapshot(survey.wells());
    for (const QString &name : rest.keys())
        if (isOfObject(name, what) || name.startsWith(QLatin1String(".lorva-")))
            rest.remove(name);
    return rest;
}

int leftovers(const Survey &survey)
{
    return survey.names().filter(QStringLiteral(".lorva-")).size();
}

void fill(const Survey &survey)
{
    survey.write(".omf", wellList({{"State 1", "a.well"}, {"B", "b.well"}}));
    for (const char *stem : {"a", "b"}) {
        const auto name = [stem](const char *ending) { return QByteArray(stem) + ending; };
        survey.write(name(".well").constData(), survey::wellFileBytes(survey::makeWellFile(wellOf(1))));
        survey.write(name("^1.wll").constData(), survey::logFileBytes(logOf(1), "Meter", nullptr).value);
        survey.write(name(".wlm").constData(), header("Well Markers") + "Depth-Unit: Meter\n");
    }
    SurveyStore store(survey.path());
    if (!store.writeMarkers(firstWell, markersOf(1)).ok())
        qFatal("no markers");
}

void addDoomedWell(const Survey &survey)
{
    survey.write(".omf", wellList({{"State 1", "a.well"}, {"B", "b.well"}, {"Doomed", "doomed.well"}}));
    survey.write("doomed.well", wellFile());
    survey.write("doomed.wlm", header("Well Markers") + "1.Name: M\n1.Depth along hole: 5\n");
    int number = 0;
    for (const char *name : {"K", "L", "M", "N"})
        survey.write(qPrintable(QStringLiteral("doomed^%1.wll").arg(++number)), logFile(name, {100, 1, 101, 2}));
}

// All tests end here.
void checkSurvey(const Survey &survey, What what, int oldState, const QMap<QString, QByteArray> &rest, int *newState)
{
    SurveyStore store(survey.path());
    *newState = stateOf(store, what);
    QVERIFY2(*newState >= oldState, qPrintable(QStringLiteral("%1 after %2").arg(*newState).arg(oldState)));
    QVERIFY2(store.takeProblems().isEmpty(), qPrintable(store.takeProblems().join(QLatin1Char('\n'))));
    QCOMPARE(theRest(survey, what), rest);
    QVERIFY(store.header(secondWell).ok());
    QCOMPARE(store.log(secondWell, 0).value.values.size(), sampleCount);
    QVERIFY(store.list().value.size() >= 2);
}

} // namespace

Q_DECLARE_METATYPE(What)

class TestKillWhileWriting : public QObject
{
    Q_OBJECT

private slots:
    void killedAtAnyStep_data();
    void killedAtAnyStep();
    void killedAtAnyMoment_data() { killedAtAnyStep_data(); }
    void killedAtAnyMoment();
    void killedAtAnyStepOfARemoval_data();
    void killedAtAnyStepOfARemoval();
    void leftoversDoNotDisturb();
};

void TestKillWhileWriting::killedAtAnyStep_data()
{
    QTest::addColumn<What>("what");
    QTest::newRow("log") << What::Log;
    QTest::newRow("new logs") << What::NewLogs;
    QTest::newRow("well") << What::Well;
    QTest::newRow("well with a track file") << What::TrackFile;
    QTest::newRow("object list") << What::List;
    QTest::newRow("new wells") << What::NewWells;
    QTest::newRow("markers") << What::Markers;
}

void TestKillWhileWriting::killedAtAnyStep()
{
    QFETCH(What, what);
    Survey survey;
    fill(survey);
    const QByteArray track = "500001 6003000 -1 0\n500001 6003000 3000 3001\n";
    bool hasSeenOld = false;
    bool hasSeenNew = false;
    bool isKilled = true;
    for (int step = 0; isKilled; ++step) {
        if (what == What::TrackFile) {
            fill(survey);
            survey.write("a.track", track);
        }
        SurveyStore before(survey.path());
        const int oldState = stateOf(before, what);
        const auto rest = theRest(survey, what);
        isKilled = killWriter(survey.path(), what, 100 + step, 0, step);
        int newState = -1;
        checkSurvey(survey, what, oldState, rest, &newState);
        if (QTest::currentTestFailed())
            return;
        const bool isOneMore = (what == What::NewLogs || what == What::NewWells) && newState == oldState + 1;
        QVERIFY(newState == oldState || newState == 100 + step || isOneMore);
        hasSeenOld = hasSeenOld || newState == oldState;
        hasSeenNew = hasSeenNew || newState != oldState;
    }
    QVERIFY(hasSeenOld && hasSeenNew);
    QVERIFY(leftovers(survey) > 0);
}

void TestKillWhileWriting::killedAtAnyMoment()
{
    QFETCH(What, what);
    Survey survey;
    fill(survey);
    SurveyStore store(survey.path());
    int state = stateOf(store, what);
    QVERIFY(state >= 0);
    const auto rest = theRest(survey, what);
    std::mt19937 random(17);
    for (int round = 0; round < 12; ++round) {
        QVERIFY(killWriter(survey.path(), what, 1000 * (round + 1), static_cast<int>(random() % 6000), -1));
        int newState = -1;
        checkSurvey(survey, what, state, rest, &newState);
        if (QTest::currentTestFailed())
            return;
        state = newState;
    }
}

void TestKillWhileWriting::killedAtAnyStepOfARemoval_data()
{
    QTest::addColumn<What>("what");
    QTest::newRow("well") << What::RemovedWell;
    QTest::newRow("log in the middle") << What::RemovedLog;
    QTest::newRow("last log") << What::RemovedLastLog;
}

void TestKillWhileWriting::killedAtAnyStepOfARemoval()
{
    QFETCH(What, what);
    Survey survey;
    fill(survey);
    int oldStates = 0;
    int newStates = 0;
    bool isKilled = true;
    for (int step = 0; isKilled; ++step) {
        addDoomedWell(survey);
        const auto rest = theRest(survey, what);
        isKilled = killWriter(survey.path(), what, step, 0, step);
        int state = -1;
        checkSurvey(survey, what, 0, rest, &state);
        if (QTest::currentTestFailed())
            return;
        QVERIFY(state == 1 || newStates == 0); // no step undoes what was done
        ++(state == 0 ? oldStates : newStates);
    }
    QVERIFY(oldStates > 0);
    QVERIFY(newStates > 1); // killed behind the removal, and not at all
    if (what == What::RemovedWell)
        QVERIFY(survey.names().filter(QStringLiteral("doomed")).isEmpty());
}

void TestKillWhileWriting::leftoversDoNotDisturb()
{
    Survey survey;
    fill(survey);
    const QStringList visible = QDir(survey.wells()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
    for (int i = 0; i < 500; ++i)
        survey.write(qPrintable(QStringLiteral(".lorva-%1").arg(i, 6)), "half of a file");
    QCOMPARE(QDir(survey.wells()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), visible);
    SurveyStore store(survey.path());
    QCOMPARE(store.list().value.size(), 2);
    QCOMPARE(store.logs(firstWell).value.size(), 1);
    QVERIFY(store.writeLog(firstWell, logOf(2)).ok());
    QVERIFY(store.addWell(properties("New")).ok());
    QVERIFY(store.removeWell(firstWell).ok());
    QVERIFY(store.takeProblems().isEmpty());
    QCOMPARE(leftovers(survey), 500);
}

LORVA_TEST_MAIN(TestKillWhileWriting)
#include "tst_killwhilewriting.moc"
