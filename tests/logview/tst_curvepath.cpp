#include "logshapes.h"

#include "logview/geometry/curveline.h"

#include <QTest>

using namespace logview;

namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
const DepthAxis axis{0, 100, 1000}; // ten rows a metre
const ValueScale scale{false, 0, 100, 100};

CurvePath pathOf(const QVector<double> &depths, const QVector<double> &values, const DepthAxis &on = axis,
                 const ValueScale &across = scale, const DepthReference &reference = {})
{
    const CurveSamples samples(depths, values, nullSampleValue);
    return {samples, curveKey(samples, on, reference, across)};
}

QVector<int> counts(const CurvePath &path)
{
    QVector<int> counts;
    for (const CurvePath::SubPath &subPath : path.subPaths())
        counts.append(subPath.count);
    return counts;
}

// Whether a line of the path touches the area: one of its ends stands in it, or it crosses one of the sides.
bool isTouched(const QPainterPath &path, const QRectF &area)
{
    const QLineF sides[] = {{area.topLeft(), area.topRight()},
                            {area.bottomLeft(), area.bottomRight()},
                            {area.topLeft(), area.bottomLeft()},
                            {area.topRight(), area.bottomRight()}};
    for (int i = 0; i < path.elementCount(); ++i) {
        const QPointF point = path.elementAt(i);
        if (area.contains(point))
            return true;
        if (path.elementAt(i).isMoveTo())
            continue;
        const QLineF line(path.elementAt(i - 1), point);
        for (const QLineF &side : sides)
            if (line.intersects(side, nullptr) == QLineF::BoundedIntersection)
                return true;
    }
    return false;
}

} // namespace

class tst_curvepath : public QObject
{
    Q_OBJECT

private slots:
    void samplesStandAtDepthAndValue()
    {
        const CurvePath path = pathOf({0, 25, 100}, {0, 50, 200});
        QCOMPARE(path.points(), (QVector<QPointF>{{0, 0}, {50, 250}, {100, 1000}}));
        QCOMPARE(path.bounds(), QRectF(0, 0, 100, 1000));
        QCOMPARE(counts(path), QVector<int>{3});
    }

    void typeAndUnitOfTheDepthCount()
    {
        QCOMPARE(pathOf({25}, {10}, {-25, 75, 1000}, scale, {TvdSubsea, Metre, 25}).points(),
                 QVector<QPointF>{QPointF(10, 250)});
        const DepthReference feet{TvdSubsea, Feet, 25};
        const DepthAxis inFeet{0, 328.084F, 1000};
        const QVector<QPointF> points = pathOf({75}, {10}, inFeet, scale, feet).points();
        QCOMPARE(points.size(), 1);
        QVERIFY(std::abs(points.first().y() - 500) < 1e-3);
        QVERIFY(pathOf({20}, {10}, inFeet, scale, feet).isEmpty());
        QCOMPARE(pathOf({25}, {10}, axis, scale, {TvdKb, Metre, 25}).points(), QVector<QPointF>{QPointF(10, 250)});
    }

    void aNullBreaksAndASkippedSampleDoesNot()
    {
        QCOMPARE(counts(pathOf({1, 2, 3, 4, 5}, {1, 2, nullSampleValue, 4, 5})), (QVector<int>{2, 2}));
        QCOMPARE(counts(pathOf({1, 2, 3, 4, 5}, {1, 2, notANumber, 4, 5})), (QVector<int>{2, 2}));
        QCOMPARE(counts(pathOf({-2, -1, 1, 2, 101}, {1, nullSampleValue, 2, 3, nullSampleValue})), QVector<int>{2});
        // Out of the range and back in: only unsorted logs do that.
        QCOMPARE(counts(pathOf({1, 2, 200, 3, 4}, {1, 2, 3, 4, 5})), QVector<int>{4});
        QCOMPARE(counts(pathOf({1, 2, 200, 3, 4}, {1, 2, nullSampleValue, 4, 5})), QVector<int>{4});
        QCOMPARE(counts(pathOf({1, 2, notANumber, 3, 4}, {1, 2, 3, 4, 5})), QVector<int>{4});
        QCOMPARE(counts(pathOf({1, 2}, {nullSampleValue, nullSampleValue})), QVector<int>());
        QCOMPARE(counts(pathOf({1, 2, 3}, {1, nullSampleValue, 3})), (QVector<int>{1, 1}));
    }

