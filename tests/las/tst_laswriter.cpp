#include "las/laswriter.h"
#include "las/resampling.h"
#include "support/commalocale.h"
#include "support/failingdisk.h"
#include "support/files.h"
#include "support/testmain.h"
#include "tests/las/strictlaschecker.h"

#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

#include <limits>
#include <random>
#include <sys/resource.h>

namespace {

QString text(const char *bytes)
{
    return QString::fromUtf8(bytes);
}

LogCurveData log(const char *name, const char *unit, const char *group, double first, double step, int count,
                 double value = 1)
{
    LogCurveData log;
    log.logName = text(name);
    log.unit = text(unit);
    log.curveGroup = text(group);
    for (int i = 0; i < count; ++i) {
        log.depths.append(first + i * step);
        log.values.append(value + i);
    }
    return log;
}

las::ExportFile file(const QVector<LogCurveData> &logs, double interval, double maximumDepth = 5000)
{
    las::ExportFile file;
    file.well.wellName = text("W-1");
    file.well.x = 500000.126;
    file.well.y = -12.3;
    file.well.kbElevation = 25.3000001;
    file.interval = interval;
    file.range = las::ExportRange(maximumDepth);
    for (const LogCurveData &log : logs) {
        file.logs.append({log, false});
        file.range.add(log);
    }
    return file;
}

bool always()
{
    return true;
}

/// A blank in place of each dot of the padding makes the columns of the expected header visible.
const char expectedHeader[] =
    "~Version Information Section\n"
    "VERS.            2.0                             :CWLS log ASCII Standard - VERSION 2.0\n"
    "WRAP.            NO                              :One line per depth step\n"
    "~Well Information Section\n"
    "#MNEM.UNIT       VALUE / NAME                    DESCRIPTION\n"
    "#--------        --------------                  ---------------------\n"
    "STRT.M           100                             :START DEPTH\n"
    "STOP.M           101                             :STOP DEPTH\n"
    "STEP.M           0.5                             :STEP\n"
    "NULL.            -999.25                         :NULL VALUE\n"
    "COMP.                                            :COMPANY\n"
    "WELL.            W-1                             :WELL\n"
    "FLD.                                             :FIELD\n"
    "LOC.             500000.13 , -12.30              :LOCATION\n"
    "LMF.             25.3                            :LOG MEASURED FROM (KB)\n"
    "PROV.                                            :PROVINCE\n"
    "SRVC.                                            :SERVICE COMPANY\n"
    "LIC.                                             :ERCB LICENCE NUMBER\n"
    "DATE.                                            :LOG DATE\n"
    "UWI.             W-1                             :UNIQUE WELL ID\n"
    "~Curve Information Section\n"
    "#MNEM.UNIT       API CODE                        Curve Description\n"
    "#--------        --------------                  ---------------------\n"
    "DEPT.M                                           :1 DEPTH\n"
    "GR.gapi                                          :2 Gamma\n"
    "RT.ohmm                                          :3 Resistivity\n"
    "~Parameter Information Section\n"
    "#MNEM.UNIT       VALUE                           DESCRIPTION\n"
    "#--------        --------------                  ---------------------\n"
    "~Other Information Section\n"
    "Log(s) exported from LORVA plugin of Opendtect.\n"
    "~A DEPT GR         RT         \n";

} // namespace

