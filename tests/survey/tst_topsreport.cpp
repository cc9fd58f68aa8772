#include "survey/topsreport.h"
#include "topsfixture.h"

#include <QTest>

using namespace survey;

class TestTopsReport : public QObject
{
    Q_OBJECT

private slots:
    void reports();
};

void TestTopsReport::reports()
{
    FakeWells wells;
    for (const char *name : {"A", "B-1", "C", "D", "E"})
        wells.add(QString::fromLatin1(name));
    wells.badMarkers.insert(wells.key(2), QStringLiteral("No markers."));
    TopsPlan plan = wells.plan();
    plan.add({input(QStringLiteral("t.csv"),
                    "Well,Name,MD\nA,Top,1\nA,Base,2\nb1,Top,1\nC,Top,1\nD,Top,1\nX,Top,1\nE,Top,1\nE,,1\n")});
    plan.setWell(5, -1);
    plan.setWritten(0, {});
    plan.setWritten(1, QStringLiteral("Disk full."));
    QCOMPARE(topsSentence(plan, false),
             QStringLiteral("Tops of 1 well were written: 2 new, 0 moved; those of 2 wells could not be written."));
    QCOMPARE(
        topsReport(plan, true, QStringLiteral("/s")),
        QStringLiteral("Tops of 1 well were written: 2 new, 0 moved; those of 2 wells could not be written; then it "
                       "was cancelled.\nSurvey: /s\n"
                       "\nFailed, and as they were before:\n  B-1 (b1 in the file): Disk full.\n  C: No markers.\n"
                       "\nWritten:\n  A: 2 new, 0 moved\n"
                       "\nLeft as they were:\n  D: Cancelled before it was written.\n"
                       "  X: The survey has no well of this name.\n  E: Left out.\n"
                       "\nNot understood:\n  t.csv, line 9, no name: E,,1\n"));
    QCOMPARE(topsNotes(plan.rows().first()), QStringList{QStringLiteral("Written.")});
    TopsPlan nothing = wells.plan();
    QCOMPARE(topsSentence(nothing, false), QStringLiteral("Tops of 0 wells were written: 0 new, 0 moved."));
    QByteArray bad = "Well,Name,MD\nA,Top,1\n";
    for (int i = 0; i < 1002; ++i)
        bad += "A,,1\n";
    nothing.add({input(QStringLiteral("t.csv"), bad)});
    QVERIFY(topsReport(nothing, false, {}).endsWith(QLatin1String("line 1002, no name: A,,1\n  and 2 more\n")));
}

QTEST_GUILESS_MAIN(TestTopsReport)
#include "tst_topsreport.moc"
