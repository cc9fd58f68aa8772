#include "support/files.h"
#include "survey/markeredit.h"
#include "survey/topsfile.h"
#include "survey/wellnames.h"

#include <QSet>
#include <QTest>

using namespace survey;

class TestTopsFile : public QObject
{
    Q_OBJECT

private slots:
    void formats_data();
    void formats();
    void ambiguousCommas();
    void units_data();
    void units();
    void wells();
    void markers();
    void namesThatComeAgain();
    void aTableOfNumbersIsTakenForTops();
    void numbersInTheFile();
    void coloursComeFromNames();
    void problemsOfMarkers();
    void realFiles();
    void naturalOrder();

private:
    static QString summary(const QVector<TopsLine> &lines)
    {
        QStringList texts;
        for (const TopsLine &line : lines)
            texts.append(QStringLiteral("%1@%2").arg(line.name).arg(line.depth));
        return texts.join(u'|');
    }
};

void TestTopsFile::formats_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("tabs, titles") << QByteArray("Name\tDepth\nUpper Sst\t100.5\nLower\t200\n");
    QTest::newRow("commas") << QByteArray("Upper Sst,100.5\nLower,200\n");
    QTest::newRow("depth first") << QByteArray("100.5;Upper Sst\n200;Lower");
    QTest::newRow("blanks") << QByteArray("Upper Sst   100.5\r\nLower 200\r\n");
    QTest::newRow("blanks, depth first") << QByteArray("100.5 Upper Sst\n200 Lower\n");
    QTest::newRow("quotes, old line ends, mark")
        << QByteArray("\xEF\xBB\xBF\"Formation\",\"Top\",\"Bottom\"\r\"Upper Sst\",100.5,150\r\"Lower\",200,210");
    QTest::newRow("titles in another order") << QByteArray("TVD,MD,Zone Name\n90,100.5,Upper Sst\n180,200,Lower\n");
    QTest::newRow("comments and gaps") << QByteArray(
        "# tops\n\nUpper Sst\t100.5\nNothing\t\n\t300\nBelow\t-9999\nLower\t200\n");
    QTest::newRow("titles that are no words") << QByteArray("Name\tMD\t-\nUpper Sst\t100.5\t-\nLower\t200\t-\n");
    QTest::newRow("decimal commas, tabs") << QByteArray("Name\tMD\nUpper Sst\t100,5\nLower\t200,0\n");
    QTest::newRow("decimal commas, semicolons") << QByteArray("Upper Sst;100,5\nLower;200\n");
    QTest::newRow("decimal commas, depth first") << QByteArray("100,5;Upper Sst\n200,0;Lower\n");
}

void TestTopsFile::formats()
{
    QFETCH(QByteArray, bytes);
    const TopsFile file = parseTops(bytes);
    QCOMPARE(summary(file.lines), QStringLiteral("Upper Sst@100.5|Lower@200"));
    QVERIFY(!file.hasWells);
    QCOMPARE(leftOutOf(file, {}), bytes.startsWith('#') ? 3 : 0);
    QVERIFY(!file.unit);
    QCOMPARE(summary(topsOf(file, {QStringLiteral("any")})), summary(file.lines));
}

// A thousand of one country is a one with decimals in another.
void TestTopsFile::ambiguousCommas()
{
    const TopsFile file = parseTops("A\t1,234\nB\t1234,567\nC\t100,25\nD\t0,5\nE\t1,234.5\nF\t1,2,3\nG\t7\n");
    QCOMPARE(summary(file.lines), QStringLiteral("B@1234.57|C@100.25|D@0.5|G@7"));
    QCOMPARE(leftOutOf(file, {}), 3);
}

