#include "support/testmain.h"
#include "survey/objectlist.h"
#include "surveyfixture.h"

using namespace survey;
using namespace survey_fixture;

class TestObjectList : public QObject
{
    Q_OBJECT

private slots:
    void readsEntriesAndFolders();
    void writesBackWhatItRead();
    void keepsUnknownKeysWhenSomethingChanges();
    void givesTheNextNumber();
    void doesNotReuseTheNumberOfTheLastEntry();
    void leavesNoNumberBeyondTheLargest();
    void escapesColonsInNames();
    void passesOverEntriesWithoutNumber();
    void passesOverASecondEntryOfOneNumber();
    void saysWhatIsWrong();
    void everyCutIsToldFromTheWhole();
    void makesTheListOfAFolder();
    void changesNothingForUnknownNumbers();
};

void TestObjectList::readsEntriesAndFolders()
{
    const QByteArray bytes = header("Object Management file")
        + "ID: 100050`7\n!\nWellInfo: 1\nWell Info directory: dGB`Stream\n$Name: WellInfo\n!\n"
          "@100020: Sub folder\n!\n\nProbe\\: 1: 2\n#Comment: x\nWell: dGB`Stream\n$Name: Probe-1.well\n!\n";
    QStringList problems;
    const host::Outcome<ObjectList> list = ObjectList::parse(bytes, &problems);
    QVERIFY(list.ok() && problems.isEmpty() && !list.value.isCut());
    QCOMPARE(list.value.folderKey(), QByteArray("100050"));
    QCOMPARE(list.value.entries().size(), 3);
    const ObjectEntry *well = list.value.entry(2);
    QVERIFY(well);
    QCOMPARE(well->name, QStringLiteral("Probe: 1"));
    QCOMPARE(well->group(), QByteArray("Well"));
    QCOMPARE(well->fileName(), QStringLiteral("Probe-1.well"));
    QVERIFY(list.value.entries().at(1).isFolder);
    QCOMPARE(list.value.entries().at(1).number, 100020);
    QCOMPARE(list.value.entries().at(1).name, QStringLiteral("Sub folder"));
    QVERIFY(!list.value.entry(100020));
}

void TestObjectList::writesBackWhatItRead()
{
    const QByteArray bytes = header("Object Management file")
        + "Own key:  kept \nID: 100050`9\nAnother: 1\n!\nWellInfo: 1\nWell Info directory: dGB`Stream\n$Name: "
          "WellInfo\n!\n"
          "@100020: Sub\n!\n  odd entry  :  2 \nWell: dGB`Stream\n$Name: a.well\nstrange\n#Created.By:  \n\xff: "
          "\x80\n!\n"
          "no number\n!\nnone: x\n!\n";
    const host::Outcome<ObjectList> list = ObjectList::parse(bytes);
    QVERIFY(list.ok());
    QCOMPARE(withoutDate(list.value.toBytes()), withoutDate(bytes));
}

void TestObjectList::keepsUnknownKeysWhenSomethingChanges()
{
    const QByteArray first =
        "Own key:  kept \nID: 100050`3\n!\nWellInfo: 1\nWell Info directory: dGB`Stream\n$Name: WellInfo\n!\n";
    const QByteArray second = "A: 2\nWell: dGB`Stream\n$Name: a.well\n#Mine:  x  \n!\n";
    const QByteArray third = "B: 3\nWell: dGB`Stream\n$Name: b.well\n!\n";
    ObjectList list = ObjectList::parse(header("Object Management file") + first + second + third).value;
    QVERIFY(list.rename(2, QStringLiteral("New: name")));
    QVERIFY(list.remove(3));
    QCOMPARE(withoutDate(list.toBytes()),
             "!\n" + first + "New\\: name: 2\nWell: dGB`Stream\n$Name: a.well\n#Mine:  x  \n!\n");
}

void TestObjectList::givesTheNextNumber()
{
    ObjectList list = ObjectList::parse(wellList({{"A", "a.well"}})).value;
    QCOMPARE(list.append(QStringLiteral("B"), "Well", QStringLiteral("b.well")), 3);
    QCOMPARE(list.append(QStringLiteral("C"), "Well", QStringLiteral("c.well")), 4);
    const ObjectList again = ObjectList::parse(list.toBytes()).value;
    QVERIFY(again.toBytes().contains("ID: 100050`4\n"));
    QCOMPARE(again.entry(4)->name, QStringLiteral("C"));
    QCOMPARE(again.entry(4)->fileName(), QStringLiteral("c.well"));
    QCOMPARE(again.entry(4)->group(), QByteArray("Well"));
    QVERIFY(again.entry(4)->keys.contains("#Created.At"));
}

void TestObjectList::doesNotReuseTheNumberOfTheLastEntry()
{
    ObjectList list = ObjectList::parse(wellList({{"A", "a.well"}, {"B", "b.well"}})).value;
    QVERIFY(list.remove(3));
    list = ObjectList::parse(list.toBytes()).value;
    QCOMPARE(list.append(QStringLiteral("C"), "Well", QStringLiteral("c.well")), 4);
    // A list whose "ID" line does not count is no reason to give a number twice.
    QByteArray bytes = wellList({{"A", "a.well"}, {"B", "b.well"}});
    bytes.replace("ID: 100050`3", "ID: 100050");
    list = ObjectList::parse(bytes).value;
    QCOMPARE(list.append(QStringLiteral("C"), "Well", QStringLiteral("c.well")), 4);
}

