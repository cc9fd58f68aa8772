#include "support/memorymap.h"
#include "support/testmain.h"
#include "survey/logfile.h"
#include "surveyfixture.h"

#include <QTemporaryDir>

#include <limits>

using namespace survey;
using namespace survey_fixture;

namespace {

constexpr float udf = host::undefinedValue;

struct Read
{
    LogFileHeader header;
    host::LogData log;
    QString problem;
};

Read readLog(const QByteArray &bytes)
{
    const host::Outcome<LogFileHeader> parsed = parseLogHeader(bytes);
    Read result{parsed.value, {}, parsed.error};
    if (parsed.ok())
        result.log = parseLogSamples(parsed.value, bytes, &result.problem);
    return result;
}

QByteArray logHead(const QByteArray &storage, const QByteArray &more = {})
{
    return header("Well Log") + "Depth-Unit: Meter\nName: GR\nUnit of Measure: gAPI\n" + more
        + "Storage type: " + storage + "\n!\n";
}

QByteArray written(const host::LogData &log, const LogFileHeader *old = nullptr)
{
    const host::Outcome<QByteArray> bytes = logFileBytes(log, "Meter", old);
    if (!bytes.ok())
        qFatal("%s", qUtf8Printable(bytes.error));
    return bytes.value;
}

} // namespace

class TestLogFile : public QObject
{
    Q_OBJECT

private slots:
    void readsEveryStorage_data();
    void readsEveryStorage();
    void readsTextSamplesHoweverWritten();
    void dropsUndefinedSamplesAtTheEndsOnReading();
    void dropsSamplesWithoutDepthAndTakesNoNumbersAsUndefined();
    void anOddSampleIsSeenWhereverItStands();
    void oddSamplesOfALongLogAreSeen();
    void readsAnyOrderAndWritesByDepth();
    void samplesOfOneDepthKeepTheirOrder();
    void skipsTheParameterSection();
    void takesSamplesThatLookLikeAMark();
    void tellsWhereTheHeaderIsCut();
    void tellsCutAndMissingSamples();
    void survivesAHeaderThatIsLongerThanTheFile();
    void longLogsWishForLargePages();
    void readsAHeaderWithoutName();
    void writesTheHostsLayout();
    void dropsUndefinedSamplesAtTheEndsOnWriting();
    void refusesALogWithoutDefinedSamples();
    void refusesWhatIsNoLog();
    void keepsKeysAndParametersOfTheOldFile();
    void readsBackWhatItWrote();
    void checkingTellsWhatReadingTells_data();
    void checkingTellsWhatReadingTells();
};

void TestLogFile::readsEveryStorage_data()
{
    QTest::addColumn<QByteArray>("bytes");
    const QVector<float> numbers{100, 1.5f, 100.5f, udf, 101, -2.25f};
    QTest::newRow("Binary") << logHead("Binary") + samples(numbers);
    QTest::newRow("Swapped") << logHead("Swapped") + samples(numbers, true);
    QTest::newRow("Ascii") << logHead("Ascii") + "100\t1.5\n100.5\t1e30\n101\t-2.25\n";
    QTest::newRow("no storage key") << header("Well Log")
            + "Name: GR\nUnit of Measure: gAPI\n!\n100 1.5\n100.5 1e30\n101 -2.25";
}

void TestLogFile::readsEveryStorage()
{
    QFETCH(QByteArray, bytes);
    const Read read = readLog(bytes);
    QCOMPARE(read.problem, QString());
    QCOMPARE(read.log.name, QStringLiteral("GR"));
    QCOMPARE(read.log.unit, QStringLiteral("gAPI"));
    QCOMPARE(read.log.depths, (QVector<float>{100, 100.5f, 101}));
    QCOMPARE(read.log.values, (QVector<float>{1.5f, udf, -2.25f}));
    QVERIFY(host::isUndefined(read.log.values.at(1)));
}

void TestLogFile::readsTextSamplesHoweverWritten()
{
    const Read read = readLog(logHead("Ascii") + "  +1.0e2 \t1\r\n\n101 2 102\n3 103 1e30 104 1e-60 105 -1e99 106 4");
    QCOMPARE(read.problem, QString());
    QCOMPARE(read.log.depths, (QVector<float>{100, 101, 102, 103, 104, 105, 106}));
    QCOMPARE(read.log.values, (QVector<float>{1, 2, 3, udf, 0, udf, 4}));
    const Read bad = readLog(logHead("Ascii") + "100 1\n101 2\n102 x\n103 4\n");
    QCOMPARE(bad.log.values, (QVector<float>{1, 2}));
    QVERIFY(!bad.problem.isEmpty());
    QVERIFY(!readLog(logHead("Ascii") + "100 1\n101").problem.isEmpty());
}