void TestTopsFile::units_data()
{
    QTest::addColumn<QByteArray>("titles");
    QTest::addColumn<int>("unit"); // -1: not told
    const int metre = static_cast<int>(DepthUnit::Metre);
    const int foot = static_cast<int>(DepthUnit::Foot);
    QTest::newRow("none") << QByteArray("Name;MD") << -1;
    QTest::newRow("another word") << QByteArray("Name;Depth KB") << -1;
    QTest::newRow("brackets") << QByteArray("Name;MD [m]") << metre;
    QTest::newRow("feet") << QByteArray("Name;Depth (ft)") << foot;
    QTest::newRow("written out") << QByteArray("Name;Top, feet") << foot;
    QTest::newRow("joined") << QByteArray("Name;TOPDEPTH_M") << metre;
    QTest::newRow("below") << QByteArray("Name;MD\n;ft") << foot;
    QTest::newRow("below counts") << QByteArray("Name;MD m\n;FEET") << foot;
    QTest::newRow("below another") << QByteArray("Name;MD\n;km") << -1;
}

// A file in feet is not read as metres when its titles say what it is in.
void TestTopsFile::units()
{
    QFETCH(QByteArray, titles);
    QFETCH(int, unit);
    const TopsFile file = parseTops(titles + "\nUpper Sst;100,5\nLower;200\n");
    QCOMPARE(summary(file.lines), QStringLiteral("Upper Sst@100.5|Lower@200"));
    QCOMPARE(file.unit ? static_cast<int>(*file.unit) : -1, unit);
    QCOMPARE(file.leftOut.size(), titles.endsWith("km") ? 1 : 0);
}

void TestTopsFile::wells()
{
    const TopsFile gaps = parseTops("uwi,form,depth\nA,A,100\nA,B,\nA,,5\nB,A,1\nB,B,none\n");
    QCOMPARE(leftOutOf(gaps, {QStringLiteral("a")}), 2);
    QCOMPARE(leftOutOf(gaps, {QStringLiteral("b")}), 1);
    QCOMPARE(leftOutOf(gaps, {QStringLiteral("c")}), 0);
    const TopsFile file = parseTops("uwi,form,depth\n15/9-F 1,A,100\n15/9-f-1,B,200\nother,A,300\n,C,400\n");
    QVERIFY(file.hasWells);
    QCOMPARE(summary(topsOf(file, {QStringLiteral("15/9-F-1")})), QStringLiteral("A@100|B@200"));
    QCOMPARE(summary(topsOf(file, {QStringLiteral("x"), QStringLiteral("OTHER")})), QStringLiteral("A@300"));
    QVERIFY(topsOf(file, {QString()}).isEmpty());
    QCOMPARE(wellsOf(file), QStringList({"15/9-F 1", "other"}));
    QCOMPARE(wellsOf(gaps), QStringList({"A", "B"}));
    QVERIFY(wellsOf(parseTops("A\t100\nB\t200\n")).isEmpty());
}

void TestTopsFile::markers()
{
    const QVector<host::Marker> before{{QStringLiteral("A"), 10, Qt::red}, {QStringLiteral("Old"), 20, Qt::blue}};
    const TopsMerge merge = withTops(
        before,
        {{{}, QStringLiteral("A"), 50}, {{}, QStringLiteral(" New "), 100}, {{}, QStringLiteral("Deep"), 1001}},
        DepthUnit::Foot, 304.8);
    QCOMPARE(merge.added, 1);
    QCOMPARE(merge.moved, 1);
    QCOMPARE(merge.outside, QStringList{QStringLiteral("Deep")});
    QCOMPARE(merge.markers.size(), 3);
    QCOMPARE(merge.markers.at(0).depth, 15.24f);
    QCOMPARE(merge.markers.at(0).color, QColor(Qt::red));
    QCOMPARE(merge.markers.at(1).depth, 20.0f);
    QCOMPARE(merge.markers.at(2).name, QStringLiteral("New"));
    QCOMPARE(merge.markers.at(2).depth, 30.48f);
    const TopsMerge same = withTops(before, {{{}, QStringLiteral("A"), 10}}, DepthUnit::Metre, 1000);
    QCOMPARE(same.added + same.moved, 0);
    QCOMPARE(withTops({}, {{{}, QStringLiteral("End"), 1000}}, DepthUnit::Metre, 1000).added, 1); // at the end itself
}

