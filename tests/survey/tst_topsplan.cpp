#include "support/files.h"
#include "survey/topsreport.h"
#include "topsfixture.h"

using namespace survey;

namespace {

/// "A-1>A 1 +2 ~1/12.5 =3 -4": the name in the file, the well, added, moved by at most, unchanged and left out.
QString summary(const TopsPlan &plan, const TopsRow &row)
{
    return QStringLiteral("%1>%2 +%3 ~%4/%5 =%6 -%7")
        .arg(row.names.join(u'/'), row.well < 0 ? QStringLiteral("?") : plan.wells().at(row.well).name)
        .arg(row.merge.added)
        .arg(row.merge.moved)
        .arg(row.merge.furthestM)
        .arg(row.merge.unchanged)
        .arg(row.leftOut());
}

QString summary(const TopsPlan &plan)
{
    QStringList texts;
    for (const TopsRow &row : plan.rows())
        texts.append(summary(plan, row));
    return texts.join(u'|');
}

QStringList remarks(const TopsPlan &plan)
{
    QStringList texts;
    for (const TopsRemark &remark : plan.remarks())
        texts.append(remarkText(remark));
    return texts;
}

int total(const QHash<QString, int> &reads)
{
    int sum = 0;
    for (const int count : reads)
        sum += count;
    return sum;
}

} // namespace

class TestTopsPlan : public QObject
{
    Q_OBJECT

private slots:
    void wellsAreFound_data();
    void wellsAreFound();
    void notesTellHowAWellWasFound();
    void filesWithoutWellsTakeTheirName_data();
    void filesWithoutWellsTakeTheirName();
    void whatTopsDoToAWell();
    void whatIsNotUnderstoodIsNamed();
    void severalFilesShareAWell();
    void twoRowsOfOneWellAreAProblem();
    void theUnitOfFilesThatDoNotTellIt();
    void feetKeepTheirDigits();
    void theUserChoosesWells();
    void damagedWellsAreTold();
    void wellsAreReadOnce();
    void manyWellsAreNotComparedWithEachOther();
    void realFiles();
};

void TestTopsPlan::wellsAreFound_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QString>("rows");
    const auto row = [](const char *name, const char *lines, const char *rows) {
        QTest::newRow(name) << QByteArray("Well,Name,MD\n") + lines << QString::fromLatin1(rows);
    };
    row("exact", "15/9-F-1,A,1\n", "15/9-F-1>15/9-F-1 +1 ~0/0 =0 -0");
    row("case, blanks, signs", "15_9 f 1,A,1\n", "15_9 f 1>15/9-F-1 +1 ~0/0 =0 -0");
    row("identifier", "42383347460000,A,1\n", "42383347460000>WFMP +1 ~0/0 =0 -0");
    row("none", "Elsewhere,A,1\n", "Elsewhere>? +0 ~0/0 =0 -0");
    row("several", "b2,A,1\n", "b2>? +0 ~0/0 =0 -0");
    row("exact among several", "B 2,A,1\n", "B 2>B 2 +1 ~0/0 =0 -0");
    row("two wells of one name", "Twin,A,1\n", "Twin>? +0 ~0/0 =0 -0");
    row("spellings share a row", "15/9-F-1,A,1\nother,C,1\n15/9-f-1,B,2\n15/9-F-1,D,3\n",
        "15/9-F-1/15/9-f-1>15/9-F-1 +3 ~0/0 =0 -0|other>? +0 ~0/0 =0 -0");
    row("spellings of nothing too", "X-1,A,1\nx 1,B,2\nX-1,C,1\n", "X-1/x 1>? +0 ~0/0 =0 -0");
    row("identifier and name", "WFMP,A,1\n42-383-34746-0000,B,2\n", "WFMP/42-383-34746-0000>WFMP +2 ~0/0 =0 -0");
    row("no well", ",A,1\n-,A,1\n", "");
    row("nothing that can be read", "B 2,A,\nB 2,,7\n15/9-F-1,A,1\n",
        "15/9-F-1>15/9-F-1 +1 ~0/0 =0 -0|B 2>B 2 +0 ~0/0 =0 -2");
}