void TestLogFile::dropsUndefinedSamplesAtTheEndsOnReading()
{
    const QVector<float> numbers{100, udf, 101, udf, 102, 1, 103, udf, 104, 2, 105, udf};
    for (const QByteArray &bytes : {logHead("Binary") + samples(numbers), logHead("Swapped") + samples(numbers, true),
                                    logHead("Ascii") + "100 1e30 101 1e30 102 1 103 1e30 104 2 105 1e30"}) {
        const Read read = readLog(bytes);
        QCOMPARE(read.log.depths, (QVector<float>{102, 103, 104}));
        QCOMPARE(read.log.values, (QVector<float>{1, udf, 2}));
    }
    const Read none = readLog(logHead("Binary") + samples({100, udf, 101, udf}));
    QVERIFY(none.log.values.isEmpty() && none.log.depths.isEmpty());
    QVERIFY(none.problem.contains(QStringLiteral("no samples")));
}

void TestLogFile::dropsSamplesWithoutDepthAndTakesNoNumbersAsUndefined()
{
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float inf = std::numeric_limits<float>::infinity();
    const QVector<float> numbers{100, nan, udf, 5, nan, 6, inf, 7, 101, 1, 102, inf, 103, nan, 104, 2, 105, -inf};
    for (const bool isBigEndian : {false, true}) {
        const Read read = readLog(logHead(isBigEndian ? "Swapped" : "Binary") + samples(numbers, isBigEndian));
        QCOMPARE(read.log.depths, (QVector<float>{101, 102, 103, 104}));
        QCOMPARE(read.log.values, (QVector<float>{1, udf, udf, 2}));
    }
    const Read text = readLog(logHead("Ascii") + "nan 1 101 1 102 nan inf 3 103 inf 104 2");
    QCOMPARE(text.log.depths, (QVector<float>{101, 102, 103, 104}));
    QCOMPARE(text.log.values, (QVector<float>{1, udf, udf, 2}));
}

// Samples are read several at a time.
void TestLogFile::anOddSampleIsSeenWhereverItStands()
{
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float inf = std::numeric_limits<float>::infinity();
    struct Odd
    {
        float depth;
        float value;
        bool isKept;
        float readAs;
    };
    const QVector<Odd> odds{{udf, 5, false, 0},   {nan, 5, false, 0},    {-inf, 5, false, 0},   {-nan, 5, false, 0},
                            {50, nan, true, udf}, {50, -nan, true, udf}, {50, -inf, true, udf}, {-50, -5, true, -5}};
    for (int count = 3; count < 28; ++count)
        for (int at = 1; at < count - 1; ++at)
            for (const Odd &odd : odds) {
                QVector<float> numbers;
                host::LogData expected;
                for (int i = 0; i < count; ++i) {
                    const float depth = i == at ? odd.depth : static_cast<float>(100 + i);
                    const float value = i == at ? odd.value : static_cast<float>(i) - 3.5f;
                    numbers << depth << value;
                    if (i == at && !odd.isKept)
                        continue;
                    expected.depths.append(depth);
                    expected.values.append(i == at ? odd.readAs : value);
                }
                const bool isBigEndian = at % 2 == 1;
                const Read read =
                    readLog(logHead(isBigEndian ? "Swapped" : "Binary") + samples(numbers, isBigEndian));
                QCOMPARE(read.log.depths, expected.depths);
                QCOMPARE(read.log.values, expected.values);
            }
}

// A file of several blocks, of which all but one are as they should be.
void TestLogFile::oddSamplesOfALongLogAreSeen()
{
    constexpr int count = 100000;
    for (const int at : {10, count / 2, count - 10}) {
        QVector<float> numbers;
        for (int i = 0; i < count; ++i)
            numbers << (i == at ? udf : static_cast<float>(i)) << 1;
        QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("log"));
        files::write(path, logHead("Binary") + samples(numbers));
        LogFileHeader header;
        QString problem;
        const host::LogData log = readLogFile(path, &header, &problem).value;
        QCOMPARE(problem, QString());
        QCOMPARE(log.depths.size(), count - 1);
        QCOMPARE(log.depths.at(at), static_cast<float>(at + 1));
    }
}

