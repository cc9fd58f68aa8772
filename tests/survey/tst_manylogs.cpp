// What writing many logs into one well costs, counted in calls of the system, and what other programs do meanwhile.

#include "support/testmain.h"
#include "survey/surveystore.h"
#include "surveyfixture.h"

#include <QDir>

#include <cstdarg>
#include <dlfcn.h>
#include <fcntl.h>
#include <functional>
#include <sys/stat.h>

using namespace survey_fixture;
using survey::SurveyStore;

namespace {

constexpr char well[] = "100050.2";

int systemCalls = 0; ///< that look at a file or open one

template<class Call>
Call *systemsOwn(const char *name)
{
    return reinterpret_cast<Call *>(::dlsym(RTLD_NEXT, name));
}

} // namespace

// These take the place of the C library's in this program.
extern "C" int stat(const char *path, struct stat *info) noexcept
{
    static const auto call = systemsOwn<int(const char *, struct stat *)>("stat");
    ++systemCalls;
    return call(path, info);
}

extern "C" int lstat(const char *path, struct stat *info) noexcept
{
    static const auto call = systemsOwn<int(const char *, struct stat *)>("lstat");
    ++systemCalls;
    return call(path, info);
}

extern "C" int open(const char *path, int flags, ...)
{
    static const auto call = systemsOwn<int(const char *, int, ...)>("open");
    ++systemCalls;
    std::va_list rest;
    va_start(rest, flags);
    const mode_t mode = (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(rest, mode_t) : 0;
    va_end(rest);
    return call(path, flags, mode);
}

namespace {

QString name(int number)
{
    return QStringLiteral("L%1").arg(number);
}

host::LogData numberedLog(int number)
{
    host::LogData data = log("", {1, 2, static_cast<float>(number)});
    data.name = name(number);
    return data;
}

/// Does something of another program's right before a new file takes its name, once.
class Meanwhile : public base::FileSystemCalls
{
public:
    explicit Meanwhile(const std::function<void()> &work)
        : m_work(work)
    {
    }
    int renameToNew(const char *from, const char *to) override
    {
        if (const auto work = std::exchange(m_work, nullptr))
            work();
        return FileSystemCalls::renameToNew(from, to);
    }

private:
    std::function<void()> m_work;
};

} // namespace

class TestManyLogs : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void writingCostsTheSameForEachLog_data();
    void writingCostsTheSameForEachLog();
    void whatWasWrittenIsThere();
    void anotherProgramsLogInBetweenIsNotReplaced();
    void anotherProgramsLogInTheLastMomentIsNotReplaced();
    void aNumberTakenInTheLastMomentIsPassedOver();
    void aLogDeletedInBetweenLeavesNoGap_data();
    void aLogDeletedInBetweenLeavesNoGap();
    void aLogReplacedInBetweenIsNotReplaced();
    void theLastLogBecomesAnotherInBetween();
    void aLogOfAnotherWellInBetween();
    void oneNameTwiceIsOneLog();
    void aNameThatCannotBeShownWholeIsOneLog();

private:
    int callsOfWriting(int logs) const;
    QStringList logNames(int index = 2) const
    {
        SurveyStore store(m_survey->path());
        QStringList names;
        for (const host::LogInfo &info : store.logs(QStringLiteral("100050.%1").arg(index)).value)
            names.append(info.name);
        return names;
    }
    QStringList fileNames() const { return m_survey->names().filter(QStringLiteral(".wll")); }
    std::unique_ptr<Survey> m_survey;
};

void TestManyLogs::init()
{
    m_survey.reset();
    m_survey = std::make_unique<Survey>();
    m_survey->write(".omf", wellList({{"A", "a.well"}, {"B", "b.well"}}));
    m_survey->write("a.well", wellFile());
    m_survey->write("b.well", wellFile());
}

// As an import does: the logs are asked for once, and again when all are written.
int TestManyLogs::callsOfWriting(int logs) const
{
    const QString list = m_survey->file(".omf");
    [&] { QTRY_VERIFY(base::fileState(list).isSettled); }(); // until then it is read anew each time
    SurveyStore store(m_survey->path());
    const int before = systemCalls;
    (void)store.logs(well);
    for (int i = 0; i < logs; ++i)
        if (!store.writeLog(well, numberedLog(i)).ok())
            qFatal("a log was not written");
    store.reload(well);
    const int found = store.logs(well).value.size();
    if (found != logs)
        qFatal("%d of %d logs are there", found, logs);
    return systemCalls - before;
}

