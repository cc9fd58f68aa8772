#include "curvescene.h"
#include "logshapes.h"

#include "logview/geometry/curveline.h"
#include "logview/geometry/curvepath.h"

#include <QTest>

#include <random>

using namespace curvescene;
using namespace logview;

Q_DECLARE_METATYPE(logshapes::Shape)

/// The reduced drawing of curves against the drawing of every sample, pixel by pixel.
class tst_curvepixels : public QObject
{
    Q_OBJECT

private slots:
    void aSolidPenOfOnePixelPaintsTheSamePixels_data() { everyShape(); }
    void aSolidPenOfOnePixelPaintsTheSamePixels()
    {
        // Samples a row, from far fewer than one to very many.
        for (const double density : {0.03, 0.4, 1.5, 3.9, 4.1, 7.0, 20.0, 60.0})
            for (const int rows : {300, 700})
                QCOMPARE(compareViews(density, rows, 1, 0).differing, 0);
        for (const double density : {130.0, 900.0})
            QCOMPARE(compareViews(density, 300, 1, 0).differing, 0);
    }
    void linesThatLeaveTheDevicePaintTheSamePixels_data() { everyShape(); }
    void linesThatLeaveTheDevicePaintTheSamePixels();
    void lastLinesThatComeFromAboveTheDevice();
    void longLinesPaintTheSamePixels();
    void denseLinesPaintTheSamePixels_data();
    void denseLinesPaintTheSamePixels();
    void widerPensPaintAlmostTheSamePixels_data() { everyShape(); }
    void widerPensPaintAlmostTheSamePixels()
    {
        // The painter's corners stand at whole 64ths of a pixel, which shows where a line of two pixels is all edge, and
        // its rounds are polygons.
        for (const int width : {2, 3, 5}) {
            Pixels all;
            for (const double density : {0.03, 0.4, 1.5, 4.1, 20.0}) {
                const Pixels pixels = compareViews(density, 500, width, width == 2 ? 0.02 : 0.04);
                all.painted += pixels.painted;
                all.differing += pixels.differing;
            }
            QVERIFY2(all.differing <= (width == 2 ? 0.004 : 0.02) * all.painted,
                     qPrintable(QString::number(all.differing)));
        }
    }
    void widePensCoverWhatLiesWithinHalfTheirWidth_data() { everyShape(); }
    void widePensCoverWhatLiesWithinHalfTheirWidth();
    void aPartialPaintIsAPartOfTheWhole_data() { everyShape(); }
    void aPartialPaintIsAPartOfTheWhole();
    void aPointThatIsThereTwiceIsNoLine();
    void whatScrollsByIsPaintedAsAnew();
    void oneLineServesEveryScreen();

private:
    void everyShape();
    struct Pixels
    {
        int painted = 0;
        int differing = 0;
    };
    Pixels compareViews(double density, int rows, int penWidth, double tolerance);
};

void tst_curvepixels::everyShape()
{
    QTest::addColumn<logshapes::Shape>("shape");
    QTest::newRow("random") << logshapes::Random;
    QTest::newRow("noisy") << logshapes::Noisy;
    QTest::newRow("wander") << logshapes::Wander;
    QTest::newRow("spiky") << logshapes::Spiky;
    QTest::newRow("gappy") << logshapes::Gappy;
    QTest::newRow("constant") << logshapes::Constant;
    QTest::newRow("sawtooth") << logshapes::Sawtooth;
    QTest::newRow("descending") << logshapes::Descending;
    QTest::newRow("clumped") << logshapes::Clumped;
    QTest::newRow("holes and infinities") << logshapes::HolesAndInfinities;
}

