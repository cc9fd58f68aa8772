#include "logview/geometry/linepixels.h"
#include "logview/geometry/thinpen.h"

#include <QTest>

#include <algorithm>
#include <cmath>
#include <random>

using namespace logview;

/// Lines that are drawn many at a time against the pen that draws one after the other, for random logs of any number of
/// samples in a row, at any depths, in both precisions and units.
class tst_samplelines : public QObject
{
    Q_OBJECT

private slots:
    void manyLinesSetThePixelsOfEachLine_data();
    void manyLinesSetThePixelsOfEachLine();

private:
    static double next(std::mt19937 &random, double before, int kind, double pixel);
    static CurveSamples makeLog(std::mt19937 &random, int count, int kind, const ValueScale &scale);
    static void drawEach(PixelRows &pixels, const CurveSamples &samples, const CurveKey &key, int top, int rows);
};

double tst_samplelines::next(std::mt19937 &random, double before, int kind, double pixel)
{
    std::normal_distribution<double> normal;
    const auto oneOf = [&random](unsigned many) { return random() % many == 0; };
    const double uniform = std::uniform_real_distribution<double>()(random);
    switch (kind) {
    case 0: // slow, with steps of a 64th of a pixel
        return std::clamp(before + pixel * (static_cast<int>(random() % 5) - 2) / 64, 2.0, 148.0);
    case 1:
        return std::clamp(before + 0.1 * pixel * normal(random), 2.0, 148.0);
    case 2:
        return std::clamp(before + pixel * normal(random), -5.0, 155.0);
    case 3:
        return 75 + 35 * normal(random);
    case 4: // plateaus
        return oneOf(30) ? 150 * uniform : before;
    case 5: // around the middle of a column
        return pixel * (30.5 + (static_cast<int>(random() % 7) - 3) / 64.0);
    default: // to and fro over few pixels, with spikes
        return oneOf(200) ? 140 : 75 + 3 * pixel * normal(random);
    }
}

CurveSamples tst_samplelines::makeLog(std::mt19937 &random, int count, int kind, const ValueScale &scale)
{
    const bool isRegular = random() % 3 != 0;
    QVector<float> depths;
    QVector<float> values;
    double depth = 0;
    double value = 75;
    for (int i = 0; i < count; ++i) {
        const double step = 1000.0 / count;
        depth += isRegular ? step : 2 * step * std::uniform_real_distribution<double>()(random);
        value = next(random, value, kind, 150 / static_cast<double>(scale.width));
        depths.append(static_cast<float>(depth));
        const bool isBreak = kind == 6 && random() % 150 == 0;
        const double shown = scale.isLogarithmic ? std::pow(150, std::max(value, 0.0) / 150) : value;
        values.append(static_cast<float>(isBreak ? nullSampleValue : shown));
    }
    return {depths, values};
}

void tst_samplelines::drawEach(PixelRows &pixels, const CurveSamples &samples, const CurveKey &key, int top, int rows)
{
    const SamplePlacer placer(key);
    ThinPen pen(pixels);
    const auto [begin, end] = placer.range(samples, {static_cast<double>(top - 3), static_cast<double>(rows + 3)});
    using Point = std::pair<qint64, qint64>;
    Point from;
    int count = 0;
    const auto stroke = [&](const Point &to, int caps) {
        if (count > 1)
            pen.draw(from.first, from.second, to.first, to.second,
                     (count == 2 ? ThinPen::CapBegin : ThinPen::NoCap) | caps);
        from = to;
    };
    Point last;
    for (int i = begin; i < end; ++i) {
        QPointF point;
        const SamplePlacer::Place place = placer.place(samples, i, point);
        if (place == SamplePlacer::Skipped)
            continue;
        stroke(last, place == SamplePlacer::Drawn ? ThinPen::NoCap : ThinPen::CapEnd);
        last = {painterSteps(point.x()), painterSteps(point.y() - top)};
        ++count;
        if (place == SamplePlacer::Break) {
            pen.lift();
            count = 0;
        }
    }
    stroke(last, ThinPen::CapEnd);
}

void tst_samplelines::manyLinesSetThePixelsOfEachLine_data()
{
    QTest::addColumn<double>("density");
    for (const double density : {0.4, 2.0, 5.0, 12.0, 30.0, 70.0, 140.0, 400.0, 3000.0, 11000.0})
        QTest::addRow("%g samples a row", density) << density;
}

void tst_samplelines::manyLinesSetThePixelsOfEachLine()
{
    QFETCH(double, density);
    int set = 0;
    const unsigned seeds = density > 1000 ? 30 : 140;
    for (unsigned seed = 0; seed < seeds; ++seed) {
        std::mt19937 random(seed);
        const int kind = static_cast<int>(seed % 7);
        const int rows = density > 1000 ? 4 : 30;
        ValueScale scale{seed % 6 == 5, 0, 150, static_cast<float>(50 + random() % 300)};
        if (scale.isLogarithmic)
            scale.minimum = seed % 4 == 3 ? 3 : 1; // what is below the minimum is mirrored
        else if (seed % 5 == 4)
            std::swap(scale.minimum, scale.maximum);
        const CurveSamples samples = makeLog(random, static_cast<int>(density * rows), kind, scale);
        DepthReference reference;
        if (random() % 4 == 0)
            reference = {TvdSubsea, Feet, 25.3};
        const auto depthOf = [&](double depthM) { return reference.toDisplay(depthM); };
        const DepthAxis axis{depthOf(0), depthOf(1000), static_cast<float>(rows)};
        const CurveKey key = curveKey(samples, axis, reference, scale);
        const int top = random() % 3 == 0 ? static_cast<int>(random() % static_cast<unsigned>(rows)) : 0;
        const int columns = static_cast<int>(std::ceil(scale.width)) + 7;
        PixelRows many(-3, columns, rows - top);
        PixelRows each(-3, columns, rows - top);
        drawThinLine(many, samples, key, {static_cast<double>(top - 3), static_cast<double>(rows + 3)}, top);
        drawEach(each, samples, key, top, rows);
        for (int row = 0; row < rows - top; ++row) {
            const auto runsOf = [row](const PixelRows &pixels) {
                QVector<QPair<int, int>> runs;
                pixels.forRuns(row, [&runs](int first, int last) { runs.append({first, last}); });
                return runs;
            };
            QVERIFY2(runsOf(many) == runsOf(each), qPrintable(QStringLiteral("row %1, seed %2").arg(row).arg(seed)));
            set += runsOf(each).size();
        }
    }
    QVERIFY(set > 100);
}

QTEST_GUILESS_MAIN(tst_samplelines)
#include "tst_samplelines.moc"
