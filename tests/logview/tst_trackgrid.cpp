#include "logview/geometry/trackgrid.h"

#include <QImage>
#include <QPainter>
#include <QTest>

#include <cmath>
#include <limits>
#include <map>

using namespace logview;

namespace {

// The horizontal lines of a whole track straight from the rules: the last one drawn in each row that is solid, and
// the dotted ones over it.
std::map<int, QVector<GridPen>> rowsByTheRules(const DepthAxis &axis, float scale, int topY, int bottomY)
{
    std::map<int, QVector<GridPen>> rows;
    for (qint64 i = static_cast<int>(axis.start); static_cast<double>(i) <= static_cast<double>(axis.end); ++i) {
        GridPen pen;
        if (i % 100 == 0)
            pen = GridPen::GraySolid;
        else if (i % 50 == 0)
            pen = scale < 5000 ? GridPen::LightGraySolid : GridPen::LightGrayDotted;
        else if (i % 10 == 0 && scale < 5000)
            pen = GridPen::LightGrayDotted;
        else
            continue;
        const int y = static_cast<int>((static_cast<double>(i) - static_cast<double>(axis.start))
                                       * static_cast<double>(axis.height)
                                       / (static_cast<double>(axis.end) - static_cast<double>(axis.start)));
        if (y < topY || y > bottomY)
            continue;
        QVector<GridPen> &pens = rows[y];
        if (pen != GridPen::LightGrayDotted)
            pens.clear();
        if (!pens.contains(pen))
            pens.append(pen);
    }
    return rows;
}

std::map<int, QVector<GridPen>> rowsOf(const QVector<GridLine> &lines)
{
    std::map<int, QVector<GridPen>> rows;
    for (const GridLine &line : lines) {
        QVector<GridPen> &pens = rows[line.line.y1()];
        if (line.pen != GridPen::LightGrayDotted)
            pens.clear();
        if (!pens.contains(line.pen))
            pens.append(line.pen);
    }
    return rows;
}

int count(const QVector<GridLine> &lines, GridPen pen)
{
    int found = 0;
    for (const GridLine &line : lines)
        found += line.pen == pen ? 1 : 0;
    return found;
}

} // namespace

class tst_trackgrid : public QObject
{
    Q_OBJECT

private slots:
    void horizontalLinesAtScale1000()
    {
        const DepthAxis axis = DepthAxis::of(0, 1000, 1000);
        const QVector<GridLine> lines = horizontalGrid(axis, 1000, 144.9F, 0, 4000);
        QCOMPARE(lines.size(), 101);
        QCOMPARE(count(lines, GridPen::GraySolid), 11);
        QCOMPARE(count(lines, GridPen::LightGraySolid), 10);
        QCOMPARE(count(lines, GridPen::LightGrayDotted), 80);
        QCOMPARE(lines.first().line, QLine(0, 0, 144, 0));
        QCOMPARE(lines.at(10).line.y1(), 377); // 377.95 truncated
        QCOMPARE(lines.at(10).pen, GridPen::GraySolid);
        QCOMPARE(lines.at(5).pen, GridPen::LightGraySolid);
        QCOMPARE(lines.last().line.y1(), 3779);
    }

    void horizontalLinesAtScale5000()
    {
        const DepthAxis axis = DepthAxis::of(0, 1000, 5000);
        const QVector<GridLine> lines = horizontalGrid(axis, 5000, 100, 0, 4000);
        QCOMPARE(lines.size(), 21);
        QCOMPARE(count(lines, GridPen::GraySolid), 11);
        QCOMPARE(count(lines, GridPen::LightGrayDotted), 10);
        QCOMPARE(horizontalGrid(DepthAxis::of(0, 1000, 4999), 4999, 100, 0, 4000).size(), 101);
    }

