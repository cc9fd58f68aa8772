#include "curvescene.h"
#include "logshapes.h"

#include "logview/geometry/curveline.h"

#include <QTest>

using namespace curvescene;
using namespace logview;

/// Curves of dashes and dots: where these stand, pixel by pixel.
class tst_dashedcurves : public QObject
{
    Q_OBJECT

private slots:
    void dashesKeepTheirPlaces();
    void dashesFollowThePattern();
    void dashesOfALevelLine();
    void dashesBeginBehindAGap();
    void dashesOfLongLinesAreThoseInView();
    void gapsOfDashedLinesStayOpen();
};

void tst_dashedcurves::dashesKeepTheirPlaces()
{
    for (const Qt::PenStyle style : {Qt::DashLine, Qt::DotLine, Qt::DashDotDotLine}) {
        for (const double density : {0.2, 0.7, 9.0}) {
            for (const int penWidth : {1, 3}) {
                const Scene scene = sceneOf(0, 1000, 900, false, false);
                const logshapes::Log log =
                    logshapes::make(logshapes::Wander, static_cast<int>(density * 900), 1000, 5);
                const CurveSamples samples = log.samples();
                CurveLine line;
                line.update(samples, curveKey(samples, scene.axis, scene.reference, scene.scale));
                QPen pen = solidPen(penWidth);
                pen.setStyle(style);
                const QImage whole =
                    logshapes::picture({200, 900}, 0, [&](QPainter &painter) { line.paint(painter, pen, 0, 900); });
                QVERIFY(logshapes::paintedPixels(whole) > 100);
                // A view scrolled to some rows: but for the lines that its edges cut it shows those of the whole.
                const QImage view = logshapes::picture(
                    {200, 300}, 500, [&](QPainter &painter) { line.paint(painter, pen, 500, 800); });
                QCOMPARE(logshapes::difference(view.copy(0, 10, 240, 280), whole.copy(0, 510, 240, 280)), 0);
                // What scrolling uncovers.
                const QImage strip = logshapes::picture({200, 900}, 0, [&](QPainter &painter) {
                    painter.setClipRect(-20, 600, 240, 40);
                    line.paint(painter, pen, 600, 640);
                });
                QCOMPARE(logshapes::difference(strip.copy(0, 600, 240, 40), whole.copy(0, 600, 240, 40)), 0);
            }
        }
    }
}

void tst_dashedcurves::dashesFollowThePattern()
{
    const Scene scene = sceneOf(0, 1000, 600, false, false);
    const CurveSamples samples({0, 300, 301, 1000}, {75, 75, 75, 75});
    CurveLine line;
    line.update(samples, curveKey(samples, scene.axis, scene.reference, scene.scale));
    QPen pen = solidPen(1);
    pen.setStyle(Qt::DashLine); // four pixels and a gap of two
    const QImage image =
        logshapes::picture({200, 600}, 0, [&](QPainter &painter) { line.paint(painter, pen, 0, 600); });
    for (int row = 0; row < 600; ++row)
        QCOMPARE(image.pixel(120, row) == QColor(Qt::black).rgb(), row % 6 < 4);
    pen.setDashOffset(3);
    const QImage moved =
        logshapes::picture({200, 600}, 0, [&](QPainter &painter) { line.paint(painter, pen, 0, 600); });
    for (int row = 0; row < 600; ++row)
        QCOMPARE(moved.pixel(120, row) == QColor(Qt::black).rgb(), (row + 3) % 6 < 4);
}

void tst_dashedcurves::dashesOfALevelLine()
{
    const Scene scene = sceneOf(0, 1000, 600, false, false);
    const CurveSamples samples({500, 500}, {30, 120}); // from 40 to 160 pixels
    CurveLine line;
    line.update(samples, curveKey(samples, scene.axis, scene.reference, scene.scale));
    QPen pen = solidPen(1);
    pen.setStyle(Qt::DashLine);
    const auto pictureOf = [&](double topY, double bottomY) {
        return logshapes::picture({200, 600}, 0, [&](QPainter &painter) { line.paint(painter, pen, topY, bottomY); });
    };
    const QImage image = pictureOf(0, 600);
    for (int column = 0; column < 200; ++column)
        QCOMPARE(image.pixel(20 + column, 300) == QColor(Qt::black).rgb(),
                 column >= 40 && column < 160 && (column - 40) % 6 < 4);
    QCOMPARE(logshapes::difference(pictureOf(290, 310), image), 0);
    for (const auto &[topY, bottomY] : {std::pair(0, 295), std::pair(305, 600)})
        QCOMPARE(logshapes::paintedPixels(pictureOf(topY, bottomY)), 0);
}

// Also where a view begins far below the gap.
void tst_dashedcurves::dashesBeginBehindAGap()
{
    const Scene scene = sceneOf(0, 200, 600, false, false);
    for (const int gap : {63, 64, 65, 128}) {
        QVector<float> depths;
        QVector<float> values(200, 75);
        for (int i = 0; i < 200; ++i)
            depths.append(static_cast<float>(i));
        values[gap] = static_cast<float>(nullSampleValue);
        const CurveSamples samples(depths, values);
        CurveLine line;
        line.update(samples, curveKey(samples, scene.axis, scene.reference, scene.scale));
        QPen pen = solidPen(1);
        pen.setStyle(Qt::DashLine);
        const QImage image =
            logshapes::picture({200, 100}, 450, [&](QPainter &painter) { line.paint(painter, pen, 450, 550); });
        for (int row = 0; row < 100; ++row)
            QCOMPARE(image.pixel(120, row) == QColor(Qt::black).rgb(), (450 + row - 3 * (gap + 1)) % 6 < 4);
    }
}

void tst_dashedcurves::dashesOfLongLinesAreThoseInView()
{
    const Scene scene = sceneOf(0, 5000, 18.0e6F, false, false);
    const CurveSamples samples({0, 5000}, {75, 75});
    CurveLine line;
    line.update(samples, curveKey(samples, scene.axis, scene.reference, scene.scale));
    QPen pen = solidPen(1);
    pen.setStyle(Qt::DashLine);
    const int top = 9000000;
    const QImage image =
        logshapes::picture({200, 300}, top, [&](QPainter &painter) { line.paint(painter, pen, top, top + 300); });
    for (int row = 0; row < 300; ++row)
        QCOMPARE(image.pixel(120, row) == QColor(Qt::black).rgb(), (top + row) % 6 < 4);
}

void tst_dashedcurves::gapsOfDashedLinesStayOpen()
{
    const Scene scene = sceneOf(0, 600, 600, false, false);
    const CurveSamples samples({0, 100, 200, 300, 400, 600}, {75, 75, nullSampleValue, 75, 75, 75});
    CurveLine line;
    line.update(samples, curveKey(samples, scene.axis, scene.reference, scene.scale));
    QPen pen = solidPen(1);
    pen.setStyle(Qt::DotLine); // a pixel and a gap of two; every stretch of the line starts with a dot
    const QImage image =
        logshapes::picture({200, 600}, 0, [&](QPainter &painter) { line.paint(painter, pen, 0, 600); });
    for (int row = 0; row < 600; ++row)
        QCOMPARE(image.pixel(120, row) == QColor(Qt::black).rgb(),
                 (row < 100 || row >= 300) && (row < 100 ? row : row - 300) % 3 == 0);
}

QTEST_GUILESS_MAIN(tst_dashedcurves)
#include "tst_dashedcurves.moc"