tst_curvepixels::Pixels tst_curvepixels::compareViews(double density, int rows, int penWidth, double tolerance)
{
    QFETCH(logshapes::Shape, shape);
    constexpr int viewRows = 300;
    Pixels sum;
    for (const bool isLogarithmic : {false, true}) {
        const Scene scene =
            sceneOf(0, 1000, static_cast<float>(rows) - 0.4F, isLogarithmic, density == 7.0 && !isLogarithmic);
        const logshapes::Log log =
            logshapes::make(shape, static_cast<int>(density * rows), 1010, static_cast<unsigned>(rows));
        const CurveSamples samples = log.samples();
        const CurveKey key = curveKey(samples, scene.axis, scene.reference, scene.scale);
        CurveLine line;
        line.update(samples, key);
        const QPainterPath all = logshapes::everySample(log, key);
        const auto paintAll = [&](QPainter &painter) {
            painter.setPen(solidPen(penWidth));
            painter.drawPath(all);
        };
        const auto paintLine = [&](QPainter &painter) { line.paint(painter, solidPen(penWidth), 0, rows); };
        // The view at the start of the track, and scrolled to its end.
        for (const int top : {0, rows - viewRows}) {
            const QImage expected = logshapes::picture({200, viewRows}, top, paintAll);
            const int painted = logshapes::paintedPixels(expected);
            const int differing =
                logshapes::difference(logshapes::picture({200, viewRows}, top, paintLine), expected);
            sum.painted += painted;
            sum.differing += differing;
            if (painted == 0 && (all.elementCount() >= 100 || shape == logshapes::Constant))
                QTest::qFail("nothing to compare", __FILE__, __LINE__);
            if (differing > tolerance * painted)
                QTest::qFail(
                    qPrintable(QStringLiteral("%1 of %2 pixels differ: %3 a row, %4 rows from %5, pen %6, log %7")
                                   .arg(differing)
                                   .arg(painted)
                                   .arg(density)
                                   .arg(rows)
                                   .arg(top)
                                   .arg(penWidth)
                                   .arg(isLogarithmic)),
                    __FILE__, __LINE__);
        }
    }
    return sum;
}

// Wherever the device ends within a line.
void tst_curvepixels::linesThatLeaveTheDevicePaintTheSamePixels()
{
    QFETCH(logshapes::Shape, shape);
    constexpr int rows = 90;
    constexpr int viewRows = 10;
    int covered = 0;
    int differing = 0;
    const Scene scene = sceneOf(0, 1000, rows, false, false);
    for (const double density : {0.4, 0.7, 1.1, 1.6, 2.7, 5.0, 20.0}) {
        const logshapes::Log log = logshapes::make(shape, static_cast<int>(density * rows), 1000, 7);
        const CurveSamples samples = log.samples();
        const CurveKey key = curveKey(samples, scene.axis, scene.reference, scene.scale);
        CurveLine line;
        line.update(samples, key);
        const QPainterPath all = logshapes::everySample(log, key);
        for (int top = 0; top < rows - viewRows; ++top) {
            const QImage expected = logshapes::picture({200, viewRows}, top, [&](QPainter &painter) {
                painter.setPen(solidPen(1));
                painter.drawPath(all);
            });
            const QImage painted = logshapes::picture(
                {200, viewRows}, top, [&](QPainter &painter) { line.paint(painter, solidPen(1), 0, rows); });
            differing += logshapes::difference(painted, expected);
            covered += logshapes::paintedPixels(expected);
        }
    }
    // Where a line breaks near an edge, or spans the whole device, one pixel of ten thousand is another.
    const bool isBroken =
        shape == logshapes::Random || shape == logshapes::Gappy || shape == logshapes::HolesAndInfinities;
    QVERIFY(covered > 5000);
    QVERIFY2(differing <= (isBroken ? covered / 9000 : 0), qPrintable(QString::number(differing)));
}

