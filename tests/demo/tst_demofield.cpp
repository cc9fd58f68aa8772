#include "demo/demofield.h"

#include <QTest>

#include <cmath>

using namespace demo;

/// Checks the synthetic field: that it is always the same, consistent in itself and like real logs.
class TestDemoField : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void isAlwaysTheSame();
    void hasSixWells();
    void depthsConvertBothWays();
    void topsAreOrderedAndLogged();
    void topsCanBeReadOnWhite();
    void oneTopIsMissing();
    void curvesMatchDepths();
    void valuesAreInRange_data();
    void valuesAreInRange();
    void logsHaveGaps();
    void gasShowsCrossover();
    void contactsAreFlat();
    void wetWellsAreWet();
    void invasionSeparatesResistivities();
    void shaleCompacts();
    void limestoneIsTight();
    void washOutSpoilsDensity();
    void perforationsAreInTheirFluid();
    void coreFollowsLogs();
    void lasReadsBack_data();
    void lasReadsBack();
    void textsHaveTheirColumns();

private:
    const Well &well(const QString &name) const;
    Field m_field;
};

static bool isPresent(double value)
{
    return value > -999.0;
}

static double topOf(const Well &well, const QString &name)
{
    for (const FormationTop &top : well.tops) {
        if (top.name == name)
            return top.mdM;
    }
    return nullValue;
}

static const QVector<double> &valuesOf(const Well &well, const QString &mnemonic)
{
    static const QVector<double> none;
    const Curve *curve = findCurve(well, mnemonic);
    return curve ? curve->values : none;
}

/// The mean of a curve over an interval (m); an absent curve or interval gives the null value.
static double mean(const Well &well, const QString &mnemonic, double topM, double bottomM)
{
    const QVector<double> &values = valuesOf(well, mnemonic);
    double sum = 0.0;
    int count = 0;
    for (int i = 0; i < values.size(); ++i) {
        const double mdM = well.depthsM.at(i);
        if (mdM >= topM && mdM <= bottomM && isPresent(values.at(i))) {
            sum += values.at(i);
            ++count;
        }
    }
    return count > 0 ? sum / count : nullValue;
}

/// Sandstone porosity from the density minus that from the neutron at a sample.
static double crossover(const Well &well, int sample)
{
    const double fromDensity = (2.65 - valuesOf(well, "RHOB").at(sample)) / 1.62;
    return fromDensity - (valuesOf(well, "NPHI").at(sample) + 0.035);
}

static bool inReservoir(const Well &well, int sample)
{
    const double mdM = well.depthsM.at(sample);
    return mdM > topOf(well, "Kestrane Upper Sst") && mdM < topOf(well, "Thessane Mudstone");
}

static bool isCleanSand(const Well &well, int sample)
{
    return valuesOf(well, "VSH_log").at(sample) < 0.3 && valuesOf(well, "PHIE_log").at(sample) > 0.14;
}

const Well &TestDemoField::well(const QString &name) const
{
    for (const Well &candidate : m_field.wells) {
        if (candidate.name == name)
            return candidate;
    }
    return m_field.wells.first();
}

void TestDemoField::initTestCase()
{
    m_field = makeField();
    QCOMPARE(m_field.wells.size(), 6);
}

void TestDemoField::isAlwaysTheSame()
{
    const Field again = makeField();
    QCOMPARE(again.wells.size(), m_field.wells.size());
    for (int i = 0; i < again.wells.size(); ++i) {
        QVERIFY(lasText(again.wells.at(i)) == lasText(m_field.wells.at(i)));
        QCOMPARE(topsText(again.wells.at(i)), topsText(m_field.wells.at(i)));
        QCOMPARE(perforationsText(again.wells.at(i)), perforationsText(m_field.wells.at(i)));
    }
}

void TestDemoField::hasSixWells()
{
    QStringList names;
    for (const Well &well : qAsConst(m_field.wells)) {
        names << well.name;
        QCOMPARE(well.uwi, well.name);
        QVERIFY(well.xM >= 500000 && well.xM <= 510000);
        QVERIFY(well.yM >= 6000000 && well.yM <= 6012500);
        QCOMPARE(well.groundM, -well.kbM); // the seabed
        QVERIFY(well.kbM >= 20 && well.kbM <= 35);
        QVERIFY(well.totalDepthM > well.depthsM.last());
        QVERIFY(well.depthsM.size() > 11000);
        QVERIFY(QStringList({"Oil", "Gas", ""}).contains(well.type));
    }
    QCOMPARE(names, QStringList({"Aldra-1", "Aldra-2", "Aldra-3 A", "Brisk-1", "Brisk-2", "Corrin-1 Deep"}));
    QVERIFY(well("Corrin-1 Deep").totalDepthM > 3200);
}

