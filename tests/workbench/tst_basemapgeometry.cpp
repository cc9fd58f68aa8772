#include "mapwells.h"
#include "support/testmain.h"

#include <cmath>

using namespace map_wells;
using namespace workbench;

namespace {

bool overlap(const QVector<MapLabel> &labels)
{
    for (int i = 0; i < labels.size(); ++i)
        for (int j = i + 1; j < labels.size(); ++j)
            if (labels.at(i).rect.intersects(labels.at(j).rect))
                return true;
    return false;
}

} // namespace

class TestBaseMapGeometry : public QObject
{
    Q_OBJECT

private slots:
    void frameFitsAllWellsWithOneScale();
    void frameOfOneOrCoincidentWellsHasTheSmallestSpan();
    void frameWithoutWellsIsFinite();
    void wellsWithoutPosition_data();
    void wellsWithoutPosition();
    void niceNumbers_data();
    void niceNumbers();
    void ticksAreRoundAndApart();
    void scaleBarIsNiceAndNotTooLong_data();
    void scaleBarIsNiceAndNotTooLong();
    void labelsNeitherOverlapNorLeave();
    void selectedLabelIsAlwaysThere();
    void labelsOfPointsThatAreNotFinite();
    void symbolsByType();
    void clickFindsNearestAndCyclesThroughCoincident();
};

void TestBaseMapGeometry::frameFitsAllWellsWithOneScale()
{
    const MapFrame frame({at(500000, 6000000), at(504000, 6001000)}, QRectF(10, 20, 500, 400), 50);
    // 4000 m on 400 pixels decide; 1000 m would need 300.
    QCOMPARE(frame.metresPerPixel(), 10.0);
    QCOMPARE(frame.toPixel(500000, 6000000), QPointF(60, 270));
    QCOMPARE(frame.toPixel(504000, 6001000), QPointF(460, 170)); // north is up
    QCOMPARE(frame.toMap(QPointF(460, 170)), QPointF(504000, 6001000));
}

void TestBaseMapGeometry::frameOfOneOrCoincidentWellsHasTheSmallestSpan()
{
    for (const QVector<MapWell> &wells :
         {QVector<MapWell>{at(700, 800)}, QVector<MapWell>{at(700, 800), at(700, 800)}}) {
        const MapFrame frame(wells, QRectF(0, 0, 300, 200), 50);
        QCOMPARE(frame.metresPerPixel(), MapFrame::smallestSpanM / 100);
        QCOMPARE(frame.toPixel(700, 800), QPointF(150, 100));
    }
}

void TestBaseMapGeometry::frameWithoutWellsIsFinite()
{
    const MapFrame frame({}, QRectF(0, 0, 300, 200), 20);
    QVERIFY(std::isfinite(frame.toPixel(1, 1).x()));
    QCOMPARE(MapFrame().toPixel(0, 0), QPointF(0, 0));
    const MapFrame tiny({at(1, 1), at(9, 9)}, QRectF(0, 0, 0, 0), 20);
    QVERIFY(tiny.metresPerPixel() > 0);
    QVERIFY(std::isfinite(tiny.toPixel(5, 5).y()));
}

void TestBaseMapGeometry::wellsWithoutPosition_data()
{
    QTest::addColumn<double>("x");
    QTest::addColumn<double>("y");
    QTest::newRow("origin stands for none") << 0.0 << 0.0;
    QTest::newRow("nan x") << notANumber << 5.0;
    QTest::newRow("nan y") << 5.0 << notANumber;
    QTest::newRow("infinite") << infinity << 5.0;
    QTest::newRow("undefined value of the store") << 1e30 << 1e30;
}

void TestBaseMapGeometry::wellsWithoutPosition()
{
    QFETCH(double, x);
    QFETCH(double, y);
    QVERIFY(!hasPosition(at(x, y)));
    QVERIFY(hasPosition(at(0, 1)));
    // It leaves no mark on the frame of the others.
    const QRectF area(0, 0, 500, 500);
    const MapFrame with({at(1000, 1000), at(5000, 5000), at(x, y)}, area, 50);
    QCOMPARE(with.toPixel(3000, 3000), QPointF(250, 250));
    QCOMPARE(with.metresPerPixel(), 10.0);
}