class TestLasWriter : public QObject
{
    Q_OBJECT

private slots:
    void header();
    void headerUnderACommaLocale();
    void numbersOfTheHeader_data();
    void numbersOfTheHeader();
    void longFieldsAreNotCut();
    void namesCannotBreakTheLine();
    void wholeFile();
    void dataLines();
    void depthsByRepeatedAddition();
    void indexIsTruncatedTowardZero();
    void noiseDoesNotDecideTheIndex();
    void unresampledLogIsWrittenSampleBySample();
    void twoLogsOnOneGrid();
    void startsAtTheWellsDepth();
    void withoutSamples();
    void valuesThatAreNoNumbers();
    void hugeValues();
    void manyColumns();
    void rangeOfLogs();
    void resamplingForExport();
    void resampledSamplesAreThoseOfTheGrid();
    void fineGridNeedsNoMemory();
    void strictReaderAccepts();
    void strictReaderFindsFaults();
    void prescribedDeviations();
    void notCreated();
    void failingDisk_data();
    void failingDisk();
    void stoppedWriting();
    void fileNames();

private:
    QByteArray written(const las::ExportFile &file)
    {
        bool isCreated = false;
        const base::WriteResult result = las::writeLas(path(), file, always, &isCreated);
        if (!result.ok() || !isCreated)
            qFatal("cannot write");
        return files::read(path());
    }
    QStringList rowsOf(const las::ExportFile &file)
    {
        QStringList lines = QString::fromUtf8(written(file)).split(QLatin1Char('\n'));
        lines.removeLast();
        while (!lines.takeFirst().startsWith(QLatin1String("~A"))) { }
        return lines;
    }
    QString path() const { return m_folder.filePath(text("out.las")); }

    QTemporaryDir m_folder;
};

void TestLasWriter::header()
{
    const auto logs = {log("GR", "gapi", "Gamma", 100, 0.5, 3), log("RT", "ohmm", "Resistivity", 100, 0.5, 3)};
    QCOMPARE(las::lasHeader(file(logs, 0.5)), QByteArray(expectedHeader));
}

void TestLasWriter::headerUnderACommaLocale()
{
    const testing_support::CommaLocale locale;
    if (!locale.isInForce())
        QSKIP("no locale with a decimal comma could be made");
    header();
    dataLines();
}

void TestLasWriter::numbersOfTheHeader_data()
{
    QTest::addColumn<double>("number");
    QTest::addColumn<QByteArray>("expected");
    QTest::newRow("six digits") << 1234.56789 << QByteArray("1234.57");
    QTest::newRow("exponent") << 12345678.0 << QByteArray("1.23457e+07");
    QTest::newRow("small") << 0.0001524 << QByteArray("0.0001524");
    QTest::newRow("smaller") << 0.00001524 << QByteArray("1.524e-05");
    QTest::newRow("no zeros") << 0.5 << QByteArray("0.5");
}

void TestLasWriter::numbersOfTheHeader()
{
    QFETCH(double, number);
    QFETCH(QByteArray, expected);
    las::ExportFile f = file({}, number);
    f.range.start = number;
    f.range.stop = number;
    f.well.kbElevation = number;
    const QByteArray header = las::lasHeader(f);
    for (const char *field : {"STRT.M           ", "STOP.M           ", "STEP.M           ", "LMF.             "})
        QVERIFY2(header.contains('\n' + QByteArray(field) + expected.leftJustified(32) + ':'), header.constData());
}

void TestLasWriter::longFieldsAreNotCut()
{
    LogCurveData curve = log("A_VERY_LONG_CURVE_NAME", "ohm.m", "Effective Porosity", 0, 1, 1);
    las::ExportFile f = file({curve}, 1);
    f.well.wellName = text("A well whose name is longer than thirty-two characters");
    const QByteArray header = las::lasHeader(f);
    QVERIFY(header.contains("\nWELL.            A well whose name is longer than thirty-two characters:WELL\n"));
    QVERIFY(header.contains("\nA_VERY_LONG_CURVE_NAME.ohm.m                                :2 Effective Porosity\n"));
    QVERIFY(header.endsWith("\n~A DEPT A_VERY_LONG_CURVE_NAME \n"));
}

void TestLasWriter::namesCannotBreakTheLine()
{
    LogCurveData curve = log("G\nR\r", "x\n~A", "Gamma", 0, 1, 1);
    las::ExportFile f = file({curve}, 1);
    f.well.wellName = text("W\n~A fake");
    const QByteArray header = las::lasHeader(f);
    QCOMPARE(header.count('\n'), QByteArray(expectedHeader).count('\n') - 1);
    QVERIFY(header.contains("\nWELL.            W ~A fake"));
    QVERIFY(header.contains("\nG R .x ~A"));
}