void TestTopsPlan::wellsAreFound()
{
    QFETCH(QByteArray, file);
    QFETCH(QString, rows);
    FakeWells wells;
    for (const char *name : {"15/9-F-1", "B 2", "B-2", "Twin", "Twin", "-"})
        wells.add(QString::fromLatin1(name));
    wells.add(QStringLiteral("WFMP"), QStringLiteral("42-383-34746-0000"));
    TopsPlan plan = wells.plan();
    plan.add({input(QStringLiteral("t.csv"), file)});
    QCOMPARE(summary(plan), rows);
    for (const TopsRow &row : plan.rows())
        QCOMPARE(row.files, QStringList{QStringLiteral("t.csv")});
    QCOMPARE(plan.firstProblem(), QString());
}

void TestTopsPlan::notesTellHowAWellWasFound()
{
    FakeWells wells;
    for (const char *name : {"A", "B 2", "B-2", "C-3"})
        wells.add(QString::fromLatin1(name));
    wells.add(QStringLiteral("U"), QStringLiteral("UWI-7"));
    TopsPlan plan = wells.plan();
    plan.add({input(QStringLiteral("t.csv"), "Well,Name,MD\nA,T,1\na ,T,1\nb2,T,1\nc3,T,1\nuwi7,T,1\nno,T,1\n")});
    QStringList notes;
    for (const TopsRow &row : plan.rows())
        notes.append(topsNotes(row).join(u' '));
    QCOMPARE(notes,
             (QStringList{QStringLiteral("Also called a."), QStringLiteral("Several wells may be meant: B 2, B-2."),
                          QStringLiteral("The name is written in another way."),
                          QStringLiteral("Found by the unique well identifier."),
                          QStringLiteral("The survey has no well of this name.")}));
}

void TestTopsPlan::filesWithoutWellsTakeTheirName_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<int>("well");
    const auto row = [](const char *path, int well) { QTest::newRow(path) << QString::fromLatin1(path) << well; };
    row("/in/Aldra-1.txt", 0);
    row("/in/Aldra-1_tops.txt", 0);
    row("aldra 1 Markers.csv", 0);
    row("tops_42303347740000.csv", 1);
    row("15_9_19_SR_Formations.csv", 2);
    row("15_9_19_SR_stops.csv", -1);
    row("tops.csv", -1);
    row("Welltops.txt", -1);
    row("Picks", 3); // a well may be called so
}

void TestTopsPlan::filesWithoutWellsTakeTheirName()
{
    QFETCH(QString, path);
    QFETCH(int, well);
    FakeWells wells;
    wells.add(QStringLiteral("Aldra-1"));
    wells.add(QStringLiteral("P"), QStringLiteral("42-303-34774-0000"));
    wells.add(QStringLiteral("15/9-19 SR"));
    wells.add(QStringLiteral("Picks"));
    TopsPlan plan = wells.plan();
    plan.add({input(path, "A,1\nB,2\nC,\n")});
    QCOMPARE(plan.rows().size(), 1);
    const TopsRow &row = plan.rows().first();
    QCOMPARE(row.well, well);
    QVERIFY(row.isWholeFile);
    QCOMPARE(row.names, QStringList{path.section(u'/', -1)});
    QCOMPARE(row.tops.size(), 2);
    QCOMPARE(row.leftOut(), 1);
    if (well < 0)
        QCOMPARE(topsNotes(row).first(), QStringLiteral("The file does not say of which well it is."));
}