void TestLogFile::readsAnyOrderAndWritesByDepth()
{
    const QVector<float> numbers{300, 1, 100, 2, 100, 3, -5, 4};
    const Read read = readLog(logHead("Binary") + samples(numbers));
    QCOMPARE(read.log.depths, (QVector<float>{300, 100, 100, -5}));
    const host::LogData sorted = readLog(written(read.log)).log;
    QCOMPARE(sorted.depths, (QVector<float>{-5, 100, 100, 300}));
    QCOMPARE(sorted.values, (QVector<float>{4, 2, 3, 1}));
    // What is undefined at an end after the sorting is left out.
    host::LogData jumbled = read.log;
    jumbled.values = {host::undefinedValue, 2, 3, host::undefinedValue};
    QCOMPARE(readLog(written(jumbled)).log.depths, (QVector<float>{100, 100}));
}

// Few of them would stay in order by chance.
void TestLogFile::samplesOfOneDepthKeepTheirOrder()
{
    host::LogData data;
    data.name = QStringLiteral("GR");
    QVector<float> expected{-1};
    for (int i = 0; i < 100; ++i) {
        data.depths.append(100);
        data.values.append(static_cast<float>(i));
        expected.append(static_cast<float>(i));
    }
    data.depths.append(50);
    data.values.append(-1);
    QCOMPARE(readLog(written(data)).log.values, expected);
}

void TestLogFile::skipsTheParameterSection()
{
    for (const QByteArray &parameters :
         {QByteArray("!\n"), QByteArray("Mud: oil\n!\n"), QByteArray("A: 1\nB!\n!x: 2\n!\n")}) {
        const Read read = readLog(logHead("Binary", "Header info: Yes\n") + parameters + samples({100, 1, 101, 2}));
        QCOMPARE(read.problem, QString());
        QCOMPARE(read.header.parameters, parameters);
        QCOMPARE(read.log.values, (QVector<float>{1, 2}));
    }
    bool isCut = false;
    QVERIFY(!parseLogHeader(logHead("Binary", "Header info: Yes\n") + "Mud: oil\n", &isCut).ok());
    QVERIFY(isCut);
}

void TestLogFile::takesSamplesThatLookLikeAMark()
{
    const QByteArray pair("\n!\n!\n!\n!", 8);
    const Read read = readLog(logHead("Binary") + pair + pair);
    QCOMPARE(read.problem, QString());
    QCOMPARE(read.log.values.size(), 2);
    QCOMPARE(samples({read.log.depths.at(0), read.log.values.at(0)}), pair);
}

void TestLogFile::tellsWhereTheHeaderIsCut()
{
    const QByteArray head = header("Well Log") + "Name: Look!\nUnit of Measure: m!\nStorage type: Binary\n!\n";
    for (int size = 7; size < head.size(); ++size) {
        bool isCut = false;
        QVERIFY(!parseLogHeader(head.left(size), &isCut).ok());
        QVERIFY2(isCut, QByteArray::number(size));
    }
    bool isCut = true;
    const host::Outcome<LogFileHeader> whole = parseLogHeader(head, &isCut);
    QVERIFY(whole.ok() && !isCut);
    QCOMPARE(whole.value.dataOffset, head.size());
    QVERIFY(!parseLogHeader(wellFile(), &isCut).ok());
    QVERIFY(!isCut);
}

void TestLogFile::tellsCutAndMissingSamples()
{
    const QByteArray bytes = logHead("Binary") + samples({100, 1, 101, 2, 102, 3});
    for (int missing = 1; missing < 8; ++missing) {
        const Read read = readLog(bytes.left(bytes.size() - missing));
        QCOMPARE(read.log.values, (QVector<float>{1, 2}));
        QVERIFY(read.problem.contains(QStringLiteral("cut off")));
    }
    const Read none = readLog(logHead("Binary"));
    QVERIFY(none.log.values.isEmpty());
    QVERIFY(none.problem.contains(QStringLiteral("no samples")));
}

void TestLogFile::survivesAHeaderThatIsLongerThanTheFile()
{
    // Another program may have cut the file since its header was read.
    const QByteArray bytes = logHead("Binary") + samples({100, 1});
    const LogFileHeader head = parseLogHeader(bytes).value;
    for (const int size : {0, 10, head.dataOffset - 1, head.dataOffset}) {
        QString problem;
        QVERIFY(parseLogSamples(head, bytes.left(size), &problem).values.isEmpty());
        QVERIFY(!problem.isEmpty());
    }
}

