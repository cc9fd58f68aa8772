#include "datastore/hostwriter.h"

#include "support/memoryhost.h"
#include "support/scriptedasker.h"

#include <QTest>

#include <cmath>
#include <limits>

namespace {

// A host whose writing can be made to fail, and that notes the order of what is asked of it.
class WritableHost : public MemoryHost
{
public:
    host::Status writeLog(const QString &key, const host::LogData &log) override
    {
        calls.append("writeLog " + key);
        lastLog = log;
        return failsToWrite ? host::Status{"The disk is full."} : MemoryHost::writeLog(key, log);
    }
    host::Status writeMarkers(const QString &key, const QVector<host::Marker> &markers) override
    {
        calls.append("writeMarkers " + key);
        return failsToWrite ? host::Status{"The disk is full."} : MemoryHost::writeMarkers(key, markers);
    }
    host::Outcome<QStringList> markersLostByWriting(const QString &key, const QVector<host::Marker> &markers) override
    {
        if (failsToTellLosses)
            return {{}, "The disk is gone."};
        return MemoryHost::markersLostByWriting(key, markers);
    }
    void reload(const QString &key) override
    {
        calls.append("reload " + key);
        boxesBeforeReload = asker->boxes.size();
        MemoryHost::reload(key);
    }

    ScriptedAsker *asker = nullptr;
    int boxesBeforeReload = 0;
    bool failsToWrite = false;
    bool failsToTellLosses = false;
    QStringList calls;
    host::LogData lastLog;
};

class MarkerListener : public host::Listener
{
public:
    void markersChanged(const QString &key) override { changed.append(key); }
    void surveyChanged() override { }
    QStringList changed;
};

LogCurveData curve(const QString &name, const QVector<double> &values = {10, 20, 30})
{
    LogCurveData result;
    result.wellName = "not the one";
    result.logName = name;
    result.displayName = "not the name";
    result.unit = "gapi";
    for (int i = 0; i < values.size(); ++i)
        result.depths.append(100.5 + i);
    result.values = values;
    return result;
}

MarkerSetRecord markerSet(const QStringList &names, const QVector<float> &depths, const QVector<QColor> &colors)
{
    MarkerSetRecord set;
    set.wellName = "A";
    set.names = names;
    set.measuredDepths = depths;
    set.colors = colors;
    return set;
}

bool isUndefined(float value)
{
    return host::isUndefined(value);
}

} // namespace