void TestTopsPlan::whatTopsDoToAWell()
{
    FakeWells wells;
    wells.add(QStringLiteral("A"), {},
              {{QStringLiteral("Same"), 100, Qt::red},
               {QStringLiteral("Up"), 200, Qt::red},
               {QStringLiteral("Down"), 300, Qt::blue},
               {QStringLiteral("Other"), 400, Qt::blue}},
              1000);
    TopsPlan plan = wells.plan();
    plan.add(
        {input(QStringLiteral("t.csv"),
               "Well,Name,MD\nA,Same,100\nA,Same,100\nA,Up,187.5\nA,Down,303\nA,New,500\nA,New,600\nA,Deep,1000.5\n"
               "A,Gap,\nA,Null,-9999\nA,-9999,700\n")});
    QCOMPARE(summary(plan), QStringLiteral("A>A +2 ~2/12.5 =1 -4"));
    QCOMPARE(topsNotes(plan.rows().first()),
             (QStringList{QStringLiteral("Below the total depth: Deep."),
                          QStringLiteral("Without a name or a depth: 3 lines."),
                          QStringLiteral("At several depths, so the further ones get a number: New.")}));
    QCOMPARE(plan.rowsToWrite(), QVector<int>{0});
    QStringList markers;
    for (const host::Marker &marker : plan.rows().first().merge.markers)
        markers.append(QStringLiteral("%1@%2").arg(marker.name).arg(static_cast<double>(marker.depth)));
    QCOMPARE(markers.join(u' '), QStringLiteral("Same@100 Up@187.5 Down@303 Other@400 New@500 New_2@600"));

    // Where the tops stand already there is nothing to write.
    TopsPlan again = wells.plan();
    again.add({input(QStringLiteral("t.csv"), "Well,Name,MD\nA,Same,100\nA,Other,400\n")});
    QCOMPARE(summary(again), QStringLiteral("A>A +0 ~0/0 =2 -0"));
    QVERIFY(again.rowsToWrite().isEmpty());
}

void TestTopsPlan::whatIsNotUnderstoodIsNamed()
{
    FakeWells wells;
    wells.add(QStringLiteral("A"));
    TopsPlan plan = wells.plan();
    plan.add({input(QStringLiteral("/in/t.csv"),
                    "# by hand\nWell;Name;MD (m)\n\nA;Top;1\nA;;2\r\nA;Gap; \n;Top;3\nA;Text;about 5\nA;Both;1,234\n"
                    "A;Up;-5\nA;-999.25;8\n")});
    QCOMPARE(remarks(plan),
             (QStringList{QStringLiteral("t.csv, line 5, no name: A;;2"),
                          QStringLiteral("t.csv, line 6, no depth: A;Gap; "),
                          QStringLiteral("t.csv, line 7, no well: ;Top;3"),
                          QStringLiteral("t.csv, line 8, a depth that is no number: A;Text;about 5"),
                          QStringLiteral("t.csv, line 9, a depth that is no clear number: A;Both;1,234"),
                          QStringLiteral("t.csv, line 10, a depth above the kelly bushing: A;Up;-5"),
                          QStringLiteral("t.csv, line 11, no name: A;-999.25;8")}));
    QCOMPARE(plan.rows().size(), 1);
    QCOMPARE(plan.rows().first().leftOut(), 6); // the line without a well is nobody's
    QCOMPARE(plan.remarks().first().file, QStringLiteral("/in/t.csv"));
    QCOMPARE(remarkText({QStringLiteral("x"), 1, QStringLiteral("no name"), QString(201, u'y')}),
             QStringLiteral("x, line 1, no name: ") + QString(200, u'y') + QStringLiteral("…"));
    QCOMPARE(remarkText({QStringLiteral("x"), 1, QStringLiteral("no name"), QString(200, u'y')}),
             QStringLiteral("x, line 1, no name: ") + QString(200, u'y'));
}

void TestTopsPlan::severalFilesShareAWell()
{
    FakeWells wells;
    wells.add(QStringLiteral("A-1"));
    TopsPlan plan = wells.plan();
    const TopsInput first = input(QStringLiteral("1.csv"), "Well,Name,MD (m)\nA-1,Top,304.8\nX,Top,1\n");
    const TopsInput second = input(QStringLiteral("2.csv"), "Well,Name,MD (ft)\na 1,Top,1000\na 1,Base,2000\n");
    plan.add({first, second, first});
    QCOMPARE(summary(plan), QStringLiteral("A-1/a 1>A-1 +2 ~0/0 =0 -0|X>? +0 ~0/0 =0 -0")); // the depth is the same
    QCOMPARE(plan.rows().first().files, (QStringList{QStringLiteral("1.csv"), QStringLiteral("2.csv")}));
    QCOMPARE(plan.rows().first().merge.markers.at(1).depth, 609.6f);
    QVERIFY(!plan.isUnitOpen());
    plan.add({first});
    QCOMPARE(plan.rows().first().tops.size(), 3);
}