void TestManyLogs::writingCostsTheSameForEachLog_data()
{
    QTest::addColumn<bool>("isReplacing");
    QTest::newRow("new logs") << false;
    QTest::newRow("logs that are there") << true;
}

void TestManyLogs::writingCostsTheSameForEachLog()
{
    QFETCH(bool, isReplacing);
    const auto callsFor = [this, isReplacing](int logs) {
        init();
        const int calls = callsOfWriting(logs);
        return isReplacing ? callsOfWriting(logs) : calls;
    };
    const int few = callsFor(100);
    const int many = callsFor(400);
    QVERIFY2(few >= 300, "the calls are not counted");
    QVERIFY2(many <= 4 * few + 20, qPrintable(QStringLiteral("%1 against %2 calls").arg(many).arg(few)));
}

void TestManyLogs::whatWasWrittenIsThere()
{
    SurveyStore store(m_survey->path());
    for (int i = 0; i < 30; ++i)
        QVERIFY(store.writeLog(well, numberedLog(i)).ok());
    for (int i = 0; i < 30; i += 3)
        QVERIFY(store.writeLog(well, numberedLog(i)).ok());
    QCOMPARE(store.logs(well).value.size(), 30);
    for (int i = 0; i < 30; ++i) {
        const host::LogData read = store.log(well, i).value;
        QCOMPARE(read.name, name(i));
        QCOMPARE(read.values.last(), static_cast<float>(i));
    }
    QCOMPARE(fileNames().size(), 30);
    QVERIFY(store.problems().isEmpty());
}

void TestManyLogs::anotherProgramsLogInBetweenIsNotReplaced()
{
    SurveyStore mine(m_survey->path());
    SurveyStore theirs(m_survey->path());
    QVERIFY(mine.logs(well).value.isEmpty());
    for (int i = 0; i < 3; ++i)
        QVERIFY(mine.writeLog(well, numberedLog(i)).ok());
    QVERIFY(theirs.writeLog(well, log("GR", {7, 8})).ok());
    QVERIFY(!mine.writeLog(well, log("GR", {1, 2})).ok());
    QCOMPARE(theirs.log(well, 3).value.values, (QVector<float>{7, 8}));
    QVERIFY(mine.writeLog(well, numberedLog(3)).ok());
    QCOMPARE(logNames(), (QStringList{"L0", "L1", "L2", "GR", "L3"}));
}

// Not every program takes our lock.
void TestManyLogs::anotherProgramsLogInTheLastMomentIsNotReplaced()
{
    SurveyStore mine(m_survey->path());
    QVERIFY(mine.logs(well).value.isEmpty());
    QVERIFY(mine.writeLog(well, numberedLog(0)).ok());
    Meanwhile calls([this] { m_survey->write("a^2.wll", logFile("GR", {100, 7, 101, 8})); });
    const base::ScopedFileSystemCalls inForce(calls);
    QVERIFY(!mine.writeLog(well, log("GR", {1, 2})).ok());
    QCOMPARE(logNames(), (QStringList{"L0", "GR"}));
    QCOMPARE(mine.logs(well).value.size(), 2);
    QCOMPARE(mine.log(well, 1).value.values, (QVector<float>{7, 8}));
}

void TestManyLogs::aNumberTakenInTheLastMomentIsPassedOver()
{
    SurveyStore mine(m_survey->path());
    QVERIFY(mine.logs(well).value.isEmpty());
    QVERIFY(mine.writeLog(well, numberedLog(0)).ok());
    Meanwhile calls([this] { m_survey->write("a^2.wll", logFile("GR", {100, 7, 101, 8})); });
    const base::ScopedFileSystemCalls inForce(calls);
    QVERIFY(mine.writeLog(well, numberedLog(1)).ok());
    QVERIFY(mine.writeLog(well, numberedLog(2)).ok());
    QCOMPARE(logNames(), (QStringList{"L0", "GR", "L1", "L2"}));
}

