#include "support/testmain.h"
#include "survey/wellfile.h"
#include "surveyfixture.h"

#include <limits>

using namespace survey;
using namespace survey_fixture;

namespace {

WellFile deviated()
{
    return parseWellFile(header("Well")
                         + "Depth-Unit: Meter\nOwn key:  kept \nSurface coordinate: (1000,2000)\n"
                           "Ground Level elevation [GL]: 12.5\nWell type: Oil\n!\n"
                           "1000\t2000\t-30\t0\n1000\t2000\t470\t500\n1060\t2080\t643\t700\n1120\t2160\t816\t900\n")
        .value;
}

QString text(const QVector<TrackPoint> &track)
{
    QStringList points;
    for (const TrackPoint &point : track)
        points.append(QStringLiteral("%1 %2 %3 %4").arg(point.x).arg(point.y).arg(point.z).arg(point.md));
    return points.join(QStringLiteral(" | "));
}

WellProperties changed(const WellFile &file, double WellProperties::*field, double value)
{
    WellProperties properties = file.properties(QStringLiteral("W"));
    properties.*field = value;
    return properties;
}

} // namespace

class TestWellFile : public QObject
{
    Q_OBJECT

private slots:
    void readsHeaderAndTrack();
    void fallsBackToTheFirstTrackPoint_data();
    void fallsBackToTheFirstTrackPoint();
    void readsTheOldGroundKey();
    void elevationIsDepthMinusZ();
    void readsTypes_data();
    void readsTypes();
    void readsRowsHoweverSeparated();
    void stopsAtARowThatIsNone();
    void refusesAFileWithoutATrack();
    void readsTrackFilesWithAndWithoutHeader();
    void writesBackWhatItRead();
    void makesAVerticalWell();
    void makesAWellWithoutDepth();
    void changesNothingWithoutAChange();
    void movesTheTrack();
    void movesToTheOriginWithoutACoordinate();
    void liftsTheTrack();
    void liftsByTheExactAmount();
    void changesTheGroundElevation();
    void extendsAlongTheLastDirection();
    void cutsWithinTheTrack();
    void countsThePointsBelowADepth();
    void cutsAtAPoint();
    void cutsAboveTheFirstPoint();
    void extendsATrackThatEndsTwiceAtOneDepth();
    void changesTheType();
    void keepsAnUnknownType();
    void judgesProperties();
};

void TestWellFile::readsHeaderAndTrack()
{
    const host::WellHeader well = deviated().header(QStringLiteral("W"));
    QCOMPARE(well.name, QStringLiteral("W"));
    QVERIFY(well.x == 1000 && well.y == 2000);
    QVERIFY(well.kbElevation == 30 && well.groundElevation == 12.5f);
    QVERIFY(well.totalDepth == 900);
    QCOMPARE(well.typeCode, int(host::OilWell));
}

void TestWellFile::fallsBackToTheFirstTrackPoint_data()
{
    QTest::addColumn<QByteArray>("key");
    QTest::newRow("missing") << QByteArray();
    QTest::newRow("origin") << QByteArray("Surface coordinate: (0,0)\n");
    QTest::newRow("rubbish") << QByteArray("Surface coordinate: here\n");
    QTest::newRow("half") << QByteArray("Surface coordinate: (1,\n");
    QTest::newRow("not opened") << QByteArray("Surface coordinate: 11,2)\n");
    QTest::newRow("not closed") << QByteArray("Surface coordinate: (1,22\n");
    QTest::newRow("undefined") << QByteArray("Surface coordinate: (nan,inf)\n");
}

void TestWellFile::fallsBackToTheFirstTrackPoint()
{
    QFETCH(QByteArray, key);
    const host::WellHeader well =
        parseWellFile(header("Well") + key + "!\n7.5 8.5 -25 0\n9 9 2475 2500\n").value.header(QStringLiteral("W"));
    QVERIFY(well.x == 7.5 && well.y == 8.5);
    QVERIFY(host::isUndefined(well.groundElevation));
    QCOMPARE(well.typeCode, int(host::NoWellType));
}

void TestWellFile::readsTheOldGroundKey()
{
    const auto ground = [](const QByteArray &keys) {
        return parseWellFile(header("Well") + keys + "!\n1 1 0 0\n").value.header({}).groundElevation;
    };
    QVERIFY(ground("Ground Level elevation: 7.5\n") == 7.5f);
    QVERIFY(ground("Ground Level elevation: 7.5\nGround Level elevation [GL]: 8.5\n") == 8.5f);
    QVERIFY(host::isUndefined(ground("Ground Level elevation [GL]: 1e30\n")));
    QVERIFY(host::isUndefined(ground("Ground Level elevation [GL]: nan\n")));
}