    void aLogarithmicTrackBreaksWhereItClampsElsewhere()
    {
        const ValueScale logarithmic{true, 0.2F, 2000, 100};
        QCOMPARE(counts(pathOf({1, 2, 3, 4, 5}, {1, 2, 5000, 4, 5}, axis, logarithmic)), (QVector<int>{2, 2}));
        QCOMPARE(counts(pathOf({1, 2, 3, 4, 5}, {1, 2, -4, 4, 5}, axis, logarithmic)), (QVector<int>{2, 2}));
        QCOMPARE(counts(pathOf({1, 2, 3, 4, 5}, {1, 2, 0.02, 4, 5}, axis, logarithmic)), QVector<int>{5});
        QCOMPARE(counts(pathOf({1, 2, 3, 4, 5}, {1, 2, 5000, 4, 5})), QVector<int>{5});
    }

    void rowsOfFourKeepAllAndFullerOnesFour()
    {
        // One row is 0.1 m high.
        const CurvePath four = pathOf({1, 1.02, 1.04, 1.06, 1.2}, {5, 80, 2, 30, 7});
        QCOMPARE(four.points().size(), 5);
        QVERIFY(!four.hasDenseRows());
        const CurvePath more = pathOf({1, 1.01, 1.02, 1.03, 1.04, 1.05, 1.06, 1.2}, {50, 60, 99, 40, 3, 20, 30, 7});
        QVector<double> xs;
        for (const QPointF &point : more.points())
            xs.append(point.x());
        QCOMPARE(xs, (QVector<double>{50, 99, 3, 30, 7})); // first, largest, smallest, last in their order
        QVERIFY(more.hasDenseRows());
        // The extremes may be the ends: no point is taken twice.
        QCOMPARE(pathOf({1, 1.01, 1.02, 1.03, 1.04}, {1, 2, 3, 4, 5}).points().size(), 2);
        QCOMPARE(pathOf({1, 1.01, 1.02, 1.03, 1.04}, {5, 5, 5, 5, 5}).points().size(), 2);
        QCOMPARE(pathOf({1, 1.01, 1.02, 1.03, 1.04}, {3, 9, 1, 4, 4}).points().size(), 4);
        QCOMPARE(pathOf({1, 1.01, 1.02, 1.03, 1.04}, {3, 9, 4, 4, 1}).points().size(), 3);
    }

    void breaksAreKeptInFullRows()
    {
        QVector<double> depths;
        QVector<double> values;
        for (int i = 0; i < 40; ++i) {
            depths.append(1 + i * 0.002);
            values.append(i == 20 ? nullSampleValue : i);
        }
        const CurvePath path = pathOf(depths, values);
        QCOMPARE(counts(path), (QVector<int>{2, 2}));
        QCOMPARE(path.points().at(1).x(), 19.0);
        QCOMPARE(path.points().at(2).x(), 21.0);
    }

    void neverMoreThanFourPointsARow()
    {
        for (const logshapes::Shape shape :
             {logshapes::Random, logshapes::Wander, logshapes::Constant, logshapes::Spiky}) {
            const logshapes::Log log = logshapes::make(shape, 50000, 100, 3);
            const CurvePath path = pathOf(log.depths, log.values);
            QVector<int> inRow(1001);
            for (const QPointF &point : path.points())
                ++inRow[static_cast<int>(point.y())];
            QVERIFY(*std::max_element(inRow.begin(), inRow.end()) <= 4);
        }
    }

