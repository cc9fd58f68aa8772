#include "base/filesystemcalls.h"
#include "support/testmain.h"
#include "surveystorefixture.h"

#include <cerrno>
#include <limits>
#include <unistd.h>

using namespace survey_fixture;
using survey::SurveyStore;
using survey::WellProperties;

namespace {

QSet<QString> asSet(const QStringList &texts)
{
    return QSet<QString>(texts.begin(), texts.end());
}

} // namespace

class TestSurveyStoreWells : public QObject
{
    Q_OBJECT

private slots:
    void addsAWell();
    void addsWellsWithStrangeNames_data();
    void addsWellsWithStrangeNames();
    void givesNamesThatCleanAlikeDistinctFiles();
    void doesNotTakeOverFilesThatWereLeftBehind();
    void refusesNamesTheListCannotHold_data();
    void refusesNamesTheListCannotHold();
    void refusesPropertiesThatAreNoNumbers();
    void takesAVeryLongName();
    void undoesAWellWhoseListCannotBeWritten();
    void changesAWellAndKeepsTheRest();
    void changesAWellWithATrackFile();
    void keepsTheOldWellWhileATrackFileGoes();
    void doesNotChangeAWellWithADamagedTrack();
    void renamesAWell();
    void renamesWellsOnly();
    void removesAWellWithExactlyItsFiles();
    void removesAWellButNotFilesElsewhere();
    void keepsFilesThatAnotherEntryUses();
    void aNewWellHasNothingOfARemovedOneOfItsName_data();
    void aNewWellHasNothingOfARemovedOneOfItsName();
};

void TestSurveyStoreWells::addsAWell()
{
    Survey survey;
    SurveyStore store(survey.path());
    const host::Outcome<QString> key = store.addWell(properties("Probe 2/A"));
    QCOMPARE(key.error, QString());
    QCOMPARE(key.value, QStringLiteral("100050.2"));
    QCOMPARE(survey.names(), (QStringList{".omf", "Probe_2_A.well"}));
    const QByteArray list = survey.read(".omf");
    QVERIFY(list.contains("ID: 100050`2\n"));
    QVERIFY(list.contains("\nProbe 2/A: 2\nWell: dGB`Stream\n$Name: Probe_2_A.well\n#Version: 6.6\n#Created.At: "));
    QVERIFY(list.endsWith("\n!\n"));
    const host::WellHeader well = store.header(key.value).value;
    QCOMPARE(well.name, QStringLiteral("Probe 2/A"));
    QVERIFY(well.x == 502500 && well.y == 6003000 && well.kbElevation == 25 && well.groundElevation == 12.5f);
    QVERIFY(well.totalDepth == 2500);
    QCOMPARE(well.typeCode, int(host::GasWell));
    QVERIFY(survey.read("Probe_2_A.well").contains("\nWell type: Gas\n"));
    QCOMPARE(store.addWell(properties("Next")).value, QStringLiteral("100050.3"));
    QVERIFY(store.removeWell(QStringLiteral("100050.3")).ok());
    QCOMPARE(store.addWell(properties("Next")).value, QStringLiteral("100050.4"));
}

void TestSurveyStoreWells::addsWellsWithStrangeNames_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("file");
    const auto row = [](const char *name, const char *file) {
        QTest::newRow(name) << QString::fromUtf8(name) << QString::fromUtf8(file);
    };
    row("15/9-F-1", "15_9-F-1.well");
    row("Скважина 1", "Скважина_1.well");
    row("井 7", "井_7.well");
    row("بئر 3", "بئر_3.well");
    row("é", "é.well");
    row("😀", "😀.well");
    row("a:b", "a_b.well");
    row("a: 7", "a__7.well");
    row("a\\:b", "a__b.well");
    row("../../x", "_.._.._x.well");
    row("..", "_...well");
    row(".hidden", "_.hidden.well");
    row("15.9", "15.9.well");
    row("A^1", "A_1.well");
    row("$Name", "_Name.well");
    row("#x", "_x.well");
    row("ID", "ID.well");
    row("7", "7.well");
    row("<b>x</b>", "_b_x__b_.well");
    row("`", "_.well");
}

