#include "cataloguefixture.h"

namespace {

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

} // namespace

class tst_wellscatalogue : public CatalogueTest
{
    Q_OBJECT

private slots:
    void init() { setUp(); }

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
        for (const char *trouble : {"unreadable", "removed", "without its record"})
            QTest::newRow(trouble) << trouble;
    }

    void everyOperationReportsAWellThatCannotBeRead()
    {
        QFETCH(QString, trouble);
        MemoryHost::Well *well = add("Gone");
        well->logs = {logOf("GR", "gapi", {1})};
        well->markers = {{"Top", 1, Qt::red}};
        m_catalogue->build();
        m_host->hasRecords = trouble != "without its record";
        at("Gone")->isUnreadable = trouble == "unreadable";
        if (trouble == "removed")
            m_host->storedWells.clear();

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
        QVERIFY(!m_catalogue->readCurve(0, 0));
        expectError(selectedWellError);
        QVERIFY(!m_catalogue->readCurve(0, 0, WellsCatalogue::OnFailure::BeSilent));
        QVERIFY(!m_catalogue->readStoredLog(0, 0));
        expectSilence();
        QVERIFY(m_catalogue->markers(0).isEmpty());
        expectError(selectedWellError);
        QVERIFY(m_catalogue->markers("Gone").isEmpty());
        expectError(selectedWellError);
        QCOMPARE(m_catalogue->markerColor(0, "Top").isValid(), !m_host->hasRecords);
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

    void aStoredLogIsTheHostsOwn()
    {
        add("A")->logs = {logOf("GR", "gapi", {1, host::undefinedValue, 3})};
        m_catalogue->build();
        const std::optional<host::LogData> log = m_catalogue->readStoredLog(0, 0);
        QVERIFY(log);
        QCOMPARE(log->values, (QVector<float>{1, host::undefinedValue, 3}));
        QCOMPARE(log->depths.size(), 3);
        QCOMPARE(log->unit, QString("gapi"));
        for (const int other : {-1, 1, 1000000}) {
            QVERIFY(!m_catalogue->readStoredLog(0, other));
            QVERIFY(!m_catalogue->readStoredLog(other, 0));
        }
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
};

QTEST_GUILESS_MAIN(tst_wellscatalogue)
#include "tst_wellscatalogue.moc"