void TestTopsPlan::twoRowsOfOneWellAreAProblem()
{
    FakeWells wells;
    wells.add(QStringLiteral("A"));
    wells.add(QStringLiteral("B"));
    TopsPlan plan = wells.plan();
    plan.add({input(QStringLiteral("t.csv"), "Well,Name,MD\nA,Top,1\nA ST,Top,2\nB,Top,3\nC,Gap,\n")});
    QCOMPARE(plan.firstProblem(), QString());
    plan.setWell(1, 0);
    const QString problem = QStringLiteral("\"A\" and \"A ST\" go into the same well, \"A\": leave one of them out.");
    QCOMPARE(plan.firstProblem(), problem);
    QCOMPARE(plan.rows().at(0).problem, problem);
    QCOMPARE(plan.rows().at(1).problem, problem);
    QCOMPARE(topsNotes(plan.rows().at(1)).first(), problem);
    QVERIFY(plan.rows().at(2).problem.isEmpty());
    plan.setWell(0, -1);
    QCOMPARE(plan.firstProblem(), QString());
    plan.setWell(3, 0); // without a top it is in nobody's way
    QCOMPARE(plan.firstProblem(), QString());
    plan.setWritten(1, QString());
    plan.setWell(0, 0); // behind what was written
    QCOMPARE(plan.firstProblem(), QString());
    QCOMPARE(summary(plan, plan.rows().at(0)), QStringLiteral("A>A +0 ~1/1 =0 -0"));
}

void TestTopsPlan::theUnitOfFilesThatDoNotTellIt()
{
    FakeWells wells;
    wells.add(QStringLiteral("A"), {}, {{QStringLiteral("Top"), 304.8f, Qt::red}});
    TopsPlan plan = wells.plan();
    plan.add({input(QStringLiteral("m.csv"), "Well,Name,MD (m)\nA,Base,400\n")});
    QVERIFY(!plan.isUnitOpen());
    plan.add({input(QStringLiteral("t.csv"), "Well,Name,MD\nA,Top,1000\n")});
    QVERIFY(plan.isUnitOpen());
    QCOMPARE(plan.unit(), DepthUnit::Metre);
    QCOMPARE(summary(plan), QStringLiteral("A>A +1 ~1/695.2 =0 -0"));
    plan.setUnit(DepthUnit::Foot);
    QCOMPARE(plan.unit(), DepthUnit::Foot);
    QCOMPARE(summary(plan), QStringLiteral("A>A +1 ~0/0 =1 -0"));
    plan.add({input(QStringLiteral("n.csv"), "Well,Name,MD (m)\nA,Other,500\n")});
    QVERIFY(plan.isUnitOpen());
    TopsPlan feet = wells.plan(DepthUnit::Foot);
    feet.add({input(QStringLiteral("t.csv"), "Well,Name,MD\nA,Top,1000\n")});
    QCOMPARE(summary(feet), QStringLiteral("A>A +0 ~0/0 =1 -0"));
}

// Half of all depths with a decimal would be another float if they went through metres of double precision.
void TestTopsPlan::feetKeepTheirDigits()
{
    QByteArray table = "Well,Name,MD\n";
    FakeWells wells;
    for (int i = 0; i < 300; ++i) {
        const double feet = 1000 + i / 10.0;
        const QString name = QStringLiteral("W%1").arg(i);
        wells.add(name, {}, {{QStringLiteral("Top"), host::feetToMetres(static_cast<float>(feet)), Qt::red}},
                  feet * host::metresPerFoot); // the marker stands at the end
        table += name.toUtf8() + ",Top," + QByteArray::number(feet) + '\n';
    }
    TopsPlan plan = wells.plan(DepthUnit::Foot);
    plan.add({input(QStringLiteral("t.csv"), table)});
    for (const TopsRow &row : plan.rows())
        QVERIFY2(row.merge.unchanged == 1, qPrintable(summary(plan, row)));
    // Of a file in the other unit too, as near as it gets.
    TopsPlan metres = wells.plan(DepthUnit::Foot);
    metres.add({input(QStringLiteral("t.csv"), "Well,Name,MD (m)\nW0,Top,304.8\nW1,Top,304.83048\n")});
    for (const TopsRow &row : metres.rows())
        QVERIFY2(row.merge.unchanged == 1, qPrintable(summary(metres, row)));
}