void TestSurveyStoreWells::addsWellsWithStrangeNames()
{
    QFETCH(QString, name);
    QFETCH(QString, file);
    Survey survey;
    SurveyStore store(survey.path());
    const host::Outcome<QString> key = store.addWell(properties(qPrintable(name)));
    QCOMPARE(key.error, QString());
    QVERIFY(store.writeLog(key.value, log("GR", {1})).ok());
    QCOMPARE(survey.names().size(), 3);
    QVERIFY2(survey.names().contains(file), qPrintable(survey.names().join(QLatin1Char(' '))));
    SurveyStore again(survey.path());
    QCOMPARE(names(again.list().value), QStringList{name});
    QCOMPARE(again.header(key.value).value.name, name);
    QCOMPARE(again.logs(key.value).value.size(), 1);
    QVERIFY(again.takeProblems().isEmpty());
    QVERIFY(again.removeWell(key.value).ok());
    QCOMPARE(survey.names(), QStringList{".omf"});
}

void TestSurveyStoreWells::givesNamesThatCleanAlikeDistinctFiles()
{
    Survey survey;
    SurveyStore store(survey.path());
    QStringList keys;
    const QStringList wells{"Probe 2", "Probe/2", "Probe_2", "probe 2", "Probe 2", "Probe_2_2", "Probe 2.well"};
    for (const QString &name : wells)
        keys.append(store.addWell(properties(qPrintable(name))).value);
    QCOMPARE(asSet(keys).size(), wells.size());
    QCOMPARE(survey.names().size(), wells.size() + 1);
    for (int i = 0; i < keys.size(); ++i)
        QVERIFY(store.writeLog(keys.at(i), log("GR", {static_cast<float>(i)})).ok());
    for (int i = 0; i < keys.size(); ++i) {
        QCOMPARE(store.header(keys.at(i)).value.name, wells.at(i));
        QCOMPARE(store.log(keys.at(i), 0).value.values, (QVector<float>{static_cast<float>(i)}));
    }
}

void TestSurveyStoreWells::doesNotTakeOverFilesThatWereLeftBehind()
{
    for (const char *left : {"X.well", "X.wlm", "X.track", "X^1.wll", "X.wlt"}) {
        Survey survey;
        survey.write(left, "left behind");
        SurveyStore store(survey.path());
        const host::Outcome<QString> key = store.addWell(properties("X"));
        QVERIFY(key.ok());
        QVERIFY2(survey.names().contains(QStringLiteral("X_2.well")), left);
        QCOMPARE(survey.read(left), QByteArray("left behind"));
        QVERIFY(store.header(key.value).value.totalDepth == 2500);
        QVERIFY(store.removeWell(key.value).ok());
        QCOMPARE(survey.names(), (QStringList{".omf", left}));
    }
}

void TestSurveyStoreWells::refusesNamesTheListCannotHold_data()
{
    QTest::addColumn<QString>("name");
    for (const char *name :
         {"", " ", "\t", "a\nb", "a\tb", "a\x7f", "@x", " @x", "!", "!x", "  !x", "--", "--x", ":x", "x\\", "x\\ "})
        QTest::newRow(name) << QString::fromUtf8(name);
    QTest::newRow("NUL") << QString(QStringLiteral("a") + QChar(0));
}

void TestSurveyStoreWells::refusesNamesTheListCannotHold()
{
    QFETCH(QString, name);
    OneWell survey;
    const auto before = files::snapshot(survey.path());
    WellProperties well = properties("x");
    well.name = name;
    QVERIFY(!survey.store.addWell(well).ok());
    QVERIFY(!survey.store.renameWell(survey.key, name).ok());
    QCOMPARE(files::snapshot(survey.path()), before);
}

void TestSurveyStoreWells::refusesPropertiesThatAreNoNumbers()
{
    OneWell survey;
    const auto before = files::snapshot(survey.path());
    for (double WellProperties::*field :
         {&WellProperties::x, &WellProperties::kbElevation, &WellProperties::totalDepth}) {
        WellProperties well = properties("New");
        well.*field = std::numeric_limits<double>::quiet_NaN();
        QVERIFY(!survey.store.addWell(well).ok());
        QVERIFY(!survey.store.changeWell(survey.key, well).ok());
    }
    QCOMPARE(files::snapshot(survey.path()), before);
}

