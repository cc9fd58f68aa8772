#include "logview/geometry/samplelookup.h"

#include <QTest>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

using namespace logview;

namespace {

constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();

bool reads(const CurveSamples &samples, double depthM, double expectedDepthM, double expectedValue)
{
    const Sample sample = sampleAt(samples, depthM);
    return sample.depthM == expectedDepthM && sample.value == expectedValue;
}

} // namespace

class tst_samplelookup : public QObject
{
    Q_OBJECT

private slots:
    void theNearestSample()
    {
        const CurveSamples samples({10, 20, 30, 50}, {1, 2, -999.25, 5});
        QVERIFY(reads(samples, 10, 10, 1));
        QVERIFY(reads(samples, 14.9, 10, 1));
        QVERIFY(reads(samples, 15, 10, 1)); // of two equally near the upper
        QVERIFY(reads(samples, 15.1, 20, 2));
        QVERIFY(reads(samples, 29, 30, -999.25));
        QVERIFY(reads(samples, 50, 50, 5));
    }

    void outsideTheLogNothing()
    {
        const CurveSamples samples({10, 20}, {1, 2});
        for (const double depth : {9.999, 20.001, -1e300, 1e300})
            QVERIFY(reads(samples, depth, depth, -999.25));
        QCOMPARE(sampleAt(samples, notANumber).value, -999.25);
        QVERIFY(reads(CurveSamples(), 5, 5, -999.25));
        QVERIFY(reads(CurveSamples({5}, {7}), 5, 5, 7));
        QVERIFY(reads(CurveSamples({5}, {7}), 5.1, 5.1, -999.25));
    }

    void anyMissingValueReadsTheSame()
    {
        const CurveSamples samples({1, 2, 3}, {-999.25F, notANumber, std::numeric_limits<float>::infinity()});
        for (const double depth : {1.0, 2.0, 3.0})
            QVERIFY(reads(samples, depth, depth, -999.25));
    }

    void descendingDepths()
    {
        const CurveSamples samples({50, 30, 20, 10}, {5, 3, 2, 1});
        QCOMPARE(samples.order(), DepthOrder::Descending);
        QVERIFY(reads(samples, 15, 10, 1));
        QVERIFY(reads(samples, 39, 30, 3));
        QVERIFY(reads(samples, 50, 50, 5));
        QVERIFY(reads(samples, 9, 9, -999.25));
        QVERIFY(reads(samples, 51, 51, -999.25));
    }

    void unsortedDepths()
    {
        const CurveSamples samples({30, 10, notANumber, 50, 20}, {3, 1, 9, 5, 2});
        QCOMPARE(samples.order(), DepthOrder::Unsorted);
        QVERIFY(reads(samples, 15, 10, 1));
        QVERIFY(reads(samples, 49, 50, 5));
        QVERIFY(reads(samples, 9, 9, -999.25));
        QVERIFY(reads(samples, 51, 51, -999.25));
        QVERIFY(reads(CurveSamples({notANumber, notANumber}, {1, 2}), 5, 5, -999.25));
    }

    // All three ways find what a plain search finds.
    void everyOrderFindsTheSame()
    {
        std::mt19937 generator(7);
        std::uniform_int_distribution<int> anyDepth(0, 400);
        QVector<float> depths;
        for (int i = 0; i < 200; ++i)
            depths.append(static_cast<float>(anyDepth(generator)) * 0.5F);
        std::sort(depths.begin(), depths.end());
        depths.erase(std::unique(depths.begin(), depths.end()), depths.end());
        QVector<float> values;
        for (const float depth : qAsConst(depths))
            values.append(3 * depth);
        const CurveSamples ascending(depths, values);
        std::reverse(depths.begin(), depths.end());
        std::reverse(values.begin(), values.end());
        const CurveSamples descending(depths, values);
        std::swap(depths[3], depths[90]);
        std::swap(values[3], values[90]);
        const CurveSamples unsorted(depths, values);
        QCOMPARE(unsorted.order(), DepthOrder::Unsorted);
        for (double depth = -1; depth < 202; depth += 0.25) {
            const Sample expected = sampleAt(unsorted, depth);
            QVERIFY(reads(ascending, depth, expected.depthM, expected.value));
            QVERIFY(reads(descending, depth, expected.depthM, expected.value));
        }
    }

    // Wherever the depth stands that breaks it.
    void theOrderOfDepths()
    {
        const auto orderOfDepths = [](const QVector<float> &depths) {
            return CurveSamples(depths, QVector<float>(depths.size())).order();
        };
        constexpr float infinite = std::numeric_limits<float>::infinity();
        for (const int count : {1, 2, 9, 10, 21, 33}) {
            QVector<float> rising;
            for (int i = 0; i < count; ++i)
                rising.append(static_cast<float>(i));
            const QVector<float> falling(rising.crbegin(), rising.crend());
            QCOMPARE(orderOfDepths(rising), DepthOrder::Ascending);
            QCOMPARE(orderOfDepths(falling), count > 1 ? DepthOrder::Descending : DepthOrder::Ascending);
            for (int i = 0; i < count; ++i) {
                for (const QVector<float> &depths : {rising, falling}) {
                    for (const float bad : {notANumber, infinite, -infinite}) {
                        QVector<float> broken = depths;
                        broken[i] = bad;
                        QCOMPARE(orderOfDepths(broken), DepthOrder::Unsorted);
                    }
                    QVector<float> bent = depths;
                    bent[i] += i == 0 || i == count - 1 ? 0.0F : 5.0F;
                    if (bent != depths)
                        QCOMPARE(orderOfDepths(bent), DepthOrder::Unsorted);
                    QVector<float> level = depths;
                    level[i] = i > 0 ? level.at(i - 1) : level.at(i);
                    if (count > 2)
                        QCOMPARE(orderOfDepths(level), orderOfDepths(depths));
                }
            }
        }
    }

    void samplesShareAndNumberThemselves()
    {
        const QVector<float> depths{1, 2, 3};
        const QVector<float> values{4, 5};
        const CurveSamples samples(depths, values);
        QCOMPARE(samples.size(), 2); // the shorter list counts
        QCOMPARE(samples.depthM(1), 2.0);
        QCOMPARE(static_cast<const void *>(samples.depthsM()), static_cast<const void *>(depths.constData()));
        QCOMPARE(static_cast<const void *>(samples.values()), static_cast<const void *>(values.constData()));
        const CurveSamples copy = samples;
        QCOMPARE(copy.revision(), samples.revision());
        QVERIFY(CurveSamples(depths, values).revision() != samples.revision());
        QCOMPARE(CurveSamples().revision(), quint64(0)); // that of none which is made
        QVERIFY(samples.revision() > 0);
        QCOMPARE(samples.order(), DepthOrder::Ascending);
        QVERIFY(samples.isNull(0) == false);
    }
};

QTEST_GUILESS_MAIN(tst_samplelookup)
#include "tst_samplelookup.moc"