void TestWellFile::elevationIsDepthMinusZ()
{
    const WellFile file = parseWellFile(header("Well") + "!\n1 1 75 100\n1 1 175 200\n").value;
    QVERIFY(file.header({}).kbElevation == 25);
    QVERIFY(file.header({}).totalDepth == 200);
}

void TestWellFile::readsTypes_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("code");
    QTest::newRow("None") << QByteArray("None") << 0;
    QTest::newRow("Oil") << QByteArray("Oil") << 1;
    QTest::newRow("Gas") << QByteArray("Gas") << 2;
    QTest::newRow("OilGas") << QByteArray("OilGas") << 3;
    QTest::newRow("Dry") << QByteArray("Dry") << 4;
    QTest::newRow("number") << QByteArray("17") << 17;
    QTest::newRow("unknown") << QByteArray("Water") << 0;
}

void TestWellFile::readsTypes()
{
    QFETCH(QByteArray, text);
    QFETCH(int, code);
    WellFile file = parseWellFile(header("Well") + "Well type: " + text + "\n!\n1 1 0 0\n").value;
    QCOMPARE(file.header({}).typeCode, code);
    WellProperties properties = file.properties({});
    properties.typeCode = code;
    applyProperties(&file, properties);
    QCOMPARE(file.keys.value("Well type"), text);
}

void TestWellFile::readsRowsHoweverSeparated()
{
    QCOMPARE(text(parseWellFile(header("Well") + "!\n1\t2\t3\t4\n  5 6  7\t\t8  extra\n\n \t\n1e3,2,3,4\r\n9 9 9 9")
                      .value.track),
             QStringLiteral("1 2 3 4 | 5 6 7 8 | 1000 2 3 4 | 9 9 9 9"));
}

void TestWellFile::stopsAtARowThatIsNone()
{
    for (const char *row : {"1 2 3", "rubbish", "1 2 3 nan", "1 2 3 x", "1e999 2 3 4", "!"}) {
        const host::Outcome<WellFile> file =
            parseWellFile(header("Well") + "!\n1 1 0 0\n2 2 100 100\n" + row + "\n3 3 300 300\n");
        QVERIFY(file.ok());
        QVERIFY2(file.value.isTrackCut, row);
        QCOMPARE(file.value.track.size(), 2);
    }
    QVERIFY(!parseWellFile(wellFile()).value.isTrackCut);
}

void TestWellFile::refusesAFileWithoutATrack()
{
    for (const QByteArray &body :
         {QByteArray(), QByteArray("A: 1\n"), QByteArray("A: 1\n!\n"), QByteArray("!\nrubbish\n")}) {
        const host::Outcome<WellFile> file = parseWellFile(header("Well") + body);
        QVERIFY(!file.ok());
        QVERIFY(file.error.contains(QStringLiteral("track")));
    }
    QVERIFY(!parseWellFile(header("Well Log") + "!\n1 1 0 0\n").ok());
    QVERIFY(!parseWellFile("1 1 0 0\n").ok());
}

void TestWellFile::readsTrackFilesWithAndWithoutHeader()
{
    const QByteArray rows = "1 2 -25 0\n3 4 75 100\n";
    const QString expected = QStringLiteral("1 2 -25 0 | 3 4 75 100");
    QCOMPARE(text(parseTrackFile(rows)), expected);
    QCOMPARE(text(parseTrackFile(header("Well Track") + rows)), expected);
    bool isCut = false;
    QCOMPARE(text(parseTrackFile(rows + "5 6 7\n", &isCut)), expected);
    QVERIFY(isCut);
    parseTrackFile(rows, &isCut);
    QVERIFY(!isCut);
    for (const QByteArray &bytes :
         {QByteArray(), QByteArray("rubbish"), QByteArray("dTect V6.6\nWell Track\n"), header("Well Track")})
        QVERIFY(parseTrackFile(bytes).isEmpty());
}

void TestWellFile::writesBackWhatItRead()
{
    const QByteArray bytes = header("Well")
        + "Depth-Unit: Meter\n odd  :  kept \nstrange\nSurface coordinate: (504000.25,6005000.5)\n!\n"
          "504000.25\t6005000.5\t-30\t0\n504030.25\t6005040.5\t556.6025390625\t600\n0.1\t1000000000000\t-0."
          "0000001\t123456789.125\n";
    QCOMPARE(withoutDate(wellFileBytes(parseWellFile(bytes).value)), withoutDate(bytes));
}