// Which the painter cuts before it looks for their pixels, however little of them shows.
void tst_curvepixels::lastLinesThatComeFromAboveTheDevice()
{
    const Scene scene = sceneOf(0, 100, 100, false, false);
    int painted = 0;
    for (int i = 0; i < 400; ++i) {
        logshapes::Log log;
        log.depths = {1, 45 - 0.1 * (i % 40), 50 + 0.01 * (i % 97)};
        log.values = {75, 10 + 0.31 * i, 140 - 0.27 * i};
        const CurveSamples samples = log.samples();
        const CurveKey key = curveKey(samples, scene.axis, scene.reference, scene.scale);
        CurveLine line;
        line.update(samples, key);
        const QPainterPath all = logshapes::everySample(log, key);
        const QImage expected = logshapes::picture({200, 10}, 50, [&](QPainter &painter) {
            painter.setPen(solidPen(1));
            painter.drawPath(all);
        });
        const QImage image =
            logshapes::picture({200, 10}, 50, [&](QPainter &painter) { line.paint(painter, solidPen(1), 0, 100); });
        QCOMPARE(logshapes::difference(image, expected), 0);
        painted += logshapes::paintedPixels(expected);
    }
    QVERIFY(painted > 1000);
}

// The painter counts slopes of lines of more than 512 pixels otherwise.
void tst_curvepixels::longLinesPaintTheSamePixels()
{
    for (const bool isWide : {false, true}) {
        Scene scene = sceneOf(0, 1000, isWide ? 40 : 2400, false, false);
        scene.scale.width = isWide ? 2400 : 200;
        const logshapes::Log log = logshapes::make(logshapes::Random, isWide ? 30 : 4, 1000, 3);
        const CurveSamples samples = log.samples();
        const CurveKey key = curveKey(samples, scene.axis, scene.reference, scene.scale);
        CurveLine line;
        line.update(samples, key);
        const QPainterPath all = logshapes::everySample(log, key);
        const QSize size =
            QSizeF(static_cast<double>(scene.scale.width), static_cast<double>(scene.axis.height)).toSize();
        const QImage expected = logshapes::picture(size, 0, [&](QPainter &painter) {
            painter.setPen(solidPen(1));
            painter.drawPath(all);
        });
        const QImage image = logshapes::picture(
            size, 0, [&](QPainter &painter) { line.paint(painter, solidPen(1), 0, size.height()); });
        QVERIFY(logshapes::paintedPixels(expected) > 2000);
        QCOMPARE(logshapes::difference(image, expected), 0);
    }
}

void tst_curvepixels::denseLinesPaintTheSamePixels_data()
{
    QTest::addColumn<double>("step"); // from sample to sample, in pixels
    for (const double step : {0.01, 0.04, 0.1, 0.3, 0.8, 2.0, 7.0, 60.0})
        QTest::addRow("%g", step) << step;
}

// Short lines sink into the rows beside, long ones do not: which pixels these set must not be lost where the rows of
// many samples are not drawn line by line.
void tst_curvepixels::denseLinesPaintTheSamePixels()
{
    QFETCH(double, step);
    constexpr int rows = 60;
    const Scene scene = sceneOf(0, 1000, rows, false, false);
    int painted = 0;
    for (const double density : {11.0, 17.0, 26.0, 41.0, 66.0, 110.0, 270.0, 900.0}) {
        for (unsigned seed = 0; seed < 8; ++seed) {
            std::mt19937 generator(seed);
            std::normal_distribution<double> normal;
            logshapes::Log log;
            QVector<float> depths;
            QVector<float> values;
            double value = 75;
            const int count = static_cast<int>(density * rows);
            for (int i = 0; i < count; ++i) {
                value = std::clamp(value + 0.75 * step * normal(generator), 1.0, 149.0);
                const bool isSpike = seed % 3 == 1 && generator() % 40 == 0;
                const bool isNull = seed % 4 == 2 && generator() % 100 == 0;
                depths.append(1000.0F * static_cast<float>(i) / static_cast<float>(count));
                values.append(isNull ? -999.25F : static_cast<float>(isSpike ? 140 : value));
                log.depths.append(static_cast<double>(depths.last()));
                log.values.append(static_cast<double>(values.last()));
            }
            const CurveSamples samples(depths, values);
            const CurveKey key = curveKey(samples, scene.axis, scene.reference, scene.scale);
            CurveLine line;
            line.update(samples, key);
            const QPainterPath all = logshapes::everySample(log, key);
            const QImage expected = logshapes::picture({200, rows}, 0, [&](QPainter &painter) {
                painter.setPen(solidPen(1));
                painter.drawPath(all);
            });
            const QImage image = logshapes::picture(
                {200, rows}, 0, [&](QPainter &painter) { line.paint(painter, solidPen(1), 0, rows); });
            const int differing = logshapes::difference(image, expected);
            QVERIFY2(
                differing == 0,
                qPrintable(QStringLiteral("%1 pixels: %2 a row, seed %3").arg(differing).arg(density).arg(seed)));
            painted += logshapes::paintedPixels(expected);
        }
    }
    QVERIFY(painted > 5000);
}