void TestBaseMapGeometry::niceNumbers_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<double>("above");
    QTest::addColumn<double>("below");
    QTest::newRow("1") << 1.0 << 1.0 << 1.0;
    QTest::newRow("1.1") << 1.1 << 2.0 << 1.0;
    QTest::newRow("2") << 2.0 << 2.0 << 2.0;
    QTest::newRow("4.9") << 4.9 << 5.0 << 2.0;
    QTest::newRow("5") << 5.0 << 5.0 << 5.0;
    QTest::newRow("999") << 999.0 << 1000.0 << 500.0;
    QTest::newRow("1000") << 1000.0 << 1000.0 << 1000.0;
    QTest::newRow("0.03") << 0.03 << 0.05 << 0.02;
    QTest::newRow("0") << 0.0 << 1.0 << 1.0;
    QTest::newRow("negative") << -3.0 << 1.0 << 1.0;
    QTest::newRow("nan") << notANumber << 1.0 << 1.0;
    QTest::newRow("infinite") << infinity << 1.0 << 1.0;
}

void TestBaseMapGeometry::niceNumbers()
{
    QFETCH(double, value);
    QFETCH(double, above);
    QFETCH(double, below);
    QCOMPARE(niceNumberAbove(value), above);
    QCOMPARE(niceNumberBelow(value), below);
}

void TestBaseMapGeometry::ticksAreRoundAndApart()
{
    const MapFrame frame({at(500000, 6000000), at(504000, 6003000)}, QRectF(0, 0, 500, 400), 50);
    const QVector<MapTick> eastings = eastingTicks(frame, 80); // 10 m a pixel: every 1000 m
    QStringList texts;
    for (const MapTick &tick : eastings)
        texts.append(tick.text);
    QCOMPARE(texts,
             (QStringList{QStringLiteral("500000"), QStringLiteral("501000"), QStringLiteral("502000"),
                          QStringLiteral("503000"), QStringLiteral("504000")}));
    QCOMPARE(eastings.at(0).pixel, frame.toPixel(500000, 0).x());
    const QVector<MapTick> northings = northingTicks(frame, 80);
    QCOMPARE(northings.first().text, QStringLiteral("6000000"));
    QCOMPARE(northings.first().pixel, 350.0); // 150 pixels below the centre
    QVERIFY(northings.first().pixel - northings.at(1).pixel >= 80);
    for (const MapTick &tick : northings)
        QVERIFY(tick.pixel >= 0 && tick.pixel <= 400);
    // Around the origin there is no "-0".
    for (const MapTick &tick : eastingTicks(MapFrame({at(-500, 1), at(500, 1)}, QRectF(0, 0, 500, 400), 50), 80))
        QVERIFY(tick.text != QLatin1String("-0"));
}

void TestBaseMapGeometry::scaleBarIsNiceAndNotTooLong_data()
{
    QTest::addColumn<double>("spanM"); // on 400 pixels
    QTest::addColumn<QString>("text");
    QTest::newRow("4 km") << 4000.0 << "1 km";
    QTest::newRow("1 km") << 1000.0 << "200 m";
    QTest::newRow("100 km") << 100000.0 << "20 km";
    QTest::newRow("a point") << 0.0 << "50 m";
}

void TestBaseMapGeometry::scaleBarIsNiceAndNotTooLong()
{
    QFETCH(double, spanM);
    QFETCH(QString, text);
    const MapFrame frame({at(1000, 1000), at(1000 + spanM, 1000)}, QRectF(0, 0, 500, 500), 50);
    const ScaleBar bar = scaleBar(frame, 110);
    QCOMPARE(bar.text, text);
    QVERIFY(bar.lengthPx <= 110 + 1e-6);
    QVERIFY(bar.lengthPx > 40);
    QCOMPARE(bar.lengthPx * frame.metresPerPixel(), bar.lengthM);
}

