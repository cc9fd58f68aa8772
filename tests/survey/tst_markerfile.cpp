#include "support/testmain.h"
#include "survey/markerfile.h"
#include "surveyfixture.h"

#include <limits>

using namespace survey;
using namespace survey_fixture;

namespace {

QByteArray markerLines(int number, const QByteArray &name, const QByteArray &depth,
                       const QByteArray &color = "255`0`0")
{
    const QByteArray n = QByteArray::number(number) + '.';
    return n + "Name: " + name + '\n' + n + "Depth along hole: " + depth + '\n' + n + "Strat Level: -1\n" + n
        + "Color: " + color + '\n';
}

QByteArray written(const QVector<host::Marker> &markers, const QByteArray &depthUnit, const QByteArray &old)
{
    return markerFileBytes(markers, depthUnit, old, {0, 1000});
}

QByteArray markerFile(const QByteArray &lines)
{
    return header("Well Markers") + "Depth-Unit: Meter\n" + lines;
}

QVector<host::Marker> readMarkers(const QByteArray &lines, QStringList *problems = nullptr)
{
    return parseMarkerFile(markerFile(lines), {0, 1000}, problems).value;
}

} // namespace

class TestMarkerFile : public QObject
{
    Q_OBJECT

private slots:
    void readsMarkersSortedByDepth();
    void takesTheFirstOfTwoWithOneName();
    void leavesOutWhatLiesOutsideTheTrack();
    void readsColors_data();
    void readsColors();
    void reportsWhatItPassesOver();
    void stopsWhereNumberingEnds();
    void refusesAFileThatIsNone();
    void writesTheHostsLayout();
    void writesSortedWithoutDuplicatesAndRubbish();
    void writesNoMarkerWithoutName();
    void keepsUnknownKeys();
    void keepsTransparencyOfAnUnchangedColor();
    void keepsMarkersOutsideTheTrack();
    void keepsWhatTheNumberingHides();
    void writesANameAnewInPlaceOfTheHiddenOne();
    void whatWasHiddenStaysHidden();
    void readsBackWhatItWrote();
    void writingTwiceGivesTheSameBytes();
    void takesAHundredThousandMarkers();
};

void TestMarkerFile::readsMarkersSortedByDepth()
{
    QStringList problems;
    const QVector<host::Marker> markers =
        readMarkers(markerLines(1, "Deep", "900.5") + markerLines(2, "Top", "+1e1") + markerLines(3, "Same B", "500")
                        + markerLines(4, "Same A", "500"),
                    &problems);
    QCOMPARE(summary(markers), QStringLiteral("Top@10 Same B@500 Same A@500 Deep@900.5"));
    QVERIFY(problems.isEmpty());
    QCOMPARE(readMarkers({}).size(), 0);
}

void TestMarkerFile::takesTheFirstOfTwoWithOneName()
{
    QStringList problems;
    const QVector<host::Marker> markers =
        readMarkers(markerLines(1, "A", "900") + markerLines(2, "B", "50") + markerLines(3, "A", "100"), &problems);
    QCOMPARE(summary(markers), QStringLiteral("B@50 A@900"));
    QCOMPARE(problems, QStringList{QStringLiteral("a second marker named \"A\" is left out")});
}

void TestMarkerFile::leavesOutWhatLiesOutsideTheTrack()
{
    QStringList problems;
    const QVector<host::Marker> markers =
        readMarkers(markerLines(1, "Above", "-0.5") + markerLines(2, "First", "0") + markerLines(3, "Last", "1000")
                        + markerLines(4, "Below", "1000.5"),
                    &problems);
    QCOMPARE(summary(markers), QStringLiteral("First@0 Last@1000"));
    QCOMPARE(problems,
             (QStringList{"the marker \"Above\" at -0.5 lies outside the well's track and is left out",
                          "the marker \"Below\" at 1000.5 lies outside the well's track and is left out"}));
}

