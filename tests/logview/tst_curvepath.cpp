#include "logshapes.h"

#include "logview/geometry/curveline.h"
#include "logview/geometry/curvepath.h"

#include <QTest>

using namespace logview;
using logshapes::samplesOf;

namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
const DepthAxis axis{0, 100, 1000}; // ten rows a metre
const ValueScale scale{false, 0, 100, 100};

QPainterPath pathOf(const QVector<double> &depths, const QVector<double> &values, const DepthAxis &on = axis,
                    const ValueScale &across = scale, const DepthReference &reference = {})
{
    const CurveSamples samples = samplesOf(depths, values);
    return reducedPath(samples, curveKey(samples, on, reference, across));
}

QVector<QPointF> points(const QPainterPath &path)
{
    QVector<QPointF> points;
    for (int i = 0; i < path.elementCount(); ++i)
        points.append(path.elementAt(i));
    return points;
}

// How many points each unbroken piece of a path has.
QVector<int> counts(const QPainterPath &path)
{
    QVector<int> counts;
    for (int i = 0; i < path.elementCount(); ++i) {
        if (path.elementAt(i).isMoveTo())
            counts.append(0);
        ++counts.last();
    }
    return counts;
}

} // namespace

class tst_curvepath : public QObject
{
    Q_OBJECT

private slots:
    void samplesStandAtDepthAndValue()
    {
        const QPainterPath path = pathOf({0, 25, 100}, {0, 50, 200});
        QCOMPARE(points(path), (QVector<QPointF>{{0, 0}, {50, 250}, {100, 1000}}));
        QCOMPARE(counts(path), QVector<int>{3});
    }

    void typeAndUnitOfTheDepthCount()
    {
        QCOMPARE(points(pathOf({25}, {10}, {-25, 75, 1000}, scale, {TvdSubsea, Metre, 25})),
                 QVector<QPointF>{QPointF(10, 250)});
        const DepthReference feet{TvdSubsea, Feet, 25};
        const DepthAxis inFeet{0, 328.084F, 1000};
        const QVector<QPointF> placed = points(pathOf({75}, {10}, inFeet, scale, feet));
        QCOMPARE(placed.size(), 1);
        QVERIFY(std::abs(placed.first().y() - 500) < 1e-3);
        QVERIFY(pathOf({20}, {10}, inFeet, scale, feet).isEmpty());
        QCOMPARE(points(pathOf({25}, {10}, axis, scale, {TvdKb, Metre, 25})), QVector<QPointF>{QPointF(10, 250)});
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
        QCOMPARE(pathOf({1, 2, 3}, {1, nullSampleValue, 3}).elementCount(), 1); // nothing to draw
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
        QCOMPARE(pathOf({1, 1.02, 1.04, 1.06, 1.2}, {5, 80, 2, 30, 7}).elementCount(), 5);
        QVector<double> xs;
        for (const QPointF &point :
             points(pathOf({1, 1.01, 1.02, 1.03, 1.04, 1.05, 1.06, 1.2}, {50, 60, 99, 40, 3, 20, 30, 7})))
            xs.append(point.x());
        QCOMPARE(xs, (QVector<double>{50, 99, 3, 30, 7})); // first, largest, smallest, last in their order
        // The extremes may be the ends: no point is taken twice.
        QCOMPARE(pathOf({1, 1.01, 1.02, 1.03, 1.04}, {1, 2, 3, 4, 5}).elementCount(), 2);
        QCOMPARE(pathOf({1, 1.01, 1.02, 1.03, 1.04}, {5, 5, 5, 5, 5}).elementCount(), 2);
        QCOMPARE(pathOf({1, 1.01, 1.02, 1.03, 1.04}, {3, 9, 1, 4, 4}).elementCount(), 4);
        QCOMPARE(pathOf({1, 1.01, 1.02, 1.03, 1.04}, {3, 9, 4, 4, 1}).elementCount(), 3);
    }

    void breaksAreKeptInFullRows()
    {
        QVector<double> depths;
        QVector<double> values;
        for (int i = 0; i < 40; ++i) {
            depths.append(1 + i * 0.002);
            values.append(i == 20 ? nullSampleValue : i);
        }
        const QPainterPath path = pathOf(depths, values);
        QCOMPARE(counts(path), (QVector<int>{2, 2}));
        QCOMPARE(path.elementAt(1).x, 19.0);
        QCOMPARE(path.elementAt(2).x, 21.0);
    }