void TestLasWriter::wholeFile()
{
    const auto logs = {log("GR", "gapi", "Gamma", 100, 0.5, 3, 7.126), log("RT", "ohmm", "Resistivity", 100, 0.5, 3)};
    QCOMPARE(written(file(logs, 0.5)),
             QByteArray(expectedHeader)
                 + "100.0000 7.13 1.00 \n"
                   "100.5000 8.13 2.00 \n"
                   "101.0000 9.13 3.00 \n");
}

void TestLasWriter::dataLines()
{
    LogCurveData curve = log("GR", "gapi", "Gamma", 99.99996, 0.5, 3);
    curve.values = {-999.25, 0, -0.004};
    QCOMPARE(rowsOf(file({curve}, 0.5)),
             (QStringList{text("100.0000 -999.25 "), text("100.5000 0.00 "), text("101.0000 -0.00 ")}));
}

void TestLasWriter::depthsByRepeatedAddition()
{
    const QStringList rows = rowsOf(file({log("GR", "", "", 0, 0.1, 30001)}, 0.1));
    double depth = 0;
    for (const QString &row : rows) {
        QCOMPARE(row.section(QLatin1Char(' '), 0, 0), QString::number(depth, 'f', 4));
        depth += 0.1;
    }
    QVERIFY(30000 * 0.1 != depth - 0.1);
    QVERIFY(rows.size() >= 30000);
}

// One interval above a log's first depth the index is -0.something, which is truncated to 0: the first value comes
// twice, once above its depth.
void TestLasWriter::indexIsTruncatedTowardZero()
{
    const auto logs = {log("A", "", "", 10.25, 0.5, 2, 70), log("B", "", "", 9, 0.5, 5)};
    QCOMPARE(rowsOf(file(logs, 0.5)),
             (QStringList{text("9.0000 -999.25 1.00 "), text("9.5000 -999.25 2.00 "), text("10.0000 70.00 3.00 "),
                          text("10.5000 70.00 4.00 "), text("11.0000 71.00 5.00 ")})
                 .mid(0, rowsOf(file(logs, 0.5)).size()));
    QCOMPARE(rowsOf(file(logs, 0.5)).size(), 5);
}

// Depths that were summed up miss a sample's depth by some bits; the whole index next to the quotient counts, on both
// sides of the log's first depth.
void TestLasWriter::noiseDoesNotDecideTheIndex()
{
    const LogCurveData first = log("A", "", "", 0.1, 0.1, 4); // 0.1 + 0.1 + 0.1 is more than 0.3
    LogCurveData second = log("B", "", "", 0.3, 0.1, 2, 5);
    QCOMPARE(rowsOf(file({first, second}, 0.1)),
             (QStringList{text("0.1000 1.00 -999.25 "), text("0.2000 2.00 -999.25 "), text("0.3000 3.00 5.00 "),
                          text("0.4000 4.00 6.00 ")}));
    const QStringList rows = rowsOf(file({log("A", "", "", 1000.3, 0.1524, 20000)}, 0.1524));
    for (int row = 0; row < rows.size(); ++row)
        QCOMPARE(rows.at(row).section(QLatin1Char(' '), 1, 1), QString::number(row + 1) + text(".00"));
    // Far more than noise is not rounded.
    second.depths = {0.30001, 0.40001};
    QCOMPARE(rowsOf(file({first, second}, 0.1)).at(2), text("0.3000 3.00 5.00 "));
    QCOMPARE(rowsOf(file({first, second}, 0.1)).at(3), text("0.4000 4.00 5.00 "));
}