void TestBaseMapGeometry::labelsNeitherOverlapNorLeave()
{
    const QVector<MapWell> wells = manyWells(2000);
    const QRectF area(0, 0, 400, 300);
    const MapFrame frame(wells, area, 30);
    QVector<QPointF> points;
    for (const MapWell &well : wells)
        points.append(frame.toPixel(well.x, well.y));
    const QVector<MapLabel> labels = placeLabels(
        points, [](int) { return QSizeF(40, 12); }, {area, {QRectF(350, 0, 50, 50)}, 0.5}, -1);
    QVERIFY(labels.size() > 5);
    QVERIFY(labels.size() < wells.size());
    QVERIFY(!overlap(labels));
    for (const MapLabel &label : labels) {
        QVERIFY(area.contains(label.rect));
        QVERIFY(!label.rect.intersects(QRectF(350, 0, 50, 50)));
        for (const QPointF &point : points)
            QVERIFY(!label.rect.contains(point));
    }
    // Two wells apart: both names, each right of its point.
    const QVector<MapLabel> two =
        placeLabels({QPointF(50, 50), QPointF(200, 200)}, [](int) { return QSizeF(40, 12); }, {area, {}, 5});
    QCOMPARE(two.size(), 2);
    QCOMPARE(two.first().rect, QRectF(57, 44, 40, 12));
    // At the right edge the name changes sides.
    const QVector<MapLabel> edge = placeLabels({QPointF(390, 50)}, [](int) { return QSizeF(40, 12); }, {area, {}, 5});
    QCOMPARE(edge.first().rect, QRectF(343, 44, 40, 12));
}

void TestBaseMapGeometry::selectedLabelIsAlwaysThere()
{
    QVector<QPointF> points(60, QPointF(100, 100)); // all at one place
    const auto size = [](int) { return QSizeF(90, 20); };
    const LabelSpace space{QRectF(0, 0, 200, 200), {}, 4};
    QVERIFY(placeLabels(points, size, space).size() < 10);
    for (int selected : {0, 30, 59}) {
        const QVector<MapLabel> labels = placeLabels(points, size, space, selected);
        QCOMPARE(labels.first().well, selected);
        QVERIFY(!overlap(labels));
    }
    // Even where no place is free.
    const QVector<MapLabel> forced = placeLabels({QPointF(10, 10)}, size, {QRectF(0, 0, 20, 20), {}, 4}, 0);
    QCOMPARE(forced.size(), 1);
}

void TestBaseMapGeometry::labelsOfPointsThatAreNotFinite()
{
    const auto size = [](int) { return QSizeF(20, 10); };
    const LabelSpace space{QRectF(0, 0, 200, 200), {}, 4};
    const QVector<MapLabel> labels = placeLabels(
        {QPointF(notANumber, 5), QPointF(100, 100), QPointF(infinity, 5), QPointF(1e300, 5)}, size, space, 0);
    QCOMPARE(labels.size(), 1);
    QCOMPARE(labels.first().well, 1);
    QVERIFY(placeLabels({}, size, space, 3).isEmpty());
}

void TestBaseMapGeometry::clickFindsNearestAndCyclesThroughCoincident()
{
    const QVector<QPointF> points{{10, 10}, {50, 50}, {50, 50}, {notANumber, notANumber}, {56, 50}, {50, 50}};
    QCOMPARE(wellAt(points, {12, 12}, 10), 0);
    QCOMPARE(wellAt(points, {25, 25}, 10), -1);
    QCOMPARE(wellAt(points, {55, 50}, 10), 4);
    QCOMPARE(wellAt(points, {50, 51}, 10), 1);
    QCOMPARE(wellAt(points, {50, 51}, 10, 1), 2);
    QCOMPARE(wellAt(points, {50, 51}, 10, 2), 5);
    QCOMPARE(wellAt(points, {50, 51}, 10, 5), 1);
    QCOMPARE(wellAt(points, {50, 51}, 10, 0), 1);
    QCOMPARE(wellAt({}, {0, 0}, 10), -1);
}

void TestBaseMapGeometry::symbolsByType()
{
    QCOMPARE(mapSymbolOf(host::OilWell), MapSymbol::Oil);
    QCOMPARE(mapSymbolOf(host::GasWell), MapSymbol::Gas);
    QCOMPARE(mapSymbolOf(host::OilGasWell), MapSymbol::OilAndGas);
    QCOMPARE(mapSymbolOf(host::DryWell), MapSymbol::Dry);
    QCOMPARE(mapSymbolOf(host::NoWellType), MapSymbol::Other);
    QCOMPARE(mapSymbolOf(17), MapSymbol::Other);
}

LORVA_TEST_MAIN(TestBaseMapGeometry)
#include "tst_basemapgeometry.moc"