void TestObjectList::leavesNoNumberBeyondTheLargest()
{
    QByteArray bytes = wellList({{"A", "a.well"}});
    bytes.replace("A: 2", "A: 999999999");
    ObjectList list = ObjectList::parse(bytes).value;
    QVERIFY(list.entry(999999999));
    QCOMPARE(list.append(QStringLiteral("B"), "Well", QStringLiteral("b.well")), 0);
    for (const char *number : {"A: 2147483647", "A: 99999999999999", "A: -2", "A: 0"}) {
        QByteArray other = wellList({{"A", "a.well"}});
        other.replace("A: 2", number);
        QStringList problems;
        list = ObjectList::parse(other, &problems).value;
        QCOMPARE(problems.size(), 1);
        QCOMPARE(list.append(QStringLiteral("B"), "Well", QStringLiteral("b.well")), 3);
    }
}

void TestObjectList::escapesColonsInNames()
{
    ObjectList list = ObjectList::parse(wellList({})).value;
    for (const char *name : {"a:b", "a: 3", "a\\:b", "x::y:", "Скважина: 1"}) {
        const int number = list.append(QString::fromUtf8(name), "Well", QStringLiteral("f.well"));
        QCOMPARE(ObjectList::parse(list.toBytes()).value.entry(number)->name, QString::fromUtf8(name));
    }
}

void TestObjectList::passesOverEntriesWithoutNumber()
{
    QByteArray bytes = wellList({{"A", "a.well"}, {"B", "b.well"}});
    bytes.replace("A: 2", "A: two");
    QStringList problems;
    const ObjectList list = ObjectList::parse(bytes, &problems).value;
    QCOMPARE(problems.size(), 1);
    QVERIFY2(problems.first().contains(QStringLiteral("A: two")), qPrintable(problems.first()));
    QVERIFY(list.entry(3));
    QCOMPARE(withoutDate(list.toBytes()), withoutDate(bytes));
}

void TestObjectList::passesOverASecondEntryOfOneNumber()
{
    QByteArray bytes = wellList({{"A", "a.well"}, {"B", "b.well"}});
    bytes.replace("B: 3", "B: 2");
    QStringList problems;
    ObjectList list = ObjectList::parse(bytes, &problems).value;
    QCOMPARE(problems.size(), 1);
    QVERIFY2(problems.first().contains(QStringLiteral("B: 2")), qPrintable(problems.first()));
    QCOMPARE(list.entry(2)->name, QStringLiteral("A"));
    QCOMPARE(withoutDate(list.toBytes()), withoutDate(bytes));
}

void TestObjectList::saysWhatIsWrong()
{
    QVERIFY(!ObjectList::parse({}).ok());
    QVERIFY(!ObjectList::parse("rubbish").ok());
    QVERIFY(!ObjectList::parse(header("Well") + "ID: 1\n!\n").ok());
    QVERIFY(
        ObjectList::parse(header("Object Management file") + "x: 1\n!\n").error.contains(QStringLiteral("\"ID\"")));
}

void TestObjectList::everyCutIsToldFromTheWhole()
{
    const QByteArray whole = wellList({{"A", "a.well"}, {"B", "b.well"}});
    QVERIFY(!ObjectList::parse(whole).value.isCut());
    QVERIFY(!ObjectList::parse(whole.left(whole.size() - 1)).value.isCut());
    for (int size = 0; size < whole.size() - 1; ++size) {
        QStringList problems;
        const host::Outcome<ObjectList> list = ObjectList::parse(whole.left(size), &problems);
        // A cut between two entries cannot be seen.
        const bool isBetween = whole.left(size).endsWith("\n!\n") || whole.left(size).endsWith("\n!");
        if (list.ok())
            QVERIFY2(list.value.isCut() || isBetween, whole.left(size).right(30));
        QCOMPARE(list.ok() && list.value.isCut(), !problems.isEmpty());
    }
    const ObjectList cut = ObjectList::parse(whole.left(whole.indexOf("b.well") + 1)).value;
    QVERIFY(cut.entry(2));
    QVERIFY(!cut.entry(3));
}

void TestObjectList::makesTheListOfAFolder()
{
    ObjectList list = ObjectList::forFolder("0", "Survey root", "Survey Info", ".survey");
    list.appendFolder(100050, "WellInfo");
    QCOMPARE(
        withoutDate(list.toBytes()),
        QByteArray(
            "!\nID: 0`1\n!\nSurvey root: 1\nSurvey Info: dGB`Stream\n$Name: .survey\n!\n@100050: WellInfo\n!\n"));
    QVERIFY(ObjectList::parse(list.toBytes()).value.entries().at(1).isFolder);
}

void TestObjectList::changesNothingForUnknownNumbers()
{
    ObjectList list = ObjectList::parse(wellList({{"A", "a.well"}})).value;
    const QByteArray before = withoutDate(list.toBytes());
    QVERIFY(!list.rename(7, QStringLiteral("X")));
    QVERIFY(!list.remove(7));
    QCOMPARE(withoutDate(list.toBytes()), before);
}

LORVA_TEST_MAIN(TestObjectList)
#include "tst_objectlist.moc"