void tst_curvepixels::aPartialPaintIsAPartOfTheWhole()
{
    QFETCH(logshapes::Shape, shape);
    for (const double density : {0.3, 3.0, 6.0, 40.0}) {
        const Scene scene = sceneOf(0, 1000, 900, false, false);
        const logshapes::Log log = logshapes::make(shape, static_cast<int>(density * 900), 1000, 5);
        const CurveSamples samples = log.samples();
        CurveLine line;
        line.update(samples, curveKey(samples, scene.axis, scene.reference, scene.scale));
        for (const int penWidth : {1, 3}) {
            const QImage whole = logshapes::picture(
                {200, 400}, 300, [&](QPainter &painter) { line.paint(painter, solidPen(penWidth), 0, 900); });
            const QImage parts = logshapes::picture({200, 400}, 300, [&](QPainter &painter) {
                // As a view paints what scrolling uncovers: clipped, one strip after the other.
                for (int top = 300; top < 700; top += 7) {
                    painter.setClipRect(-20, top, 240, 7);
                    line.paint(painter, solidPen(penWidth), top, top + 7);
                }
            });
            QCOMPARE(logshapes::difference(parts, whole), 0);
        }
    }
}

// As the painter paints no path of one point.
void tst_curvepixels::aPointThatIsThereTwiceIsNoLine()
{
    const Scene scene = sceneOf(0, 1000, 600, false, false);
    QVector<float> depths(100, 500);
    QVector<float> values(100, nullSampleValue);
    for (int i = 0; i < 49; ++i)
        depths[i] = static_cast<float>(10 * i);
    for (int i = 51; i < 100; ++i)
        depths[i] = static_cast<float>(10 * i);
    values[49] = values[50] = 75;
    const CurveSamples samples(depths, values);
    CurveLine line;
    line.update(samples, curveKey(samples, scene.axis, scene.reference, scene.scale));
    const auto painted = [&](int penWidth) {
        return logshapes::paintedPixels(logshapes::picture(
            {200, 600}, 0, [&](QPainter &painter) { line.paint(painter, solidPen(penWidth), 0, 600); }));
    };
    QCOMPARE(painted(1), 0);
    QCOMPARE(painted(4), 0);
}

