#include "logview/textrecorder.h"
#include "support/grabbed.h"
#include "support/testmain.h"
#include "workbench/basemap.h"
#include "workbench/mapsymbols.h"

#include <QHelpEvent>
#include <QSignalSpy>
#include <QTest>
#include <QToolTip>

#include <cmath>
#include <limits>

using namespace workbench;

namespace {

const double notANumber = std::numeric_limits<double>::quiet_NaN();
const double infinity = std::numeric_limits<double>::infinity();

MapWell at(double x, double y, int type = host::NoWellType)
{
    return {QStringLiteral("W"), x, y, type};
}

QVector<MapWell> manyWells(int count)
{
    QVector<MapWell> wells;
    for (int i = 0; i < count; ++i)
        wells.append({QStringLiteral("Well-%1").arg(i), 500000.0 + (i * 7919) % 10000,
                      6000000.0 + (i * 104729) % 9000, i % 5});
    return wells;
}

bool overlap(const QVector<MapLabel> &labels)
{
    for (int i = 0; i < labels.size(); ++i)
        for (int j = i + 1; j < labels.size(); ++j)
            if (labels.at(i).rect.intersects(labels.at(j).rect))
                return true;
    return false;
}

} // namespace

class TestBaseMap : public QObject
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
    void textsBelowTheMapStandInOneRow();
    void anArrowShowsNorth();
    void wellsThatAreNotThereAreCounted();
    void symbolsOfTheLegendStandBeforeTheirNames();
    void theSelectedNameKeepsOffItsSymbol();
    void scaleBarIsNiceAndNotTooLong_data();
    void scaleBarIsNiceAndNotTooLong();
    void labelsNeitherOverlapNorLeave();
    void selectedLabelIsAlwaysThere();
    void labelsOfPointsThatAreNotFinite();
    void clickFindsNearestAndCyclesThroughCoincident();
    void symbolsByType();
    void clickEmitsTheWell();
    void clickBesideWellsEmitsNothing();
    void selectionIsDrawn();
    void symbolsAreDrawnWhereTheGeometrySays();
    void layoutIsComputedOncePerChange();
    void oddWellsAreDrawnWithoutHarm();
    void toolTipShowsNamesAsTheyAre();
};

void TestBaseMap::frameFitsAllWellsWithOneScale()
{
    const MapFrame frame({at(500000, 6000000), at(504000, 6001000)}, QRectF(10, 20, 500, 400), 50);
    // 4000 m on 400 pixels decide; 1000 m would need 300.
    QCOMPARE(frame.metresPerPixel(), 10.0);
    QCOMPARE(frame.toPixel(500000, 6000000), QPointF(60, 270));
    QCOMPARE(frame.toPixel(504000, 6001000), QPointF(460, 170)); // north is up
    QCOMPARE(frame.toMap(QPointF(460, 170)), QPointF(504000, 6001000));
}

void TestBaseMap::frameOfOneOrCoincidentWellsHasTheSmallestSpan()
{
    for (const QVector<MapWell> &wells :
         {QVector<MapWell>{at(700, 800)}, QVector<MapWell>{at(700, 800), at(700, 800)}}) {
        const MapFrame frame(wells, QRectF(0, 0, 300, 200), 50);
        QCOMPARE(frame.metresPerPixel(), MapFrame::smallestSpanM / 100);
        QCOMPARE(frame.toPixel(700, 800), QPointF(150, 100));
    }
}

void TestBaseMap::frameWithoutWellsIsFinite()
{
    const MapFrame frame({}, QRectF(0, 0, 300, 200), 20);
    QVERIFY(std::isfinite(frame.toPixel(1, 1).x()));
    QCOMPARE(MapFrame().toPixel(0, 0), QPointF(0, 0));
    const MapFrame tiny({at(1, 1), at(9, 9)}, QRectF(0, 0, 0, 0), 20);
    QVERIFY(tiny.metresPerPixel() > 0);
    QVERIFY(std::isfinite(tiny.toPixel(5, 5).y()));
}

void TestBaseMap::wellsWithoutPosition_data()
{
    QTest::addColumn<double>("x");
    QTest::addColumn<double>("y");
    QTest::newRow("origin stands for none") << 0.0 << 0.0;
    QTest::newRow("nan x") << notANumber << 5.0;
    QTest::newRow("nan y") << 5.0 << notANumber;
    QTest::newRow("infinite") << infinity << 5.0;
    QTest::newRow("undefined value of the store") << 1e30 << 1e30;
}