    // Every visible interval of every range and scale shows the rows that the rules draw.
    void visibleRowsAreThoseOfTheRules_data()
    {
        QTest::addColumn<float>("start");
        QTest::addColumn<float>("end");
        QTest::addColumn<float>("scale");
        QTest::newRow("plain") << 0.0F << 1000.0F << 1000.0F;
        QTest::newRow("subsea") << -25.7F << 1475.3F << 1000.0F;
        QTest::newRow("above zero") << -1475.3F << -25.7F << 1000.0F;
        QTest::newRow("coarse") << 3.0F << 5000.0F << 5000.0F;
        QTest::newRow("ten to a row") << 0.0F << 20000.0F << 4999.0F;
        QTest::newRow("rows of many lines") << 0.0F << 50000.0F << 1.0e6F;
        QTest::newRow("rows of very many lines") << -500.0F << 2.0e6F << 1.0e8F;
        QTest::newRow("rows of many tens") << 0.0F << 2.0e6F << 4.0e3F;
        QTest::newRow("feet") << -82.021F << 4839.24F << 200.0F;
    }
    void visibleRowsAreThoseOfTheRules()
    {
        QFETCH(float, start);
        QFETCH(float, end);
        QFETCH(float, scale);
        DepthAxis axis = DepthAxis::of(start, end, scale);
        for (const float height : {axis.height, 700.5F, 33.0F}) {
            axis.height = height;
            const int bottom = axis.heightPx();
            for (const auto &[top, stop] :
                 {std::pair(0, bottom), std::pair(bottom / 3, bottom / 3 + 400), std::pair(bottom - 30, bottom + 100),
                  std::pair(bottom / 2, bottom / 2)}) {
                const QVector<GridLine> lines = horizontalGrid(axis, scale, 100, top, stop);
                QCOMPARE(rowsOf(lines), rowsByTheRules(axis, scale, top, stop));
                QVERIFY(lines.size() <= 5 * (stop - top + 1));
            }
        }
    }

    void theVerticalOffsetIsTakenOff()
    {
        const DepthAxis axis = DepthAxis::of(0, 1000, 1000);
        const QVector<GridLine> lines = horizontalGrid(axis, 1000, 100, 0, 800, 10.5F);
        QCOMPARE(lines.first().line.y1(), 26); // int(37 - 10.5); the line of 0 stands above the track
        QCOMPARE(lines.last().line.y1(), 782); // int(793 - 10.5) is 782, of 210; 831 - 10.5 lies below
    }

    void linearVerticals()
    {
        const QVector<GridLine> lines = linearGrid(144.8F, 500.9F);
        QCOMPARE(lines.size(), 11);
        for (int k = 0; k <= 10; ++k) {
            const int x = static_cast<int>(k * 14.48);
            QCOMPARE(lines.at(k).line, QLine(x, 0, x, 500));
            QCOMPARE(lines.at(k).pen,
                     k % 10 == 0 ? GridPen::BlackDotted
                                 : (k == 5 ? GridPen::LightGraySolid : GridPen::LightGrayDotted));
        }
    }

    void logarithmicVerticalsAddUp()
    {
        const QVector<GridLine> lines = logarithmicGrid(430, 500.9F);
        // Values 0.1, 0.2 to 1.0; 1.1, 2.1 to 10.1; 11.1 to 101.1; 111.1 to 1011.1; 1111.1, whose successor is too
        // much.
        QCOMPARE(lines.size(), 40);
        QCOMPARE(count(lines, GridPen::LightGraySolid), 4);
        const auto columnOf = [](double value) {
            return static_cast<int>((std::log10(value) + 1) * 430 / std::log10(20000.0));
        };
        int i = 0;
        double value = 0.1;
        for (double step = 0.1; step < 150; step *= 10) {
            for (int k = 0; k < 10; ++k, ++i, value += step) {
                QCOMPARE(lines.at(i).line,
                         QLine(columnOf(value + 1e-6 * step), 1, columnOf(value + 1e-6 * step), 499));
                QCOMPARE(lines.at(i).pen, k == 0 ? GridPen::LightGraySolid : GridPen::LightGrayDotted);
            }
        }
        QCOMPARE(lines.at(10).line.x1(), columnOf(1.1));
        QCOMPARE(lines.at(20).line.x1(), columnOf(11.1));
        QCOMPARE(lines.at(30).line.x1(), columnOf(111.1));
    }