// A name at several depths: no top is lost, and a second import changes nothing.
void TestTopsFile::namesThatComeAgain()
{
    const auto top = [](const char *name, double depth) { return TopsLine{{}, QString::fromLatin1(name), depth}; };
    const QVector<TopsLine> tops{top("None", 100), top("A", 150), top(" None ", 200),   top("A", 150),
                                 top("None", 300), top("B", 400), top("None_2", 200.5), top("Deep", 2000)};
    const TopsMerge merge = withTops({}, tops, DepthUnit::Metre, 1000);
    QStringList found;
    for (const host::Marker &marker : merge.markers)
        found.append(QStringLiteral("%1@%2").arg(marker.name).arg(double(marker.depth)));
    QCOMPARE(found.join(u'|'), QStringLiteral("None@100|A@150|None_2@200|None_3@300|B@400|None_2_2@200.5"));
    QCOMPARE(merge.added, 6);
    QCOMPARE(merge.repeated, (QStringList{QStringLiteral("None"), QStringLiteral("None_2")}));
    QVERIFY(merge.changesAnything());
    const TopsMerge again = withTops(merge.markers, tops, DepthUnit::Metre, 1000);
    QVERIFY(!again.changesAnything());
    QCOMPARE(again.markers.size(), 6);
    QVERIFY(withTops({}, {top("A", 1)}, DepthUnit::Metre, 10).changesAnything());
    QVERIFY(withTops(merge.markers, {top("A", 1)}, DepthUnit::Metre, 10).changesAnything());
}

// Columns of a log: one name at each of its depths. A walk over all numbers for each of them would take ten minutes.
void TestTopsFile::aTableOfNumbersIsTakenForTops()
{
    constexpr int count = 100000;
    QVector<TopsLine> tops;
    for (int i = 0; i < count; ++i)
        tops.append({{}, QStringLiteral("12.25"), i / 10.0});
    const TopsMerge merge = withTops({}, tops, DepthUnit::Metre, count);
    QCOMPARE(merge.added, count);
    QCOMPARE(merge.markers.at(1).name, QStringLiteral("12.25_2"));
    QCOMPARE(merge.markers.last().name, QStringLiteral("12.25_%1").arg(count));
    QVERIFY(!withTops(merge.markers, tops, DepthUnit::Metre, count).changesAnything());
}

// What stands in the way of a number is found by its depth.
void TestTopsFile::numbersInTheFile()
{
    const auto top = [](const char *name, double depth) { return TopsLine{{}, QString::fromLatin1(name), depth}; };
    const TopsMerge merge = withTops({},
                                     {top("A", 1), top("A_2", 2), top("A_3", 1), top("A", 5), top("A", 2),
                                      top("A", 1), top("A", 6), top("A_4", 7), top("A", 5)},
                                     DepthUnit::Metre, 1000);
    QStringList found;
    for (const host::Marker &marker : merge.markers)
        found.append(QStringLiteral("%1@%2").arg(marker.name).arg(double(marker.depth)));
    QCOMPARE(found.join(u'|'), QStringLiteral("A@1|A_2@2|A_3@1|A_4@5|A_5@6|A_4_2@7"));
    QCOMPARE(merge.added, 6);
    // Of markers with one name the first counts.
    const QVector<host::Marker> twice{{QStringLiteral("A"), 1, Qt::red}, {QStringLiteral("A"), 2, Qt::red}};
    QVERIFY(!withTops(twice, {top("A", 1)}, DepthUnit::Metre, 10).changesAnything());
}

