#include "datastore/wellscatalogue.h"
#include "support/memoryhost.h"
#include "support/scriptedasker.h"

#include <QtTest>

#include <cmath>
#include <limits>

namespace {

constexpr float undefined = host::undefinedValue;
const float notANumber = std::numeric_limits<float>::quiet_NaN();
const float infinity = std::numeric_limits<float>::infinity();

const char selectedWellError[] = "Cannot get data for the selected well";
const char groupError[] = "Cannot get data for the selected well:";

host::WellHeader wellNamed(const QString &name)
{
    host::WellHeader header;
    header.name = name;
    return header;
}

host::LogData logOf(const QString &name, const QString &unit, const QVector<float> &values)
{
    host::LogData log{name, unit, {}, values};
    for (int i = 0; i < values.size(); ++i)
        log.depths.append(100.0f + 0.5f * static_cast<float>(i));
    return log;
}

QString warningText(const QString &wellName)
{
    return "Cannot get data for the well :" + wellName
        + ".\nIf you used this well in this Plugin then it may be get crashed.\n"
          "Please first check this well in Opendtect's Well Manager.";
}

/// Uses the catalogue while a box stands, as a window does that is painted behind it.
class CuriousAsker : public base::Asker
{
public:
    base::BoxButton show(const base::Box &box) override
    {
        onShow();
        return box.buttons.first();
    }
    std::function<void()> onShow;
};

QVector<double> nulls(int count)
{
    return QVector<double>(count, -999.25);
}

} // namespace