// Also on screens that scale pixels: by the distance of the middle of each pixel from every line.
void tst_curvepixels::widePensCoverWhatLiesWithinHalfTheirWidth()
{
    QFETCH(logshapes::Shape, shape);
    constexpr int rows = 100;
    Scene scene = sceneOf(0, 1000, rows, false, false);
    scene.scale.width = 60;
    for (const double screen : {1.0, 1.5, 2.0}) {
        for (const int width : {1, 2, 5}) {
            if (width * screen == 1)
                continue;
            int covered = 0;
            int differing = 0;
            for (const double density : {0.3, 1.5, 4.1, 20.0}) {
                const logshapes::Log log = logshapes::make(shape, static_cast<int>(density * rows), 1010, 3);
                const CurveSamples samples = log.samples();
                const CurveKey key = curveKey(samples, scene.axis, scene.reference, scene.scale);
                CurveLine line;
                line.update(samples, key);
                const QSize size = QSize(60, rows) * screen;
                const QImage painted = logshapes::picture(size, 0, [&](QPainter &painter) {
                    painter.scale(screen, screen);
                    line.paint(painter, solidPen(width), 0, rows);
                });
                const QPainterPath path = QTransform::fromScale(screen, screen).map(logshapes::everySample(log, key));
                const QImage expected = logshapes::aroundLines(size, path, width * screen / 2);
                covered += logshapes::paintedPixels(expected);
                differing += logshapes::difference(painted, expected);
            }
            QVERIFY(covered > 100);
            QVERIFY2(differing <= 0.004 * covered,
                     qPrintable(QStringLiteral("%1 of %2 pixels differ: pen %3, screen %4")
                                    .arg(differing)
                                    .arg(covered)
                                    .arg(width)
                                    .arg(screen)));
        }
    }
}

// Down over more rows than are kept, back up, and away.
void tst_curvepixels::whatScrollsByIsPaintedAsAnew()
{
    const Scene scene = sceneOf(0, 1000, 9000, false, false);
    const logshapes::Log log = logshapes::make(logshapes::Wander, 40000, 1000, 5);
    const CurveSamples samples = log.samples();
    const CurveKey key = curveKey(samples, scene.axis, scene.reference, scene.scale);
    CurveLine kept;
    kept.update(samples, key);
    QVector<int> tops;
    for (int top = 0; top < 8400; top += 150)
        tops.append(top);
    for (int top = 8400; top > 100; top -= 130)
        tops.append(top);
    tops += {5000, 4700, 5200, 4000};
    for (const int penWidth : {1, 3}) {
        int painted = 0;
        for (const int top : tops) {
            const auto pictureOf = [&](const CurveLine &line) {
                return logshapes::picture({200, 250}, top, [&](QPainter &painter) {
                    line.paint(painter, solidPen(penWidth), top, top + 250);
                });
            };
            CurveLine fresh;
            fresh.update(samples, key);
            const QImage expected = pictureOf(fresh);
            QCOMPARE(logshapes::difference(pictureOf(kept), expected), 0);
            painted += logshapes::paintedPixels(expected);
        }
        QVERIFY(painted > 250 * tops.size());
        // What was painted last is there still.
        const qint64 before = readSampleCount();
        (void)logshapes::picture({200, 1000}, 3900,
                                 [&](QPainter &painter) { kept.paint(painter, solidPen(penWidth), 4010, 4240); });
        QCOMPARE(readSampleCount(), before);
    }
}

// Two pixels of a screen are one or two of the display.
void tst_curvepixels::oneLineServesEveryScreen()
{
    const Scene scene = sceneOf(0, 1000, 300, false, false);
    const CurveSamples samples = logshapes::make(logshapes::Wander, 1000, 1000, 5).samples();
    const CurveKey key = curveKey(samples, scene.axis, scene.reference, scene.scale);
    CurveLine line;
    line.update(samples, key);
    for (const double screen : {1.0, 2.0, 1.0}) {
        const auto pictureOf = [&](const CurveLine &painted) {
            return logshapes::picture({400, 600}, 0, [&](QPainter &painter) {
                painter.scale(screen, screen);
                painted.paint(painter, solidPen(static_cast<int>(2 / screen)), 0, 300);
            });
        };
        CurveLine fresh;
        fresh.update(samples, key);
        QVERIFY(logshapes::paintedPixels(pictureOf(fresh)) > 300);
        QCOMPARE(logshapes::difference(pictureOf(line), pictureOf(fresh)), 0);
    }
}

QTEST_GUILESS_MAIN(tst_curvepixels)
#include "tst_curvepixels.moc"
