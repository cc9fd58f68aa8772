#include "logshapes.h"

#include "logview/geometry/curveline.h"

#include <QTest>

#include <algorithm>
#include <cmath>
#include <random>

using namespace logview;

namespace {

/// Makes one value after the other; a pixel and the width of the track are given in values.
struct Maker
{
    std::mt19937 random;
    double pixel = 1;
    double width = 150;
    double last = 75;

    double uniform() { return std::uniform_real_distribution<double>()(random); }
    double normal() { return std::normal_distribution<double>()(random); }
    bool oneOf(unsigned many) { return random() % many == 0; }
    double wander(double pixels) { return last = std::clamp(last + pixels * pixel * normal(), 0.0, width); }
};

using Next = double (*)(Maker &, int);

/// How depths follow one another, and what makes them those of the display.
struct Depths
{
    double (*step)(Maker &) = nullptr; // as a part of the mean one; even ones without it
    DepthReference reference;
};

} // namespace

Q_DECLARE_METATYPE(Next)
Q_DECLARE_METATYPE(Depths)

/// Logs with many samples in a row of pixels against the painter's drawing of every sample, where a rule for what need not
/// be drawn may err: at the edges and middles of pixels, at the limits of the scale, on short lines, at spikes and gaps.
class tst_densepixels : public QObject
{
    Q_OBJECT

private slots:
    void linesPaintThePaintersPixels_data();
    void linesPaintThePaintersPixels();
    void seldomLinesPaintThePaintersPixels_data();
    void seldomLinesPaintThePaintersPixels();
    void unevenDepthsPaintThePaintersPixels_data();
    void unevenDepthsPaintThePaintersPixels();

private:
    static void compare(Next next, double density, int rows, const ValueScale &scale, int *painted,
                        const Depths &depths = {});
};

void tst_densepixels::linesPaintThePaintersPixels_data()
{
    QTest::addColumn<Next>("next");
    const auto add = [](const char *name, Next next) { QTest::newRow(name) << next; };
    add("constant", [](Maker &, int) { return 61.7; });
    add("spikes on a constant", [](Maker &make, int) { return make.oneOf(200) ? 150 * make.uniform() : 40; });
    add("noise over the track", [](Maker &make, int) { return 75 + 35 * make.normal(); });
    add("noise of some pixels", [](Maker &make, int) { return make.wander(0.05) + 3 * make.pixel * make.normal(); });
    add("short lines", [](Maker &make, int) { return make.wander(0.03); });
    add("lines of a pixel", [](Maker &make, int) { return make.wander(1); });
    add("spikes and gaps", [](Maker &make, int) {
        const double value = make.wander(0.2) + (make.oneOf(60) ? 40 : 0);
        return make.oneOf(150) ? nullSampleValue : value;
    });
    add("short pieces", [](Maker &make, int) { return make.oneOf(6) ? nullSampleValue : make.wander(0.7); });
    add("edges and middles of pixels",
        [](Maker &make, int) { return make.pixel * (30 + static_cast<int>(make.random() % 5) / 2.0); });
    add("around the middle of a pixel",
        [](Maker &make, int) { return make.pixel * (30.5 + (static_cast<int>(make.random() % 7) - 3) / 64.0); });
    add("plateaus", [](Maker &make, int) {
        return make.oneOf(9) ? make.last = make.pixel / 3 * static_cast<int>(make.random() % 9) : make.last;
    });
    add("at the left limit", [](Maker &make, int) {
        return make.oneOf(3) ? -50 : make.pixel * (make.oneOf(2) ? 0.6 : 1.5) * make.uniform();
    });
    add("at the right limit", [](Maker &make, int) {
        return make.oneOf(3) ? 300 : make.width - make.pixel * (make.oneOf(2) ? 0.6 : 1.5) * make.uniform();
    });
    add("beyond both limits", [](Maker &make, int) { return -200 + 500 * make.uniform(); });
    add("slowly to the right", [](Maker &make, int i) { return make.pixel * (0.002 * i + 0.02 * make.normal()); });
    add("to and fro", [](Maker &make, int i) { return 75 + 20 * make.pixel * std::sin(0.01 * i); });
    add("waves of short lines",
        [](Maker &make, int i) { return 75 + make.pixel * (2 * std::sin(0.02 * i) + 0.05 * make.normal()); });
}