void TestSurveyStoreWells::takesAVeryLongName()
{
    for (const QString &letter :
         {QStringLiteral("n"), QString(QChar(0x4E95)), QString::fromUtf8("\xF0\x9F\x98\x80")}) {
        Survey survey;
        SurveyStore store(survey.path());
        const QString name = letter.repeated(100000);
        WellProperties well = properties("x");
        well.name = name;
        for (int i = 0; i < 2; ++i) {
            const host::Outcome<QString> key = store.addWell(well);
            QCOMPARE(key.error.left(200), QString());
            QVERIFY(store.writeLog(key.value, log("GR", {1})).ok());
            QCOMPARE(store.header(key.value).value.name, survey::shownText(name.toUtf8()));
        }
        const QStringList found = survey.names();
        for (const QString &file : found)
            QVERIFY(!file.contains(QChar(QChar::ReplacementCharacter)));
        QCOMPARE(found.size(), 5);
    }
}

void TestSurveyStoreWells::undoesAWellWhoseListCannotBeWritten()
{
    class SecondRenameFails : public base::FileSystemCalls
    {
        int rename(const char *from, const char *to) override
        {
            if (++m_count == 2) {
                errno = EIO;
                return -1;
            }
            return FileSystemCalls::rename(from, to);
        }
        int m_count = 0;
    };
    OneWell survey;
    const auto before = files::snapshot(survey.path());
    SecondRenameFails calls;
    base::ScopedFileSystemCalls scope(calls);
    QVERIFY(survey.store.addWell(properties("New")).error.contains(survey.file(".omf")));
    QCOMPARE(files::snapshot(survey.path()), before);
    QCOMPARE(names(survey.store.list().value), QStringList{"A"});
}

void TestSurveyStoreWells::changesAWellAndKeepsTheRest()
{
    OneWell survey({"GR"});
    survey.write("a.well",
                 header("Well")
                     + "Depth-Unit: Meter\nOwn:  key \nSurface coordinate: (1000,2000)\nReplacement velocity [from "
                       "KB to SRD]: 1900\n!\n"
                       "1000\t2000\t-30\t0\n1000\t2000\t470\t500\n1060\t2080\t643\t700\n");
    survey.write("a.wlt", "time depth");
    WellProperties well = survey.store.properties(survey.key).value;
    well.x += 100;
    well.kbElevation = 40;
    well.groundElevation = 7;
    well.totalDepth = 600;
    well.typeCode = host::DryWell;
    well.name = QStringLiteral("not changed here");
    const auto before = files::snapshot(survey.path());
    QVERIFY(survey.store.changeWell(survey.key, well).ok());
    auto after = files::snapshot(survey.path());
    QCOMPARE(withoutDate(after.value(QStringLiteral("WellInfo/a.well"))),
             QByteArray("!\nDepth-Unit: Meter\nOwn:  key \nSurface coordinate: (1100,2000)\nReplacement velocity "
                        "[from KB to SRD]: 1900\n"
                        "Ground Level elevation [GL]: 7\nWell type: Dry\n!\n"
                        "1100\t2000\t-40\t0\n1100\t2000\t460\t500\n1130\t2040\t546.5\t600\n"));
    after.insert(QStringLiteral("WellInfo/a.well"), before.value(QStringLiteral("WellInfo/a.well")));
    QCOMPARE(after, before);
    QCOMPARE(survey.store.header(survey.key).value.name, QStringLiteral("A"));
}

void TestSurveyStoreWells::changesAWellWithATrackFile()
{
    OneWell survey;
    survey.write("a.track", "502500 6003000 -40 0\n502600 6003000 960 1000\n");
    WellProperties well = survey.store.properties(survey.key).value;
    well.kbElevation = 50;
    QVERIFY(survey.store.changeWell(survey.key, well).ok());
    QVERIFY(!survey.names().contains(QStringLiteral("a.track")));
    const host::WellHeader header = survey.store.header(survey.key).value;
    QVERIFY(header.kbElevation == 50 && header.totalDepth == 1000);
    // One that is of no use is not ours to delete.
    survey.write("a.track", "rubbish\n");
    well.kbElevation = 60;
    QVERIFY(survey.store.changeWell(survey.key, well).ok());
    QVERIFY(survey.store.header(survey.key).value.kbElevation == 60);
    QCOMPARE(survey.read("a.track"), QByteArray("rubbish\n"));
}