    // Rows of many samples against the rule, sample by sample: on scales either way round, with values beyond the limits
    // and with breaks.
    void rowsOfManyKeepTheFirstSmallestLargestAndLast()
    {
        for (const logshapes::Shape shape : {logshapes::Random, logshapes::Gappy, logshapes::HolesAndInfinities,
                                             logshapes::Constant, logshapes::Sawtooth}) {
            const logshapes::Log log = logshapes::make(shape, 40000, 100, 3);
            for (const ValueScale &across :
                 {ValueScale{false, 0, 150, 100}, ValueScale{false, 150, 0, 100}, ValueScale{false, 60, 62, 100},
                  ValueScale{false, 90, 70, 100}, ValueScale{true, 1, 100, 100}}) {
                const CurveSamples samples = log.samples();
                const CurveKey key = curveKey(samples, axis, {}, across);
                QVector<QPointF> expected;
                QVector<QPointF> row;
                int pieceStart = 0;
                const auto finish = [&] {
                    if (row.size() > 4) {
                        const auto isLeft = [](const QPointF &a, const QPointF &b) { return a.x() < b.x(); };
                        const int least = std::min_element(row.begin(), row.end(), isLeft) - row.begin();
                        const int most = std::max_element(row.begin(), row.end(), isLeft) - row.begin();
                        QVector<int> kept{0, least, most, row.size() - 1};
                        std::sort(kept.begin(), kept.end());
                        kept.erase(std::unique(kept.begin(), kept.end()), kept.end());
                        for (const int i : qAsConst(kept))
                            expected.append(row.at(i));
                    } else {
                        expected += row;
                    }
                    row.clear();
                };
                for (int i = 0; i < log.depths.size(); ++i) {
                    QPointF point;
                    bool isSkipped = false;
                    const bool isDrawn = logshapes::place(log, i, key, point, isSkipped);
                    if (!isDrawn || (!row.isEmpty() && std::floor(row.last().y()) != std::floor(point.y())))
                        finish();
                    if (isDrawn)
                        row.append(point);
                    else if (expected.size() == pieceStart + 1)
                        expected.removeLast(); // a painter's path keeps no single points
                    if (!isDrawn)
                        pieceStart = expected.size();
                }
                finish();
                const QVector<QPointF> reduced = points(reducedPath(samples, key));
                QVERIFY2(reduced == expected,
                         qPrintable(QStringLiteral("shape %1, %2 to %3: %4, %5")
                                        .arg(shape)
                                        .arg(across.minimum)
                                        .arg(across.maximum)
                                        .arg(reduced.size())
                                        .arg(expected.size())));
                QVERIFY(expected.size() > 1000);
            }
        }
    }

    void neverMoreThanFourPointsARow()
    {
        for (const logshapes::Shape shape :
             {logshapes::Random, logshapes::Wander, logshapes::Constant, logshapes::Spiky}) {
            const logshapes::Log log = logshapes::make(shape, 50000, 100, 3);
            QVector<int> inRow(1001);
            for (const QPointF &point : points(pathOf(log.depths, log.values)))
                ++inRow[static_cast<int>(point.y())];
            QVERIFY(*std::max_element(inRow.begin(), inRow.end()) <= 4);
        }
    }

    // On paper rows are those of the printer.
    void finerRowsKeepMore()
    {
        const logshapes::Log log = logshapes::make(logshapes::Random, 50000, 100, 3);
        const CurveSamples samples = log.samples();
        const CurveKey key = curveKey(samples, axis, {}, scale);
        ShownRows rows;
        const int screen = reducedPath(samples, key, rows).elementCount();
        rows.perPixel = 6;
        const int printer = reducedPath(samples, key, rows).elementCount();
        QVERIFY(printer > 5 * screen);
        QVERIFY(printer <= 4 * 6001);
    }

    void thePathIsThatOfEverySampleWhereRowsHoldFour()
    {
        for (const logshapes::Shape shape : {logshapes::Gappy, logshapes::Wander, logshapes::HolesAndInfinities}) {
            const logshapes::Log log = logshapes::make(shape, 3900, 100, 3);
            const CurveSamples samples = log.samples();
            const CurveKey key = curveKey(samples, axis, {}, scale);
            QCOMPARE(reducedPath(samples, key), logshapes::everySample(log, key));
        }
    }

    // The path of some rows has the points that the path of all rows has there, and a few samples are read for it.
    void someRowsOfThePath()
    {
        for (const bool isDescending : {false, true}) {
            for (const int count : {3000, 100000, 700000}) {
                logshapes::Log log =
                    logshapes::make(isDescending ? logshapes::Descending : logshapes::Wander, count, 10000, 3);
                for (int i = 0; i < log.values.size(); i += 700)
                    log.values[i] = nullSampleValue;
                const CurveSamples samples = log.samples();
                const CurveKey key = curveKey(samples, {0, 10000, 100000}, {}, scale);
                for (const double perPixel : {1.0, 1.5}) {
                    const ShownRows rows{50000.3, 50100.2, perPixel};
                    const QPainterPath all =
                        reducedPath(samples, key, {ShownRows().top, ShownRows().bottom, perPixel});
                    const qint64 before = readSampleCount();
                    const QVector<QPointF> part = points(reducedPath(samples, key, rows));
                    QVERIFY(readSampleCount() - before < count / 950 + 5);
                    const ShownRows whole = rows.wholeRows();
                    QVector<QPointF> expected;
                    for (const QPointF &point : points(all))
                        if (point.y() >= whole.top && point.y() <= whole.bottom)
                            expected.append(point);
                    const int first = part.indexOf(expected.first());
                    QVERIFY(first == 0 || first == 1); // one more for the line that comes in
                    QVERIFY(part.size() - first - expected.size() <= 1);
                    for (int i = 0; i < expected.size(); ++i)
                        QCOMPARE(part.at(first + i), expected.at(i));
                }
                QVERIFY(reducedPath(samples, key, {200000, 200100}).elementCount() <= 1);
            }
        }
    }