void TestWellFile::makesAVerticalWell()
{
    QCOMPARE(withoutDate(wellFileBytes(makeWellFile(properties("Probe 1")))),
             QByteArray("!\nDepth-Unit: Meter\nUnique Well ID: Probe 1\nSurface coordinate: (502500,6003000)\n"
                        "Ground Level elevation [GL]: 12.5\nWell type: Gas\n!\n"
                        "502500\t6003000\t-25\t0\n502500\t6003000\t2475\t2500\n"));
    WellProperties plain;
    plain.name = QStringLiteral("P");
    plain.totalDepth = 10;
    QCOMPARE(withoutDate(wellFileBytes(makeWellFile(plain))),
             QByteArray("!\nDepth-Unit: Meter\nUnique Well ID: P\n!\n0\t0\t0\t0\n0\t0\t10\t10\n"));
}

void TestWellFile::makesAWellWithoutDepth()
{
    for (const double depth : {0.0, -5.0}) {
        WellProperties well = properties("P");
        well.totalDepth = depth;
        const WellFile file = makeWellFile(well);
        QCOMPARE(text(file.track), QStringLiteral("502500 6.003e+06 -25 0"));
        QVERIFY(file.header({}).totalDepth == 0);
        QVERIFY(file.header({}).kbElevation == 25);
    }
}

void TestWellFile::changesNothingWithoutAChange()
{
    for (const QByteArray &bytes :
         {wellFileBytes(deviated()), wellFile(),
          header("Well") + "Ground Level elevation: 7\n!\n0.1 0.2 -1234.1 0\n0.3 0.7 765.9 2000.05\n",
          header("Well") + "Surface coordinate:  (1.50,2.0)\nWell type: Water\n!\n1 1 -25.1 0.05\n"}) {
        WellFile file = parseWellFile(bytes).value;
        const QByteArray before = withoutDate(wellFileBytes(file));
        applyProperties(&file, file.properties(QStringLiteral("W")));
        QCOMPARE(withoutDate(wellFileBytes(file)), before);
    }
}

void TestWellFile::movesTheTrack()
{
    WellFile file = deviated();
    applyProperties(&file, changed(file, &WellProperties::x, 1100));
    applyProperties(&file, changed(file, &WellProperties::y, 1900));
    QCOMPARE(text(file.track),
             QStringLiteral("1100 1900 -30 0 | 1100 1900 470 500 | 1160 1980 643 700 | 1220 2060 816 900"));
    QCOMPARE(file.keys.toBytes(),
             QByteArray("Depth-Unit: Meter\nOwn key:  kept \nSurface coordinate: (1100,1900)\n"
                        "Ground Level elevation [GL]: 12.5\nWell type: Oil\n"));
}

void TestWellFile::movesToTheOriginWithoutACoordinate()
{
    WellFile file = parseWellFile(wellFile()).value;
    WellProperties moved = file.properties({});
    moved.x = moved.y = 0;
    applyProperties(&file, moved);
    QVERIFY(!file.keys.contains("Surface coordinate"));
    QVERIFY(file.header({}).x == 0 && file.header({}).y == 0);
}

void TestWellFile::liftsTheTrack()
{
    WellFile file = deviated();
    applyProperties(&file, changed(file, &WellProperties::kbElevation, 40));
    QCOMPARE(text(file.track),
             QStringLiteral("1000 2000 -40 0 | 1000 2000 460 500 | 1060 2080 633 700 | 1120 2160 806 900"));
    QVERIFY(file.header({}).kbElevation == 40);
    QVERIFY(file.keys.toBytes() == deviated().keys.toBytes());
}

void TestWellFile::liftsByTheExactAmount()
{
    WellFile file = parseWellFile(header("Well") + "!\n1 1 -1234.1 0\n1 1 765.9 2000\n").value;
    applyProperties(&file, changed(file, &WellProperties::kbElevation, 1234.1));
    QVERIFY(file.track.first().z == -1234.1);
    applyProperties(&file, changed(file, &WellProperties::kbElevation, 1234.2));
    QVERIFY(qAbs(file.track.first().z + 1234.2) < 1e-9);
}

