#include "logview/geometry/valuescale.h"

#include <QTest>

#include <cmath>
#include <limits>
#include <vector>

using namespace logview;

namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinite = std::numeric_limits<double>::infinity();

void compareSteps(const std::vector<float> &values, const ValueScale &scale)
{
    std::vector<int> steps(values.size());
    ValuePlacer(scale).toSteps(values.data(), static_cast<int>(values.size()), steps.data());
    for (size_t i = 0; i < values.size(); ++i)
        QCOMPARE(steps[i], static_cast<int>(scale.toPixel(static_cast<double>(values[i])) * 64));
}

} // namespace

class tst_valuescale : public QObject
{
    Q_OBJECT

private slots:
    void aLinearScaleClamps()
    {
        const ValueScale scale{false, 0, 150, 200};
        QCOMPARE(scale.toPixel(0), 0.0);
        QCOMPARE(scale.toPixel(75), 100.0);
        QCOMPARE(scale.toPixel(150), 200.0);
        QCOMPARE(scale.toPixel(200), 200.0);
        QCOMPARE(scale.toPixel(-1e300), 0.0);
        QCOMPARE(scale.toLinearPixel(300), 400.0);
        QCOMPARE(scale.toLinearPixel(-75), -100.0);
        const ValueScale density{false, 2, 3, 200};
        QCOMPARE(density.toPixel(2.5), 100.0);
        QCOMPARE(density.toLinearPixel(2), 0.0);
        QCOMPARE(density.toLinearPixel(3.5), 300.0);
    }

    void aMirroredLinearScale()
    {
        const ValueScale scale{false, 150, 0, 200};
        QCOMPARE(scale.toPixel(150), 0.0);
        QCOMPARE(scale.toPixel(30), 160.0);
        QCOMPARE(scale.toPixel(-10), 200.0);
        QCOMPARE(scale.toPixel(1000), 0.0);
        QCOMPARE(scale.toLinearPixel(300), -200.0);
    }

    void manyValuesStandWhereEachDoes()
    {
        const std::vector<float> values{0,      75,    150,   149.99F, -1, 151,     1e30F,
                                        -1e30F, 0.31F, 61.7F, 2,       20, 33.333F, 90};
        for (const ValueScale &scale : {ValueScale{false, 0, 150, 200}, ValueScale{false, 150, 0, 200},
                                        ValueScale{false, 0, 150, 33.5F}, ValueScale{false, 75, 75, 200}})
            compareSteps(values, scale);
        const std::vector<float> positive{0.05F, 0.31F, 2, 20, 33.333F, 61.7F, 90, 200};
        compareSteps(positive, {true, 0.2F, 200, 400});
    }

    // Around the steps a last digit decides.
    void logarithmsStandWhereEachDoes_data()
    {
        QTest::addColumn<float>("low");
        QTest::addColumn<float>("high");
        QTest::addColumn<float>("width");
        QTest::newRow("resistivity") << 0.2F << 2000.0F << 200.0F;
        QTest::newRow("one decade") << 1.0F << 10.0F << 33.5F;
        QTest::newRow("wide") << 1.0F << 150.0F << 8192.0F;
        QTest::newRow("narrow limits") << 100.0F << 100.01F << 400.0F;
        QTest::newRow("all numbers") << 1e-37F << 1e38F << 300.0F;
        QTest::newRow("small ones") << 1e-44F << 1e-30F << 300.0F;
    }
    void logarithmsStandWhereEachDoes()
    {
        QFETCH(float, low);
        QFETCH(float, high);
        QFETCH(float, width);
        const ValueScale scale{true, low, high, width};
        const double start = std::log10(static_cast<double>(low));
        const double extent = std::log10(static_cast<double>(high)) - start;
        const int steps = static_cast<int>(width * 64);
        std::vector<float> values;
        const auto add = [&](float value) {
            if (std::isfinite(scale.toPixel(static_cast<double>(value))))
                values.push_back(value);
        };
        for (int step = 0; step <= steps; step += std::max(1, steps / 5000)) {
            const auto at = static_cast<float>(std::pow(10, start + extent * step / steps));
            float below = at;
            float above = at;
            for (int k = 0; k < 4; ++k) {
                add(below);
                add(above);
                below = std::nextafter(below, 0.0F);
                above = std::nextafter(above, std::numeric_limits<float>::infinity());
            }
            add(static_cast<float>(static_cast<double>(low) * std::pow(10, -extent * step / steps))); // mirrored
        }
        QVERIFY(values.size() > 4000);
        compareSteps(values, scale);
    }
    void noValueBetweenTwoBreaks()
    {
        using Values = std::pair<double, double>;
        const auto farthest = static_cast<double>(std::numeric_limits<float>::max());
        for (const ValueScale &scale :
             {ValueScale{false, 0, 150, 200}, ValueScale{false, 150, 0, 200}, ValueScale{false, 75, 75, 200}})
            QCOMPARE(ValuePlacer(scale).unbroken(), Values(-farthest, farthest));
        const auto [low, high] = ValuePlacer({true, 2, 200, 400}).unbroken();
        QCOMPARE(low, 2.0);
        QCOMPARE(high, 200.0);
        for (const ValueScale &scale : {ValueScale{true, 200, 2, 400}, ValueScale{true, 0, 200, 400},
                                        ValueScale{true, -2, -1, 400}, ValueScale{false, 0, 150, -1}}) {
            const auto [first, last] = ValuePlacer(scale).unbroken();
            QVERIFY(first >= last);
        }
    }
    void logarithmicScalesTurnAtTheirMinimum()
    {
        QVERIFY(ValuePlacer({false, 0, 150, 200}).isMonotonous(-50));
        QVERIFY(ValuePlacer({false, 150, 0, 200}).isMonotonous(-50));
        QVERIFY(ValuePlacer({true, 2, 200, 200}).isMonotonous(2.1));
        QVERIFY(!ValuePlacer({true, 2, 200, 200}).isMonotonous(1.9));
        QVERIFY(!ValuePlacer({true, 200, 2, 200}).isMonotonous(200));
    }