void TestBaseMap::wellsWithoutPosition()
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

void TestBaseMap::niceNumbers_data()
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

void TestBaseMap::niceNumbers()
{
    QFETCH(double, value);
    QFETCH(double, above);
    QFETCH(double, below);
    QCOMPARE(niceNumberAbove(value), above);
    QCOMPARE(niceNumberBelow(value), below);
}

void TestBaseMap::ticksAreRoundAndApart()
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

void TestBaseMap::anArrowShowsNorth()
{
    BaseMap map;
    map.resize(400, 300);
    map.setWells({at(500000, 6000000), at(504000, 6003000)});
    const QVector<DrawnText> texts =
        TextRecorder::record([&map](QPainter &painter) { map.render(&painter, {}, {}, QWidget::DrawChildren); });
    const auto north =
        std::find_if(texts.begin(), texts.end(), [](const DrawnText &text) { return text.text == "N"; });
    QVERIFY(north != texts.end());
    QVERIFY(north->pointSize < map.font().pointSizeF()); // smaller than the wells' names
}

void TestBaseMap::wellsThatAreNotThereAreCounted()
{
    const MapWell there = at(500000, 6000000);
    const MapWell nowhere = at(notANumber, notANumber);
    BaseMap map;
    map.resize(400, 300);
    const auto notices = [&map] {
        QStringList found;
        for (const DrawnText &text :
             TextRecorder::record([&map](QPainter &painter) { map.render(&painter, {}, {}, QWidget::DrawChildren); }))
            if (text.text.endsWith(QLatin1String("no position")))
                found.append(text.text);
        return found;
    };
    map.setWells({there});
    QCOMPARE(notices(), QStringList());
    map.setWells({there, nowhere});
    QCOMPARE(notices(), QStringList{QStringLiteral("1 well has no position")});
    map.setWells({there, nowhere, nowhere});
    QCOMPARE(notices(), QStringList{QStringLiteral("2 wells have no position")});
}

void TestBaseMap::textsBelowTheMapStandInOneRow()
{
    BaseMap map;
    map.resize(700, 400);
    map.setWells({at(1000, 1000, host::OilWell), at(5000, 3000, host::DryWell)});
    const QVector<DrawnText> texts =
        TextRecorder::record([&map](QPainter &painter) { map.render(&painter, {}, {}, QWidget::DrawChildren); });
    QVector<QRectF> row;
    for (const DrawnText &text : texts)
        if (QStringList{mapSymbolName(MapSymbol::Oil), mapSymbolName(MapSymbol::Dry)}.contains(text.text)
            || text.text.endsWith(QLatin1String("m")))
            row.append(text.box);
    QVERIFY2(row.size() == 3, QScopedArrayPointer<char>(toString(texts)).data());
    for (const QRectF &box : qAsConst(row)) {
        QCOMPARE(box.top(), row.first().top());
        QVERIFY(box.bottom() <= map.height());
    }
}