void TestLogFile::longLogsWishForLargePages()
{
    if (!memorymap::hasLargePages())
        QSKIP("this system has no large pages");
    constexpr int count = 1200000;
    QVector<float> numbers;
    for (int i = 0; i < count; ++i)
        numbers << static_cast<float>(i) * 0.5f << 1;
    const Read read = readLog(logHead("Binary") + samples(numbers));
    QCOMPARE(read.log.depths.size(), count);
    QCOMPARE(read.log.depths.last(), static_cast<float>(count - 1) * 0.5f);
    for (const QVector<float> &values : {read.log.depths, read.log.values}) {
        QCOMPARE(values.capacity(), count); // no room that nothing needs
        QVERIFY(memorymap::isWishedLarge(values.constData() + count / 2));
    }
}

void TestLogFile::readsAHeaderWithoutName()
{
    const Read read = readLog(header("Well Log") + "Storage type: Binary\n!\n" + samples({100, 1}));
    QVERIFY(read.header.name.isEmpty());
    QVERIFY(read.header.unit.isEmpty());
    QCOMPARE(read.log.values.size(), 1);
}

void TestLogFile::writesTheHostsLayout()
{
    host::LogData data = survey_fixture::log("GR", {75, 77.25f, udf, 119.9902649f}, 400);
    QCOMPARE(withoutDate(written(data)),
             "!\nDepth-Unit: Meter\nName: GR\nUnit of Measure: gAPI\nHeader info: No\nStorage type: Binary\n"
             "Dah range: 400`401.5\nLog range: 75`119.990265\n!\n"
                 + samples({400, 75, 400.5f, 77.25f, 401, udf, 401.5f, 119.9902649f}));
    QVERIFY(written(data).startsWith("dTect V6.6\nWell Log\n"));
    QCOMPARE(written(data).mid(written(data).size() - 12, 4), QByteArray("\xca\xf2\x49\x71"));
    data.unit.clear();
    QVERIFY(!written(data).contains("Unit of Measure"));
}

void TestLogFile::dropsUndefinedSamplesAtTheEndsOnWriting()
{
    const float nan = std::numeric_limits<float>::quiet_NaN();
    host::LogData data =
        survey_fixture::log("GR", {udf, nan, 1, udf, nan, 2, udf, std::numeric_limits<float>::infinity()});
    const QByteArray bytes = written(data);
    QVERIFY(bytes.endsWith("!\n" + samples({101, 1, 101.5f, udf, 102, udf, 102.5f, 2})));
    QVERIFY(bytes.contains("Dah range: 101`102.5\nLog range: 1`2\n"));
    data.depths[2] = udf;
    data.depths[5] = nan;
    data.values = {1, 2, 3, 4, 5, 6, 7, 8};
    QVERIFY(written(data).endsWith("!\n" + samples({100, 1, 100.5f, 2, 101.5f, 4, 102, 5, 103, 7, 103.5f, 8})));
    QVERIFY(written(data).contains("Dah range: 100`103.5\nLog range: 1`8\n"));
}

void TestLogFile::refusesALogWithoutDefinedSamples()
{
    const float nan = std::numeric_limits<float>::quiet_NaN();
    for (const QVector<float> &values : {QVector<float>{}, QVector<float>{udf}, QVector<float>{udf, nan, udf}}) {
        const host::Outcome<QByteArray> bytes = logFileBytes(survey_fixture::log("GR", values), "Meter", nullptr);
        QVERIFY(!bytes.ok());
        QVERIFY(bytes.error.contains(QStringLiteral("no defined sample")));
    }
    host::LogData noDepth = survey_fixture::log("GR", {1, 2});
    noDepth.depths = {udf, nan};
    QVERIFY(!logFileBytes(noDepth, "Meter", nullptr).ok());
}

void TestLogFile::refusesWhatIsNoLog()
{
    host::LogData uneven = survey_fixture::log("GR", {1, 2});
    uneven.depths.removeLast();
    QVERIFY(!logFileBytes(uneven, "Meter", nullptr).ok());
    for (const char *name : {"", " ", "\r\n\t"})
        QVERIFY(!logFileBytes(survey_fixture::log(name, {1, 2}), "Meter", nullptr).ok());
}

void TestLogFile::keepsKeysAndParametersOfTheOldFile()
{
    const QByteArray old = header("Well Log")
        + "Depth-Unit: Feet\nName:  GR\t\nMnemonic: GR\n odd :  kept \nstrange\nUnit of Measure: API\nHeader info: "
          "Yes\n"
          "Storage type: Swapped\nDah range: 1`2\nLog range: 3`4\nLast: x\n!\nMud:  oil \n!\n"
        + samples({1, 3}, true);
    const LogFileHeader head = parseLogHeader(old).value;
    QCOMPARE(withoutDate(written(survey_fixture::log("GR", {5, 6}), &head)),
             "!\nDepth-Unit: Feet\nName:  GR\t\nMnemonic: GR\n odd :  kept \nstrange\nUnit of Measure: gAPI\nHeader "
             "info: Yes\n"
             "Storage type: Binary\nDah range: 100`100.5\nLog range: 5`6\nLast: x\n!\nMud:  oil \n!\n"
                 + samples({100, 5, 100.5f, 6}));
}