void TestSurveyStoreWells::keepsTheOldWellWhileATrackFileGoes()
{
    // Whichever rename fails, and thus wherever a crash comes, the well is what it was.
    class NthRenameFails : public base::FileSystemCalls
    {
    public:
        explicit NthRenameFails(int n)
            : m_n(n)
        {
        }
        int rename(const char *from, const char *to) override
        {
            if (--m_n == 0) {
                errno = EIO;
                return -1;
            }
            return FileSystemCalls::rename(from, to);
        }

    private:
        int m_n;
    };
    for (const int n : {1, 2}) {
        OneWell survey;
        survey.write("a.track", "502500 6003000 -40 0\n502600 6003000 960 1000\n");
        WellProperties well = survey.store.properties(survey.key).value;
        well.kbElevation = 50;
        well.x = 1;
        NthRenameFails calls(n);
        base::ScopedFileSystemCalls scope(calls);
        QVERIFY(survey.store.changeWell(survey.key, well).error.contains(survey.file("a.well")));
        const host::WellHeader header = survey.store.header(survey.key).value;
        QVERIFY(header.kbElevation == 40 && header.totalDepth == 1000 && header.x == 502500);
    }
}

void TestSurveyStoreWells::doesNotChangeAWellWithADamagedTrack()
{
    OneWell survey;
    survey.write("a.well", wellFile() + "rubbish\n502500\t6003000\t2575\t2600\n");
    const auto before = files::snapshot(survey.path());
    WellProperties well = survey.store.properties(survey.key).value;
    QVERIFY(survey.store.takeProblems().value(0).contains(survey.file("a.well")));
    QVERIFY(well.totalDepth == 2500);
    well.kbElevation = 30;
    QVERIFY(!survey.store.changeWell(survey.key, well).ok());
    QCOMPARE(files::snapshot(survey.path()), before);
}

void TestSurveyStoreWells::renamesAWell()
{
    OneWell survey({"GR"});
    const auto before = files::snapshot(survey.wells());
    QVERIFY(survey.store.renameWell(survey.key, QStringLiteral(" New: name ")).ok());
    QCOMPARE(names(survey.store.list().value), QStringList{"New: name"});
    QCOMPARE(survey.store.list().value.first().key, survey.key);
    QCOMPARE(survey.store.logs(survey.key).value.size(), 1);
    auto after = files::snapshot(survey.wells());
    QVERIFY(after.take(QStringLiteral(".omf")).contains("\nNew\\: name: 2\nWell: dGB`Stream\n$Name: a.well\n"));
    for (const QString &name : after.keys())
        QCOMPARE(after.value(name), before.value(name));
    QVERIFY(survey.store.renameWell(survey.key, QStringLiteral("New: name")).ok());
}

void TestSurveyStoreWells::renamesWellsOnly()
{
    OneWell survey;
    const QByteArray list = survey.read(".omf") + "Other: 3\nSomething: dGB`Stream\n$Name: o.x\n!\n";
    survey.write(".omf", list);
    for (const char *key : {"100050.1", "100050.3"}) {
        QVERIFY(!survey.store.renameWell(QString::fromLatin1(key), QStringLiteral("X")).ok());
        QVERIFY(!survey.store.removeWell(QString::fromLatin1(key)).ok());
    }
    QCOMPARE(survey.read(".omf"), list);
    QCOMPARE(names(survey.store.list().value), QStringList{"A"});
}

void TestSurveyStoreWells::removesAWellWithExactlyItsFiles()
{
    Survey survey;
    survey.write(".omf", wellList({{"Probe 2", "Probe_2.well"}, {"Probe 2/A", "Probe_2_A.well"}}));
    const QStringList own{"Probe_2.well", "Probe_2.track", "Probe_2.wlm",   "Probe_2.wlt",   "Probe_2.csmdl",
                          "Probe_2.disp", "Probe_2^1.wll", "Probe_2^2.wll", "Probe_2^10.wll"};
    QStringList others{"Probe_2_A.well", "Probe_2_A^1.wll", "Probe_2_A.wlm", "Probe_2.txt",  "Probe_2^1.wll.bak",
                       "Probe_2^x.wll",  "XProbe_2.well",   "Probe_2.wells", "Probe.2.well", "probe_2.well",
                       "Probe_2^.wll",   "Probe_2",         ".lorva-abc",    "Probe_2.well~"};
    for (const QString &name : own + others)
        survey.write(qPrintable(name), name.endsWith(QLatin1String(".well")) ? wellFile() : QByteArray("x"));
    SurveyStore store(survey.path());
    QVERIFY(store.removeWell(QStringLiteral("100050.2")).ok());
    others.append(QStringLiteral(".omf"));
    QCOMPARE(asSet(survey.names()), asSet(others));
    QCOMPARE(names(store.list().value), QStringList{"Probe 2/A"});
    QVERIFY(store.header(QStringLiteral("100050.3")).ok());
}