void TestLasWriter::unresampledLogIsWrittenSampleBySample()
{
    const QStringList rows = rowsOf(file({log("A", "", "", 0, 2, 4)}, 1)); // own step 2: depths 0, 2, 4, 6
    QCOMPARE(rows,
             (QStringList{text("0.0000 1.00 "), text("1.0000 2.00 "), text("2.0000 3.00 "), text("3.0000 4.00 "),
                          text("4.0000 -999.25 "), text("5.0000 -999.25 "), text("6.0000 -999.25 ")}));
}

void TestLasWriter::twoLogsOnOneGrid()
{
    const double interval = 0.1524;
    las::ExportFile f = file({log("A", "", "", 1000, 1, 101), log("B", "", "", 1050, 1, 151)}, interval);
    bool isUnsuited = false;
    for (las::ExportLog &log : f.logs)
        log = las::exportLog(log.data, interval, &isUnsuited);
    const QByteArray bytes = written(f);
    QVERIFY(bytes.contains("\nSTRT.M           1000  "));
    QVERIFY(bytes.contains("\nSTOP.M           1200  "));
    const StrictLas read(bytes);
    QVERIFY(read.rows.size() > 1300);
    for (const QVector<double> &row : read.rows) {
        const double depth = row.at(0);
        // Truncation repeats the first value within one interval above the log, and where the sum of intervals falls
        // short of the last index, the last value below it.
        if (depth < 1100 || depth > 1100 + interval)
            QVERIFY2((row.at(1) == -999.25) == (depth > 1100), qPrintable(QString::number(depth)));
        if (depth < 1050 - interval || depth > 1050)
            QVERIFY2((row.at(2) == -999.25) == (depth < 1050), qPrintable(QString::number(depth)));
    }
}

void TestLasWriter::startsAtTheWellsDepth()
{
    const QStringList rows = rowsOf(file({log("A", "", "", 12, 1, 2)}, 1, 9.5));
    QCOMPARE(rows,
             (QStringList{text("9.5000 -999.25 "), text("10.5000 -999.25 "), text("11.5000 1.00 "),
                          text("12.5000 1.00 ")}));
}

void TestLasWriter::withoutSamples()
{
    QVERIFY(rowsOf(file({log("A", "", "", 0, 1, 0)}, 1)).isEmpty());
    const auto logs = {log("A", "", "", 0, 1, 0), log("B", "", "", 5, 1, 2)};
    QCOMPARE(rowsOf(file(logs, 1)), (QStringList{text("5.0000 -999.25 1.00 "), text("6.0000 -999.25 2.00 ")}));
}

void TestLasWriter::valuesThatAreNoNumbers()
{
    LogCurveData curve = log("A", "", "", 0, 1, 3);
    curve.values = {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(), 3};
    QCOMPARE(rowsOf(file({curve}, 1)),
             (QStringList{text("0.0000 -999.25 "), text("1.0000 -999.25 "), text("2.0000 3.00 ")}));
    curve.values.resize(2); // shorter than the depths
    QCOMPARE(rowsOf(file({curve}, 1)).last(), text("2.0000 -999.25 "));
}

void TestLasWriter::hugeValues()
{
    LogCurveData curve = log("A", "", "", 0, 1, 2000);
    curve.values.fill(-std::numeric_limits<double>::max());
    const QString expected = QString::number(-std::numeric_limits<double>::max(), 'f', 2);
    const QStringList rows = rowsOf(file({curve}, 1));
    QCOMPARE(rows.size(), 2000);
    for (const QString &row : rows)
        QCOMPARE(row.section(QLatin1Char(' '), 1, 1), expected);
}

// Lines longer than the writer's buffer.
void TestLasWriter::manyColumns()
{
    QVector<LogCurveData> logs;
    for (int i = 0; i < 40000; ++i)
        logs.append(log("A", "", "", 0, 1, 2, i));
    const QStringList rows = rowsOf(file(logs, 1));
    QCOMPARE(rows.size(), 2);
    const QStringList cells = rows.at(1).split(QLatin1Char(' '));
    QCOMPARE(cells.size(), 40002);
    for (int i = 0; i < 40000; ++i)
        QCOMPARE(cells.at(i + 1), QString::number(i + 1) + text(".00"));
}