    // On paper rows are those of the printer.
    void finerRowsKeepMore()
    {
        const logshapes::Log log = logshapes::make(logshapes::Random, 50000, 100, 3);
        const CurveSamples samples = log.samples();
        const int screen = CurvePath(samples, curveKey(samples, axis, {}, scale)).points().size();
        const int printer = CurvePath(samples, curveKey(samples, axis, {}, scale, 6)).points().size();
        QVERIFY(printer > 5 * screen);
        QVERIFY(printer <= 4 * 6001);
    }

    void theShapeIsThePathOfEverySampleWhereRowsHoldFour()
    {
        for (const logshapes::Shape shape : {logshapes::Gappy, logshapes::Wander, logshapes::HolesAndInfinities}) {
            const logshapes::Log log = logshapes::make(shape, 3900, 100, 3);
            const CurveSamples samples = log.samples();
            const CurveKey key = curveKey(samples, axis, {}, scale);
            CurveLine line;
            line.update(samples, key);
            QCOMPARE(line.shape(), logshapes::everySample(log, key));
            QCOMPARE(samplePath(samples, key, 0, 1000), logshapes::everySample(log, key));
        }
    }

    void theShapeCoversTheWholeRange()
    {
        const logshapes::Log log = logshapes::make(logshapes::Wander, 50000, 100, 3);
        const CurveSamples samples = log.samples();
        CurveLine line;
        line.update(samples, curveKey(samples, axis, {}, scale));
        const QRectF before = line.shape().boundingRect();
        (void)logshapes::picture({100, 50}, 300, [&](QPainter &painter) { line.paint(painter, QPen(), 300, 350); });
        QCOMPARE(line.shape().boundingRect(), before);
        QCOMPARE(before.top(), 0.0);
        QCOMPARE(before.bottom(), 1000.0);
        QCOMPARE(before, line.path().bounds());
    }

    void slicesAreTheVisiblePart()
    {
        for (const bool isDescending : {false, true}) {
            logshapes::Log log =
                logshapes::make(isDescending ? logshapes::Descending : logshapes::Wander, 100000, 10000, 3);
            for (int i = 0; i < log.values.size(); i += 700)
                log.values[i] = nullSampleValue;
            const CurvePath path = pathOf(log.depths, log.values, {0, 10000, 100000});
            int count = 0;
            for (const CurvePath::Slice &slice : path.slices(50000, 50100)) {
                count += slice.count;
                QVERIFY(path.subPathStart(slice.first) == path.subPathStart(slice.first + slice.count - 1));
            }
            QVERIFY(count >= 100 && count < 150); // one sample a row, some rows more
            for (const QPointF &point : path.points())
                if (point.y() >= 50000 && point.y() <= 50100)
                    --count;
            QVERIFY(count >= 0 && count < 40); // all that is visible is there
            QVERIFY(path.slices(200000, 200100).isEmpty());
        }
    }

    void linesThroughTheViewAreSliced()
    {
        const CurvePath path = pathOf({0, 100}, {20, 60});
        const QVector<CurvePath::Slice> slices = path.slices(500, 510); // no sample anywhere near
        QCOMPARE(slices.size(), 1);
        QCOMPARE(slices.first().count, 2);
        QCOMPARE(path.crossing(500), std::pair(0.0, 1000.0));
        QCOMPARE(pathOf({0, 50, 100}, {20, nullSampleValue, 60}).crossing(500), std::pair(0.0, 0.0));
        QVERIFY(pathOf({0, 50, 100}, {20, nullSampleValue, 60}).slices(500, 510).isEmpty());
    }

    // Also where a sample stands on the edge itself.
    void aPartHoldsTheSamplesOnItsEdgesAndOneMoreOnBothSides()
    {
        const QVector<double> down{10, 20, 30, 40, 50, 60, 70};
        const QVector<double> up(down.crbegin(), down.crend());
        for (const QVector<double> &depths : {down, up}) {
            const CurveSamples samples(depths, QVector<double>(7, 50), nullSampleValue);
            const SamplePlacer placer(curveKey(samples, axis, {}, scale));
            QCOMPARE(placer.range(samples, 300, 500), std::make_pair(1, 6));
            QCOMPARE(placer.range(samples, 299, 501), std::make_pair(1, 6));
            QCOMPARE(placer.range(samples, 301, 499), std::make_pair(2, 5));
            QCOMPARE(placer.range(samples, 0, 1000), std::make_pair(0, 7));
        }
    }