void TestDemoField::depthsConvertBothWays()
{
    const Well &inclined = well("Aldra-3 A");
    QVERIFY(inclined.inclinationDeg > 0.0);
    for (double mdM : {500.0, 1020.0, 1500.0, 2600.0})
        QVERIFY(qAbs(measuredDepth(inclined, depthBelowDatum(inclined, mdM)) - mdM) < 1.0e-6);
    const Well &vertical = well("Aldra-1");
    QCOMPARE(depthBelowDatum(vertical, 2000.0), 2000.0 - vertical.kbM);
}

void TestDemoField::topsAreOrderedAndLogged()
{
    for (const Well &well : qAsConst(m_field.wells)) {
        QVERIFY(well.tops.size() >= 12 && well.tops.size() <= 16);
        double aboveM = well.depthsM.first();
        for (const FormationTop &top : well.tops) {
            QVERIFY2(top.mdM > aboveM, qPrintable(well.name + " " + top.name));
            aboveM = top.mdM;
        }
        QVERIFY(aboveM < well.depthsM.last());
    }
}

// The contrast that text on a screen should have, and colours of neighbours that can be told apart.
void TestDemoField::topsCanBeReadOnWhite()
{
    const auto luminance = [](const FormationTop &top) {
        const auto linear = [](int value) {
            const double share = value / 255.0;
            return share <= 0.03928 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * linear(top.red) + 0.7152 * linear(top.green) + 0.0722 * linear(top.blue);
    };
    for (const Well &well : qAsConst(m_field.wells)) {
        const FormationTop *above = nullptr;
        for (const FormationTop &top : well.tops) {
            const double contrast = 1.05 / (luminance(top) + 0.05);
            QVERIFY2(contrast >= 4.5, qPrintable(top.name + QString::number(contrast)));
            if (above)
                QVERIFY2(qAbs(top.red - above->red) + qAbs(top.green - above->green) + qAbs(top.blue - above->blue)
                             > 70,
                         qPrintable(top.name));
            above = &top;
        }
    }
}

void TestDemoField::oneTopIsMissing()
{
    const QString name = "Ferrow Siltstone";
    for (const Well &well : qAsConst(m_field.wells))
        QCOMPARE(isPresent(topOf(well, name)), well.name != "Brisk-1");
    // The section between its neighbours is shorter by more than the missing formation.
    const auto sectionM = [](const Well &well) {
        return topOf(well, "Noctel Shale") - topOf(well, "Corvell Mudstone");
    };
    QVERIFY(sectionM(well("Aldra-2")) - sectionM(well("Brisk-1")) > 20.0);
}

void TestDemoField::curvesMatchDepths()
{
    const QStringList mnemonics{"GR",   "SP",   "CALI", "BS",  "LLD",     "LLS",      "MSFL",  "RHOB",
                                "DRHO", "NPHI", "DT",   "PEF", "VSH_log", "PHIE_log", "WS_log"};
    const QStringList units{"gapi", "mv",  "in",    "in",  "ohmm", "ohmm", "ohmm", "g/cc",
                            "g/cc", "v/v", "us/ft", "b/e", "v/v",  "v/v",  "v/v"};
    for (const Well &well : qAsConst(m_field.wells)) {
        for (int i = 0; i < mnemonics.size(); ++i) {
            const Curve *curve = findCurve(well, mnemonics.at(i));
            const bool withoutMicro = well.name == "Brisk-2" && mnemonics.at(i) == "MSFL";
            QCOMPARE(curve == nullptr, withoutMicro);
            if (withoutMicro)
                continue;
            QCOMPARE(curve->unit, units.at(i));
            QCOMPARE(curve->values.size(), well.depthsM.size());
        }
        for (int i = 1; i < well.depthsM.size(); ++i)
            QVERIFY(qAbs(well.depthsM.at(i) - well.depthsM.at(i - 1) - 0.1524) < 1.0e-6);
    }
}

void TestDemoField::valuesAreInRange_data()
{
    QTest::addColumn<double>("least");
    QTest::addColumn<double>("most");
    QTest::newRow("GR") << 10.0 << 160.0;
    QTest::newRow("SP") << -80.0 << 20.0;
    QTest::newRow("CALI") << 5.5 << 16.0;
    QTest::newRow("BS") << 6.0 << 12.25;
    for (const char *resistivity : {"LLD", "LLS", "MSFL"})
        QTest::newRow(resistivity) << 0.2 << 2000.0;
    QTest::newRow("RHOB") << 1.95 << 2.95;
    QTest::newRow("DRHO") << -0.1 << 0.4;
    QTest::newRow("NPHI") << -0.05 << 0.6;
    QTest::newRow("DT") << 45.0 << 190.0;
    QTest::newRow("PEF") << 1.0 << 8.0;
    for (const char *fraction : {"VSH_log", "PHIE_log", "WS_log"})
        QTest::newRow(fraction) << 0.0 << 1.0;
}

void TestDemoField::valuesAreInRange()
{
    QFETCH(double, least);
    QFETCH(double, most);
    for (const Well &well : qAsConst(m_field.wells)) {
        for (double value : valuesOf(well, QTest::currentDataTag())) {
            // Written so that a value that is not a number fails too.
            const bool good = value == nullValue || (value >= least && value <= most);
            QVERIFY2(good, qPrintable(well.name + " " + QString::number(value)));
        }
    }
}

void TestDemoField::logsHaveGaps()
{
    for (const Well &well : qAsConst(m_field.wells)) {
        QVERIFY(!isPresent(valuesOf(well, "RHOB").first()));
        QVERIFY(!isPresent(valuesOf(well, "DT").last()));
        QVERIFY(isPresent(valuesOf(well, "GR").first()));
        QVERIFY(isPresent(valuesOf(well, "BS").last()));
    }
    const Well &gappy = well("Aldra-2");
    QCOMPARE(mean(gappy, "NPHI", 2320, 2330), nullValue);
    QVERIFY(isPresent(mean(gappy, "NPHI", 2300, 2315)) && isPresent(mean(gappy, "NPHI", 2340, 2350)));
}

void TestDemoField::gasShowsCrossover()
{
    for (const char *name : {"Aldra-1", "Aldra-2", "Aldra-3 A"}) {
        const Well &gasWell = well(name);
        int gasSamples = 0;
        int crossed = 0;
        for (int i = 0; i < gasWell.depthsM.size(); ++i) {
            const double depthM = depthBelowDatum(gasWell, gasWell.depthsM.at(i));
            // The shaly top of the sand and the last metre above the oil show less of it.
            if (!inReservoir(gasWell, i) || !isCleanSand(gasWell, i) || valuesOf(gasWell, "VSH_log").at(i) > 0.2
                || depthM > m_field.gasOilContactM - 1)
                continue;
            ++gasSamples;
            crossed += crossover(gasWell, i) > 0.06 && valuesOf(gasWell, "LLD").at(i) > 15 ? 1 : 0;
        }
        QVERIFY(gasSamples > 15);
        QVERIFY(crossed > 0.9 * gasSamples);
    }
}

void TestDemoField::contactsAreFlat()
{
    for (const char *name : {"Aldra-1", "Aldra-2", "Aldra-3 A", "Brisk-1"}) {
        const Well &oilWell = well(name);
        double lowestGasM = 0.0;
        double lowestOilM = 0.0;
        for (int i = 0; i < oilWell.depthsM.size(); ++i) {
            if (!inReservoir(oilWell, i) || !isCleanSand(oilWell, i))
                continue;
            const double depthM = depthBelowDatum(oilWell, oilWell.depthsM.at(i));
            if (crossover(oilWell, i) > 0.09)
                lowestGasM = depthM;
            if (valuesOf(oilWell, "WS_log").at(i) < 0.65)
                lowestOilM = depthM;
        }
        if (oilWell.name == "Brisk-1")
            QCOMPARE(lowestGasM, 0.0);
        else
            QVERIFY2(qAbs(lowestGasM - m_field.gasOilContactM) < 1.5, qPrintable(QString::number(lowestGasM)));
        // Capillary water rises above the contact, never the other way round.
        QVERIFY2(lowestOilM > m_field.oilWaterContactM - 5.0, qPrintable(QString::number(lowestOilM)));
        QVERIFY2(lowestOilM < m_field.oilWaterContactM + 0.8, qPrintable(QString::number(lowestOilM)));
    }
}

void TestDemoField::wetWellsAreWet()
{
    for (const char *name : {"Brisk-2", "Corrin-1 Deep"}) {
        const Well &wetWell = well(name);
        QCOMPARE(wetWell.type, QString());
        QVERIFY(depthBelowDatum(wetWell, topOf(wetWell, "Kestrane Upper Sst")) > m_field.oilWaterContactM);
        const double lowerM = topOf(wetWell, "Kestrane Lower Sst");
        QVERIFY(mean(wetWell, "LLD", lowerM, topOf(wetWell, "Thessane Mudstone")) < 3.0);
        QVERIFY(mean(wetWell, "WS_log", lowerM, topOf(wetWell, "Thessane Mudstone")) > 0.9);
    }
}

void TestDemoField::invasionSeparatesResistivities()
{
    const Well &oilWell = well("Brisk-1");
    const double contactM = measuredDepth(oilWell, m_field.oilWaterContactM);
    const double oilTopM = contactM - 20;
    QVERIFY(mean(oilWell, "LLD", oilTopM, contactM - 8) > 1.3 * mean(oilWell, "LLS", oilTopM, contactM - 8));
    QVERIFY(mean(oilWell, "LLS", oilTopM, contactM - 8) > 1.3 * mean(oilWell, "MSFL", oilTopM, contactM - 8));
    // Fresh filtrate turns the order round in the water leg.
    const double waterM = contactM + 8;
    QVERIFY(mean(oilWell, "LLD", contactM + 1, waterM) < 0.9 * mean(oilWell, "LLS", contactM + 1, waterM));
    QVERIFY(mean(oilWell, "LLS", contactM + 1, waterM) < 0.9 * mean(oilWell, "MSFL", contactM + 1, waterM));
}

void TestDemoField::shaleCompacts()
{
    for (const Well &well : qAsConst(m_field.wells)) {
        const double shallowM = topOf(well, "Quillane Shale");
        const double deepM = topOf(well, "Noctel Shale") - 80.0;
        QVERIFY(mean(well, "DT", shallowM, shallowM + 80) > mean(well, "DT", deepM, deepM + 75) + 8.0);
        QVERIFY(mean(well, "RHOB", shallowM, shallowM + 80) < mean(well, "RHOB", deepM, deepM + 75) - 0.04);
    }
}

void TestDemoField::limestoneIsTight()
{
    for (const Well &well : qAsConst(m_field.wells)) {
        const double topM = topOf(well, "Dunvar Limestone") + 2.0;
        QVERIFY(mean(well, "GR", topM, topM + 12) < 35.0);
        QVERIFY(mean(well, "RHOB", topM, topM + 12) > 2.6);
        QVERIFY(mean(well, "NPHI", topM, topM + 12) < 0.08);
        QVERIFY(mean(well, "LLD", topM, topM + 12) > 20.0 * mean(well, "LLD", topM - 20, topM - 4));
    }
}

void TestDemoField::washOutSpoilsDensity()
{
    const Well &caved = well("Aldra-2");
    const double topM = 1897;
    const double bottomM = 1918;
    QVERIFY(mean(caved, "CALI", topM, bottomM) > 8.5 + 2.0);
    QVERIFY(mean(caved, "DRHO", topM, bottomM) > 0.1);
    QVERIFY(mean(caved, "RHOB", topM, bottomM) < mean(caved, "RHOB", 1925, 1945) - 0.15);
    QVERIFY(mean(caved, "DRHO", 1925, 1945) < 0.03);
}

void TestDemoField::perforationsAreInTheirFluid()
{
    const QStringList allowed{"Oil", "Gas", "Water", "Dry", "Oil-Gas", "Oil-Water", "Gas-Water", "Not Tested"};
    int hydrocarbons = 0;
    for (const Well &well : qAsConst(m_field.wells)) {
        QVERIFY(!well.perforations.isEmpty());
        for (const Perforation &perforation : well.perforations) {
            QVERIFY(allowed.contains(perforation.zoneType));
            QVERIFY(perforation.topM < perforation.bottomM);
            QVERIFY(perforation.bottomM < well.totalDepthM);
            const double topM = depthBelowDatum(well, perforation.topM);
            const double bottomM = depthBelowDatum(well, perforation.bottomM);
            if (perforation.zoneType == "Gas")
                QVERIFY(bottomM < m_field.gasOilContactM);
            if (perforation.zoneType == "Oil")
                QVERIFY(topM > m_field.gasOilContactM && bottomM < m_field.oilWaterContactM);
            if (perforation.zoneType == "Oil-Gas")
                QVERIFY(topM < m_field.gasOilContactM && bottomM > m_field.gasOilContactM);
            if (perforation.zoneType == "Water")
                QVERIFY(topM > m_field.oilWaterContactM);
            if (perforation.zoneType.contains("Oil") || perforation.zoneType == "Gas") {
                ++hydrocarbons;
                QVERIFY(perforation.topM > topOf(well, "Kestrane Upper Sst"));
                QVERIFY(mean(well, "WS_log", perforation.topM, perforation.bottomM) < 0.6);
            }
        }
    }
    QVERIFY(hydrocarbons >= 6);
}

void TestDemoField::coreFollowsLogs()
{
    int coredWells = 0;
    for (const Well &well : qAsConst(m_field.wells)) {
        coredWells += well.calibrations.isEmpty() ? 0 : 1;
        for (const CalibrationSet &set : well.calibrations) {
            QVERIFY(set.group == "Porosity" || set.group == "Density");
            QVERIFY(set.points.size() > 40);
            const QString mnemonic = set.group == "Porosity" ? "PHIE_log" : "RHOB";
            double difference = 0.0;
            for (const CalibrationPoint &point : set.points) {
                const double logged = mean(well, mnemonic, point.mdM - 0.2, point.mdM + 0.2);
                QVERIFY(isPresent(logged));
                difference += point.value - logged;
            }
            QVERIFY(qAbs(difference / set.points.size()) < 0.01);
        }
    }
    QCOMPARE(coredWells, 2);
}

void TestDemoField::lasReadsBack_data()
{
    QTest::addColumn<bool>("inFeet");
    QTest::newRow("metres") << false;
    QTest::newRow("feet") << true;
}

void TestDemoField::lasReadsBack()
{
    QFETCH(bool, inFeet);
    for (const Well &well : qAsConst(m_field.wells)) {
        const QByteArray text = inFeet ? lasTextInFeet(well) : lasText(well);
        QMap<QByteArray, QByteArray> header;
        QList<QByteArray> curves;
        QVector<double> depths;
        char section = ' ';
        for (const QByteArray &line : text.split('\n')) {
            if (line.isEmpty() || line.startsWith('#'))
                continue;
            if (line.startsWith('~')) {
                section = line.at(1);
            } else if (section == 'V' || section == 'W') {
                const QByteArray field = line.left(line.indexOf(':')).simplified();
                header.insert(line.left(line.indexOf('.')), field.mid(field.indexOf(' ') + 1));
            } else if (section == 'C') {
                curves.append(line.left(line.indexOf('.')));
            } else if (section == 'A') {
                const QList<QByteArray> tokens = line.simplified().split(' ');
                QCOMPARE(tokens.size(), well.curves.size() + 1);
                const int row = depths.size();
                depths.append(tokens.first().toDouble());
                for (int i = 0; i < well.curves.size(); ++i)
                    QVERIFY(qAbs(tokens.at(i + 1).toDouble() - well.curves.at(i).values.at(row)) < 1.0e-6);
            }
        }
        QCOMPARE(curves.size(), well.curves.size() + 1);
        QCOMPARE(curves.first(), QByteArray("DEPT"));
        QCOMPARE(depths.size(), well.depthsM.size());
        QCOMPARE(header.value("VERS"), QByteArray("2.0"));
        QCOMPARE(header.value("NULL"), QByteArray("-999.25"));
        QCOMPARE(header.value("UWI"), well.name.toLatin1());
        QCOMPARE(header.value("STRT").toDouble(), depths.first());
        QCOMPARE(header.value("STOP").toDouble(), depths.last());
        QCOMPARE(header.value("STEP").toDouble(), inFeet ? 0.5 : 0.1524);
        QCOMPARE(header.value("X").toDouble(), well.xM);
        QCOMPARE(header.value("Y").toDouble(), well.yM);
        QCOMPARE(header.value("EKB").toDouble(), well.kbM);
        QCOMPARE(header.value("EGL").toDouble(), well.groundM);
        const double metresPerUnit = inFeet ? 0.3048 : 1.0;
        QVERIFY(qAbs(depths.last() * metresPerUnit - well.depthsM.last()) < 1.0e-4);
        QVERIFY(header.value("TD").toDouble() >= depths.last() * metresPerUnit);
        QCOMPARE(text.contains("STRT.F"), inFeet);
    }
}

void TestDemoField::textsHaveTheirColumns()
{
    const auto check = [](const QByteArray &text, const QByteArray &header, int rows) {
        const QList<QByteArray> lines = text.trimmed().split('\n');
        QCOMPARE(lines.first(), header);
        QCOMPARE(lines.size(), rows + 1);
        for (const QByteArray &line : lines)
            QCOMPARE(line.count('\t'), header.count('\t'));
    };
    const Well &cored = well("Aldra-1");
    check(topsText(cored), "Name\tDepth", cored.tops.size());
    check(perforationsText(cored), "Name\tStart Depth\tEnd Depth\tZone Type", cored.perforations.size());
    const CalibrationSet &core = cored.calibrations.first();
    check(calibrationText(core), "Depth\tValue", core.points.size());
}

QTEST_APPLESS_MAIN(TestDemoField)
#include "tst_demofield.moc"