void TestMarkerFile::readsColors_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QColor>("color");
    QTest::newRow("three") << QByteArray("10`20`30") << QColor(10, 20, 30);
    QTest::newRow("transparency") << QByteArray("10`20`30`40") << QColor(10, 20, 30);
    QTest::newRow("hex") << QByteArray("#0a141e") << QColor(10, 20, 30);
    QTest::newRow("out of range") << QByteArray("-5`300`30") << QColor(0, 255, 30);
    QTest::newRow("bad hex") << QByteArray("#zz") << QColor(0, 0, 0);
    QTest::newRow("two numbers") << QByteArray("1`2") << QColor(0, 0, 0);
    QTest::newRow("a name") << QByteArray("red") << QColor(0, 0, 0);
    QTest::newRow("empty") << QByteArray() << QColor(0, 0, 0);
    QTest::newRow("octal") << QByteArray("020`0`00377") << QColor(16, 0, 255);
    QTest::newRow("no octal number") << QByteArray("09`10`020") << QColor(0, 10, 16);
}

void TestMarkerFile::readsColors()
{
    QFETCH(QByteArray, text);
    QFETCH(QColor, color);
    const QVector<host::Marker> markers = readMarkers(markerLines(1, "A", "1", text));
    QCOMPARE(markers.size(), 1);
    QVERIFY(markers.first().color.isValid());
    QCOMPARE(markers.first().color, color);
}

void TestMarkerFile::reportsWhatItPassesOver()
{
    for (const char *depth : {"", "x", "1e30", "nan", "inf", "1e400"}) {
        QStringList problems;
        QCOMPARE(summary(readMarkers(markerLines(1, "A", depth) + markerLines(2, "B", "2"), &problems)),
                 QStringLiteral("B@2"));
        QCOMPARE(problems, QStringList{"the marker \"A\" has no depth and is left out"});
    }
    QStringList problems;
    QCOMPARE(summary(readMarkers(markerLines(1, "A", "1") + "what is this\n", &problems)), QStringLiteral("A@1"));
    QCOMPARE(problems, QStringList{"it holds a line that is not understood (\"what is this\")"});
}

void TestMarkerFile::stopsWhereNumberingEnds()
{
    QStringList problems;
    QCOMPARE(summary(readMarkers(markerLines(1, "A", "1") + markerLines(3, "C", "3"), &problems)),
             QStringLiteral("A@1"));
    const QStringList ends{"its markers are read up to number 1, the next one has no name"};
    QCOMPARE(problems, ends);
    problems.clear();
    QCOMPARE(summary(readMarkers(markerLines(1, "A", "1") + markerLines(2, "", "2") + markerLines(3, "C", "3"),
                                 &problems)),
             QStringLiteral("A@1"));
    QCOMPARE(problems, ends);
}

void TestMarkerFile::refusesAFileThatIsNone()
{
    for (const QByteArray &bytes :
         {QByteArray(), QByteArray("rubbish"), wellFile(), QByteArray("dTect V6.6\nWell Markers\n")})
        QVERIFY(!parseMarkerFile(bytes, {0, 1000}).ok());
}

void TestMarkerFile::writesTheHostsLayout()
{
    QCOMPARE(
        withoutDate(written({marker("Top B", 404.25f, QColor(0, 255, 0)), marker("Top A", 401.5f)}, "Meter", {})),
        "!\nDepth-Unit: Meter\n" + markerLines(1, "Top A", "401.5") + markerLines(2, "Top B", "404.25", "0`255`0"));
    QVERIFY(written({}, "Meter", {}).startsWith("dTect V6.6\nWell Markers\n"));
    QCOMPARE(withoutDate(written({}, "Meter", {})), QByteArray("!\nDepth-Unit: Meter\n"));
}

void TestMarkerFile::writesSortedWithoutDuplicatesAndRubbish()
{
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float inf = std::numeric_limits<float>::infinity();
    QCOMPARE(
        withoutDate(written({marker("B", 2), marker("N", nan), marker("A", 1), marker("I", -inf), marker("B", 0.5f),
                             marker("U", host::undefinedValue), marker(" A ", 9), marker("N", 3)},
                            "Meter", {})),
        "!\nDepth-Unit: Meter\n" + markerLines(1, "A", "1") + markerLines(2, "B", "2") + markerLines(3, "N", "3"));
}

void TestMarkerFile::writesNoMarkerWithoutName()
{
    // It would end the numbering and hide the markers behind it.
    QCOMPARE(withoutDate(written({marker("", 1), marker("  ", 2), marker("\r\n", 3), marker("A", 4)}, "Meter", {})),
             "!\nDepth-Unit: Meter\n" + markerLines(1, "A", "4"));
}