void TestSurveyStoreWells::removesAWellButNotFilesElsewhere()
{
    for (const char *file : {"../../outside.well", "/outside.well", "sub/x.well", "", ".omf", ".", ".."}) {
        OneWell survey;
        survey.write(".omf", wellList({{"Bad", file}, {"A", "a.well"}}));
        survey.write("sub/x.well", wellFile());
        files::write(survey.path() + QStringLiteral("/../outside.well"), wellFile());
        const auto before = files::snapshot(survey.path() + QStringLiteral("/.."));
        QCOMPARE(names(survey.store.list().value), (QStringList{"A", "Bad"}));
        const QString error = survey.store.header(survey.key).error;
        QVERIFY2(error.contains(survey.file(".omf")) && error.contains(QStringLiteral("\"Bad\"")), qPrintable(error));
        QVERIFY(!survey.store.writeLog(survey.key, log("GR", {1})).ok());
        QVERIFY(!survey.store.writeMarkers(survey.key, {marker("A", 1)}).ok());
        QVERIFY(!survey.store.changeWell(survey.key, properties("x")).ok());
        QCOMPARE(files::snapshot(survey.path() + QStringLiteral("/..")), before);
        QVERIFY(survey.store.header(QStringLiteral("100050.3")).ok());
        // The entry alone can go.
        QVERIFY(survey.store.removeWell(survey.key).ok());
        auto after = files::snapshot(survey.path() + QStringLiteral("/.."));
        after.insert(QStringLiteral("survey/WellInfo/.omf"), before.value(QStringLiteral("survey/WellInfo/.omf")));
        QCOMPARE(after, before);
        QCOMPARE(names(survey.store.list().value), QStringList{"A"});
    }
}

void TestSurveyStoreWells::keepsFilesThatAnotherEntryUses()
{
    OneWell survey({"GR"});
    survey.write(".omf", wellList({{"A", "a.well"}, {"Again", "a"}}));
    QVERIFY(survey.store.removeWell(survey.key).ok());
    QVERIFY(survey.store.header(QStringLiteral("100050.3")).ok());
    QCOMPARE(survey.names(), (QStringList{".omf", "a.well", "a^1.wll"}));
}

// The file of the new well has the name of the old one's: what was known of that must not be taken for the new one's.
void TestSurveyStoreWells::aNewWellHasNothingOfARemovedOneOfItsName_data()
{
    QTest::addColumn<bool>("isRemovedHere");
    QTest::newRow("removed here, added by another program") << true;
    QTest::newRow("removed by another program, added here") << false;
}

void TestSurveyStoreWells::aNewWellHasNothingOfARemovedOneOfItsName()
{
    QFETCH(bool, isRemovedHere);
    Survey survey;
    SurveyStore here(survey.path());
    SurveyStore there(survey.path());
    const QString old = here.addWell(properties("A")).value;
    QVERIFY(here.markers(old).ok());
    QVERIFY(here.writeMarkers(old, {marker("Top", 100)}).ok());
    QVERIFY(here.properties(old).ok());
    QVERIFY((isRemovedHere ? here : there).removeWell(old).ok());
    const QString key = (isRemovedHere ? there : here).addWell(properties("A")).value;
    QVERIFY(here.changeWell(key, properties("A")).ok());
    QCOMPARE(here.writeMarkers(key, {marker("Top", 100)}).error, QString());
    QCOMPARE(summary(there.markers(key).value), QStringLiteral("Top@100"));
}

LORVA_TEST_MAIN(TestSurveyStoreWells)
#include "tst_surveystorewells.moc"
