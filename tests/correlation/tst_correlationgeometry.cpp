#include "correlation/correlationgeometry.h"

#include "datastore/textfields.h"
#include "datastore/wellscatalogue.h"

#include <QTest>

#include <algorithm>
#include <limits>

using namespace correlation;
using logview::DepthAxis;

namespace {

const double notANumber = std::numeric_limits<double>::quiet_NaN();

WellColumn column(double left, double right, const QHash<QString, PlacedMarker> &markers, float bottom = 2000)
{
    WellColumn well;
    well.left = left;
    well.right = right;
    well.axis = axisOf({bottom, 0, {}}, logview::MeasuredDepth, logview::Metre, 1000);
    well.markers = markers;
    return well;
}

// y of a depth at 1:1000 from the top.
double y(double depthM)
{
    return depthM / 1000 * 100 * 96 / 2.54;
}

WellMarker marker(const QString &name, double depthM, const QColor &color = Qt::red)
{
    WellMarker result;
    result.name = name;
    result.subseaDepth = depthM;
    result.color = color;
    return result;
}

CorrelationZone zone(const QString &start, const QString &end)
{
    CorrelationZone result;
    result.name = "Zone";
    result.start = start;
    result.end = end;
    result.color = "#102030";
    return result;
}

CorrelationZone typedZone(const QString &start, const QString &end)
{
    CorrelationZone result = zone(start, end);
    result.isStartUserDepth = true;
    result.isEndUserDepth = true;
    return result;
}

bool near(const QPointF &a, double x, double y)
{
    return std::abs(a.x() - x) < 1e-9 && std::abs(a.y() - y) < 0.01;
}

} // namespace