void TestMarkerFile::keepsUnknownKeys()
{
    const QByteArray old = header("Well Markers") + "Own key:  kept \nDepth-Unit: Feet\nstrange\n"
        + markerLines(1, "A", "1") + "1.Note:  two#-NL-#lines \n1.Odd\\:key: 1\n"
        + "2.Name: B\n2.Depth along hole: 2\n2.Strat Level: 7\n2.Color: 1`2`3`40\n2.Fixed by:  me \n0.Name: "
          "none\nLast: x\n";
    QCOMPARE(withoutDate(written({marker("C", 0.5f), marker("B", 2, QColor(1, 2, 3)), marker("A", 3)}, "Meter", old)),
             "!\nOwn key:  kept \nDepth-Unit: Feet\nstrange\n0.Name: none\nLast: x\n" + markerLines(1, "C", "0.5")
                 + "2.Name: B\n2.Depth along hole: 2\n2.Strat Level: 7\n2.Color: 1`2`3`40\n2.Fixed by:  me \n"
                 + markerLines(3, "A", "3") + "3.Note:  two#-NL-#lines \n3.Odd\\:key: 1\n");
    // Of two old markers with one name the first gives its keys.
    const QByteArray twice = header("Well Markers") + markerLines(1, "A", "1") + "1.Note: first\n"
        + markerLines(2, "A", "2") + "2.Note: second\n";
    QVERIFY(written({marker("A", 1)}, "Meter", twice).endsWith("1.Note: first\n"));
}

void TestMarkerFile::keepsTransparencyOfAnUnchangedColor()
{
    const QByteArray old = header("Well Markers") + markerLines(1, "A", "1", "10`20`30`40");
    QVERIFY(written({marker("A", 5, QColor(10, 20, 30))}, "Meter", old).endsWith("1.Color: 10`20`30`40\n"));
    QVERIFY(written({marker("A", 5, QColor(10, 20, 31))}, "Meter", old).endsWith("1.Color: 10`20`31\n"));
    QVERIFY(written({marker("B", 5, QColor(10, 20, 30))}, "Meter", old).endsWith("1.Color: 10`20`30\n"));
}

void TestMarkerFile::keepsMarkersOutsideTheTrack()
{
    const QByteArray old = markerFile(markerLines(1, "Above", "-3") + markerLines(2, "A", "100") + "2.Note: x\n"
                                      + markerLines(3, "Deep", "1500.123", "1`2`3`40") + "3.Note:  by hand \n"
                                      + markerLines(4, "Blank", ""));
    QCOMPARE(withoutDate(written({marker("B", 50), marker("A", 100)}, "Meter", old)),
             "!\nDepth-Unit: Meter\n" + markerLines(1, "B", "50") + markerLines(2, "A", "100") + "2.Note: x\n"
                 + markerLines(3, "Above", "-3") + markerLines(4, "Deep", "1500.123", "1`2`3`40")
                 + "4.Note:  by hand \n" + markerLines(5, "Blank", ""));
    // They come back with the depth that hid them.
    QCOMPARE(summary(parseMarkerFile(written({}, "Meter", old), {-10, 2000}).value),
             QStringLiteral("Above@-3 Deep@1500.12"));
}

void TestMarkerFile::keepsWhatTheNumberingHides()
{
    // A missing number stays between those that are shown and those that are not.
    const QByteArray gap = markerFile(markerLines(1, "A", "1") + markerLines(3, "C", "3") + markerLines(7, "D", "4"));
    QCOMPARE(withoutDate(written({marker("A", 1), marker("B", 2)}, "Meter", gap)),
             "!\nDepth-Unit: Meter\n" + markerLines(1, "A", "1") + markerLines(2, "B", "2") + markerLines(4, "C", "3")
                 + markerLines(5, "D", "4"));
    const QByteArray late = markerFile(markerLines(5, "E", "5"));
    QCOMPARE(withoutDate(written({}, "Meter", late)), "!\nDepth-Unit: Meter\n" + markerLines(2, "E", "5"));
    const QByteArray nameless =
        markerFile(markerLines(1, "", "1") + markerLines(2, "B", "2") + "4.Note: of nothing\n");
    QCOMPARE(withoutDate(written({marker("A", 1)}, "Meter", nameless)),
             "!\nDepth-Unit: Meter\n" + markerLines(1, "A", "1") + markerLines(3, "", "1") + markerLines(4, "B", "2")
                 + "5.Note: of nothing\n");
}