    void aLogarithmicScaleMirrorsAtTheMinimum()
    {
        const ValueScale scale{true, 0.2F, 2000, 400};
        QCOMPARE(scale.toPixel(2000), 400.0);
        QVERIFY(std::abs(scale.toPixel(2) - 100) < 1e-4);
        QVERIFY(std::abs(scale.toPixel(0.02) - scale.toPixel(2)) < 1e-4);
        QCOMPARE(scale.toPixel(static_cast<double>(0.2F)), 0.0);
    }

    void aLogarithmicScaleBreaksOutsideTheTrack()
    {
        const ValueScale scale{true, 0.2F, 2000, 400};
        for (const double value : {2001.0, 1e-6, 0.0, -3.0, notANumber, infinite, -infinite})
            QVERIFY2(std::isnan(scale.toPixel(value)), qPrintable(QString::number(value)));
        // A reversed logarithmic scale has nothing but its minimum in the track.
        const ValueScale reversed{true, 2000, 0.2F, 400};
        QVERIFY(std::isnan(reversed.toPixel(2)));
    }

    void limitsWithoutALogarithmBreakEverything()
    {
        for (const auto &[low, high] : {std::pair(0.0F, 100.0F), std::pair(-5.0F, 100.0F), std::pair(10.0F, 0.0F),
                                        std::pair(10.0F, -1.0F), std::pair(5.0F, 5.0F), std::pair(NAN, 5.0F)})
            for (const double value : {0.1, 1.0, 20.0, 100.0})
                QVERIFY(std::isnan((ValueScale{true, low, high, 400}).toPixel(value)));
    }

    void equalLinearLimits()
    {
        const ValueScale scale{false, 5, 5, 200};
        QCOMPARE(scale.toPixel(5), 0.0);
        QCOMPARE(scale.toPixel(4), 200.0);
        QCOMPARE(scale.toPixel(6), 0.0);
    }

    void valuesThatAreNoNumbersBreak()
    {
        for (const double value : {notANumber, infinite, -infinite})
            QVERIFY(std::isnan((ValueScale{false, 0, 150, 200}).toPixel(value)));
        QVERIFY(std::isnan((ValueScale{false, 0, 150, NAN}).toPixel(1)));
        QVERIFY(std::isnan((ValueScale{false, 0, 150, -3}).toPixel(1)));
        QCOMPARE((ValueScale{false, 0, 150, 0}).toPixel(75), 0.0);
        QCOMPARE((ValueScale{false, NAN, 150, 200}).toPixel(75), 0.0);
    }

    void scalesCompare()
    {
        const ValueScale scale{false, 0, 150, 200};
        QVERIFY((scale == ValueScale{false, 0, 150, 200}));
        QVERIFY((scale != ValueScale{true, 0, 150, 200}));
        QVERIFY((scale != ValueScale{false, 1, 150, 200}));
        QVERIFY((scale != ValueScale{false, 0, 151, 200}));
        QVERIFY((scale != ValueScale{false, 0, 150, 201}));
        QVERIFY((ValueScale{false, NAN, 150, 200} == ValueScale{false, NAN, 150, 200}));
    }

    void colourIndexes()
    {
        // 11 colours: n is 10, so the last one is never reached from within the limits.
        QCOMPARE(colorIndex(0, 0, 100, 11), 0);
        QCOMPARE(colorIndex(9.99, 0, 100, 11), 0);
        QCOMPARE(colorIndex(10, 0, 100, 11), 1);
        QCOMPARE(colorIndex(99.9, 0, 100, 11), 9);
        QCOMPARE(colorIndex(100, 0, 100, 11), -1);
        QCOMPARE(colorIndex(1e300, 0, 100, 11), -1);
        QCOMPARE(colorIndex(-50, 0, 100, 11), 0);
        // Mirrored.
        QCOMPARE(colorIndex(100, 100, 0, 11), 0);
        QCOMPARE(colorIndex(1, 100, 0, 11), 9);
        QCOMPARE(colorIndex(0, 100, 0, 11), -1);
        for (const double value : {notANumber, infinite})
            QCOMPARE(colorIndex(value, 0, 100, 11), -1);
        QCOMPARE(colorIndex(5, 5, 5, 11), -1);
        QCOMPARE(colorIndex(50, 0, 100, 0), -1);
        QCOMPARE(colorIndex(50, 0, 100, 1), -1);
    }
};

QTEST_GUILESS_MAIN(tst_valuescale)
#include "tst_valuescale.moc"