void TestLogFile::readsBackWhatItWrote()
{
    for (const char *name : {"GR", "RHOB/2", "a:b", "Größe", "a\nb", "!", "井", "Name: x"}) {
        host::LogData data = survey_fixture::log(name, {1.1f, udf, 3e-38f, -1e29f, 3.3e38f}, -3);
        data.unit = QString::fromUtf8("µs/ft");
        const Read read = readLog(written(data));
        QCOMPARE(read.problem, QString());
        QCOMPARE(read.log.name, data.name);
        QCOMPARE(read.log.unit, data.unit);
        QCOMPARE(read.log.depths, data.depths);
        QVERIFY(read.log.values == data.values);
        QCOMPARE(withoutDate(written(read.log)), withoutDate(written(data)));
    }
}

void TestLogFile::checkingTellsWhatReadingTells_data()
{
    QTest::addColumn<QByteArray>("bytes");
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const QByteArray good = logHead("Binary") + samples({100, 1.5f, 100.5f, udf, 101, -2.25f});
    QTest::newRow("good") << good;
    QTest::newRow("cut") << good.chopped(3);
    QTest::newRow("cut to a depth") << good.chopped(20);
    QTest::newRow("no sample") << logHead("Binary");
    QTest::newRow("less than a sample") << logHead("Binary") + "abc";
    QTest::newRow("undefined") << logHead("Binary") + samples({100, udf, 101, nan, 102, udf});
    QTest::newRow("without depths") << logHead("Binary") + samples({nan, 1, udf, 2});
    QTest::newRow("one defined") << logHead("Binary") + samples({100, udf, 101, 3, nan, 2});
    QTest::newRow("swapped") << logHead("Swapped") + samples({100, udf, 101, 3}, true);
    QTest::newRow("swapped, undefined") << logHead("Swapped") + samples({100, udf, 101, udf}, true);
    QTest::newRow("text") << logHead("Ascii") + "100\t1.5\n100.5\t1e30\n";
    QTest::newRow("text, undefined") << logHead("Ascii") + "100\t1e30\n";
    QTest::newRow("text that is none") << logHead("Ascii") + "100\t1.5\nx";
    QTest::newRow("header cut") << good.left(80);
    QTest::newRow("no log") << QByteArray("dTect V6.6\nWell\n!\n");
    QTest::newRow("empty") << QByteArray();
    // More than is read at once, and the only defined sample behind that; a sample over the end of what is read.
    QVector<float> many;
    for (int i = 0; i < 80000; ++i)
        many << static_cast<float>(i) << udf;
    QTest::newRow("long, undefined") << logHead("Binary") + samples(many);
    many.last() = 5;
    const QByteArray lengthy = logHead("Binary") + samples(many);
    QTest::newRow("long") << lengthy;
    for (int shift = 1; shift < 8; ++shift)
        QTest::addRow("long, moved by %d", shift)
            << logHead("Binary", QByteArray("X: ") + QByteArray(shift, 'x') + '\n') + samples(many);
    QTest::newRow("long, cut") << lengthy.chopped(1);
    QTest::newRow("long header") << logHead("Binary", "X: " + QByteArray(300000, 'x') + '\n') + samples({100, 2});
    QTest::newRow("long header, cut") << logHead("Binary", "X: " + QByteArray(300000, 'x')).chopped(30);
}

void TestLogFile::checkingTellsWhatReadingTells()
{
    QFETCH(QByteArray, bytes);
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("Well^1.wll"));
    files::write(path, bytes);
    LogFileHeader header;
    QString problem;
    const host::Outcome<host::LogData> read = readLogFile(path, &header, &problem);
    QString found;
    const host::Outcome<LogFileHeader> checked = checkLogFile(path, &found);
    QCOMPARE(checked.error, read.error);
    QCOMPARE(found, problem);
    QCOMPARE(checked.value.name, header.name);
    QVERIFY(checkLogFile(path + QLatin1Char('x'), &found).error
            == readLogFile(path + QLatin1Char('x'), &header).error);
}

LORVA_TEST_MAIN(TestLogFile)
#include "tst_logfile.moc"