// The legend's symbols stand before their names, clear of them.
void TestBaseMap::symbolsOfTheLegendStandBeforeTheirNames()
{
    BaseMap map;
    map.resize(700, 400);
    map.setWells({at(1000, 1000, host::OilWell), at(5000, 3000, host::DryWell)});
    const QVector<DrawnText> texts =
        TextRecorder::record([&map](QPainter &painter) { map.render(&painter, {}, {}, QWidget::DrawChildren); });
    const auto name = std::find_if(texts.begin(), texts.end(),
                                   [](const DrawnText &text) { return text.text == mapSymbolName(MapSymbol::Oil); });
    QVERIFY(name != texts.end() && name->pointSize < map.font().pointSizeF());
    const QImage picture = grabbed(&map);
    const QColor oil = picture.pixelColor(map.wellPixels().at(0).toPoint());
    int right = -1;
    for (int y = static_cast<int>(name->box.top()); y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            if (picture.pixelColor(x, y) == oil)
                right = qMax(right, x);
    QVERIFY2(right >= 0 && right < name->box.left() - 4, qPrintable(QString::number(right)));
}

void TestBaseMap::theSelectedNameKeepsOffItsSymbol()
{
    BaseMap map;
    map.resize(700, 400);
    map.setWells({at(1000, 1000, host::OilWell), at(5000, 3000, host::DryWell)});
    const auto distance = [&map] {
        const QVector<DrawnText> texts =
            TextRecorder::record([&map](QPainter &painter) { map.render(&painter, {}, {}, QWidget::DrawChildren); });
        const QPointF well = map.wellPixels().first();
        double nearest = infinity;
        for (const DrawnText &text : texts) {
            if (text.text != QLatin1String("W"))
                continue;
            const double dx = std::max({text.box.left() - well.x(), well.x() - text.box.right(), 0.0});
            const double dy = std::max({text.box.top() - well.y(), well.y() - text.box.bottom(), 0.0});
            nearest = std::min(nearest, std::hypot(dx, dy));
        }
        return nearest;
    };
    const double before = distance();
    map.setSelectedWell(0);
    QVERIFY2(distance() >= before + 3, qPrintable(QString::number(distance() - before)));
}

void TestBaseMap::scaleBarIsNiceAndNotTooLong_data()
{
    QTest::addColumn<double>("spanM"); // on 400 pixels
    QTest::addColumn<QString>("text");
    QTest::newRow("4 km") << 4000.0 << "1 km";
    QTest::newRow("1 km") << 1000.0 << "200 m";
    QTest::newRow("100 km") << 100000.0 << "20 km";
    QTest::newRow("a point") << 0.0 << "50 m";
}

void TestBaseMap::scaleBarIsNiceAndNotTooLong()
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

void TestBaseMap::labelsNeitherOverlapNorLeave()
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

void TestBaseMap::selectedLabelIsAlwaysThere()
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

void TestBaseMap::labelsOfPointsThatAreNotFinite()
{
    const auto size = [](int) { return QSizeF(20, 10); };
    const LabelSpace space{QRectF(0, 0, 200, 200), {}, 4};
    const QVector<MapLabel> labels = placeLabels(
        {QPointF(notANumber, 5), QPointF(100, 100), QPointF(infinity, 5), QPointF(1e300, 5)}, size, space, 0);
    QCOMPARE(labels.size(), 1);
    QCOMPARE(labels.first().well, 1);
    QVERIFY(placeLabels({}, size, space, 3).isEmpty());
}

void TestBaseMap::clickFindsNearestAndCyclesThroughCoincident()
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

void TestBaseMap::symbolsByType()
{
    QCOMPARE(mapSymbolOf(host::OilWell), MapSymbol::Oil);
    QCOMPARE(mapSymbolOf(host::GasWell), MapSymbol::Gas);
    QCOMPARE(mapSymbolOf(host::OilGasWell), MapSymbol::OilAndGas);
    QCOMPARE(mapSymbolOf(host::DryWell), MapSymbol::Dry);
    QCOMPARE(mapSymbolOf(host::NoWellType), MapSymbol::Other);
    QCOMPARE(mapSymbolOf(17), MapSymbol::Other);
}

void TestBaseMap::clickEmitsTheWell()
{
    BaseMap map;
    map.resize(400, 300);
    map.setWells({at(500000, 6000000), at(504000, 6003000), at(0, 0)});
    map.show();
    QSignalSpy clicked(&map, &BaseMap::wellClicked);
    for (int well : {1, 0}) {
        QTest::mouseClick(&map, Qt::LeftButton, {}, map.wellPixels().at(well).toPoint());
        QCOMPARE(clicked.takeFirst().first().toInt(), well);
    }
    QCOMPARE(map.selectedWell(), -1); // selecting is the owner's business
}

void TestBaseMap::clickBesideWellsEmitsNothing()
{
    BaseMap map;
    map.resize(400, 300);
    map.show();
    QSignalSpy clicked(&map, &BaseMap::wellClicked);
    QTest::mouseClick(&map, Qt::LeftButton, {}, QPoint(200, 150)); // no wells at all
    map.setWells({at(500000, 6000000), at(504000, 6003000)});
    QTest::mouseClick(&map, Qt::LeftButton, {}, map.wellPixels().at(0).toPoint() + QPoint(40, 0));
    QTest::mouseClick(&map, Qt::RightButton, {}, map.wellPixels().at(0).toPoint());
    QVERIFY(clicked.isEmpty());
}

void TestBaseMap::selectionIsDrawn()
{
    BaseMap map;
    map.resize(400, 300);
    map.setWells({at(500000, 6000000), at(504000, 6003000)});
    const QImage before = grabbed(&map);
    map.setSelectedWell(1);
    const QImage after = grabbed(&map);
    QVERIFY(before != after);
    map.setSelectedWell(-1);
    QCOMPARE(grabbed(&map), before);
    map.setSelectedWell(99);
    QCOMPARE(map.selectedWell(), -1);
}

void TestBaseMap::symbolsAreDrawnWhereTheGeometrySays()
{
    for (bool dark : {false, true}) {
        BaseMap map;
        QPalette palette = map.palette();
        palette.setColor(QPalette::Base, dark ? Qt::black : Qt::white);
        palette.setColor(QPalette::Text, dark ? Qt::white : Qt::black);
        map.setPalette(palette);
        map.resize(400, 300);
        map.setWells({at(500000, 6000000, host::OilWell), at(504000, 6003000, host::GasWell)});
        const QImage picture = grabbed(&map);
        const QColor oil = picture.pixelColor(map.wellPixels().at(0).toPoint());
        QVERIFY(oil.green() > oil.red() + 60 && oil.green() > oil.blue() + 30);
        QCOMPARE(picture.pixelColor(map.wellPixels().at(1).toPoint()), palette.color(QPalette::Base));
        QCOMPARE(picture.pixelColor(1, 1), palette.color(QPalette::Base));
    }
}

void TestBaseMap::layoutIsComputedOncePerChange()
{
    BaseMap map;
    map.resize(400, 300);
    map.setWells(manyWells(2000));
    map.show();
    map.grab();
    const int first = map.layoutCount();
    map.grab();
    map.labels();
    map.wellPixels();
    QTest::mouseClick(&map, Qt::LeftButton, {}, QPoint(200, 100));
    QCOMPARE(map.layoutCount(), first);
    map.setSelectedWell(3);
    map.grab();
    QCOMPARE(map.layoutCount(), first + 1);
    map.setSelectedWell(3);
    map.grab();
    QCOMPARE(map.layoutCount(), first + 1);
    map.resize(500, 400);
    map.grab();
    QCOMPARE(map.layoutCount(), first + 2);
}

void TestBaseMap::oddWellsAreDrawnWithoutHarm()
{
    const QVector<QVector<MapWell>> sets{
        {},
        {at(0, 0)},
        {at(1, 1)},
        {at(5, 5), at(5, 5), at(5, 5)},
        {at(notANumber, notANumber), at(1, 2)},
        {at(infinity, 1), at(-infinity, 2)},
        {at(1e300, 1e300), at(-1e9, 1e9), at(1e9, -1e9)},
        {{QString(5000, QLatin1Char('W')), 1, 1, 99}, {QString(), 2, 2, -1}},
    };
    for (const QVector<MapWell> &wells : sets) {
        BaseMap map;
        map.setWells(wells);
        for (const QSize &size : {QSize(1, 1), QSize(30, 30), QSize(400, 300)}) {
            map.resize(size);
            map.setSelectedWell(0);
            QCOMPARE(grabbed(&map).size(), size);
        }
        for (int i = 0; i < wells.size(); ++i)
            QCOMPARE(hasPosition(wells.at(i)), std::isfinite(map.wellPixels().at(i).x()));
    }
}

void TestBaseMap::toolTipShowsNamesAsTheyAre()
{
    BaseMap map;
    map.resize(400, 300);
    map.setWells({{QStringLiteral("15/9-F-1"), 5, 5, 0}});
    map.show();
    const QPoint place = map.wellPixels().first().toPoint();
    QHelpEvent event(QEvent::ToolTip, place, map.mapToGlobal(place));
    QApplication::sendEvent(&map, &event);
    QCOMPARE(QToolTip::text(), QStringLiteral("15/9-F-1"));
    map.setWells({{QStringLiteral("<b>A</b>"), 5, 5, 0}});
    QApplication::sendEvent(&map, &event);
    QVERIFY2(QToolTip::text().contains(QLatin1String("&lt;b&gt;")), qPrintable(QToolTip::text()));
}

LORVA_TEST_MAIN(TestBaseMap)
#include "tst_basemap.moc"
