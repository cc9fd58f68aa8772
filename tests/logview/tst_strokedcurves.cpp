#include "curvescene.h"
#include "logshapes.h"

#include "logview/geometry/curveline.h"
#include "logview/geometry/curvepath.h"

#include <QTest>

using namespace curvescene;
using namespace logview;

/// Curves that the painter strokes, instead of having their pixels found row by row.
class tst_strokedcurves : public QObject
{
    Q_OBJECT

private slots:
    void fewLinesOfAWidePenAreStroked();
    void pensOfOtherCapsAndJoins();
    void otherPaintersStrokeTheReducedPath_data();
    void otherPaintersStrokeTheReducedPath();
};

// The painter is quick with them, and its picture is the right one.
void tst_strokedcurves::fewLinesOfAWidePenAreStroked()
{
    const CurveKey key = {{0, 1000, 800}, {}, {false, 0, 150, 200}, 0};
    const auto isNeeded = [&](int count, double penWidth) {
        return StrokeRows(logshapes::make(logshapes::Random, count, 1000, 3).samples(), key, penWidth).isNeeded();
    };
    QVERIFY(isNeeded(3, 1));
    QVERIFY(isNeeded(101, 3));
    QVERIFY(!isNeeded(100, 3));
}

// With one pixel only flat ends look otherwise.
void tst_strokedcurves::pensOfOtherCapsAndJoins()
{
    const Scene scene = sceneOf(0, 1000, 300, false, false);
    const logshapes::Log log = logshapes::make(logshapes::Noisy, 6000, 990, 5);
    const CurveSamples samples = log.samples();
    const CurveKey key = curveKey(samples, scene.axis, scene.reference, scene.scale);
    CurveLine line;
    line.update(samples, key);
    const auto differing = [&](const QPainterPath &path, int width, Qt::PenCapStyle cap, Qt::PenJoinStyle join) {
        const QPen pen(QBrush(Qt::black), width, Qt::SolidLine, cap, join);
        const QImage expected = logshapes::picture({200, 300}, 0, [&](QPainter &painter) {
            painter.setPen(pen);
            painter.drawPath(path);
        });
        return logshapes::difference(
            logshapes::picture({200, 300}, 0, [&](QPainter &painter) { line.paint(painter, pen, 0, 300); }),
            expected);
    };
    const QPainterPath all = logshapes::everySample(log, key);
    const QPainterPath reduced = reducedPath(samples, key);
    QCOMPARE(differing(all, 1, Qt::SquareCap, Qt::MiterJoin), 0);
    QVERIFY(differing(reduced, 1, Qt::SquareCap, Qt::MiterJoin) > 0);
    QCOMPARE(differing(reduced, 1, Qt::FlatCap, Qt::MiterJoin), 0);
    QCOMPARE(differing(reduced, 4, Qt::FlatCap, Qt::RoundJoin), 0);
    QCOMPARE(differing(reduced, 4, Qt::SquareCap, Qt::RoundJoin), 0);
    QCOMPARE(differing(reduced, 4, Qt::RoundCap, Qt::MiterJoin), 0);
}

void tst_strokedcurves::otherPaintersStrokeTheReducedPath_data()
{
    QTest::addColumn<QTransform>("transform");
    QTest::addColumn<bool>("isAntialiased");
    QTest::newRow("antialiased") << QTransform::fromScale(2, 2) << true;
    QTest::newRow("wider than high") << QTransform::fromScale(3, 2) << false;
    QTest::newRow("smaller") << QTransform::fromScale(0.5, 0.5) << false;
    QTest::newRow("between pixels") << QTransform::fromTranslate(0.5, 0) << false;
    QTest::newRow("leaning") << QTransform(1, 0.1, 0, 1, 0, 0) << false;
}

void tst_strokedcurves::otherPaintersStrokeTheReducedPath()
{
    QFETCH(QTransform, transform);
    QFETCH(bool, isAntialiased);
    const Scene scene = sceneOf(0, 1000, 400, false, false);
    const logshapes::Log log = logshapes::make(logshapes::Wander, 8000, 1000, 5);
    const CurveSamples samples = log.samples();
    const CurveKey key = curveKey(samples, scene.axis, scene.reference, scene.scale);
    CurveLine line;
    line.update(samples, key);
    ShownRows rows;
    rows.perPixel = std::max(1.0, transform.m22());
    const QPainterPath reduced = reducedPath(samples, key, rows);
    const auto pictureBy = [&](const auto &paint) {
        return logshapes::picture({600, 800}, 0, [&](QPainter &painter) {
            painter.setRenderHint(QPainter::Antialiasing, isAntialiased);
            painter.setTransform(transform, true);
            paint(painter);
        });
    };
    const QImage expected = pictureBy([&](QPainter &painter) {
        painter.setPen(solidPen(1));
        painter.drawPath(reduced);
    });
    // Also when it keeps the rows of a screen.
    (void)logshapes::picture({200, 400}, 0, [&](QPainter &painter) { line.paint(painter, solidPen(1), 0, 400); });
    const QImage painted = pictureBy([&](QPainter &painter) { line.paint(painter, solidPen(1), 0, 400); });
    QVERIFY(logshapes::paintedPixels(expected) > 100);
    QCOMPARE(logshapes::difference(painted, expected), 0);
}

QTEST_GUILESS_MAIN(tst_strokedcurves)
#include "tst_strokedcurves.moc"