    void verticalsAreCut()
    {
        const QLine line(7, 1, 7, 19000000);
        QCOMPARE(cutVertical(line, 5000000, 5001080), QLine(7, 5000000, 7, 5001081));
        QCOMPARE(cutVertical(line, -20, 30), QLine(7, 1, 7, 31));
        QVERIFY(cutVertical(QLine(7, 1, 7, 30), 100, 200).isNull());
        QVERIFY(cutVertical(QLine(7, 50, 7, 90), 0, 20).isNull());
        (void)cutVertical(line, std::numeric_limits<int>::min(), std::numeric_limits<int>::max());
        QCOMPARE(cutVertical(GridLine{line, GridPen::LightGraySolid}, 50, 80), QLine(7, 50, 7, 81));
        QCOMPARE(cutVertical(GridLine{line, GridPen::LightGrayDotted}, 50, 80),
                 QLine(7, 52, 7, 81)); // dots at 49, 52
        QCOMPARE(cutVertical(GridLine{line, GridPen::BlackDotted}, 49, 80), QLine(7, 49, 7, 81));
    }

    // Whatever part of a track is painted, and wherever it has been scrolled to.
    void dotsKeepTheirPlaces()
    {
        const GridLine line{QLine(7, 1, 7, 19000000), GridPen::BlackDotted};
        for (const int top : {0, 1, 499, 500, 501, 9000000}) {
            for (const int part : {0, 1, 2, 40}) {
                QImage image(20, 100, QImage::Format_RGB32);
                image.fill(Qt::white);
                QPainter painter(&image);
                painter.translate(0, -top);
                painter.setPen(gridPen(line.pen));
                painter.drawLine(cutVertical(line, top + part, top + 99));
                painter.end();
                for (int row = part; row < 100; ++row)
                    QCOMPARE(image.pixel(7, row) == QColor(Qt::black).rgb(), (top + row) % 3 == 1);
            }
        }
    }

    void labelSteps()
    {
        const std::map<float, int> steps{{50, 5},    {100, 5},    {100.5F, 10}, {500, 10},    {501, 50},
                                         {4999, 50}, {5000, 100}, {9999, 100},  {10000, 500}, {1e6F, 500}};
        for (const auto &[scale, step] : steps)
            QCOMPARE(labelStep(scale), step);
    }

    void ticksAndLabels()
    {
        const DepthAxis axis = DepthAxis::of(0, 1000, 1000);
        const QVector<DepthTick> ticks = depthTicks(axis, 0, 5000);
        QCOMPARE(ticks.size(), 99); // 10 to 990: neither the start nor the end has one
        QCOMPARE(ticks.first().depth, qint64(10));
        QCOMPARE(ticks.first().y, axis.toPixel(10));
        QCOMPARE(ticks.last().depth, qint64(990));
        QCOMPARE(leftTick(ticks.first()), QLineF(0, ticks.first().y, 3, ticks.first().y));
        QCOMPARE(rightTick(ticks.first(), 48), QLineF(44, ticks.first().y, 47, ticks.first().y));
        const QVector<DepthTick> labels = depthLabels(axis, 1000, 0, 5000);
        QCOMPARE(labels.size(), 19);
        QCOMPARE(labelText(labels.first()), QStringLiteral("50"));
        // int(48 / 2 - 17 / 2) and int(11 / 2 + y - 1) with y = 188.98
        QCOMPARE(labelPosition(labels.first(), 48, 17, 11), QPoint(15, 193));
    }

    void labelsByScale()
    {
        QCOMPARE(depthLabels(DepthAxis::of(0, 1000, 100), 100, 0, 100000).size(), 19);
        QCOMPARE(depthLabels(DepthAxis::of(0, 1000, 500), 500, 0, 100000).size(), 19);
        QCOMPARE(depthLabels(DepthAxis::of(0, 1000, 4999), 4999, 0, 100000).size(), 19);
        QCOMPARE(depthLabels(DepthAxis::of(0, 1000, 5000), 5000, 0, 100000).size(), 9);
        QCOMPARE(depthLabels(DepthAxis::of(0, 1600, 10000), 10000, 0, 100000).size(), 3);
    }