void TestLasWriter::rangeOfLogs()
{
    las::ExportRange range(3000);
    QCOMPARE(range.start, 3000.0);
    QCOMPARE(range.stop, 0.0);
    range.add(log("A", "", "", 1000, 1, 11));
    range.add(log("B", "", "", 500, 1, 0)); // without samples
    range.add(log("C", "", "", 1005, 1, 21));
    QCOMPARE(range.start, 1000.0);
    QCOMPARE(range.stop, 1025.0);
    las::ExportRange above(100);
    above.add(log("A", "", "", -50, 1, 11));
    QCOMPARE(above.start, -50.0);
    QCOMPARE(above.stop, 0.0);
    // The first and the last sample count, not the least and the largest depth.
    LogCurveData jumbled = log("J", "", "", 1000, 1, 4);
    jumbled.depths = {900, 1200, 800, 1100};
    las::ExportRange ends(3000);
    ends.add(jumbled);
    QCOMPARE(ends.start, 900.0);
    QCOMPARE(ends.stop, 1100.0);
}

void TestLasWriter::resamplingForExport()
{
    bool isUnsuited = true;
    QVERIFY(!las::exportLog(log("A", "u", "G", 0, 0.50005, 5), 0.5, &isUnsuited).isResampled); // within the tolerance
    QVERIFY(!isUnsuited);
    const las::ExportLog coarse = las::exportLog(log("A", "u", "G", 0, 1, 3), 0.5, &isUnsuited);
    QVERIFY(coarse.isResampled && !isUnsuited);
    QCOMPARE(coarse.data.logName, text("A"));
    QCOMPARE(coarse.data.depths, (QVector<double>{0, 1, 2}));
    QVERIFY(!las::exportLog(log("A", "", "", 5, 1, 1), 0.5, &isUnsuited).isResampled);
    QVERIFY(!isUnsuited);
    LogCurveData turning = log("A", "", "", 0, 1, 3);
    turning.depths = {0, 2, 1};
    QVERIFY(!las::exportLog(turning, 0.5, &isUnsuited).isResampled);
    QVERIFY(isUnsuited);
}

// Samples that are made while the file is written are those of a whole resampled log, written by the index rule.
void TestLasWriter::resampledSamplesAreThoseOfTheGrid()
{
    std::mt19937 random(4);
    const auto pick = [&random](double from, double to) {
        return std::uniform_real_distribution<double>(from, to)(random);
    };
    for (int run = 0; run < 200; ++run) {
        const double interval = pick(0.05, 3);
        QVector<LogCurveData> logs;
        for (int i = 0; i < 3; ++i) {
            LogCurveData curve = log("A", "", "", 0, 1, 2 + static_cast<int>(pick(0, 60)));
            double depth = pick(0, 40);
            for (int sample = 0; sample < curve.depths.size(); ++sample) {
                curve.depths[sample] = depth;
                curve.values[sample] = pick(-50, 50);
                depth += pick(0.01, 2);
            }
            logs.append(curve);
        }
        las::ExportFile lazy = file(logs, interval);
        las::ExportFile whole = lazy;
        for (int i = 0; i < logs.size(); ++i) {
            lazy.logs[i].isResampled = true;
            const las::Samples samples = las::resample(logs.at(i).depths, logs.at(i).values, interval);
            whole.logs[i].data.depths = samples.depths;
            whole.logs[i].data.values = samples.values;
        }
        QCOMPARE(written(lazy), written(whole));
    }
}