class tst_correlationgeometry : public QObject
{
    Q_OBJECT

private slots:
    void extents_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<int>("unit");
        QTest::addColumn<float>("top");
        QTest::addColumn<float>("bottom");
        QTest::newRow("MD") << 0 << 0 << 0.0F << 3000.0F;
        QTest::newRow("TVDKB") << 1 << 0 << 0.0F << 3000.0F;
        QTest::newRow("TVDSS") << 2 << 0 << -25.0F << 2975.0F;
        QTest::newRow("MD in feet") << 0 << 1 << 0.0F << float(3000 * 3.28084);
        QTest::newRow("TVDSS in feet") << 2 << 1 << float(-25 * 3.28084) << float(2975 * 3.28084);
    }

    void extents()
    {
        QFETCH(int, type);
        QFETCH(int, unit);
        const DepthAxis axis = axisOf({3000, 25, {}}, logview::DepthType(type), logview::DepthUnit(unit), 1000);
        QTEST(axis.start, "top");
        QTEST(axis.end, "bottom");
        QCOMPARE(axis.height, float((double(axis.end) - double(axis.start)) / 1000 * 100 * 96 / 2.54));
    }

    void flatteningBeginsAKilometreAboveTheMarker()
    {
        const WellExtent well{3000, 25, 2000.0};
        QCOMPARE(axisOf(well, logview::MeasuredDepth, logview::Metre, 1000).start, 1000.0F);
        QCOMPARE(axisOf(well, logview::MeasuredDepth, logview::Metre, 1000).end, 3000.0F);
        QCOMPARE(axisOf(well, logview::TvdSubsea, logview::Metre, 1000).start, 975.0F);
        QCOMPARE(axisOf(well, logview::TvdSubsea, logview::Metre, 1000).end, 2975.0F);
        QCOMPARE(axisOf(well, logview::MeasuredDepth, logview::Feet, 1000).start, float(1000 * 3.28084));
        QCOMPARE(axisOf({3000, 25, 400.0}, logview::MeasuredDepth, logview::Metre, 1000).start, -600.0F);
    }

    void oddWellsAndScalesAreNotHigh()
    {
        const auto height = [](double totalDepth, float scale, std::optional<double> flat = {}) {
            return axisOf({totalDepth, 0, flat}, logview::MeasuredDepth, logview::Metre, scale).height;
        };
        QVERIFY(height(3000, 1000) > 0);
        QCOMPARE(height(3000, 0), 0.0F);
        QCOMPARE(height(3000, -5), 0.0F);
        QCOMPARE(height(3000, std::numeric_limits<float>::quiet_NaN()), 0.0F);
        QCOMPARE(height(0, 1000), 0.0F);
        QCOMPARE(height(-10, 1000), 0.0F);
        QCOMPARE(height(notANumber, 1000), 0.0F);
        QCOMPARE(height(3000, 1000, 9000.0), 0.0F); // the tracks would end above where they begin
        QVERIFY(height(1e30, 1) <= logview::maximumTrackHeight);
    }

    void wellsStandEightyPixelsApart()
    {
        QCOMPARE(nextLeft(400), 480.0);
        QCOMPARE(nextLeft(400.9), 480.0);
        QCOMPARE(nextLeft(0), 80.0);
    }

    void tracksAreAsWideAsTheirInches()
    {
        QCOMPARE(trackWidthPx(1.2, 96), 1.2 * 96);
        QCOMPARE(trackWidthPx(2, 192), 384.0);
        for (const double width : {0.0, -1.0, notANumber, std::numeric_limits<double>::infinity()})
            QCOMPARE(trackWidthPx(width, 96), 1.2 * 96);
        QCOMPARE(trackWidthPx(1, 0), 96.0);
    }

    void markersGoByTheirFirstDepth()
    {
        const auto byName =
            markersByName({marker("A", 10), marker(" A ", 20), marker("B", notANumber), marker("B", 30)});
        QCOMPARE(byName.size(), 2);
        QCOMPARE(byName.value("A").depthM, 10.0);
        QCOMPARE(byName.value("B").depthM, 30.0);
    }

    void yFollowsTheReference()
    {
        WellColumn well = column(0, 100, {});
        QVERIFY(std::abs(*well.toY(1000) - y(1000)) < 0.01);
        QVERIFY(*well.toY(-100) < 0); // above the tracks
        QVERIFY(*well.toY(2500) > well.axis.height);
        QVERIFY(!well.toY(notANumber));
        well.reference = {logview::TvdSubsea, logview::Feet, 25};
        well.axis = axisOf({2000, 25, {}}, logview::TvdSubsea, logview::Feet, 1000);
        QVERIFY(std::abs(*well.toY(1000) - y(1000 * 3.28084)) < 0.01); // 25 m above the sea is the top
        well.axis = {};
        well.axis.end = well.axis.start;
        QVERIFY(!well.toY(1000));
    }

    void equalMarkersOfNeighboursAreJoined()
    {
        const QVector<WellColumn> wells{
            column(0, 400, {{"A", {500, Qt::red}}, {"B", {900, Qt::green}}}),
            column(480, 800, {{"A", {600, Qt::blue}}, {"B", {950, Qt::white}}}),
            column(880, 1000, {{"A", {700, QColor(1, 2, 3)}}}),
        };
        const auto lines = connectorLines(wells, {"B", "A", "none"});
        QCOMPARE(lines.size(), 3);
        QVERIFY(near(lines.at(0).line.p1(), 400, y(900)));
        QVERIFY(near(lines.at(0).line.p2(), 480, y(950)));
        QCOMPARE(lines.at(0).color, QColor(Qt::black)); // white would not be seen
        QVERIFY(near(lines.at(1).line.p1(), 400, y(500)));
        QVERIFY(near(lines.at(1).line.p2(), 480, y(600)));
        QCOMPARE(lines.at(1).color, QColor(Qt::blue));
        QVERIFY(near(lines.at(2).line.p1(), 800, y(600)));
        QVERIFY(near(lines.at(2).line.p2(), 880, y(700)));
        QCOMPARE(lines.at(2).color, QColor(1, 2, 3));
    }

    void linesMayBeginAboveTheirWells()
    {
        const QVector<WellColumn> wells{column(0, 400, {{"A", {-100, Qt::red}}}),
                                        column(480, 800, {{"A", {-50, Qt::red}}})};
        const auto lines = connectorLines(wells, {"A"});
        QCOMPARE(lines.size(), 1);
        QVERIFY(near(lines.at(0).line.p1(), 400, y(-100)));
        QVERIFY(near(lines.at(0).line.p2(), 480, y(-50)));
    }

    void aWellWithoutTheMarkerEndsTheLine()
    {
        const QVector<WellColumn> wells{column(0, 1, {{"A", {500, Qt::red}}}), column(2, 3, {}),
                                        column(4, 5, {{"A", {700, Qt::red}}})};
        QVERIFY(connectorLines(wells, {"A"}).isEmpty());
        QVERIFY(connectorLines({wells.at(0)}, {"A"}).isEmpty());
        QVERIFY(connectorLines({}, {"A"}).isEmpty());
    }

    void zonesLieBetweenNeighbours()
    {
        const QVector<WellColumn> wells{column(0, 400, {{"T", {500, Qt::red}}, {"B", {900, Qt::red}}}),
                                        column(480, 800, {{"T", {600, Qt::red}}, {"B", {950, Qt::red}}})};
        const auto polygons = zonePolygons(wells, {zone("T", " B")});
        QCOMPARE(polygons.size(), 1);
        QCOMPARE(polygons.at(0).color, QColor(0x10, 0x20, 0x30, 80));
        const QPolygonF polygon = polygons.at(0).polygon;
        QCOMPARE(polygon.size(), 4);
        QVERIFY(near(polygon.at(0), 400, y(500)));
        QVERIFY(near(polygon.at(1), 480, y(600)));
        QVERIFY(near(polygon.at(2), 480, y(950)));
        QVERIFY(near(polygon.at(3), 400, y(900)));
    }

    void typedDepthsAreTheSameInAllWells()
    {
        const QVector<WellColumn> wells{column(0, 400, {}), column(480, 800, {}, 3000), column(880, 900, {})};
        const auto polygons = zonePolygons(wells, {typedZone("100.5", "0")});
        QCOMPARE(polygons.size(), 2);
        QVERIFY(near(polygons.at(1).polygon.at(0), 800, y(100.5)));
        QVERIFY(near(polygons.at(1).polygon.at(2), 880, 0));
    }

    // A zone's fields stand between bars: a bar in a marker's name is a broken one there.
    void zonesAtMarkersWithABar()
    {
        const auto well = [](double left, double right) {
            return column(left, right, {{"Top | 1", {10, {}}}, {"Base", {20, {}}}, {"Base|", {30, {}}}});
        };
        const QVector<WellColumn> wells{well(0, 1), well(2, 3)};
        const auto bottom = [&wells](const QString &start, const QString &end) {
            const auto polygons = zonePolygons(wells, {zone(start, end)});
            return polygons.size() == 1 ? polygons.first().polygon.at(2).y() : -1.0;
        };
        QCOMPARE(bottom(QString::fromUtf8("Top \u00a6 1"), "Base"), wells.at(1).toY(20).value());
        QCOMPARE(bottom("Base", QString::fromUtf8("Base\u00a6 ")), wells.at(1).toY(30).value());
        QCOMPARE(bottom("Top | 1", "Base"), wells.at(1).toY(20).value()); // before it is saved
        QCOMPARE(bottom("Top / 1", "Base"), -1.0);
        // A marker that is called so itself goes first.
        const QStringList names{"A|B", QString::fromUtf8("A\u00a6B")};
        QCOMPARE(textfields::indexOfField(names, names.at(1) + ' '), 1);
        QCOMPARE(textfields::indexOfField(names.mid(0, 1), names.at(1)), 0);
    }

    void zonesThatAreLeftOut()
    {
        const QHash<QString, PlacedMarker> markers{{"T", {500, Qt::red}}, {"-", {-1, Qt::red}}, {"7", {7, Qt::red}}};
        const QVector<WellColumn> wells{column(0, 1, markers), column(2, 3, markers), column(4, 5, {})};
        QCOMPARE(zonePolygons(wells, {zone("T", "T")}).size(), 1); // the third well has no marker
        QVERIFY(zonePolygons(wells, {zone("T", "missing")}).isEmpty());
        QVERIFY(zonePolygons(wells, {zone("-", "T")}).isEmpty());
        QVERIFY(zonePolygons(wells, {zone("T", "-")}).isEmpty());
        QVERIFY(zonePolygons(wells, {typedZone("-1", "10")}).isEmpty());
        QVERIFY(zonePolygons(wells, {typedZone("text", "10")}).isEmpty());
        QVERIFY(zonePolygons(wells, {typedZone("T", "10")}).isEmpty()); // a typed text is no marker
        QCOMPARE(zonePolygons(wells, {zone("7", "T")}).size(), 1); // a marker may be called like a number
        CorrelationZone hidden = zone("T", "T");
        hidden.isVisible = false;
        QVERIFY(zonePolygons(wells, {hidden}).isEmpty());
    }

    void aZoneWithoutAColorIsLightGrey()
    {
        CorrelationZone grey = typedZone("1", "2");
        grey.color = QString();
        const auto polygons = zonePolygons({column(0, 1, {}), column(2, 3, {})}, {grey});
        QCOMPARE(polygons.at(0).color, QColor(0xc0, 0xc0, 0xc0, 80));
    }

    void theSceneIsAsHighAsItsHighestWell()
    {
        QCOMPARE(sceneHeight({}), 150.0);
        const WellColumn low = column(0, 1, {}, 1);
        QCOMPARE(sceneHeight({low}), 150.0);
        const WellColumn high = column(0, 1, {}, 3000);
        QCOMPARE(sceneHeight({low, high, low}), double(high.axis.height) + 50);
    }
};

QTEST_APPLESS_MAIN(tst_correlationgeometry)
#include "tst_correlationgeometry.moc"