// A top has the same colour in every well, whichever others it has.
void TestTopsFile::coloursComeFromNames()
{
    const QStringList names =
        QStringLiteral("t10.5 t11 t15 t21 t31 e10 e14 mcmurray mannville paleozoic").split(u' ');
    QVector<TopsLine> tops;
    for (const QString &name : names)
        tops.append({{}, name, 100.0 + tops.size()});
    const TopsMerge all = withTops({}, tops, DepthUnit::Metre, 1000);
    const TopsMerge one = withTops({}, {tops.at(7)}, DepthUnit::Metre, 1000);
    QCOMPARE(one.markers.first().color, all.markers.at(7).color);
    QSet<QRgb> colors;
    for (const host::Marker &marker : all.markers) {
        colors.insert(marker.color.rgb());
        QVERIFY(marker.color.value() >= 150 && marker.color.value() <= 200); // legible on white paper
        QVERIFY(marker.color.hsvSaturation() >= 155);
    }
    QCOMPARE(colors.size(), names.size());
}

void TestTopsFile::problemsOfMarkers()
{
    const QVector<host::Marker> markers{{QStringLiteral("A"), 10, Qt::red}, {QStringLiteral("B"), 20, Qt::blue}};
    QCOMPARE(markerNameProblem(markers, 0, QStringLiteral("A")), QString());
    QCOMPARE(markerNameProblem(markers, 0, QStringLiteral(" C ")), QString());
    QCOMPARE(markerNameProblem(markers, 0, QStringLiteral(" B ")),
             QStringLiteral("The well has a marker \"B\" already."));
    QCOMPARE(markerNameProblem(markers, 0, QStringLiteral("  ")), QStringLiteral("A marker needs a name."));
    QCOMPARE(markerDepthProblem(QStringLiteral("1000"), DepthUnit::Foot, 304.8), QString());
    QCOMPARE(markerDepthProblem(QStringLiteral("1000.1"), DepthUnit::Foot, 304.8),
             QStringLiteral("The depth must lie between 0 and the total depth, 1000 ft."));
    QVERIFY(!markerDepthProblem(QStringLiteral("-1"), DepthUnit::Metre, 100).isEmpty());
    QVERIFY(markerDepthProblem(QStringLiteral("1,5"), DepthUnit::Metre, 100).contains(QLatin1String("comma")));
}

void TestTopsFile::realFiles()
{
    const QString folder = files::sharedFolder(QStringLiteral("tops"));
    if (folder.isEmpty())
        QSKIP("The folder of real data has no tops.");
    const auto read = [&folder](const char *name) {
        return parseTops(files::read(folder + u'/' + QLatin1String(name)));
    };
    QVERIFY(summary(read("15_9_19_SR_TOPS_NPD.csv").lines)
                .startsWith(QLatin1String("UTSIRA FM@846|UNDIFFERENTIATED@1080|")));
    QCOMPARE(summary(read("15_9_19_SR_Formations.csv").lines),
             QStringLiteral("Hugin Fm.@4316.5|Skagerrak@4340|Smith Bank Fm.@4579"));
    const TopsFile permian = read("tops_42303347740000.csv");
    QVERIFY(permian.hasWells);
    QVERIFY(
        summary(topsOf(permian, {QStringLiteral("42-303-34774-0000")})).startsWith(QLatin1String("WFMPA@6993.5|")));
    QVERIFY(summary(read("FieldData_StratigraphyWithGaps.csv").lines).startsWith(QLatin1String("ZoneA@3083.6|")));
}

void TestTopsFile::naturalOrder()
{
    QStringList names{QStringLiteral("A-10"),   QStringLiteral("a-2"),     QStringLiteral("B"),
                      QStringLiteral("A-2 ST"), QStringLiteral("15/9-19"), QStringLiteral("A-002"),
                      QStringLiteral("A")};
    std::sort(names.begin(), names.end(), isNaturallyBefore);
    QCOMPARE(names.join(u'|'), QStringLiteral("15/9-19|A|A-002|a-2|A-2 ST|A-10|B"));
    for (const QString &name : names)
        QVERIFY(!isNaturallyBefore(name, name));
}

QTEST_GUILESS_MAIN(TestTopsFile)
#include "tst_topsfile.moc"