    void linesThroughTheRowsBelongToThem()
    {
        const CurveSamples samples({0, 100}, {20, 60});
        const CurveKey key = curveKey(samples, axis, {}, scale);
        QCOMPARE(reducedPath(samples, key, {500, 510}).elementCount(), 2); // no sample anywhere near
        const CurveSamples broken({0, 50, 100}, {20, nullSampleValue, 60});
        QCOMPARE(counts(reducedPath(broken, curveKey(broken, axis, {}, scale), {495, 510})), QVector<int>{1});
    }

    // Also where a sample stands on the edge itself.
    void aPartHoldsTheSamplesOnItsEdgesAndOneMoreOnBothSides()
    {
        const QVector<double> down{10, 20, 30, 40, 50, 60, 70};
        const QVector<double> up(down.crbegin(), down.crend());
        for (const QVector<double> &depths : {down, up}) {
            const CurveSamples samples = samplesOf(depths, QVector<double>(7, 50));
            const SamplePlacer placer(curveKey(samples, axis, {}, scale));
            QCOMPARE(placer.range(samples, {300, 500}), std::make_pair(1, 6));
            QCOMPARE(placer.range(samples, {299, 501}), std::make_pair(1, 6));
            QCOMPARE(placer.range(samples, {301, 499}), std::make_pair(2, 5));
            QCOMPARE(placer.range(samples, {0, 1000}), std::make_pair(0, 7));
        }
    }

    void unsortedDepthsAreNotReduced()
    {
        logshapes::Log log = logshapes::make(logshapes::Wander, 5000, 100, 3);
        std::swap(log.depths[100], log.depths[4000]);
        const CurveSamples samples = log.samples();
        const CurveKey key = curveKey(samples, axis, {}, scale);
        QCOMPARE(samples.order(), DepthOrder::Unsorted);
        QCOMPARE(reducedPath(samples, key, {200, 300}), logshapes::everySample(log, key));
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

    void whatIsPaintedIsReadOnce()
    {
        const logshapes::Log log = logshapes::make(logshapes::Noisy, 50000, 100, 3);
        const CurveSamples samples = log.samples();
        const CurveKey key = curveKey(samples, DepthAxis{0, 100, 10000}, {}, scale);
        CurveLine line;
        const auto readBy = [&](int top, const QPen &pen) {
            const qint64 before = readSampleCount();
            line.update(samples, key);
            (void)logshapes::picture({100, 100}, top,
                                     [&](QPainter &painter) { line.paint(painter, pen, top, top + 100); });
            return readSampleCount() - before;
        };
        const QPen pen(Qt::black, 1, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
        const qint64 first = readBy(3000, pen);
        QVERIFY2(first > 500 && first < 2000, qPrintable(QString::number(first)));
        const qint64 again = readBy(3000, QPen(QBrush(Qt::red), 1, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        QVERIFY2(again < 150, qPrintable(QString::number(again))); // the lines that the edges of the device cut
        QVERIFY(readBy(3040, pen) < 1000);
        QVERIFY(readBy(3000, pen) < 150);
        // Each of what the geometry depends on is seen.
        CurveKey other = key;
        const auto picture = [&] {
            line.update(samples, other);
            return logshapes::picture({150, 100}, 3000,
                                      [&](QPainter &painter) { line.paint(painter, pen, 3000, 3100); });
        };
        QImage before = picture();
        const auto isAnother = [&] {
            const QImage after = picture();
            const bool isOther = logshapes::difference(before, after) > 100;
            before = after;
            return isOther;
        };
        QVERIFY(!isAnother());
        other.axis = DepthAxis{0, 100, 20000};
        QVERIFY(isAnother());
        other.scale.width = 150;
        QVERIFY(isAnother());
        other.reference = {TvdSubsea, Metre, 12};
        QVERIFY(isAnother());
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
        const CurveSamples samples = samplesOf(depths, values);
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
                const CurveKey key = curveKey(samples, on, {}, across);
                QVERIFY(!passes(samples, key, QRectF(-50, -50, 10, 10)));
                for (const QPointF &point : points(reducedPath(samples, key)))
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
            QVERIFY(reducedPath(samples, curveKey(samples, on, {}, scale)).elementCount()
                    <= std::max(20000, 4 * (on.heightPx() + 1)));
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