void TestTopsPlan::theUserChoosesWells()
{
    FakeWells wells;
    wells.add(QStringLiteral("A"), {}, {{QStringLiteral("Top"), 5, Qt::red}});
    wells.add(QStringLiteral("B"));
    TopsPlan plan = wells.plan();
    plan.add({input(QStringLiteral("t.csv"), "Well,Name,MD\nX,Top,1\nX,Deep,5000\n")});
    QCOMPARE(topsNotes(plan.rows().first()), QStringList{QStringLiteral("The survey has no well of this name.")});
    plan.setWell(0, 0);
    QCOMPARE(summary(plan), QStringLiteral("X>A +0 ~1/4 =0 -1"));
    QCOMPARE(topsNotes(plan.rows().first()), QStringList{QStringLiteral("Below the total depth: Deep.")});
    plan.setWell(0, 1);
    QCOMPARE(summary(plan), QStringLiteral("X>B +1 ~0/0 =0 -1"));
    plan.setWell(0, -1);
    QCOMPARE(summary(plan), QStringLiteral("X>? +0 ~0/0 =0 -0"));
    QVERIFY(plan.rowsToWrite().isEmpty());
    // What more is added goes where its name went.
    plan.setWell(0, 1);
    plan.add({input(QStringLiteral("u.csv"), "Well,Name,MD\nX,Base,2\n")});
    QCOMPARE(summary(plan), QStringLiteral("X>B +2 ~0/0 =0 -1"));
}

void TestTopsPlan::damagedWellsAreTold()
{
    FakeWells wells;
    for (const char *name : {"A", "B", "C"})
        wells.add(QString::fromLatin1(name));
    wells.unreadable.insert(wells.key(0), QStringLiteral("No well."));
    wells.badMarkers.insert(wells.key(1), QStringLiteral("No markers."));
    TopsPlan plan = wells.plan();
    plan.add({input(QStringLiteral("t.csv"), "Well,Name,MD\nA,Top,1\nB,Top,1\nC,Top,1\n")});
    QCOMPARE(summary(plan), QStringLiteral("A>A +0 ~0/0 =0 -0|B>B +0 ~0/0 =0 -0|C>C +1 ~0/0 =0 -0"));
    QCOMPARE(topsNotes(plan.rows().at(0)), QStringList{QStringLiteral("No well.")});
    QCOMPARE(topsNotes(plan.rows().at(1)), QStringList{QStringLiteral("No markers.")});
    QCOMPARE(plan.rowsToWrite(), QVector<int>{2});
    QVERIFY(!wells.markerReads.contains(wells.key(0)));
    plan.setWell(0, 2);
    QVERIFY(plan.rows().at(0).error.isEmpty());
}

void TestTopsPlan::wellsAreReadOnce()
{
    FakeWells wells;
    for (const char *name : {"A", "B", "C", "D"})
        wells.add(QString::fromLatin1(name));
    TopsPlan plan = wells.plan();
    plan.add({input(QStringLiteral("1.csv"), "Well,Name,MD\nA,Top,1\nB,Top,1\nA,Base,9\n"),
              input(QStringLiteral("2.csv"), "Well,Name,MD\na,Top,1\nB,Top,2\n")});
    QCOMPARE(total(wells.headReads), 2); // all were found by their names: no other is looked at
    QCOMPARE(total(wells.markerReads), 2);
    plan.setUnit(DepthUnit::Foot);
    plan.setWell(0, -1);
    plan.setWell(0, 0);
    QCOMPARE(total(wells.headReads), 2);
    QCOMPARE(total(wells.markerReads), 2);
    plan.setWell(0, 2);
    QCOMPARE(total(wells.headReads), 3);
    plan.add({input(QStringLiteral("3.csv"), "Well,Name,MD\nX,Top,1\nY,Top,1\n")});
    QCOMPARE(total(wells.headReads), 4); // for the identifiers of all, but not their markers
    QCOMPARE(total(wells.markerReads), 3);
    for (const int count : qAsConst(wells.headReads))
        QCOMPARE(count, 1);
    for (const int count : qAsConst(wells.markerReads))
        QCOMPARE(count, 1);
}