void TestManyLogs::aLogDeletedInBetweenLeavesNoGap_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QStringList>("left");
    QTest::newRow("the first") << 0 << QStringList{"L2", "L1", "L3"};
    QTest::newRow("the last") << 2 << QStringList{"L0", "L1", "L3"};
}

void TestManyLogs::aLogDeletedInBetweenLeavesNoGap()
{
    QFETCH(int, index);
    QFETCH(QStringList, left);
    SurveyStore mine(m_survey->path());
    SurveyStore theirs(m_survey->path());
    for (int i = 0; i < 3; ++i)
        QVERIFY(mine.writeLog(well, numberedLog(i)).ok());
    QCOMPARE(theirs.logs(well).value.size(), 3);
    QVERIFY(theirs.removeLog(well, index).ok());
    QVERIFY(mine.writeLog(well, numberedLog(3)).ok());
    QCOMPARE(logNames(), left);
    QCOMPARE(fileNames().size(), 3);
}

// Even in place, which the folder does not show.
void TestManyLogs::aLogReplacedInBetweenIsNotReplaced()
{
    SurveyStore mine(m_survey->path());
    QVERIFY(mine.logs(well).value.isEmpty());
    for (int i = 0; i < 3; ++i)
        QVERIFY(mine.writeLog(well, numberedLog(i)).ok());
    const QByteArray theirs = logFile("L1", {100, 7, 101, 8, 102, 9});
    QFile file(m_survey->file("a^2.wll"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(theirs), static_cast<qint64>(theirs.size()));
    file.close();
    QVERIFY(!mine.writeLog(well, numberedLog(1)).ok());
    QCOMPARE(m_survey->read("a^2.wll"), theirs);
}

// In place, too: the new log of that name would hide behind it.
void TestManyLogs::theLastLogBecomesAnotherInBetween()
{
    SurveyStore mine(m_survey->path());
    QVERIFY(mine.logs(well).value.isEmpty());
    for (int i = 0; i < 3; ++i)
        QVERIFY(mine.writeLog(well, numberedLog(i)).ok());
    QFile file(m_survey->file("a^3.wll"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QVERIFY(file.write(logFile("GR", {100, 7, 101, 8})) > 0);
    file.close();
    QVERIFY(!mine.writeLog(well, log("GR", {1, 2})).ok());
    QCOMPARE(logNames(), (QStringList{"L0", "L1", "GR"}));
}

void TestManyLogs::aLogOfAnotherWellInBetween()
{
    SurveyStore store(m_survey->path());
    for (int i = 0; i < 3; ++i) {
        QVERIFY(store.writeLog(well, numberedLog(i)).ok());
        QVERIFY(store.writeLog("100050.3", numberedLog(10 + i)).ok());
        QVERIFY(store.writeMarkers(well, {marker("M", 10)}).ok());
    }
    QCOMPARE(logNames(2), (QStringList{"L0", "L1", "L2"}));
    QCOMPARE(logNames(3), (QStringList{"L10", "L11", "L12"}));
}

void TestManyLogs::oneNameTwiceIsOneLog()
{
    SurveyStore store(m_survey->path());
    for (const char *name : {"GR", "SP", " GR ", "gr", "GR"}) {
        const host::Status status = store.writeLog(well, log(name, {1, 2}));
        QVERIFY2(status.ok(), qPrintable(status.error));
    }
    QCOMPARE(logNames(), (QStringList{"GR", "SP", "gr"}));
}

void TestManyLogs::aNameThatCannotBeShownWholeIsOneLog()
{
    SurveyStore store(m_survey->path());
    host::LogData data = log("", {1, 2});
    data.name = QString(5000, 'n');
    QVERIFY(store.writeLog(well, data).ok());
    data.name = store.logs(well).value.first().name;
    for (int i = 0; i < 2; ++i)
        QVERIFY(store.writeLog(well, data).ok());
    QVERIFY(store.writeLog(well, numberedLog(1)).ok());
    QCOMPARE(fileNames().size(), 2);
    QVERIFY(m_survey->read("a^1.wll").contains("Name: " + QByteArray(5000, 'n') + '\n'));
}

LORVA_TEST_MAIN(TestManyLogs)
#include "tst_manylogs.moc"
