#include "logshapes.h"

#include "logview/geometry/sampleplacer.h"

#include <QTest>

using namespace logview;
using logshapes::samplesOf;

namespace {

const ValueScale scale{false, 0, 100, 100};

} // namespace

/// Which samples stand in some rows.
class tst_sampleplacer : public QObject
{
    Q_OBJECT

private slots:
    // However far from its place at even distances a sample stands.
    void rowsOfUnevenLogsAreFound()
    {
        const DepthReference references[] = {{}, {MeasuredDepth, Feet, 0}, {TvdSubsea, Feet, 25}};
        for (const bool isDescending : {false, true}) {
            for (const double power : {0.1, 1.0, 2.0, 30.0}) {
                QVector<double> depths;
                for (int i = 0; i < 200; ++i) // the last ones repeat themselves
                    depths.append(1000 * std::pow(std::min(i, 190) / 190.0, power));
                if (isDescending)
                    std::reverse(depths.begin(), depths.end());
                const CurveSamples samples = samplesOf(depths, QVector<double>(depths.size(), 50));
                for (const DepthReference &reference : references) {
                    const DepthAxis track{reference.toDisplay(30), reference.toDisplay(990), 2000};
                    const SamplePlacer placer(curveKey(samples, track, reference, scale));
                    for (int top = 0; top <= 1960; top += 28) {
                        // The samples of the rows and one more on both sides, as far as they are on the track.
                        int first = 0;
                        int last = 0;
                        for (int k = 0; k < depths.size(); ++k) {
                            const float depth = reference.toDisplay(depths.at(k));
                            const double y = placer.y(samples, k);
                            const bool isBefore =
                                isDescending ? depth > track.end || y > top + 40 : depth < track.start || y < top;
                            const bool isBehind =
                                isDescending ? depth < track.start || y < top : depth > track.end || y > top + 40;
                            first += isBefore ? 1 : 0;
                            last += isBehind ? 0 : 1;
                        }
                        const auto isOnTrack = [&](int k) {
                            return k >= 0 && k < depths.size()
                                && track.contains(static_cast<double>(reference.toDisplay(depths.at(k))));
                        };
                        QCOMPARE(
                            placer.range(samples, {static_cast<double>(top), top + 40.0}),
                            std::make_pair(first - (isOnTrack(first - 1) ? 1 : 0), last + (isOnTrack(last) ? 1 : 0)));
                    }
                }
            }
        }
    }

    // One sample more on both sides, but none beyond the depth range.
    void rangesOfRowsStayInTheDepthRange()
    {
        using Range = std::pair<int, int>;
        for (const bool isDescending : {false, true}) {
            QVector<double> depths;
            for (int i = 0; i <= 100; ++i)
                depths.append(isDescending ? 100 - i : i);
            const CurveSamples samples = samplesOf(depths, depths);
            const SamplePlacer placer(curveKey(samples, DepthAxis{10, 90, 800}, {}, scale));
            QCOMPARE(placer.range(samples), Range(10, 91));
            QCOMPARE(placer.range(samples, ShownRows()), Range(10, 91));
            QCOMPARE(placer.range(samples, {300, 305}), isDescending ? Range(59, 62) : Range(39, 42));
            QCOMPARE(placer.range(samples, {-50, 20}), isDescending ? Range(87, 91) : Range(10, 14));
            QCOMPARE(placer.range(samples, {780, 900}), isDescending ? Range(10, 14) : Range(87, 91));
            // All samples at the ends of the depth range are in it.
            const CurveSamples doubled = samplesOf(isDescending ? QVector<double>{90, 90, 90, 10, 10, 10}
                                                                : QVector<double>{10, 10, 10, 90, 90, 90},
                                                   {1, 2, 3, 4, 5, 6});
            QCOMPARE(placer.range(doubled), Range(0, 6));
            QCOMPARE(placer.range(doubled, {-50, 900}), Range(0, 6));
        }
    }

    void wholeRowsReachFromEdgeToEdge()
    {
        const ShownRows rows = ShownRows{10.2, 20.7, 2}.wholeRows();
        QCOMPARE(rows.top, 10.0);
        QVERIFY(rows.bottom < 21 && rows.bottom > 20.999);
        QCOMPARE(rows.perPixel, 2.0);
    }
};

QTEST_GUILESS_MAIN(tst_sampleplacer)
#include "tst_sampleplacer.moc"