class tst_wellscatalogue : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_host = std::make_unique<MemoryHost>();
        m_asker = ScriptedAsker();
        m_catalogue = std::make_unique<WellsCatalogue>(*m_host, m_asker,
                                                       [this](const QString &text) { m_host->showError(text); });
    }

    // ---- the lists

    void isEmptyBeforeItIsBuilt()
    {
        add("A");
        QCOMPARE(m_catalogue->wellCount(), 0);
        QVERIFY(m_catalogue->wellNames().isEmpty());
    }

    void wellsLogsAndMarkersStandInTheHostsOrder()
    {
        MemoryHost::Well *b = add("Beta");
        b->logs = {logOf("RHOB", "g/cc", {1}), logOf("GR", "api", {1}), logOf("DT", "us/ft", {1})};
        MemoryHost::Well *a = add("alpha");
        a->logs = {logOf("ZZ", "", {1}), logOf("AA", "", {1})};
        a->markers = {{"Zechstein", 10, Qt::red}, {"Base", 20, Qt::blue}, {"Anhydrite", 30, Qt::green}};
        m_catalogue->build();
        QCOMPARE(m_catalogue->wellCount(), 2);
        QCOMPARE(m_catalogue->wellNames(), (QStringList{"alpha", "Beta"}));
        QCOMPARE(m_catalogue->logNames(0), (QStringList{"ZZ", "AA"}));
        QCOMPARE(m_catalogue->logNames(1), (QStringList{"RHOB", "GR", "DT"}));
        QCOMPARE(m_catalogue->markerNames(0), (QStringList{"Zechstein", "Base", "Anhydrite"}));
        QVERIFY(m_catalogue->markerNames(1).isEmpty());
        QCOMPARE(m_catalogue->wellKey(0), keyOf("alpha"));
        QCOMPARE(m_catalogue->wellKey(1), keyOf("Beta"));
        QCOMPARE(m_catalogue->indexOf("Beta"), 1);
        QCOMPARE(m_catalogue->indexOfKey(keyOf("Beta")), 1);
        expectSilence();
    }

    void anUnreadableListLeavesTheCatalogueEmpty()
    {
        add("A");
        m_host->listFails = true;
        m_catalogue->build();
        QCOMPARE(m_catalogue->wellCount(), 0);
        QVERIFY(m_catalogue->wellNames().isEmpty());
        QCOMPARE(m_catalogue->indexOf("A"), -1);
        QVERIFY(m_catalogue->readWellNames().isEmpty());
        expectSilence();
    }

    void aFailingRebuildEmptiesTheCatalogue()
    {
        add("A");
        m_catalogue->build();
        QCOMPARE(m_catalogue->wellCount(), 1);
        m_host->listFails = true;
        m_catalogue->build();
        QCOMPARE(m_catalogue->wellCount(), 0);
        QCOMPARE(m_catalogue->indexOf("A"), -1);
        QCOMPARE(m_catalogue->wellKey(0), QString());
    }

    void rebuildingReadsEverythingAnew()
    {
        add("A")->logs = {logOf("GR", "api", {1})};
        m_catalogue->build();
        m_host->storedWells.clear();
        add("B")->logs = {logOf("DT", "us/ft", {1})};
        m_catalogue->build();
        QCOMPARE(m_catalogue->wellNames(), QStringList{"B"});
        QCOMPARE(m_catalogue->logNames(0), QStringList{"DT"});
        QCOMPARE(m_catalogue->indexOf("A"), -1);
        QCOMPARE(m_catalogue->indexOf("B"), 0);
    }

    void anUnreadableWellIsWarnedOfAndKeepsItsPlace()
    {
        add("A")->logs = {logOf("GR", "api", {1})};
        MemoryHost::Well *bad = add("B <i>bad</i> %1 %2");
        bad->logs = {logOf("NEVER", "", {1})};
        bad->markers = {{"Never", 1, Qt::red}};
        bad->isUnreadable = true;
        MemoryHost::Well *last = add("C");
        last->logs = {logOf("DT", "us/ft", {1})};
        last->markers = {{"Top", 1, Qt::red}};
        m_catalogue->build();

        QCOMPARE(m_asker.boxes.size(), 1);
        const base::Box box = m_asker.boxes.first();
        QCOMPARE(box.icon, base::BoxIcon::Warning);
        QCOMPARE(box.title, QString("Reading Wells Data"));
        QCOMPARE(box.text, warningText("B <i>bad</i> %1 %2"));
        QCOMPARE(box.buttons, QVector<base::BoxButton>{base::BoxButton::Ok});

        QCOMPARE(m_catalogue->wellNames(), (QStringList{"A", "B <i>bad</i> %1 %2", "C"}));
        QCOMPARE(m_catalogue->logNames(0), QStringList{"GR"});
        QVERIFY(m_catalogue->logNames(1).isEmpty());
        QVERIFY(m_catalogue->markerNames(1).isEmpty());
        QCOMPARE(m_catalogue->logNames(2), QStringList{"DT"});
        QCOMPARE(m_catalogue->markerNames(2), QStringList{"Top"});
        QVERIFY(m_host->errors.isEmpty());
    }

    void everyUnreadableWellIsWarnedOfInOrder()
    {
        for (const char *name : {"C", "A", "B"})
            add(name)->isUnreadable = true;
        m_catalogue->build();
        QCOMPARE(m_asker.boxes.size(), 3);
        QCOMPARE(m_asker.boxes.at(0).text, warningText("A"));
        QCOMPARE(m_asker.boxes.at(1).text, warningText("B"));
        QCOMPARE(m_asker.boxes.at(2).text, warningText("C"));
        QCOMPARE(m_catalogue->wellCount(), 3);
    }

    void whileAWarningStandsTheCatalogueIsAsItWas()
    {
        CuriousAsker asker;
        WellsCatalogue catalogue(*m_host, asker, [this](const QString &text) { m_host->showError(text); });
        QVector<QStringList> seen;
        asker.onShow = [&] {
            seen.append(catalogue.wellNames());
            for (int well = 0; well < catalogue.wellCount(); ++well) {
                catalogue.logNames(well);
                catalogue.refreshMarkerNames(well);
                catalogue.curve(catalogue.wellNames().at(well), "GR");
            }
        };
        add("A")->logs = {logOf("GR", "api", {1})};
        add("B")->isUnreadable = true;
        catalogue.build();
        QCOMPARE(seen, QVector<QStringList>{QStringList()});
        add("C")->isUnreadable = true;
        at("B")->isUnreadable = false;
        catalogue.build();
        QCOMPARE(seen.last(), (QStringList{"A", "B"}));
        QCOMPARE(catalogue.wellNames(), (QStringList{"A", "B", "C"}));
        expectSilence();
    }

    void namesOfAnyScriptAreKept()
    {
        const QString arabic = QString::fromUtf8("بئر ١");
        const QString chinese = QString::fromUtf8("井/2 %41");
        const QString log = QString::fromUtf8("γ-луч");
        const QString marker = QString::fromUtf8("顶部 \U0001F600");
        MemoryHost::Well *well = add(chinese);
        well->logs = {logOf(log, "gAPI", {7})};
        well->markers = {{marker, 12, Qt::red}};
        add(arabic);
        m_catalogue->build();
        QCOMPARE(m_catalogue->wellNames(), (QStringList{arabic, chinese}));
        QCOMPARE(m_catalogue->logNames(1), QStringList{log});
        QCOMPARE(m_catalogue->markerNames(1), QStringList{marker});
        QCOMPARE(m_catalogue->curve(chinese, log).values, QVector<double>{7});
        QCOMPARE(m_catalogue->markers(chinese).first().name, marker);
        QCOMPARE(m_catalogue->wellRecord(arabic).wellName, arabic);
    }

    void ofTwoWellsWithOneNameTheFirstIsMeant()
    {
        MemoryHost::Well *first = add("Twin");
        first->header.x = 1;
        first->logs = {logOf("GR", "api", {1})};
        first->markers = {{"Top", 1, Qt::red}};
        MemoryHost::Well *second = add("Twin");
        second->header.x = 2;
        second->logs = {logOf("GR", "api", {2}), logOf("DT", "us/ft", {2})};
        m_catalogue->build();
        QCOMPARE(m_catalogue->wellNames(), (QStringList{"Twin", "Twin"}));
        QCOMPARE(m_catalogue->indexOf("Twin"), 0);
        QCOMPARE(m_catalogue->wellRecord("Twin").x, 1.0);
        QCOMPARE(m_catalogue->wellRecord(1).x, 2.0);
        QCOMPARE(m_catalogue->curve("Twin", "GR").values, QVector<double>{1});
        QVERIFY(m_catalogue->curve("Twin", "DT").values.isEmpty());
        QCOMPARE(m_catalogue->curve(1, 1).values, QVector<double>{2});
        QCOMPARE(m_catalogue->markers("Twin").size(), 1);
        QVERIFY(m_catalogue->markers(1).isEmpty());
        QCOMPARE(m_catalogue->refreshLogNames("Twin"), QStringList{"GR"});
    }

    void namesAreComparedExactly()
    {
        add("Well A")->logs = {logOf("GR", "api", {1})};
        m_catalogue->build();
        QCOMPARE(m_catalogue->indexOf("well a"), -1);
        QCOMPARE(m_catalogue->indexOf("Well A "), -1);
        QVERIFY(m_catalogue->curve("Well A", "gr").values.isEmpty());
        expectSilence();
    }

    void wellNamesAreThoseOfTheHostNow()
    {
        add("B");
        m_catalogue->build();
        add("A");
        QCOMPARE(m_catalogue->readWellNames(), (QStringList{"A", "B"}));
        QCOMPARE(m_catalogue->wellNames(), QStringList{"B"});
    }

    // ---- log and marker names

    void logNamesAreRefreshedWellByWell()
    {
        add("A")->logs = {logOf("GR", "api", {1})};
        add("B")->logs = {logOf("DT", "us/ft", {1})};
        m_catalogue->build();
        at("A")->logs.append(logOf("NEW", "", {1}));
        at("B")->logs.append(logOf("UNSEEN", "", {1}));
        QCOMPARE(m_catalogue->refreshLogNames(0), (QStringList{"GR", "NEW"}));
        QCOMPARE(m_catalogue->logNames(0), (QStringList{"GR", "NEW"}));
        QCOMPARE(m_catalogue->logNames(1), QStringList{"DT"});
        QCOMPARE(m_catalogue->refreshLogNames("B"), (QStringList{"DT", "UNSEEN"}));
        expectSilence();
    }

    void markerNamesAreRefreshedWellByWell()
    {
        add("A")->markers = {{"Top", 1, Qt::red}};
        add("B");
        m_catalogue->build();
        at("A")->markers = {{"Other", 1, Qt::red}, {"Base", 2, Qt::red}};
        QCOMPARE(m_catalogue->markerNames(0), QStringList{"Top"});
        QCOMPARE(m_catalogue->refreshMarkerNames(0), (QStringList{"Other", "Base"}));
        QCOMPARE(m_catalogue->markerNames(0), (QStringList{"Other", "Base"}));
        QVERIFY(m_catalogue->refreshMarkerNames("B").isEmpty());
        expectSilence();
    }

    void everyOperationReportsAWellThatCannotBeRead_data()
    {
        QTest::addColumn<QString>("trouble");
        for (const char *trouble : {"unreadable", "removed"})
            QTest::newRow(trouble) << trouble;
    }

    void everyOperationReportsAWellThatCannotBeRead()
    {
        QFETCH(QString, trouble);
        MemoryHost::Well *well = add("Gone");
        well->logs = {logOf("GR", "gapi", {1})};
        well->markers = {{"Top", 1, Qt::red}};
        m_catalogue->build();
        if (trouble == "removed")
            m_host->storedWells.clear();
        else
            at("Gone")->isUnreadable = true;

        QVERIFY(m_catalogue->refreshLogNames(0).isEmpty());
        expectError(selectedWellError);
        QVERIFY(m_catalogue->refreshLogNames("Gone").isEmpty());
        expectError(selectedWellError);
        QVERIFY(m_catalogue->refreshMarkerNames(0).isEmpty());
        expectError(selectedWellError);
        QVERIFY(m_catalogue->refreshMarkerNames("Gone").isEmpty());
        expectError(selectedWellError);
        QCOMPARE(m_catalogue->curveGroup(0, 0), QString("Others"));
        expectError(groupError);
        QCOMPARE(m_catalogue->curveGroup("Gone", "GR"), QString("Others"));
        expectError(groupError);
        QCOMPARE(m_catalogue->curveGroups(0), QStringList{"Others"});
        expectError(groupError);
        const LogCurveData curve = m_catalogue->curve("Gone", "GR");
        expectError(selectedWellError);
        QCOMPARE(curve.wellName, QString("Gone"));
        QCOMPARE(curve.logName, QString("GR"));
        QVERIFY(curve.values.isEmpty() && curve.depths.isEmpty() && curve.curveGroup.isEmpty());
        QVERIFY(m_catalogue->curve(0, 0).values.isEmpty());
        expectError(selectedWellError);
        QVERIFY(m_catalogue->markers(0).isEmpty());
        expectError(selectedWellError);
        QVERIFY(m_catalogue->markers("Gone").isEmpty());
        expectError(selectedWellError);
        QVERIFY(!m_catalogue->markerColor(0, "Top").isValid());
        expectSilence();
        const WellRecord record = m_catalogue->wellRecord("Gone");
        expectError("Cannot get data for this well : Gone");
        QVERIFY(record.wellName.isEmpty() && record.wellType.isEmpty());
        QCOMPARE(record.totalDepth, 0.0);
        m_catalogue->wellRecord(0);
        expectError("Cannot get data for this well : Gone");

        // The lists stay as they were: nothing else in the plug-in loses its place.
        QCOMPARE(m_catalogue->logNames(0), QStringList{"GR"});
        QCOMPARE(m_catalogue->markerNames(0), QStringList{"Top"});
        expectSilence();
    }

    void aWellOutsideTheCatalogueIsReported_data()
    {
        QTest::addColumn<int>("well");
        QTest::newRow("before") << -1;
        QTest::newRow("behind") << 1;
        QTest::newRow("far") << 1000000;
    }

    void aWellOutsideTheCatalogueIsReported()
    {
        QFETCH(int, well);
        add("A")->logs = {logOf("GR", "gapi", {1})};
        m_catalogue->build();
        QVERIFY(m_catalogue->refreshLogNames(well).isEmpty());
        expectError(selectedWellError);
        QVERIFY(m_catalogue->refreshMarkerNames(well).isEmpty());
        expectError(selectedWellError);
        QCOMPARE(m_catalogue->curveGroup(well, 0), QString("Others"));
        expectError(groupError);
        QVERIFY(m_catalogue->markers(well).isEmpty());
        expectError(selectedWellError);
        m_catalogue->wellRecord(well);
        expectError("Cannot get data for this well : ");
        QVERIFY(!m_catalogue->markerColor(well, "Top").isValid());
        const LogCurveData curve = m_catalogue->curve(well, 0);
        QVERIFY(curve.values.isEmpty());
        QCOMPARE(m_catalogue->wellKey(well), QString());
        expectSilence();
    }

    void anUnknownWellNameIsReported()
    {
        add("A");
        m_catalogue->build();
        m_catalogue->wellRecord("Nobody %1");
        expectError("Cannot get data for this well : Nobody %1");
        QVERIFY(m_catalogue->refreshLogNames("Nobody").isEmpty());
        expectError(selectedWellError);
        QVERIFY(m_catalogue->refreshMarkerNames("Nobody").isEmpty());
        expectError(selectedWellError);
        QVERIFY(m_catalogue->markers("Nobody").isEmpty());
        expectError(selectedWellError);
        QVERIFY(!m_catalogue->markerColor("Nobody", "Top").isValid());
        expectSilence();
    }

    // ---- curve groups

    void curveGroupsFollowTheUnits()
    {
        add("A")->logs = {logOf("CAL", "in", {1}),       logOf("GR", "gAPI", {1}), logOf("RES", "OHMM", {1}),
                          logOf("ODD", "ohmMeter", {1}), logOf("NONE", "", {1}),   logOf("DEPT", "M", {1})};
        m_catalogue->build();
        const QStringList expected{"Caliper", "Gamma", "Resistivity", "Others", "Others", "Depth"};
        QCOMPARE(m_catalogue->curveGroups(0), expected);
        for (int log = 0; log < expected.size(); ++log)
            QCOMPARE(m_catalogue->curveGroup(0, log), expected.at(log));
        QCOMPARE(m_catalogue->curveGroup("A", "RES"), QString("Resistivity"));
        expectSilence();
    }

    void aMissingLogIsOthers()
    {
        add("A")->logs = {logOf("GR", "gapi", {1})};
        m_catalogue->build();
        QCOMPARE(m_catalogue->curveGroup(0, 1), QString("Others"));
        QCOMPARE(m_catalogue->curveGroup(0, -1), QString("Others"));
        QCOMPARE(m_catalogue->curveGroup("A", "DT"), QString("Others"));
        at("A")->logs.clear();
        QCOMPARE(m_catalogue->curveGroup(0, 0), QString("Others"));
        expectSilence();
    }

    void groupsOfLogsThatTheHostReorderedGoByName()
    {
        add("A")->logs = {logOf("GR", "gapi", {1}), logOf("DT", "us/ft", {1})};
        m_catalogue->build();
        at("A")->logs = {logOf("DT", "us/ft", {1}), logOf("NEW", "ohmm", {1}), logOf("GR", "gapi", {1})};
        QCOMPARE(m_catalogue->curveGroups(0), (QStringList{"Gamma", "Sonic"}));
    }

    void logsOfOneNameHaveEachTheirOwnGroup()
    {
        add("A")->logs = {logOf("X", "gapi", {1}), logOf("X", "mv", {1}), logOf("X", "in", {1})};
        m_catalogue->build();
        QCOMPARE(m_catalogue->curveGroups(0), (QStringList{"Gamma", "Sp", "Caliper"}));
        at("A")->logs = {logOf("NEW", "ohmm", {1}), logOf("X", "us/ft", {1}), logOf("NEW2", "", {1}),
                         logOf("X", "gapi", {1})};
        QCOMPARE(m_catalogue->curveGroups(0), (QStringList{"Sonic", "Sonic", "Sonic"})); // the second by its place
    }

    void groupsCanBeReadWithoutABox()
    {
        add("A")->logs = {logOf("GR", "gapi", {1})};
        m_catalogue->build();
        QVERIFY(m_catalogue->readCurveGroups(0).ok());
        QCOMPARE(m_catalogue->readCurveGroups(0).value, QStringList{"Gamma"});
        at("A")->isUnreadable = true;
        QVERIFY(!m_catalogue->readCurveGroups(0).ok());
        QVERIFY(!m_catalogue->readCurveGroups(1).ok());
        expectSilence();
    }

    void aLogIsFoundByTheNameThatFilesHave()
    {
        add("A")->logs = {logOf(" G|R", "gapi", {1}), logOf("DT", "us/ft", {2}),
                          logOf(QString("G\u00A6R"), "mv", {3})};
        m_catalogue->build();
        QCOMPARE(m_catalogue->logIndex(0, "DT"), 1);
        QCOMPARE(m_catalogue->logIndex(0, " G|R"), 0);
        QCOMPARE(m_catalogue->logIndex(0, QString("G\u00A6R")), 2); // the name itself comes first
        at("A")->logs.removeLast();
        m_catalogue->build();
        QCOMPARE(m_catalogue->logIndex(0, QString("G\u00A6R")), 0);
        QCOMPARE(m_catalogue->curve("A", QString("G\u00A6R")).unit, QString("gapi"));
        QCOMPARE(m_catalogue->curveGroup("A", QString("G\u00A6R")), QString("Gamma"));
        QCOMPARE(m_catalogue->logIndex(0, "dt"), -1);
        QCOMPARE(m_catalogue->logIndex(7, "DT"), -1);
    }

    // ---- curves

    void aCurveHoldsTheLogReadyToDraw()
    {
        add("A")->logs = {logOf("DT", "us/ft", {1}), {"GR", "gAPI", {10.5f, 11.1f, 13}, {75.25f, 0.1f, 140}}};
        m_catalogue->build();
        for (const LogCurveData &curve : {m_catalogue->curve("A", "GR"), m_catalogue->curve(0, 1)}) {
            QCOMPARE(curve.wellName, QString("A"));
            QCOMPARE(curve.logName, QString("GR"));
            QCOMPARE(curve.curveGroup, QString("Gamma"));
            QCOMPARE(curve.displayName, QString("GR"));
            QCOMPARE(curve.unit, QString("gAPI")); // as the host writes it
            QCOMPARE(curve.source, QString("Read from OD"));
            QCOMPARE(curve.nullValue, -999.25);
            QCOMPARE(curve.isLogarithmic, 0);
            const QVector<double> depths{10.5, static_cast<double>(11.1f), 13};
            QVERIFY(curve.depths == depths); // to the last bit
            const QVector<double> values{75.25, static_cast<double>(0.1f), 140};
            QVERIFY(curve.values == values);
            QCOMPARE(curve.minimum, static_cast<double>(0.1f));
            QCOMPARE(curve.maximum, 140.0);
            QCOMPARE(curve.sampleFlags, QVector<quint8>(3, 0));
            QVERIFY(curve.points.isEmpty());
            QVERIFY(curve.firstAuxiliary.isEmpty());
            QVERIFY(curve.secondAuxiliary.isEmpty());
        }
        expectSilence();
    }

    void onlyTheResistivityGroupIsLogarithmic_data()
    {
        QTest::addColumn<QString>("unit");
        QTest::addColumn<QString>("group");
        QTest::addColumn<int>("logarithmic");
        QTest::newRow("ohmm") << "ohmm"
                              << "Resistivity" << 1;
        QTest::newRow("OHMM") << "OHMM"
                              << "Resistivity" << 1;
        QTest::newRow("ohmMeter") << "ohmMeter"
                                  << "Others" << 0;
        QTest::newRow("mv") << "mV"
                            << "Sp" << 0;
        QTest::newRow("none") << ""
                              << "Others" << 0;
    }

    void onlyTheResistivityGroupIsLogarithmic()
    {
        QFETCH(QString, unit);
        add("A")->logs = {logOf("X", unit, {1})};
        m_catalogue->build();
        const LogCurveData curve = m_catalogue->curve("A", "X");
        QTEST(curve.curveGroup, "group");
        QTEST(curve.isLogarithmic, "logarithmic");
        QCOMPARE(curve.unit, unit);
    }

    void extremesAndNulls_data()
    {
        QTest::addColumn<QVector<float>>("stored");
        QTest::addColumn<QVector<double>>("values");
        QTest::addColumn<double>("minimum");
        QTest::addColumn<double>("maximum");
        using Stored = QVector<float>;
        using Values = QVector<double>;
        QTest::newRow("plain") << Stored{3, 1, 2} << Values{3, 1, 2} << 1.0 << 3.0;
        QTest::newRow("one sample") << Stored{5} << Values{5} << 5.0 << 5.0;
        QTest::newRow("empty") << Stored{} << Values{} << 999.25 << -999.25;
        QTest::newRow("all undefined") << Stored{undefined, undefined} << nulls(2) << 999.25 << -999.25;
        QTest::newRow("near the undefined value")
            << Stored{1.000001e30f, 0.999999e30f} << nulls(2) << 999.25 << -999.25;
        QTest::newRow("undefined between") << Stored{2, undefined, 4} << Values{2, -999.25, 4} << 2.0 << 4.0;
        QTest::newRow("the null value itself") << Stored{-999.25f, 4} << Values{-999.25, 4} << 4.0 << 4.0;
        QTest::newRow("all above 999.25") << Stored{1000, 2000} << Values{1000, 2000} << 999.25 << 2000.0;
        QTest::newRow("at 999.25") << Stored{999.25f} << Values{999.25} << 999.25 << 999.25;
        QTest::newRow("all below -999.25") << Stored{-1000, -2000} << Values{-1000, -2000} << -2000.0 << -999.25;
        QTest::newRow("wide") << Stored{-5000, 5000} << Values{-5000, 5000} << -5000.0 << 5000.0;
        QTest::newRow("zero") << Stored{0, 0} << Values{0, 0} << 0.0 << 0.0;
        QTest::newRow("very large") << Stored{1e29f, -1e29f}
                                    << Values{static_cast<double>(1e29f), static_cast<double>(-1e29f)}
                                    << static_cast<double>(-1e29f) << static_cast<double>(1e29f);
    }

    void extremesAndNulls()
    {
        QFETCH(QVector<float>, stored);
        QFETCH(QVector<double>, values);
        add("A")->logs = {logOf("X", "", stored)};
        m_catalogue->build();
        const LogCurveData curve = m_catalogue->curve("A", "X");
        QVERIFY(curve.values == values);
        QCOMPARE(curve.depths.size(), values.size());
        QCOMPARE(curve.sampleFlags, QVector<quint8>(values.size(), 0));
        QTEST(curve.minimum, "minimum");
        QTEST(curve.maximum, "maximum");
        QCOMPARE(curve.nullValue, -999.25);
        expectSilence();
    }

    void whatIsNoNumberMovesNoExtreme()
    {
        add("A")->logs = {logOf("X", "", {notANumber, 5, notANumber, 7}), logOf("Y", "", {notANumber})};
        m_catalogue->build();
        const LogCurveData curve = m_catalogue->curve("A", "X");
        QCOMPARE(curve.minimum, 5.0);
        QCOMPARE(curve.maximum, 7.0);
        QCOMPARE(curve.values.size(), 4);
        QVERIFY(std::isnan(curve.values.first()));
        QCOMPARE(m_catalogue->curve("A", "Y").minimum, 999.25);
        QCOMPARE(m_catalogue->curve("A", "Y").maximum, -999.25);
    }

    void infinityIsAValue()
    {
        add("A")->logs = {logOf("X", "", {1, infinity, -infinity})};
        m_catalogue->build();
        const LogCurveData curve = m_catalogue->curve("A", "X");
        QVERIFY(std::isinf(curve.minimum) && curve.minimum < 0);
        QVERIFY(std::isinf(curve.maximum) && curve.maximum > 0);
    }

    void depthsAreTakenAsTheyStand()
    {
        add("A")->logs = {{"X", "", {30, 10, 10, -5}, {1, 2, 3, 4}}};
        m_catalogue->build();
        QVERIFY(m_catalogue->curve("A", "X").depths == (QVector<double>{30, 10, 10, -5}));
    }

    void arraysOfUnequalLengthGiveTheCommonPart()
    {
        add("A")->logs = {{"X", "", {1, 2, 3}, {10, 20}}, {"Y", "", {1}, {10, 20}}};
        m_catalogue->build();
        QVERIFY(m_catalogue->curve("A", "X").depths == (QVector<double>{1, 2}));
        QVERIFY(m_catalogue->curve("A", "Y").values == QVector<double>{10});
        QCOMPARE(m_catalogue->curve("A", "Y").maximum, 10.0);
    }

    void aMissingWellOrLogGivesARecordWithoutSamples_data()
    {
        QTest::addColumn<QString>("well");
        QTest::addColumn<QString>("log");
        QTest::newRow("well") << "Nobody"
                              << "GR";
        QTest::newRow("log") << "A"
                             << "NOTHING";
        QTest::newRow("empty names") << ""
                                     << "";
    }

    void aMissingWellOrLogGivesARecordWithoutSamples()
    {
        QFETCH(QString, well);
        QFETCH(QString, log);
        add("A")->logs = {logOf("GR", "gapi", {1})};
        m_catalogue->build();
        const LogCurveData curve = m_catalogue->curve(well, log);
        QCOMPARE(curve.wellName, well);
        QCOMPARE(curve.logName, log);
        QCOMPARE(curve.displayName, log);
        QCOMPARE(curve.source, QString("Read from OD"));
        QVERIFY(curve.unit.isEmpty());
        QVERIFY(curve.curveGroup.isEmpty());
        QCOMPARE(curve.isLogarithmic, 0);
        QVERIFY(curve.depths.isEmpty() && curve.values.isEmpty() && curve.sampleFlags.isEmpty());
        expectSilence();
    }

    void aLogIndexOutsideTheListGivesNoSamples()
    {
        add("A")->logs = {logOf("GR", "gapi", {1})};
        m_catalogue->build();
        QVERIFY(m_catalogue->curve(0, 1).values.isEmpty());
        QVERIFY(m_catalogue->curve(0, -1).values.isEmpty());
        QCOMPARE(m_catalogue->curve(0, 7).source, QString("Read from OD"));
        expectSilence();
    }

    void logsThatTheHostReorderedAreFoundByName()
    {
        add("A")->logs = {logOf("GR", "gapi", {1}), logOf("DT", "us/ft", {2}), logOf("RT", "ohmm", {3})};
        m_catalogue->build();
        at("A")->logs = {logOf("RT", "ohmm", {3}), logOf("GR", "gapi", {1}), logOf("DT", "us/ft", {2})};
        QCOMPARE(m_catalogue->curve("A", "GR").values, QVector<double>{1});
        QCOMPARE(m_catalogue->curve("A", "DT").values, QVector<double>{2});
        QCOMPARE(m_catalogue->curve(0, 2).values, QVector<double>{3});
        QCOMPARE(m_catalogue->curve(0, 2).curveGroup, QString("Resistivity"));
        expectSilence();
    }

    void logsBehindARemovedOneAreFoundByName()
    {
        add("A")->logs = {logOf("GR", "gapi", {1}), logOf("DT", "us/ft", {2})};
        m_catalogue->build();
        at("A")->logs.removeFirst();
        QCOMPARE(m_catalogue->curve("A", "DT").values, QVector<double>{2});
        expectSilence();
    }

    void aLogThatTheHostRemovedOrRenamedIsReported()
    {
        add("A")->logs = {logOf("GR", "gapi", {1}), logOf("DT", "us/ft", {2})};
        m_catalogue->build();
        at("A")->logs.removeLast();
        const LogCurveData gone = m_catalogue->curve("A", "DT");
        expectError(selectedWellError);
        QVERIFY(gone.values.isEmpty() && gone.unit.isEmpty() && gone.curveGroup.isEmpty());
        at("A")->logs[0].name = "GR_old";
        QVERIFY(m_catalogue->curve("A", "GR").values.isEmpty());
        expectError(selectedWellError);
        QVERIFY(m_catalogue->curve("A", "GR_old").values.isEmpty()); // not in the catalogue yet
        expectSilence();
        m_catalogue->refreshLogNames(0);
        QCOMPARE(m_catalogue->curve("A", "GR_old").values, QVector<double>{1});
    }

    // ---- markers

    void markerDepths_data()
    {
        QTest::addColumn<float>("kb");
        QTest::addColumn<float>("ground");
        QTest::addColumn<double>("subsea");
        QTest::newRow("both") << 30.5f << 20.25f << 949.25;
        QTest::newRow("KB only") << 30.5f << undefined << 969.5;
        QTest::newRow("second only") << undefined << 20.25f << 979.75;
        QTest::newRow("neither") << undefined << undefined << 1000.0;
        QTest::newRow("below datum") << -10.0f << -5.0f << 1015.0;
        QTest::newRow("zero") << 0.0f << 0.0f << 1000.0;
    }

    void markerDepths()
    {
        QFETCH(float, kb);
        QFETCH(float, ground);
        MemoryHost::Well *well = add("A");
        well->header.kbElevation = kb;
        well->header.groundElevation = ground;
        well->markers = {{"Top", 1000, Qt::red}};
        m_catalogue->build();
        const QVector<WellMarker> markers = m_catalogue->markers(0);
        QCOMPARE(markers.size(), 1);
        QTEST(markers.first().subseaDepth, "subsea");
        QCOMPARE(markers.first().measuredDepth, 1000.0f);
        expectSilence();
    }

    void markersAreThoseOfTheCatalogueInItsOrder()
    {
        add("A")->markers = {
            {"Top", 10, QColor(1, 2, 3)}, {"Mid", 20, QColor(4, 5, 6)}, {"Base", 30, QColor(7, 8, 9)}};
        m_catalogue->build();
        at("A")->markers = {{"Base", 31, QColor(70, 80, 90)}, {"New", 40, Qt::red}, {"Top", 11, QColor(10, 20, 30)}};
        const QVector<WellMarker> markers = m_catalogue->markers("A");
        QCOMPARE(markers.size(), 2);
        QCOMPARE(markers.at(0).name, QString("Top"));
        QCOMPARE(markers.at(0).measuredDepth, 11.0f);
        QCOMPARE(markers.at(0).color, QColor(10, 20, 30));
        QCOMPARE(markers.at(1).name, QString("Base"));
        QCOMPARE(markers.at(1).measuredDepth, 31.0f);
        expectSilence();
    }

    void markerColorsAreOpaque()
    {
        add("A")->markers = {{"Glass", 10, QColor(10, 20, 30, 40)}};
        m_catalogue->build();
        QCOMPARE(m_catalogue->markers(0).first().color, QColor(10, 20, 30, 255));
        QCOMPARE(m_catalogue->markerColor(0, "Glass"), QColor(10, 20, 30, 255));
        QCOMPARE(m_catalogue->markerColor("A", "Glass"), QColor(10, 20, 30, 255));
        QVERIFY(!m_catalogue->markerColor(0, "glass").isValid());
        expectSilence();
    }

    void aMarkerColorIsTheHostsColorNow()
    {
        add("A")->markers = {{"Top", 10, Qt::red}};
        m_catalogue->build();
        at("A")->markers = {{"Top", 10, QColor(0, 0, 255)}, {"New", 11, QColor(0, 255, 0)}};
        QCOMPARE(m_catalogue->markerColor(0, "Top"), QColor(0, 0, 255));
        QCOMPARE(m_catalogue->markerColor(0, "New"), QColor(0, 255, 0));
    }

    // ---- the well record

    void wellRecordHoldsTheHeader()
    {
        MemoryHost::Well *well = add("A");
        well->header.x = 504000.123456789;
        well->header.y = -6005000.5;
        well->header.kbElevation = 30.1f;
        well->header.groundElevation = 12.7f;
        well->header.totalDepth = 2999.875;
        well->header.typeCode = 1;
        m_catalogue->build();
        for (const WellRecord &record : {m_catalogue->wellRecord("A"), m_catalogue->wellRecord(0)}) {
            QCOMPARE(record.wellName, QString("A"));
            QCOMPARE(record.x, 504000.123456789);
            QCOMPARE(record.y, -6005000.5);
            QVERIFY(record.kbElevation == static_cast<double>(30.1f));
            QVERIFY(record.secondElevation == static_cast<double>(12.7f));
            QCOMPARE(record.totalDepth, 2999.875);
            QCOMPARE(record.reserved, 0.0);
            QCOMPARE(record.wellType, QString("Oil"));
        }
        expectSilence();
    }

    void undefinedElevationsAreZero()
    {
        MemoryHost::Well *well = add("A");
        well->header.kbElevation = undefined;
        well->header.groundElevation = undefined;
        m_catalogue->build();
        QCOMPARE(m_catalogue->wellRecord("A").kbElevation, 0.0);
        QCOMPARE(m_catalogue->wellRecord("A").secondElevation, 0.0);
    }

    void wellTypes_data()
    {
        QTest::addColumn<int>("code");
        QTest::addColumn<QString>("text");
        QTest::newRow("none") << 0 << "";
        QTest::newRow("oil") << 1 << "Oil";
        QTest::newRow("gas") << 2 << "Gas";
        QTest::newRow("oil and gas") << 3 << "";
        QTest::newRow("dry") << 4 << "";
        QTest::newRow("unknown") << 17 << "";
        QTest::newRow("negative") << -1 << "";
    }

    void wellTypes()
    {
        QFETCH(int, code);
        add("A")->header.typeCode = code;
        m_catalogue->build();
        QTEST(m_catalogue->wellRecord("A").wellType, "text");
    }

private:
    MemoryHost::Well *add(const QString &name) { return m_host->find(m_host->addWell(wellNamed(name))); }

    MemoryHost::Well *at(const QString &name)
    {
        for (MemoryHost::Well &well : m_host->storedWells)
            if (well.header.name == name)
                return &well;
        qFatal("no such well");
        return nullptr;
    }

    QString keyOf(const QString &name) { return at(name)->key; }

    void expectError(const QString &text)
    {
        QCOMPARE(m_host->errors, QStringList{text});
        QVERIFY(m_asker.boxes.isEmpty());
        m_host->errors.clear();
    }

    void expectSilence()
    {
        QCOMPARE(m_host->errors, QStringList());
        QVERIFY(m_asker.boxes.isEmpty());
    }

    std::unique_ptr<MemoryHost> m_host;
    ScriptedAsker m_asker;
    std::unique_ptr<WellsCatalogue> m_catalogue;
};

QTEST_GUILESS_MAIN(tst_wellscatalogue)
#include "tst_wellscatalogue.moc"