// Ten logs on a grid of a million lines each, out of four samples.
void TestLasWriter::fineGridNeedsNoMemory()
{
    las::ExportFile f = file(QVector<LogCurveData>(10, log("A", "", "", 0, 100, 4)), 0.0003);
    for (las::ExportLog &curve : f.logs)
        curve.isResampled = true;
    rusage before{};
    ::getrusage(RUSAGE_SELF, &before);
    bool isCreated = false;
    QVERIFY(las::writeLas(path(), f, always, &isCreated).ok());
    rusage after{};
    ::getrusage(RUSAGE_SELF, &after);
    QVERIFY(QFileInfo(path()).size() > 50'000'000);
    QVERIFY2(after.ru_maxrss - before.ru_maxrss < 20'000, "kB; the samples of all grids would take 160,000");
}

void TestLasWriter::strictReaderAccepts()
{
    const auto logs = {log("GR", "gapi", "Gamma", 100, 0.5, 300), log("RT", "ohmm", "Resistivity", 120, 0.5, 260)};
    const StrictLas read(written(file(logs, 0.5)));
    QVERIFY2(read.problems.isEmpty(), qPrintable(QStringList(read.problems.keys()).join(QLatin1Char(' '))));
    QCOMPARE(read.rows.size(), 300);
    QCOMPARE(read.item('W', "WELL")->value, text("W-1"));
    QCOMPARE(read.item('W', "NULL")->value, text("-999.25"));
    QCOMPARE(read.item('C', "RT")->unit, text("ohmm"));
    QCOMPARE(read.item('C', "RT")->description, text("3 Resistivity"));
    QCOMPARE(read.otherText, QStringList{text("Log(s) exported from LORVA plugin of Opendtect.")});
}

// The checker itself must be able to object.
void TestLasWriter::strictReaderFindsFaults()
{
    const QByteArray good = written(file({log("GR", "gapi", "Gamma", 100, 0.5, 3)}, 0.5));
    const auto problem = [&good](const char *from, const char *to) {
        QByteArray bytes = good;
        bytes.replace(from, to);
        return QStringList(StrictLas(bytes).problems.keys()).join(QLatin1Char(' '));
    };
    QCOMPARE(problem("2.0 ", "3.0 "), text("version"));
    QCOMPARE(problem("NO  ", "YES "), text("wrap"));
    QCOMPARE(problem("COMP.", "XOMP."), text("missing well item"));
    QCOMPARE(problem("STRT.M           100", "STRT.M           101"), text("start"));
    QCOMPARE(problem("100.5000", "100.6000"), text("step"));
    QCOMPARE(problem("101.0000 3.00 ", "101.0000 "), text("number of columns"));
    QCOMPARE(problem("101.0000 3.00 ", "101.0000 x "), text("data number"));
    QCOMPARE(problem("DEPT.M ", "TIEF.M "), text("index curve"));
    QCOMPARE(problem("GR.gapi", "DEPT.M "), text("curve twice"));
    QCOMPARE(problem("gapi", "g\tpi"), text("characters"));
    QVERIFY(problem("~Version", "~X").contains(text("version first")));
}

// What the prescribed layout does against the rules of the format; an entry that stops being true fails as well.
void TestLasWriter::prescribedDeviations()
{
    const auto problems = [this](const las::ExportFile &file) {
        return QStringList(StrictLas(written(file)).problems.keys());
    };
    // STOP is the deepest sample, not the last line of the grid.
    QCOMPARE(problems(file({log("GR", "gapi", "Gamma", 100, 0.7, 4)}, 0.5)), QStringList{text("stop")});
    // Names are written as they are, in UTF-8, with their blanks and dots.
    las::ExportFile named = file({log("Poröse Zone", "v/v", "Porosity", 100, 0.5, 3)}, 0.5);
    QCOMPARE(problems(named), (QStringList{text("blank in a mnemonic"), text("characters")}));
    // STRT and STOP carry six digits: they stand a little beside a deep first and last line with many decimals.
    const las::ExportFile deep = file({log("GR", "gapi", "Gamma", 4321.9876, 0.1524, 30)}, 0.1524);
    QCOMPARE(problems(deep), QStringList());
    const StrictLas read(written(deep));
    QCOMPARE(read.item('W', "STRT")->value, text("4321.99"));
    QCOMPARE(read.rows.first().first(), 4321.9876);
    QCOMPARE(read.item('W', "STOP")->value, text("4326.41"));
    QCOMPARE(read.rows.last().first(), 4326.4072);
    // A unit with a blank ends at it, and the rest passes for the value.
    const QByteArray blankUnit = written(file({log("GR", "API units", "Gamma", 100, 0.5, 3)}, 0.5));
    QCOMPARE(StrictLas(blankUnit).item('C', "GR")->unit, text("API"));
    QCOMPARE(StrictLas(blankUnit).item('C', "GR")->value, text("units"));
    // Two logs of a well may share a name.
    const LogCurveData gr = log("GR", "gapi", "Gamma", 100, 0.5, 3);
    QCOMPARE(problems(file({gr, gr}, 0.5)), QStringList{text("curve twice")});
    // A well whose logs have no samples gives a data section without lines.
    const las::ExportFile empty = file({log("GR", "gapi", "Gamma", 0, 0.5, 0)}, 0.5);
    QCOMPARE(problems(empty), QStringList{text("no data lines")});
    // Lines of many curves are longer than 256 characters without being wrapped.
    QVector<LogCurveData> logs;
    for (int i = 0; i < 60; ++i)
        logs.append(log(qPrintable(text("C%1").arg(i)), "", "", 100, 0.5, 3));
    QVERIFY(problems(file(logs, 0.5)).isEmpty());
}

void TestLasWriter::notCreated()
{
    bool isCreated = true;
    const las::ExportFile f = file({log("GR", "", "", 0, 1, 3)}, 1);
    QVERIFY(!las::writeLas(m_folder.filePath(text("no/such/folder/x.las")), f, always, &isCreated).ok());
    QVERIFY(!isCreated);
    QVERIFY(!las::writeLas(m_folder.path(), f, always, &isCreated).ok());
    QVERIFY(!isCreated);
}

void TestLasWriter::failingDisk_data()
{
    QTest::addColumn<int>("step");
    for (const FailingStep &step : failingSteps)
        QTest::newRow(step.name) << int(step.step);
}

void TestLasWriter::failingDisk()
{
    QFETCH(int, step);
    const las::ExportFile f = file({log("GR", "", "", 0, 1, 200000)}, 1);
    files::write(path(), "old");
    const auto before = files::snapshot(m_folder.path());
    FailingDisk disk(static_cast<FailingDisk::Step>(step));
    const base::ScopedFileSystemCalls calls(disk);
    bool isCreated = false;
    QVERIFY(!las::writeLas(path(), f, always, &isCreated).ok());
    QCOMPARE(isCreated, step != FailingDisk::Open);
    QCOMPARE(files::snapshot(m_folder.path()), before);
    QVERIFY(QFile::remove(path()));
}

void TestLasWriter::stoppedWriting()
{
    const las::ExportFile f = file({log("GR", "", "", 0, 1, 200000)}, 1);
    files::write(path(), "old");
    const auto before = files::snapshot(m_folder.path());
    int calls = 0;
    bool isCreated = false;
    QVERIFY(las::writeLas(
                path(), f, [&calls] { return ++calls < 3; }, &isCreated)
                .ok());
    QCOMPARE(calls, 3);
    QCOMPARE(files::snapshot(m_folder.path()), before);
}

void TestLasWriter::fileNames()
{
    QCOMPARE(las::lasFileName(text("Well 1")), text("Well 1.las"));
    QCOMPARE(las::lasFileName(text("15/9-F-1")), text("15%2F9-F-1.las"));
    QCOMPARE(las::lasFileName(text("../../x")), text("..%2F..%2Fx.las"));
    QVERIFY(las::lasFileName(QString(300, QLatin1Char('n'))).toUtf8().size() <= 255);
}

LORVA_TEST_MAIN(TestLasWriter)
#include "tst_laswriter.moc"
