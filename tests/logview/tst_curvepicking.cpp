#include "logshapes.h"

#include "logview/geometry/curvepath.h"

#include <QLineF>
#include <QTest>

using namespace logview;

namespace {

const DepthAxis axis{0, 100, 1000}; // ten rows a metre
const ValueScale scale{false, 0, 100, 100};

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

/// Which curve is under the mouse.
class tst_curvepicking : public QObject
{
    Q_OBJECT

private slots:
    void theLineIsPickedWhereItPasses()
    {
        const CurveSamples samples({0, 50, 60, 100}, {20, 60, nullSampleValue, 60});
        const CurveKey key = curveKey(samples, axis, {}, scale);
        QVERIFY(passes(samples, key, QRectF(39, 249, 2, 2))); // on the line from (20, 0) to (60, 500)
        QVERIFY(!passes(samples, key, QRectF(43, 249, 2, 2)));
        QVERIFY(!passes(samples, key, QRectF(35, 249, 2, 2)));
        QVERIFY(!passes(samples, key, QRectF(59, 700, 2, 2))); // in the gap
        QVERIFY(passes(samples, key, QRectF(59, 999, 2, 2)));
        QVERIFY(passes(samples, key, QRectF(59, 500, 2, 2))); // a line's end on the edge of the area
        QVERIFY(passes(samples, key, QRectF(19, -2, 2, 2)));
        QVERIFY(passes(samples, key, QRectF(58, 999, 2, 2)));
        QVERIFY(passes(samples, key, QRectF(60, 999, 2, 2)));
        for (const logshapes::Shape shape : {logshapes::Random, logshapes::Descending, logshapes::Gappy}) {
            const logshapes::Log log = logshapes::make(shape, 20000, 100, 3);
            const CurveSamples dense = log.samples();
            const CurveKey denseKey = curveKey(dense, axis, {}, scale);
            const QPainterPath shown = logshapes::everySample(log, denseKey);
            int hits = 0;
            int misses = 0;
            for (double y = 3; y < 1000; y += 97) {
                for (double x = -15; x < 120; x += 3) {
                    const QRectF area(x, y, 1.5, 0.3);
                    QCOMPARE(passes(dense, denseKey, area), isTouched(shown, area));
                    ++(passes(dense, denseKey, area) ? hits : misses);
                }
            }
            QVERIFY2(hits > 8 && misses > 50, qPrintable(QString::number(hits)));
        }
    }

    void pickingFollowsTheLinePastSkippedSamples()
    {
        const CurveSamples samples({40, 400, 60, 20}, {20, 70, 20, 90}); // the second is below the depth range
        const CurveKey key = curveKey(samples, axis, {}, scale);
        QVERIFY(passes(samples, key, QRectF(19, 499, 2, 2)));
        QVERIFY(!passes(samples, key, QRectF(44, 499, 2, 2)));
    }

    // However long the log is.
    void pickingReadsTheSamplesUnderThePointer()
    {
        const logshapes::Log log = logshapes::make(logshapes::Noisy, 500000, 100, 3);
        const CurveSamples samples = log.samples();
        const CurveKey key = curveKey(samples, DepthAxis{0, 100, 500000}, {}, scale);
        const qint64 before = readSampleCount();
        (void)passes(samples, key, QRectF(200, 250000, 6, 6));
        QVERIFY(readSampleCount() - before <= 9);
    }
};

QTEST_GUILESS_MAIN(tst_curvepicking)
#include "tst_curvepicking.moc"