    void ticksBelowZeroAndInPart()
    {
        const DepthAxis axis = DepthAxis::of(-25, 1475, 1000);
        const QVector<DepthTick> ticks = depthTicks(axis, 0, 100000);
        QCOMPARE(ticks.first().depth, qint64(-20));
        QCOMPARE(ticks.last().depth, qint64(1470));
        const QVector<DepthTick> part = depthTicks(axis, 1000, 1100);
        QVERIFY(!part.isEmpty());
        for (const DepthTick &tick : part)
            QVERIFY(tick.y >= 1000 && tick.y < 1101);
        int expected = 0;
        for (const DepthTick &tick : ticks)
            expected += tick.y >= 1000 && tick.y < 1101 ? 1 : 0;
        QCOMPARE(part.size(), expected);
    }

    // What is asked for decides the cost, not what there is.
    void hugeRangesGiveNoMoreThanTheRows()
    {
        for (const float scale : {1.0F, 1.0e6F}) {
            const DepthAxis axis = DepthAxis::of(0, 5000, scale);
            const int middle = axis.heightPx() / 2;
            QVERIFY(horizontalGrid(axis, scale, 100, middle, middle + 1080).size() <= 5 * 1081);
            QVERIFY(depthTicks(axis, middle, middle + 1080).size() <= 1081);
        }
        const DepthAxis absurd{-3.0e37F, 3.0e37F, 1000};
        QVERIFY(horizontalGrid(absurd, 1000, 100, 0, 1000).size() <= 5 * 1001);
        QVERIFY(depthTicks(absurd, 0, 1000).size() <= 1001);
        const DepthAxis wide{0, 1.0e9F, 1000};
        QVERIFY(horizontalGrid(wide, 1000, 100, 0, 1000).size() >= 1000);
        QVERIFY(horizontalGrid(wide, 1000, 100, 0, 1000).size() <= 5 * 1001);
        QCOMPARE(depthTicks(wide, 0, 999).size(), 1000);
    }

    void nothingIsDrawnOfAxesWithoutExtent()
    {
        constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();
        for (const DepthAxis &axis :
             {DepthAxis::of(5, 5), DepthAxis::of(50, 5), DepthAxis::of(0, notANumber), DepthAxis()}) {
            QVERIFY(horizontalGrid(axis, 1000, 100, 0, 1000).isEmpty());
            QVERIFY(depthTicks(axis, 0, 1000).isEmpty());
            QVERIFY(depthLabels(axis, 1000, 0, 1000).isEmpty());
        }
        QVERIFY(horizontalGrid(DepthAxis::of(0, 1000), 1000, 100, 5000, 6000).isEmpty());
        QVERIFY(horizontalGrid(DepthAxis::of(0, 1000), 1000, 100, 10, 5).isEmpty());
        for (const float bad : {notANumber, std::numeric_limits<float>::infinity(), -1.0F, 3e38F}) {
            QCOMPARE(linearGrid(bad, bad).size(), 11);
            (void)logarithmicGrid(bad, bad);
        }
    }

    void pens()
    {
        for (const GridPen kind :
             {GridPen::GraySolid, GridPen::LightGraySolid, GridPen::LightGrayDotted, GridPen::BlackDotted}) {
            QCOMPARE(gridPen(kind).widthF(), 1.0);
            QCOMPARE(gridPen(kind).capStyle(), Qt::SquareCap);
            QCOMPARE(gridPen(kind).joinStyle(), Qt::BevelJoin);
        }
        QCOMPARE(gridPen(GridPen::GraySolid).color(), QColor(Qt::gray));
        QCOMPARE(gridPen(GridPen::GraySolid).style(), Qt::SolidLine);
        QCOMPARE(gridPen(GridPen::LightGraySolid).color(), QColor(Qt::lightGray));
        QCOMPARE(gridPen(GridPen::LightGraySolid).style(), Qt::SolidLine);
        QCOMPARE(gridPen(GridPen::LightGrayDotted).color(), QColor(Qt::lightGray));
        QCOMPARE(gridPen(GridPen::LightGrayDotted).style(), Qt::DotLine);
        QCOMPARE(gridPen(GridPen::BlackDotted).color(), QColor(Qt::black));
        QCOMPARE(gridPen(GridPen::BlackDotted).style(), Qt::DotLine);
    }
};

QTEST_GUILESS_MAIN(tst_trackgrid)
#include "tst_trackgrid.moc"