void tst_densepixels::compare(Next next, double density, int rows, const ValueScale &scale, int *painted,
                              const Depths &depths)
{
    Maker make;
    make.random.seed(static_cast<unsigned>(density));
    make.pixel = 150 / static_cast<double>(scale.width);
    const int count = static_cast<int>(density * rows);
    logshapes::Log log;
    QVector<float> depthsM;
    QVector<float> values;
    double depth = 0;
    for (int i = 0; i < count; ++i) {
        depth = depths.step ? std::min(depth + 1000.0 / count * depths.step(make), 1000.0) : 1000.0 * i / count;
        const double value = next(make, i);
        const bool isMirrored = scale.minimum > scale.maximum && value != nullSampleValue;
        depthsM.append(static_cast<float>(depth));
        values.append(static_cast<float>(isMirrored ? make.width - value : value));
        log.depths.append(static_cast<double>(depthsM.last()));
        log.values.append(static_cast<double>(values.last()));
    }
    const CurveSamples samples(depthsM, values);
    const DepthAxis axis{depths.reference.toDisplay(0), depths.reference.toDisplay(1000), static_cast<float>(rows)};
    const CurveKey key = curveKey(samples, axis, depths.reference, scale);
    CurveLine line;
    line.update(samples, key);
    const QPen pen(QBrush(Qt::black), 1, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
    const QPainterPath all = logshapes::everySample(log, key);
    const QSize size(static_cast<int>(std::ceil(scale.width)), rows);
    const QImage expected = logshapes::picture(size, 0, [&](QPainter &painter) {
        painter.setPen(pen);
        painter.drawPath(all);
    });
    const QImage image = logshapes::picture(size, 0, [&](QPainter &painter) { line.paint(painter, pen, 0, rows); });
    if (logshapes::difference(image, expected) != 0)
        QFAIL(qPrintable(QStringLiteral("%1 pixels: %2 samples a row, scale from %3, %4 wide")
                             .arg(logshapes::difference(image, expected))
                             .arg(density)
                             .arg(static_cast<double>(scale.minimum))
                             .arg(static_cast<double>(scale.width))));
    *painted += logshapes::paintedPixels(expected);
}

void tst_densepixels::linesPaintThePaintersPixels()
{
    QFETCH(Next, next);
    int painted = 0;
    // 33.5: the right edge in the middle of a pixel.
    for (const float width : {200.0F, 33.5F}) {
        const ValueScale scales[] = {
            {false, 0, 150, width}, {false, 150, 0, width}, {true, 1, 150, width}, {true, 20, 90, width}};
        // Samples a row: fewer than the painter's steps, more, and so many that each step has 40.
        for (const ValueScale &scale : scales)
            for (const double density : {2.7, 11.0, 30.0, 66.0, 190.0, 270.0, 400.0})
                compare(next, density, 24, scale, &painted);
        compare(next, 2600, 12, scales[0], &painted);
    }
    QVERIFY(painted > 500);
}

void tst_densepixels::seldomLinesPaintThePaintersPixels_data()
{
    QTest::addColumn<Next>("next");
    const auto add = [](const char *name, Next next) { QTest::newRow(name) << next; };
    add("beyond the left limit",
        [](Maker &make, int) { return make.oneOf(40) ? -50 : make.pixel * (0.55 + 0.4 * make.uniform()); });
    add("beyond the right limit", [](Maker &make, int) {
        return make.oneOf(40) ? 300 : make.width - make.pixel * (0.55 + 0.4 * make.uniform());
    });
    add("over the middle of a pixel",
        [](Maker &make, int) { return make.pixel * (30.5 + (make.oneOf(50) ? -0.05 : 0.05) * make.uniform()); });
    add("from beyond the left limit into its pixel", [](Maker &make, int) {
        const double before = make.last;
        make.last = before == -50 ? 0.75 * make.pixel : make.oneOf(50) ? -50 : 10 + 100 * make.uniform();
        return make.last;
    });
    add("turns within a pixel", [](Maker &make, int) {
        const double turn = 10.2 * make.pixel;
        make.last = make.last == turn ? 10.9 * make.pixel : make.oneOf(50) ? turn : 20 + 100 * make.uniform();
        return make.last;
    });
    add("from plateau to plateau", [](Maker &make, int) {
        if (make.oneOf(40))
            make.last = make.pixel * (30 + static_cast<int>(make.random() % 7) / 3.0);
        return make.last;
    });
    add("slopes", [](Maker &make, int i) {
        return make.pixel * (30 + 0.3 * std::abs(i % 60 - 30) + (make.oneOf(30) ? 0.5 : 0));
    });
}

// What happens on few lines, at certain steps of a row, needs many rows to be met.
void tst_densepixels::seldomLinesPaintThePaintersPixels()
{
    QFETCH(Next, next);
    int painted = 0;
    for (const ValueScale &scale : {ValueScale{false, 0, 150, 200}, ValueScale{false, 150, 0, 200}}) {
        for (const double density : {9.0, 27.0, 70.0, 190.0, 290.0, 450.0})
            compare(next, density, 600, scale, &painted);
        compare(next, 2300, 60, scale, &painted);
    }
    QVERIFY(painted > 500);
}

void tst_densepixels::unevenDepthsPaintThePaintersPixels_data()
{
    QTest::addColumn<Depths>("depths");
    const auto repeating = [](Maker &make) { return make.oneOf(3) ? 0 : 1.5; };
    const auto any = [](Maker &make) { return 2 * make.uniform(); };
    QTest::newRow("repeating") << Depths{repeating, {}};
    QTest::newRow("any") << Depths{any, {}};
    QTest::newRow("holes") << Depths{[](Maker &make) { return make.oneOf(40) ? 20 : 0.5; }, {}};
    QTest::newRow("a hole of all rows") << Depths{[](Maker &make) { return make.oneOf(400) ? 300 : 0.3; }, {}};
    QTest::newRow("feet") << Depths{any, {MeasuredDepth, Feet, 17.3}};
    QTest::newRow("below the sea") << Depths{repeating, {TvdSubsea, Metre, 17.3}};
    QTest::newRow("below the sea, feet") << Depths{any, {TvdSubsea, Feet, 17.3}};
}

// Lines of all slopes side by side, and logs of which a part is crowded.
void tst_densepixels::unevenDepthsPaintThePaintersPixels()
{
    QFETCH(Depths, depths);
    int painted = 0;
    for (const Next next : {Next([](Maker &make, int) { return 75 + 35 * make.normal(); }),
                            Next([](Maker &make, int) { return make.wander(0.05) + 3 * make.pixel * make.normal(); }),
                            Next([](Maker &make, int) { return make.wander(0.1); }),
                            Next([](Maker &make, int) { // samples that are there twice begin and end pieces
                                return make.oneOf(7) ? nullSampleValue : make.oneOf(2) ? make.last : make.wander(0.7);
                            }),
                            Next([](Maker &make, int) { return make.wander(1); })})
        for (const double density : {2.7, 9.0, 27.0, 60.0, 130.0, 300.0})
            compare(next, density, 200, {false, 0, 150, 200}, &painted, depths);
    QVERIFY(painted > 500);
}

QTEST_GUILESS_MAIN(tst_densepixels)
#include "tst_densepixels.moc"
