#include "cataloguefixture.h"

#include <cmath>
#include <limits>

namespace {

constexpr float undefined = host::undefinedValue;
const float notANumber = std::numeric_limits<float>::quiet_NaN();
const float infinity = std::numeric_limits<float>::infinity();

QVector<double> nulls(int count)
{
    return QVector<double>(count, -999.25);
}

} // namespace

class tst_cataloguerecords : public CatalogueTest
{
    Q_OBJECT

private slots:
    void init() { setUp(); }

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

    void samplesTakeNoMoreMemoryThanTheyNeed()
    {
        const QVector<float> floats(10000, 1);
        add("A")->logs = {{"X", "", floats, floats}};
        m_catalogue->build();
        const LogCurveData curve = m_catalogue->curve("A", "X");
        QCOMPARE(curve.depths.size(), floats.size());
        QVERIFY(curve.depths.capacity() < 10100);
        QVERIFY(curve.values.capacity() < 10100);
        QVERIFY(curve.sampleFlags.capacity() < 10100);
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
};

QTEST_GUILESS_MAIN(tst_cataloguerecords)
#include "tst_cataloguerecords.moc"