void TestWellFile::changesTheGroundElevation()
{
    WellFile file = deviated();
    applyProperties(&file, changed(file, &WellProperties::groundElevation, 20.25));
    QCOMPARE(file.keys.value("Ground Level elevation [GL]"), QByteArray("20.25"));
    QCOMPARE(text(file.track), text(deviated().track));
    applyProperties(&file, changed(file, &WellProperties::groundElevation, host::undefinedValue));
    QVERIFY(!file.keys.contains("Ground Level elevation [GL]"));
    WellFile old = parseWellFile(header("Well") + "Ground Level elevation: 7\n!\n1 1 0 0\n").value;
    applyProperties(&old, changed(old, &WellProperties::groundElevation, host::undefinedValue));
    QVERIFY(host::isUndefined(old.header({}).groundElevation));
}

void TestWellFile::extendsAlongTheLastDirection()
{
    WellFile file = deviated();
    applyProperties(&file, changed(file, &WellProperties::totalDepth, 1100));
    // The points that are there stay; one more is added.
    QCOMPARE(text(file.track),
             QStringLiteral("1000 2000 -30 0 | 1000 2000 470 500 | 1060 2080 643 700 | 1120 2160 816 900 | "
                            "1180 2240 989 1100"));
    QVERIFY(file.header({}).totalDepth == 1100);
    WellFile single = parseWellFile(header("Well") + "!\n5 6 -25 0\n").value;
    applyProperties(&single, changed(single, &WellProperties::totalDepth, 100));
    QCOMPARE(text(single.track), QStringLiteral("5 6 -25 0 | 5 6 75 100"));
}

void TestWellFile::cutsWithinTheTrack()
{
    WellFile file = deviated();
    applyProperties(&file, changed(file, &WellProperties::totalDepth, 600));
    QCOMPARE(text(file.track), QStringLiteral("1000 2000 -30 0 | 1000 2000 470 500 | 1030 2040 556.5 600"));
}

void TestWellFile::countsThePointsBelowADepth()
{
    const WellFile file = deviated(); // 0, 500, 700, 900
    QCOMPARE(pointsBelow(file, 900), 0);
    QCOMPARE(pointsBelow(file, 899.5), 1);
    QCOMPARE(pointsBelow(file, 500), 2);
    QCOMPARE(pointsBelow(file, 499), 3);
    QCOMPARE(pointsBelow(file, -1), 4);
}

void TestWellFile::cutsAtAPoint()
{
    WellFile file = deviated();
    applyProperties(&file, changed(file, &WellProperties::totalDepth, 700));
    QCOMPARE(text(file.track), QStringLiteral("1000 2000 -30 0 | 1000 2000 470 500 | 1060 2080 643 700"));
}

void TestWellFile::cutsAboveTheFirstPoint()
{
    WellFile file = deviated();
    applyProperties(&file, changed(file, &WellProperties::totalDepth, -10));
    QCOMPARE(text(file.track), QStringLiteral("1000 2000 -30 0"));
}

void TestWellFile::extendsATrackThatEndsTwiceAtOneDepth()
{
    WellFile file = parseWellFile(header("Well") + "!\n5 6 -25 0\n5 6 75 100\n5 6 75 100\n").value;
    applyProperties(&file, changed(file, &WellProperties::totalDepth, 150));
    QVERIFY(file.header({}).totalDepth == 150);
    QVERIFY(file.track.last().z == 125);
}

void TestWellFile::changesTheType()
{
    WellFile file = deviated();
    WellProperties well = file.properties({});
    well.typeCode = host::DryWell;
    applyProperties(&file, well);
    QCOMPARE(file.keys.value("Well type"), QByteArray("Dry"));
    well.typeCode = host::NoWellType;
    applyProperties(&file, well);
    QVERIFY(!file.keys.contains("Well type"));
}

void TestWellFile::keepsAnUnknownType()
{
    WellFile file = parseWellFile(header("Well") + "Well type: Water\n!\n1 1 0 0\n").value;
    applyProperties(&file, changed(file, &WellProperties::x, 2));
    QCOMPARE(file.keys.value("Well type"), QByteArray("Water"));
}

void TestWellFile::judgesProperties()
{
    QVERIFY(wellPropertiesProblem(properties("P")).isEmpty());
    WellProperties noGround = properties("P");
    noGround.groundElevation = host::undefinedValue;
    QVERIFY(wellPropertiesProblem(noGround).isEmpty());
    for (double WellProperties::*field : {&WellProperties::x, &WellProperties::y, &WellProperties::kbElevation,
                                          &WellProperties::groundElevation, &WellProperties::totalDepth}) {
        for (const double value :
             {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(), -1e300}) {
            WellProperties bad = properties("P");
            bad.*field = value;
            QVERIFY(wellPropertiesProblem(bad).contains(QStringLiteral("\"P\"")));
        }
    }
}

LORVA_TEST_MAIN(TestWellFile)
#include "tst_wellfile.moc"