class tst_hostwriter : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_host = std::make_unique<WritableHost>();
        m_host->asker = &m_asker;
        m_asker = {};
        host::WellHeader header;
        header.name = "A";
        header.kbElevation = 20;
        header.groundElevation = 5;
        m_key = m_host->addWell(header);
        m_host->find(m_key)->logs = {{"GR", "api", {1, 2}, {3, 4}}, {"DT", "us/f", {1, 2}, {5, 6}}};
        m_host->find(m_key)->markers = {{"Old", 50, Qt::red}};
        header.name = "B";
        m_host->addWell(header);
        m_catalogue = std::make_unique<WellsCatalogue>(*m_host, m_asker, [](const QString &) {});
        m_catalogue->build();
        m_writer = std::make_unique<HostWriter>(*m_host, *m_catalogue, m_asker,
                                                [this](const QString &text) { m_host->showError(text); });
    }

    void aNewLogIsAddedInSilence()
    {
        QVERIFY(m_writer->writeLog(0, curve("NEW"), false));
        QCOMPARE(logs().size(), 3);
        const host::LogData &log = logs().at(2);
        QCOMPARE(log.name, QString("NEW"));
        QCOMPARE(log.unit, QString("gapi"));
        QCOMPARE(log.depths, QVector<float>({100.5F, 101.5F, 102.5F}));
        QCOMPARE(log.values, QVector<float>({10, 20, 30}));
        QVERIFY(m_asker.boxes.isEmpty() && m_host->errors.isEmpty());
    }

    void theWellIsThatOfTheIndex()
    {
        QVERIFY(m_writer->writeLog(1, curve("NEW"), false));
        QCOMPARE(logs().size(), 2);
        QCOMPARE(m_host->storedWells.at(1).logs.size(), 1);
    }

    void successIsToldWhereItIsAskedFor()
    {
        QVERIFY(m_writer->writeLog(0, curve("NEW"), true));
        QCOMPARE(m_asker.boxes.size(), 1);
        expectBox(m_asker.boxes.at(0), base::BoxIcon::Information, "Successfully added this log : NEW",
                  {base::BoxButton::Ok});
    }

    void anExistingNameIsAskedAbout_data()
    {
        QTest::addColumn<int>("answer");
        QTest::newRow("no") << int(base::BoxButton::No);
        QTest::newRow("anything but yes") << int(base::BoxButton::Ok);
    }

    void anExistingNameIsAskedAbout()
    {
        QFETCH(int, answer);
        m_asker.answers = {static_cast<base::BoxButton>(answer)};
        QVERIFY(!m_writer->writeLog(0, curve("GR"), true));
        QCOMPARE(m_asker.boxes.size(), 1);
        expectBox(m_asker.boxes.at(0), base::BoxIcon::Question,
                  "A log with this name GR is already exists.\nWould you like to overwrite this existing log ?",
                  {base::BoxButton::No, base::BoxButton::Yes});
        QVERIFY(m_host->calls.isEmpty());
        QCOMPARE(logs().size(), 2);
        QCOMPARE(logs().at(0).values, QVector<float>({3, 4}));
    }

    void yesReplacesTheLog()
    {
        m_asker.answers = {base::BoxButton::Yes, base::BoxButton::Ok};
        QVERIFY(m_writer->writeLog(0, curve("GR"), true));
        QCOMPARE(m_asker.boxes.size(), 2);
        QCOMPARE(m_asker.boxes.at(1).text, QString("Successfully added this log : GR"));
        QCOMPARE(logs().size(), 2);
        QCOMPARE(logs().at(0).name, QString("GR"));
        QCOMPARE(logs().at(0).unit, QString("gapi"));
        QCOMPARE(logs().at(0).values, QVector<float>({10, 20, 30}));
        QCOMPARE(m_catalogue->logNames(0), QStringList({"GR", "DT"}));
    }

    void letterCaseMakesAnotherName()
    {
        QVERIFY(m_writer->writeLog(0, curve("gr"), false));
        QVERIFY(m_asker.boxes.isEmpty());
        QCOMPARE(logs().size(), 3);
    }

    void aLogThatTheCatalogueDoesNotKnowYetIsAskedAboutToo()
    {
        m_host->find(m_key)->logs.append({"LATE", "api", {1}, {7}});
        m_asker.answers = {base::BoxButton::No};
        QVERIFY(!m_writer->writeLog(0, curve("LATE"), false));
        QCOMPARE(m_asker.boxes.size(), 1);
        QCOMPARE(m_asker.boxes.at(0).icon, base::BoxIcon::Question);
        QCOMPARE(logs().at(2).values, QVector<float>({7}));
    }

    void aLogThatOnlyTheCatalogueKnowsIsAskedAbout()
    {
        m_host->find(m_key)->logs.removeFirst();
        m_asker.answers = {base::BoxButton::No};
        QVERIFY(!m_writer->writeLog(0, curve("GR"), false));
        QCOMPARE(m_asker.boxes.size(), 1);
        QCOMPARE(logs().size(), 1);
    }

    void theNameIsThatUnderWhichTheLogIsStored_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("blank in front") << " GR";
        QTest::newRow("tabulator behind") << "GR\t";
        QTest::newRow("line feed in front") << "\nGR";
        QTest::newRow("line end behind") << "GR\r\n";
    }

    void theNameIsThatUnderWhichTheLogIsStored()
    {
        QFETCH(QString, name);
        m_asker.answers = {base::BoxButton::No};
        QVERIFY(!m_writer->writeLog(0, curve(name), false));
        QCOMPARE(m_asker.boxes.size(), 1);
        QVERIFY(m_asker.boxes.at(0).text.startsWith("A log with this name GR is already exists.\n"));
        m_asker = {};
        m_asker.answers = {base::BoxButton::Yes};
        QVERIFY(m_writer->writeLog(0, curve(name), true));
        QCOMPARE(m_asker.boxes.at(1).text, QString("Successfully added this log : GR"));
        QCOMPARE(logs().size(), 2);
        QCOMPARE(logs().at(0).name, QString("GR"));
    }

    void aNullDoesNotEndTheName()
    {
        LogCurveData log = curve("A");
        log.logName = QString::fromUtf16(u"A\0B", 3);
        QVERIFY(m_writer->writeLog(0, log, false));
        QCOMPARE(m_host->storedWells.at(0).logs.last().name, QString("A B"));
    }

    void aLineBreakInsideANameBecomesABlank()
    {
        QVERIFY(m_writer->writeLog(0, curve("A\nB|C"), false));
        QCOMPARE(logs().at(2).name, QString("A B|C"));
        QCOMPARE(m_catalogue->logNames(0).at(2), QString("A B|C"));
    }

    void aPercentSignInANameIsText()
    {
        m_host->find(m_key)->logs[0].name = "%1 %2";
        m_catalogue->build();
        m_writer->writeLog(0, curve("%1 %2"), false);
        QVERIFY(m_asker.boxes.at(0).text.startsWith("A log with this name %1 %2 is already exists.\n"));
    }

    void aWellThatIsGoneIsTold()
    {
        m_host->find(m_key)->isUnreadable = true;
        QVERIFY(!m_writer->writeLog(0, curve("NEW"), true));
        QCOMPARE(m_asker.boxes.size(), 1);
        expectBox(m_asker.boxes.at(0), base::BoxIcon::Warning, "Cannot get data for this well : A",
                  {base::BoxButton::Ok});
        QVERIFY(m_host->calls.isEmpty());
    }

    void theQuestionComesBeforeTheWellIsLookedUp()
    {
        m_host->find(m_key)->isUnreadable = true;
        m_asker.answers = {base::BoxButton::Yes, base::BoxButton::Ok};
        QVERIFY(!m_writer->writeLog(0, curve("GR"), true));
        QCOMPARE(m_asker.boxes.size(), 2);
        QCOMPARE(m_asker.boxes.at(0).icon, base::BoxIcon::Question);
        QCOMPARE(m_asker.boxes.at(1).text, QString("Cannot get data for this well : A"));
    }

    void anIndexOfNoWellIsTold()
    {
        for (int well : {-1, 2, 1000}) {
            m_asker = {};
            QVERIFY(!m_writer->writeLog(well, curve("NEW"), true));
            QCOMPARE(m_asker.boxes.size(), 1);
            expectBox(m_asker.boxes.at(0), base::BoxIcon::Warning, "Cannot get data for this well : not the one",
                      {base::BoxButton::Ok});
        }
        QVERIFY(m_host->calls.isEmpty());
    }

    void aFailedWriteIsToldAndLeavesTheHost()
    {
        m_host->failsToWrite = true;
        QVERIFY(!m_writer->writeLog(0, curve("NEW"), true));
        QCOMPARE(m_asker.boxes.size(), 1);
        expectBox(m_asker.boxes.at(0), base::BoxIcon::Warning, "Cannot write new log for A", {base::BoxButton::Ok});
        QCOMPARE(logs().size(), 2);
        QCOMPARE(m_catalogue->logNames(0), QStringList({"GR", "DT"}));
    }

    void theFailureIsToldWithoutTheSuccessFlagToo()
    {
        m_host->failsToWrite = true;
        QVERIFY(!m_writer->writeLog(0, curve("NEW"), false));
        QCOMPARE(m_asker.boxes.size(), 1);
    }

    void nullValuesAreUndefinedToTheHost()
    {
        QVERIFY(m_writer->writeLog(0, curve("NEW", {-999.25, 1, -999.25, -999.2499, -999.2500001, -999.25}), false));
        const host::LogData &given = m_host->lastLog;
        QVERIFY(isUndefined(given.values.at(0)));
        QVERIFY(isUndefined(given.values.at(2)));
        QCOMPARE(given.values.at(3), -999.2499F); // the next float but one
        QVERIFY(isUndefined(given.values.at(4))); // it would be stored as the same float
        QVERIFY(isUndefined(given.values.at(5)));
        QCOMPARE(logs().at(2).depths, QVector<float>({101.5F, 102.5F, 103.5F})); // undefined ends are left out
    }

    void anotherNullValueOfTheRecordIsAValue()
    {
        LogCurveData log = curve("NEW", {-9999, 5});
        log.nullValue = -9999;
        QVERIFY(m_writer->writeLog(0, log, false));
        QCOMPARE(logs().at(2).values, QVector<float>({-9999, 5}));
    }

    void aLogWithoutADefinedSampleIsRefusedAndTheOldOneStays_data()
    {
        QTest::addColumn<QVector<double>>("values");
        QTest::newRow("all null") << QVector<double>({-999.25, -999.25, -999.25});
        QTest::newRow("no samples") << QVector<double>();
        QTest::newRow("nothing a float holds")
            << QVector<double>({std::nan(""), std::numeric_limits<double>::infinity(), 1e300, -1e39});
    }

    void aLogWithoutADefinedSampleIsRefusedAndTheOldOneStays()
    {
        QFETCH(QVector<double>, values);
        QVERIFY(!m_writer->writeLog(0, curve("NEW", values), true));
        QCOMPARE(m_asker.boxes.size(), 1);
        expectBox(m_asker.boxes.at(0), base::BoxIcon::Warning, "Cannot write new log for A", {base::BoxButton::Ok});
        QCOMPARE(logs().size(), 2);
        m_asker = {};
        m_asker.answers = {base::BoxButton::Yes, base::BoxButton::Ok};
        QVERIFY(!m_writer->writeLog(0, curve("GR", values), true));
        QCOMPARE(m_asker.boxes.at(1).text, QString("Cannot write new log for A"));
        QCOMPARE(logs().at(0).values, QVector<float>({3, 4}));
        QCOMPARE(m_catalogue->logNames(0), QStringList({"GR", "DT"}));
    }

    void whatAFloatCannotHoldIsUndefined()
    {
        QVERIFY(m_writer->writeLog(
            0, curve("NEW", {1, std::nan(""), 1e300, -std::numeric_limits<double>::infinity(), 2}), false));
        const QVector<float> &values = m_host->lastLog.values;
        QVERIFY(isUndefined(values.at(1)) && isUndefined(values.at(2)) && isUndefined(values.at(3)));
        QCOMPARE(values.at(4), 2.0F);
    }

    void samplesAtADepthThatNoFloatHoldsAreLeftOut()
    {
        LogCurveData log = curve("NEW", {1, 2, 3, 4, 5, 6});
        log.depths = {100,
                      std::nan(""),
                      1e300,
                      -std::numeric_limits<double>::infinity(),
                      static_cast<double>(host::undefinedValue),
                      101};
        QVERIFY(m_writer->writeLog(0, log, false));
        QCOMPARE(m_host->lastLog.depths, QVector<float>({100, 101}));
        QCOMPARE(m_host->lastLog.values, QVector<float>({1, 6}));
    }

    void depthsAndValuesAreSinglePrecision()
    {
        LogCurveData log = curve("NEW", {100.1, 0.1});
        log.depths = {100.1, 16777217.0};
        QVERIFY(m_writer->writeLog(0, log, false));
        QCOMPARE(m_host->lastLog.depths.at(0), 100.1F);
        QCOMPARE(m_host->lastLog.depths.at(1), 16777216.0F);
        QCOMPARE(m_host->lastLog.values, QVector<float>({100.1F, 0.1F}));
    }

    void unequalArraysGiveTheCommonSamples()
    {
        LogCurveData log = curve("NEW");
        log.depths.append(5);
        QVERIFY(m_writer->writeLog(0, log, false));
        QCOMPARE(logs().at(2).depths.size(), 3);
        log.logName = "SHORT";
        log.depths.resize(1);
        QVERIFY(m_writer->writeLog(0, log, false));
        QCOMPARE(logs().at(3).values, QVector<float>({10}));
    }

    void theWellIsReloadedAfterTheWriteAndTheCatalogueKnowsTheLog()
    {
        QVERIFY(m_writer->writeLog(0, curve("NEW"), false));
        QCOMPARE(m_host->calls, QStringList({"writeLog " + m_key, "reload " + m_key}));
        QCOMPARE(m_catalogue->logNames(0), QStringList({"GR", "DT", "NEW"}));
        QCOMPARE(m_catalogue->curve("A", "NEW").values, QVector<double>({10, 20, 30}));
        m_asker.answers = {base::BoxButton::No};
        QVERIFY(!m_writer->writeLog(0, curve("NEW"), false)); // known now
        QCOMPARE(m_asker.boxes.size(), 1);
    }

    void theResultIsToldBeforeTheReload()
    {
        QVERIFY(m_writer->writeLog(0, curve("NEW"), true));
        QCOMPARE(m_host->boxesBeforeReload, 1);
    }

    void aFailedWriteReloadsToo()
    {
        m_host->failsToWrite = true;
        QVERIFY(!m_writer->writeLog(0, curve("NEW"), false));
        QCOMPARE(m_host->calls, QStringList({"writeLog " + m_key, "reload " + m_key}));
    }

    void aLogWithoutANameIsRefusedByTheHost()
    {
        QVERIFY(!m_writer->writeLog(0, curve(""), true));
        QCOMPARE(m_asker.boxes.at(0).text, QString("Cannot write new log for A"));
    }

    void namesAreNoPaths()
    {
        for (const char *name : {"15/9-F-1", "../x", "."}) {
            QVERIFY(m_writer->writeLog(0, curve(name), false));
            QCOMPARE(logs().last().name, QString(name));
        }
    }

    void markersReplaceTheSet()
    {
        QVERIFY(m_writer->writeMarkers(
            0, markerSet({"Top", "Base"}, {100.25F, 200}, {QColor(1, 2, 3), QColor(4, 5, 6)})));
        QCOMPARE(markers().size(), 2);
        QCOMPARE(markers().at(0).name, QString("Top"));
        QCOMPARE(markers().at(0).depth, 100.25F); // no elevation is taken off
        QCOMPARE(markers().at(0).color, QColor(1, 2, 3));
        QCOMPARE(markers().at(1).depth, 200.0F);
        QVERIFY(m_host->errors.isEmpty() && m_asker.boxes.isEmpty());
    }

    void onlyRedGreenAndBlueCount()
    {
        QVERIFY(m_writer->writeMarkers(0, markerSet({"Clear", "None"}, {1, 2}, {QColor(10, 20, 30, 40), QColor()})));
        QCOMPARE(markers().at(0).color, QColor(10, 20, 30));
        QCOMPARE(markers().at(1).color, QColor(0, 0, 0));
    }

    void markersWithoutADepthAreLeftOut()
    {
        QVERIFY(m_writer->writeMarkers(0,
                                       markerSet({"A", "B", "C", "D", "E"},
                                                 {std::nanf(""), std::numeric_limits<float>::infinity(), 100.1F,
                                                  -std::numeric_limits<float>::infinity(), host::undefinedValue},
                                                 {Qt::red, Qt::red, Qt::blue, Qt::red, Qt::red})));
        QCOMPARE(markers().size(), 1);
        QCOMPARE(markers().at(0).name, QString("C"));
        QCOMPARE(markers().at(0).depth, 100.1F);
        QVERIFY(m_host->errors.isEmpty() && m_asker.boxes.isEmpty());
    }

    void unequalListsGiveTheCommonMarkers()
    {
        QVERIFY(m_writer->writeMarkers(0, markerSet({"A", "B"}, {1}, {Qt::red, Qt::red})));
        QCOMPARE(markers().size(), 1);
        QVERIFY(m_writer->writeMarkers(0, markerSet({"A", "B"}, {1, 2}, {Qt::red})));
        QCOMPARE(markers().size(), 1);
        QVERIFY(m_writer->writeMarkers(0, markerSet({"A"}, {1, 2}, {Qt::red, Qt::red})));
        QCOMPARE(markers().size(), 1);
        QCOMPARE(markers().at(0).name, QString("A"));
    }

    void noMarkersLeaveTheWellWithNone()
    {
        QVERIFY(m_writer->writeMarkers(0, markerSet({}, {}, {})));
        QVERIFY(markers().isEmpty());
    }

    void theChangeIsAnnounced()
    {
        MarkerListener listener;
        m_host->addListener(&listener);
        QVERIFY(m_writer->writeMarkers(0, markerSet({"Top"}, {1}, {Qt::red})));
        QCOMPARE(listener.changed, QStringList(m_key));
        m_host->failsToWrite = true;
        QVERIFY(!m_writer->writeMarkers(0, markerSet({"Top"}, {1}, {Qt::red})));
        QCOMPARE(listener.changed.size(), 1);
        m_host->removeListener(&listener);
    }

    void markersOfAWellThatIsGoneAreTold()
    {
        for (int well : {-1, 2})
            QVERIFY(!m_writer->writeMarkers(well, markerSet({"Top"}, {1}, {Qt::red})));
        m_host->find(m_key)->isUnreadable = true;
        QVERIFY(!m_writer->writeMarkers(0, markerSet({"Top"}, {1}, {Qt::red})));
        const QString text = "Cannot get data for the selected well";
        QCOMPARE(m_host->errors, QStringList({text, text, text}));
        QVERIFY(m_host->calls.isEmpty() && m_asker.boxes.isEmpty());
    }

    void markersThatCannotBeWrittenAreTold()
    {
        m_host->failsToWrite = true;
        QVERIFY(!m_writer->writeMarkers(0, markerSet({"Top"}, {1}, {Qt::red})));
        QCOMPARE(m_host->errors, QStringList("Cannot write new markers to disk"));
        QVERIFY(m_asker.boxes.isEmpty());
        QCOMPARE(markers().size(), 1);
        QCOMPARE(markers().at(0).name, QString("Old"));
    }

    void whereTheLossIsNotKnownNothingIsWritten()
    {
        m_host->failsToTellLosses = true;
        QVERIFY(!m_writer->writeMarkers(0, markerSet({"Top"}, {1}, {Qt::red})));
        QCOMPARE(m_host->errors, QStringList("Cannot write new markers to disk"));
        QVERIFY(m_host->calls.isEmpty() && m_asker.boxes.isEmpty());
        QCOMPARE(markers().at(0).name, QString("Old"));
    }

    void markersThatWouldBeLostAreNamedFirst()
    {
        m_host->find(m_key)->hiddenMarkers = QStringList{"Deep", "no. 7", "Anew"};
        const MarkerSetRecord set = markerSet({"Top", "Anew"}, {1, 2}, {Qt::red, Qt::red});
        m_asker.answers = {base::BoxButton::No};
        QVERIFY(!m_writer->writeMarkers(0, set));
        QCOMPARE(m_asker.boxes.size(), 1);
        const base::Box box = m_asker.boxes.first();
        QCOMPARE(box.icon, base::BoxIcon::Question);
        QCOMPARE(box.title, QString("Writing Markers"));
        QCOMPARE(box.buttons, (QVector<base::BoxButton>{base::BoxButton::No, base::BoxButton::Yes}));
        QCOMPARE(
            box.text,
            QString("The well A has markers that cannot be shown: they lie outside of its track or cannot be read. "
                    "Writing its markers deletes them:\nDeep\nno. 7\nWould you like to write the markers?"));
        QVERIFY(m_host->calls.isEmpty() && m_host->errors.isEmpty());
        QCOMPARE(markers().at(0).name, QString("Old"));
        m_asker.answers = {base::BoxButton::Yes};
        QVERIFY(m_writer->writeMarkers(0, set));
        QCOMPARE(markers().size(), 2);
        QVERIFY(m_writer->writeMarkers(0, set)); // nothing is left to lose
        QCOMPARE(m_asker.boxes.size(), 2);
    }

    void manyMarkersThatWouldBeLostFillNoScreen()
    {
        QStringList hidden;
        for (int i = 1; i <= 100; ++i)
            hidden.append(QString("M%1").arg(i));
        m_host->find(m_key)->hiddenMarkers = hidden;
        QVERIFY(m_writer->writeMarkers(0, markerSet({}, {}, {})));
        const QString text = m_asker.boxes.first().text;
        QCOMPARE(text.count('\n'), 17);
        QVERIFY(text.contains("\nM15\n… and 85 more\n"));
    }

private:
    const QVector<host::LogData> &logs() const { return m_host->storedWells.at(0).logs; }
    const QVector<host::Marker> &markers() const { return m_host->storedWells.at(0).markers; }

    static void expectBox(const base::Box &box, base::BoxIcon icon, const QString &text,
                          const QVector<base::BoxButton> &buttons)
    {
        QCOMPARE(box.icon, icon);
        QCOMPARE(box.title, QString("Writing Well Logs"));
        QCOMPARE(box.text, text);
        QVERIFY(box.buttons == buttons);
    }

    std::unique_ptr<WritableHost> m_host;
    ScriptedAsker m_asker;
    std::unique_ptr<WellsCatalogue> m_catalogue;
    std::unique_ptr<HostWriter> m_writer;
    QString m_key;
};

QTEST_GUILESS_MAIN(tst_hostwriter)
#include "tst_hostwriter.moc"
