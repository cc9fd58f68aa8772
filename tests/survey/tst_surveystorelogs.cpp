#include "base/filesystemcalls.h"
#include "support/testmain.h"
#include "surveystorefixture.h"

#include <QFile>

#include <cerrno>
#include <cmath>
#include <limits>

using namespace survey_fixture;

namespace {

constexpr float udf = host::undefinedValue;

} // namespace

class TestSurveyStoreLogs : public QObject
{
    Q_OBJECT

private slots:
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
    void replacesALogWhoseFileARemovalMoved();
    void removesTheLastLogAndTheOnlyLog();
    void removesNothingWhenRenamingFails();
    void writesManyLogs();
};

void TestSurveyStoreLogs::readsLogsUpToTheFirstMissingNumber()
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

void TestSurveyStoreLogs::readsALongHeader()
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

void TestSurveyStoreLogs::readsALongLog()
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

void TestSurveyStoreLogs::givesANamelessLogAStandInName()
{
    OneWell survey({"GR"});
    survey.write("a^2.wll", header("Well Log") + "Storage type: Binary\n!\n" + samples({100, 7}));
    QCOMPARE(names(survey.store.logs(survey.key).value), (QStringList{"GR", "[2]"}));
    QVERIFY(survey.store.takeProblems().value(0).contains(survey.file("a^2.wll")));
    const host::LogData data = survey.store.log(survey.key, 1).value;
    QCOMPARE(data.name, QStringLiteral("[2]"));
    QCOMPARE(data.values, (QVector<float>{7}));
}

void TestSurveyStoreLogs::readsTheRightLogAfterAnotherProgramChangedThem()
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

void TestSurveyStoreLogs::refusesIndexesOutsideTheLogs()
{
    OneWell survey({"GR"});
    for (const int index : {-1, 1, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
        QVERIFY(!survey.store.log(survey.key, index).ok());
        QVERIFY(!survey.store.removeLog(survey.key, index).ok());
    }
    QCOMPARE(survey.store.logs(survey.key).value.size(), 1);
}

void TestSurveyStoreLogs::writesANewLogAsTheNextNumber()
{
    OneWell survey({"GR", "RHOB"});
    QVERIFY(survey.store.writeLog(survey.key, log("DT", {udf, 1, udf, 2, udf})).ok());
    QVERIFY(survey.read("a^3.wll").endsWith("!\n" + samples({100.5f, 1, 101, udf, 101.5f, 2})));
    QCOMPARE(names(survey.store.logs(survey.key).value), (QStringList{"GR", "RHOB", "DT"}));
    OneWell empty;
    QVERIFY(empty.store.writeLog(empty.key, log("GR", {1})).ok());
    QVERIFY(empty.names().contains(QStringLiteral("a^1.wll")));
}

void TestSurveyStoreLogs::replacesTheLogOfThatName()
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

void TestSurveyStoreLogs::replacesALogWhateverBlanksAreAroundItsName()
{
    OneWell survey;
    for (const char *name : {"GR", " GR", "GR \t", "GR\r"})
        QVERIFY(survey.store.writeLog(survey.key, log(name, {1, 2})).ok());
    QCOMPARE(names(survey.store.logs(survey.key).value), QStringList{QStringLiteral("GR")});
    QCOMPARE(survey.names(), (QStringList{".omf", "a.well", "a^1.wll"}));
}

void TestSurveyStoreLogs::refusesALogWithoutDefinedSamplesAndKeepsTheOldOne()
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

void TestSurveyStoreLogs::writesAfterAFileItCannotRead()
{
    OneWell survey({"GR", "RHOB"});
    survey.write("a^2.wll", "rubbish");
    QVERIFY(survey.store.writeLog(survey.key, log("RHOB", {1})).ok());
    QCOMPARE(survey.read("a^2.wll"), QByteArray("rubbish"));
    QCOMPARE(names(survey.store.logs(survey.key).value), (QStringList{"GR", "RHOB"}));
    QVERIFY(survey.names().contains(QStringLiteral("a^3.wll")));
}

void TestSurveyStoreLogs::doesNotMakeASecondLogOfOneNameBesideAnotherProgram()
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

void TestSurveyStoreLogs::removesALogWithoutLeavingAGap()
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

// No other program's doing: the removal itself gave the last log the place of the first one.
void TestSurveyStoreLogs::replacesALogWhoseFileARemovalMoved()
{
    OneWell survey({"GR", "RHOB", "DT"});
    QCOMPARE(survey.store.logs(survey.key).value.size(), 3);
    QVERIFY(survey.store.removeLog(survey.key, 0).ok());
    QCOMPARE(survey.store.writeLog(survey.key, log("DT", {9})).error, QString());
    QCOMPARE(names(survey.store.logs(survey.key).value), (QStringList{"DT", "RHOB"}));
    QCOMPARE(survey.store.log(survey.key, 0).value.values, (QVector<float>{9}));
}

void TestSurveyStoreLogs::removesTheLastLogAndTheOnlyLog()
{
    OneWell survey({"GR", "RHOB"});
    QVERIFY(survey.store.removeLog(survey.key, 1).ok());
    QCOMPARE(names(survey.store.logs(survey.key).value), QStringList{QStringLiteral("GR")});
    QVERIFY(survey.store.removeLog(survey.key, 0).ok());
    QVERIFY(survey.store.logs(survey.key).value.isEmpty());
    QCOMPARE(survey.names(), (QStringList{".omf", "a.well"}));
}

void TestSurveyStoreLogs::removesNothingWhenRenamingFails()
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

void TestSurveyStoreLogs::writesManyLogs()
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

LORVA_TEST_MAIN(TestSurveyStoreLogs)
#include "tst_surveystorelogs.moc"
