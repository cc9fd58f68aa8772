#include "logview/textrecorder.h"
#include "mapwells.h"
#include "support/grabbed.h"
#include "support/testmain.h"
#include "workbench/basemap.h"
#include "workbench/mapsymbols.h"

#include <QHelpEvent>
#include <QSignalSpy>
#include <QTest>
#include <QToolTip>

#include <cmath>

using namespace map_wells;
using namespace workbench;

namespace {

QVector<DrawnText> drawnTexts(BaseMap &map)
{
    return TextRecorder::record([&map](QPainter &painter) { map.render(&painter, {}, {}, QWidget::DrawChildren); });
}

} // namespace

class TestBaseMap : public QObject
{
    Q_OBJECT

private slots:
    void textsBelowTheMapStandInOneRow();
    void anArrowShowsNorth();
    void wellsThatAreNotThereAreCounted();
    void symbolsOfTheLegendStandBeforeTheirNames();
    void theSelectedNameKeepsOffItsSymbol();
    void clickEmitsTheWell();
    void clickBesideWellsEmitsNothing();
    void selectionIsDrawn();
    void symbolsAreDrawnWhereTheGeometrySays();
    void layoutIsComputedOncePerChange();
    void oddWellsAreDrawnWithoutHarm();
    void toolTipShowsNamesAsTheyAre();
};

void TestBaseMap::anArrowShowsNorth()
{
    BaseMap map;
    map.resize(400, 300);
    map.setWells({at(500000, 6000000), at(504000, 6003000)});
    const QVector<DrawnText> texts = drawnTexts(map);
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
        for (const DrawnText &text : drawnTexts(map))
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
    const QVector<DrawnText> texts = drawnTexts(map);
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
    const QVector<DrawnText> texts = drawnTexts(map);
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
        const QVector<DrawnText> texts = drawnTexts(map);
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