void TestMarkerFile::writesANameAnewInPlaceOfTheHiddenOne()
{
    const QByteArray old = markerFile(markerLines(1, "Deep", "1500") + markerLines(2, "A", "100")
                                      + markerLines(3, "A", "200") + markerLines(5, "C", "3"));
    QCOMPARE(withoutDate(written({marker("Deep", 900), marker("A", 100), marker("C", 4)}, "Meter", old)),
             "!\nDepth-Unit: Meter\n" + markerLines(1, "C", "4") + markerLines(2, "A", "100")
                 + markerLines(3, "Deep", "900"));
}

void TestMarkerFile::whatWasHiddenStaysHidden()
{
    const QByteArray old = markerFile(markerLines(1, "A", "100") + markerLines(2, "A", "200")
                                      + markerLines(3, "Deep", "1500") + markerLines(5, "C", "3"));
    QByteArray bytes = old;
    for (int i = 0; i < 3; ++i) {
        bytes = written({marker("New", 5)}, "Meter", bytes);
        QCOMPARE(withoutDate(bytes),
                 "!\nDepth-Unit: Meter\n" + markerLines(1, "New", "5") + markerLines(2, "Deep", "1500")
                     + markerLines(4, "A", "200") + markerLines(5, "C", "3"));
        QCOMPARE(summary(parseMarkerFile(bytes, {0, 1000}).value), QStringLiteral("New@5"));
    }
}

void TestMarkerFile::readsBackWhatItWrote()
{
    const QVector<host::Marker> markers{marker("A: b", 1.1f),
                                        marker("1.Name", 2),
                                        marker("Скважина", 3, QColor(1, 2, 3)),
                                        marker("two\nlines", 4),
                                        marker("!", 5),
                                        marker("#x", 6),
                                        marker("`", 7),
                                        marker("井", 999.9f, QColor(255, 255, 255))};
    QStringList problems;
    const QVector<host::Marker> read = parseMarkerFile(written(markers, "Meter", {}), {0, 1000}, &problems).value;
    QCOMPARE(problems, QStringList());
    QCOMPARE(summary(read), summary(markers));
    for (int i = 0; i < markers.size(); ++i) {
        QVERIFY(read.at(i).depth == markers.at(i).depth);
        QCOMPARE(read.at(i).color, markers.at(i).color);
    }
}

void TestMarkerFile::writingTwiceGivesTheSameBytes()
{
    const QByteArray old = header("Well Markers") + "Depth-Unit: Meter\nX: 1\n" + markerLines(1, "B", "5")
        + "1.Note: n\n" + markerLines(2, "A", "1", "#010203");
    const QByteArray once = written(parseMarkerFile(old, {0, 10}).value, "Meter", old);
    QCOMPARE(withoutDate(written(parseMarkerFile(once, {0, 10}).value, "Meter", once)), withoutDate(once));
}

// Work that grows with the square of the markers would take hours here and run into the test's time limit.
void TestMarkerFile::takesAHundredThousandMarkers()
{
#ifdef __SANITIZE_ADDRESS__
    constexpr int count = 20000;
#else
    constexpr int count = 100000;
#endif
    QVector<host::Marker> markers;
    for (int i = 0; i < count; ++i)
        markers.append({QStringLiteral("M%1").arg(i), static_cast<float>(count - i), QColor(0, 0, 0)});
    const QByteArray bytes = written(markers, "Meter", {});
    QStringList problems;
    const QVector<host::Marker> read = parseMarkerFile(bytes, {0, count}, &problems).value;
    QCOMPARE(read.size(), count);
    QCOMPARE(read.first().name, QStringLiteral("M%1").arg(count - 1));
    QCOMPARE(withoutDate(written(read, "Meter", bytes)), withoutDate(bytes));
    QCOMPARE(parseMarkerFile(bytes, {0, 10}, &problems).value.size(), 10);
    QCOMPARE(problems.size(), count - 10);
}

LORVA_TEST_MAIN(TestMarkerFile)
#include "tst_markerfile.moc"