    void unsortedDepthsAreNotReduced()
    {
        logshapes::Log log = logshapes::make(logshapes::Wander, 5000, 100, 3);
        std::swap(log.depths[100], log.depths[4000]);
        const CurveSamples samples = log.samples();
        const CurveKey key = curveKey(samples, axis, {}, scale);
        const CurvePath path(samples, key);
        QCOMPARE(path.order(), DepthOrder::Unsorted);
        QCOMPARE(path.points().size(), 5000);
        QCOMPARE(path.path(), logshapes::everySample(log, key));
        CurveLine line;
        line.update(samples, key);
        const auto pen = QPen(Qt::black, 1, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
        const QImage expected = logshapes::picture({100, 400}, 200, [&](QPainter &painter) {
            painter.setPen(pen);
            painter.drawPath(logshapes::everySample(log, key));
        });
        QCOMPARE(
            logshapes::difference(
                logshapes::picture({100, 400}, 200, [&](QPainter &painter) { line.paint(painter, pen, 200, 600); }),
                expected),
            0);
    }

    void picking()
    {
        const CurvePath path = pathOf({0, 50, 60, 100}, {20, 60, nullSampleValue, 60});
        QVERIFY(path.intersects(QRectF(39, 249, 2, 2))); // on the line from (20, 0) to (60, 500)
        QVERIFY(!path.intersects(QRectF(43, 249, 2, 2)));
        QVERIFY(!path.intersects(QRectF(35, 249, 2, 2)));
        QVERIFY(!path.intersects(QRectF(59, 700, 2, 2))); // in the gap
        QVERIFY(path.intersects(QRectF(59, 999, 2, 2)));
        const logshapes::Log log = logshapes::make(logshapes::Random, 20000, 100, 3);
        const CurvePath dense = pathOf(log.depths, log.values);
        const QPainterPath shape = dense.path();
        int hits = 0;
        int misses = 0;
        for (double y = 3; y < 1000; y += 37) {
            for (double x = -15; x < 120; x += 3) {
                const QRectF area(x, y, 1.5, 0.3);
                QCOMPARE(dense.intersects(area), isTouched(shape, area));
                ++(dense.intersects(area) ? hits : misses);
            }
        }
        QVERIFY(hits > 100 && misses > 100);
    }

    void buildsAreCounted()
    {
        const logshapes::Log log = logshapes::make(logshapes::Noisy, 5000, 100, 3);
        const CurveSamples samples = log.samples();
        const CurveKey key = curveKey(samples, axis, {}, scale);
        CurveLine line;
        const int before = CurvePath::buildCount();
        QVERIFY(line.update(samples, key));
        QCOMPARE(CurvePath::buildCount(), before + 1);
        QVERIFY(!line.update(samples, key));
        // Painting, in other colours and widths, scrolling, picking: nothing is built.
        for (int top = 0; top < 900; top += 100) {
            (void)logshapes::picture({100, 100}, top, [&](QPainter &painter) {
                line.paint(painter, QPen(QColor(top % 255, 0, 0), 1 + top / 300, Qt::SolidLine, Qt::RoundCap), top,
                           top + 100);
            });
            (void)line.shape();
            (void)line.path().intersects(QRectF(10, top, 5, 5));
        }
        QCOMPARE(CurvePath::buildCount(), before + 1);
        // Each of what the geometry depends on builds once.
        CurveKey other = key;
        other.axis = DepthAxis{0, 100, 2000};
        QVERIFY(line.update(samples, other));
        other.scale.width = 150;
        QVERIFY(line.update(samples, other));
        other.reference.kbElevationM = 12;
        QVERIFY(line.update(samples, other));
        const CurveSamples changed = log.samples();
        QVERIFY(line.update(changed, curveKey(changed, other.axis, other.reference, other.scale)));
        QCOMPARE(CurvePath::buildCount(), before + 5);
    }

    void badInputDrawsNothingAndDoesNotCrash_data()
    {
        QTest::addColumn<QVector<double>>("depths");
        QTest::addColumn<QVector<double>>("values");
        constexpr double infinite = std::numeric_limits<double>::infinity();
        QTest::newRow("empty") << QVector<double>() << QVector<double>();
        QTest::newRow("no values") << QVector<double>{1, 2} << QVector<double>();
        QTest::newRow("one") << QVector<double>{1} << QVector<double>{1};
        QTest::newRow("all null") << QVector<double>(1000, 5) << QVector<double>(1000, nullSampleValue);
        QTest::newRow("one depth") << QVector<double>(1000, 5) << QVector<double>(1000, 30);
        QTest::newRow("no numbers") << QVector<double>(1000, notANumber) << QVector<double>(1000, notANumber);
        QTest::newRow("infinite") << QVector<double>{-infinite, 1, infinite}
                                  << QVector<double>{infinite, -infinite, 1};
        QTest::newRow("huge") << QVector<double>{-1e308, 1, 1e308} << QVector<double>{1e308, -1e308, 1};
    }
    void badInputDrawsNothingAndDoesNotCrash()
    {
        QFETCH(QVector<double>, depths);
        QFETCH(QVector<double>, values);
        const CurveSamples samples(depths, values, nullSampleValue);
        constexpr float infinite = std::numeric_limits<float>::infinity();
        for (const DepthAxis &on : {axis, DepthAxis::of(5, 5), DepthAxis::of(100, 0), DepthAxis::of(0, infinite),
                                    DepthAxis::of(0, 100, 1e-20F), DepthAxis::of(0, 100, 1e20F),
                                    DepthAxis{0, 100, -5}, DepthAxis{-3e38F, 3e38F, 1000}}) {
            for (const ValueScale &across :
                 {scale, ValueScale{false, 5, 5, 100}, ValueScale{true, 0, 100, 100}, ValueScale{true, -1, -5, 100},
                  ValueScale{false, 0, 100, 0}, ValueScale{false, 0, 100, -10}, ValueScale{false, 0, 100, 3e38F},
                  ValueScale{false, 0, 100, infinite}, ValueScale{true, NAN, 100, 100}}) {
                CurveLine line;
                line.update(samples, curveKey(samples, on, {}, across));
                for (const int width : {1, 3})
                    (void)logshapes::picture({100, 100}, 0, [&](QPainter &painter) {
                        line.paint(painter, QPen(Qt::black, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin), -1e9,
                                   1e9);
                    });
                QVERIFY(!line.path().intersects(QRectF(-50, -50, 10, 10)));
                for (const QPointF &point : line.path().points())
                    QVERIFY(std::isfinite(point.x()) && std::isfinite(point.y()));
            }
        }
    }

    void absurdScales()
    {
        const logshapes::Log log = logshapes::make(logshapes::Noisy, 20000, 5000, 3);
        const CurveSamples samples = log.samples();
        for (const float paper : {1.0F, 1.0e6F}) {
            const DepthAxis on = DepthAxis::of(0, 5000, paper);
            CurveLine line;
            line.update(samples, curveKey(samples, on, {}, scale));
            QVERIFY(line.path().points().size() <= std::max(20000, 4 * (on.heightPx() + 1)));
            const int top = on.heightPx() / 2;
            const QPen pen(Qt::black, 1, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
            const QImage painted = logshapes::picture(
                {100, 400}, top, [&](QPainter &painter) { line.paint(painter, pen, top, top + 400); });
            QVERIFY(logshapes::paintedPixels(painted) > 0);
        }
    }
};

QTEST_GUILESS_MAIN(tst_curvepath)
#include "tst_curvepath.moc"