// A walk over all wells, rows or files for each of them would be a thousand million steps.
void TestTopsPlan::manyWellsAreNotComparedWithEachOther()
{
    constexpr int count = 30000;
    FakeWells wells;
    QVector<TopsInput> files;
    QByteArray table = "Well,Name,MD\n";
    for (int i = 0; i < count; ++i) {
        const QByteArray name = "W-" + QByteArray::number(i);
        wells.add(QString::fromLatin1(name));
        table += "w_" + QByteArray::number(i) + ",Top,5\n" + "none " + QByteArray::number(i) + ",Top,6\n";
        if (i % 10 == 0)
            files.append(input(QString::fromLatin1(name) + QStringLiteral(".txt"), "Base,7\n"));
    }
    files.append(input(QStringLiteral("t.csv"), table));
    TopsPlan plan = wells.plan();
    plan.add(files);
    QCOMPARE(plan.rows().size(), count * 2 + count / 10);
    QCOMPARE(total(wells.headReads), count);
    QCOMPARE(plan.rowsToWrite().size(), count + count / 10);
}

void TestTopsPlan::realFiles()
{
    const QString folder = files::sharedFolder(QStringLiteral("tops"));
    if (folder.isEmpty())
        QSKIP("The folder of real data has no tops.");
    FakeWells wells;
    wells.add(QStringLiteral("University 7-5"), QStringLiteral("42-383-34746-0000"), {}, 3000);
    wells.add(QStringLiteral("15/9-19 SR"), {}, {}, 4500);
    wells.add(QStringLiteral("100"), {}, {}, 5000);
    const auto planOf = [&](const char *name) {
        TopsPlan plan = wells.plan();
        plan.add({readTops(folder + u'/' + QLatin1String(name))});
        return plan;
    };
    TopsPlan permian = planOf("wfmp_tops.csv");
    QVERIFY(permian.isUnitOpen());
    permian.setUnit(DepthUnit::Foot);
    QVERIFY(permian.rows().size() > 1);
    QCOMPARE(summary(permian, permian.rows().at(0)), QStringLiteral("42383347460000>University 7-5 +4 ~0/0 =0 -0"));
    QCOMPARE(permian.rows().at(1).well, -1);

    const TopsPlan volve = planOf("15_9_19_SR_Formations.csv");
    QCOMPARE(summary(volve), QStringLiteral("15_9_19_SR_Formations.csv>15/9-19 SR +2 ~0/0 =0 -1"));
    QCOMPARE(volve.rows().first().merge.outside, QStringList{QStringLiteral("Smith Bank Fm.")});

    const TopsPlan gaps = planOf("FieldData_StratigraphyWithGaps.csv");
    QVERIFY(!gaps.isUnitOpen()); // in the line below the titles
    QVERIFY(gaps.rows().size() > 10);
    QCOMPARE(gaps.rows().first().well, 2);
    QVERIFY(gaps.rows().first().unreadableLines > 0);
    for (const TopsRow &row : gaps.rows())
        for (const TopsLine &top : row.tops)
            QVERIFY2(top.name.startsWith(QLatin1String("Zone")), qPrintable(top.name));
    QCOMPARE(remarks(gaps).first(),
             QStringLiteral("FieldData_StratigraphyWithGaps.csv, line 4, no name: 100,Stratigraphy,3131.056,-9999"));

    const TopsPlan numbers = planOf("athabasca_PICKS.TXT");
    QVERIFY(numbers.rows().isEmpty());
    QCOMPARE(remarks(numbers),
             QStringList{
                 QStringLiteral("athabasca_PICKS.TXT: no column holds names of tops. Its columns are SitID, HorID, "
                                "Pick, Quality. The title of such a column is Formation, Marker, Surface, Zone "
                                "or Name.")});
    QCOMPARE(remarks(planOf("none.csv")).first(),
             QStringLiteral("none.csv: it cannot be read (No such file or directory)."));
}

QTEST_GUILESS_MAIN(TestTopsPlan)
#include "tst_topsplan.moc"
