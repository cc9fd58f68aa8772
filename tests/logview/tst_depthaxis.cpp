#include "logview/geometry/depthaxis.h"

#include <QTest>

#include <cmath>
#include <limits>

using namespace logview;

namespace {

constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();
constexpr float infinite = std::numeric_limits<float>::infinity();

} // namespace

class tst_depthaxis : public QObject
{
    Q_OBJECT

private slots:
    void theHeightIsThatOfPaperAt96PixelsAnInch()
    {
        QCOMPARE(trackHeight(0, 2000, 1000), 7559.05512F);
        QCOMPARE(DepthAxis::of(0, 2000).heightPx(), 7559);
        QCOMPARE(DepthAxis::of(0, 2000).heightPx() + sceneMarginBelow, 7609);
        QCOMPARE(trackHeight(-25, 1475, 500),
                 static_cast<float>(static_cast<double>(1500.0F / 500 * 100 * 96) / 2.54));
        QCOMPARE(trackHeight(0, 5000, 1), 18897638.0F); // 19 million pixels
        QCOMPARE(trackHeight(0, 5000, 1e6F), 18.8976378F);
        QCOMPARE(DepthAxis::of(0, 5000, 1e6F).heightPx(), 18);
    }

    // The product is formed in single precision: in double the result is another float.
    void theProductIsInSinglePrecision()
    {
        int differing = 0;
        int dividedInFloat = 0;
        for (int i = 1; i < 1000; ++i) {
            const float end = 1.7F * static_cast<float>(i);
            volatile float product = end / 700.0F;
            product = product * 100.0F;
            product = product * 96.0F;
            const float expected = static_cast<float>(static_cast<double>(product) / 2.54);
            QCOMPARE(trackHeight(0, end, 700), expected);
            differing += expected != static_cast<float>(static_cast<double>(end) / 700 * 100 * 96 / 2.54) ? 1 : 0;
            dividedInFloat += expected != product / 2.54F ? 1 : 0;
        }
        QVERIFY(dividedInFloat > 0);
        QVERIFY(differing > 0);
    }

    void absurdHeightsStayWithinBounds()
    {
        for (const float scale : {0.0F, -5.0F, notANumber, infinite, -infinite})
            QCOMPARE(trackHeight(0, 2000, scale), trackHeight(0, 2000, defaultDepthScale));
        QCOMPARE(trackHeight(0, 5000, 1e-30F), maximumTrackHeight);
        QCOMPARE(trackHeight(0, 3e38F, 1e-10F), maximumTrackHeight);
        QCOMPARE(trackHeight(-3e38F, 3e38F, 1), 0.0F);
        QCOMPARE(trackHeight(notANumber, 2000, 1000), 0.0F);
        QCOMPARE(trackHeight(0, infinite, 1000), 0.0F);
        QCOMPARE(trackHeight(700, 700, 1000), 0.0F);
        QCOMPARE(trackHeight(2000, 0, 1000), trackHeight(0, 2000, 1000));
    }

    void depthsMapToPixelsAndBack()
    {
        const DepthAxis axis = DepthAxis::of(100, 2100);
        QCOMPARE(axis.toPixel(100), 0.0);
        QCOMPARE(axis.toPixel(2100), static_cast<double>(axis.height));
        QCOMPARE(axis.toPixel(1100), static_cast<double>(axis.height) / 2);
        QCOMPARE(axis.toScenePixel(2100), 7559.0);
        QCOMPARE(axis.toScenePixel(1100), 3779.5);
        QCOMPARE(axis.toDepth(axis.toPixel(734.5)), 734.5);
        QCOMPARE(axis.hoverDepth(10.9), 100 + 2000 * 10.0 / static_cast<double>(axis.height));
        QVERIFY(axis.contains(100) && axis.contains(2100) && !axis.contains(99.9) && !axis.contains(2100.1));
        QVERIFY(!axis.contains(static_cast<double>(notANumber)));
    }

    void nothingDividesByZero()
    {
        const DepthAxis empty = DepthAxis::of(500, 500);
        QCOMPARE(empty.toPixel(500), 0.0);
        QCOMPARE(empty.toScenePixel(700), 0.0);
        QCOMPARE(empty.toDepth(10), 500.0);
        QVERIFY(!empty.isDrawable());
        const DepthAxis reversed = DepthAxis::of(500, 100);
        QVERIFY(!reversed.isDrawable());
        QVERIFY(!reversed.contains(300));
        QVERIFY(std::isfinite(reversed.toPixel(300)));
        for (const float bad : {notANumber, infinite, -infinite}) {
            const DepthAxis axis = DepthAxis::of(0, bad);
            QVERIFY(!axis.isDrawable());
            QCOMPARE(axis.toPixel(10), 0.0);
            QCOMPARE(axis.toDepth(10), 0.0);
            QCOMPARE(axis.heightPx(), 0);
        }
        QVERIFY(DepthAxis::of(0, 100).isDrawable());
    }

    void intsAreTruncatedAndNeverOverflow()
    {
        QCOMPARE(toInt(2.9), 2);
        QCOMPARE(toInt(-2.9), -2);
        QCOMPARE(toInt(1e300), std::numeric_limits<int>::max());
        QCOMPARE(toInt(-1e300), std::numeric_limits<int>::min());
        QCOMPARE(toInt(std::numeric_limits<double>::quiet_NaN()), 0);
        QCOMPARE(toInt(std::numeric_limits<double>::infinity()), std::numeric_limits<int>::max());
    }

    void theVisibleRangeIsCutToTheAxis()
    {
        const DepthAxis axis{100, 1100, 1000};
        const DepthRange inside = visibleRange(axis, 200, 300);
        QCOMPARE(inside.top, 300.0);
        QCOMPARE(inside.bottom, 400.0);
        const DepthRange all = visibleRange(axis, -50, 5000);
        QCOMPARE(all.top, 100.0);
        QCOMPARE(all.bottom, 1100.0);
        for (const DepthRange none : {visibleRange(axis, 1001, 1200), visibleRange(axis, -20, -1),
                                      visibleRange(axis, 30, 20), visibleRange(DepthAxis::of(5, 5), 0, 10)})
            QVERIFY(none.top > none.bottom);
    }

    void axesAndReferencesCompare()
    {
        QVERIFY(DepthAxis::of(0, 100) == DepthAxis::of(0, 100));
        QVERIFY(DepthAxis::of(0, 100) != DepthAxis::of(0, 100, 500));
        QVERIFY(DepthAxis::of(0, 100) != DepthAxis::of(1, 100));
        // A cache under a depth that is no number must not be made again at every paint.
        QVERIFY(DepthAxis::of(0, notANumber) == DepthAxis::of(0, notANumber));
        QVERIFY((DepthReference{TvdSubsea, Feet, 25}) == (DepthReference{TvdSubsea, Feet, 25}));
        QVERIFY((DepthReference{TvdSubsea, Feet, 25}) != (DepthReference{TvdSubsea, Feet, 26}));
        QVERIFY((DepthReference{TvdSubsea, Feet, 25}) != (DepthReference{TvdSubsea, Metre, 25}));
        QVERIFY((DepthReference{TvdSubsea, Feet, 25}) != (DepthReference{TvdKb, Feet, 25}));
    }

    void displayDepths()
    {
        QCOMPARE((DepthReference{MeasuredDepth, Metre, 25}).toDisplay(1000), 1000.0F);
        QCOMPARE((DepthReference{TvdKb, Metre, 25}).toDisplay(1000), 1000.0F);
        QCOMPARE((DepthReference{TvdSubsea, Metre, 25}).toDisplay(1000), 975.0F);
        QCOMPARE((DepthReference{MeasuredDepth, Feet, 25}).toDisplay(1000), 3280.84F);
        QCOMPARE((DepthReference{TvdSubsea, Feet, 25}).toDisplay(1000), static_cast<float>(975 * 3.28084));
        // Single precision, as the display keeps depths.
        QCOMPARE((DepthReference{}).toDisplay(1234.56789), 1234.56789F);
        QVERIFY(static_cast<double>((DepthReference{}).toDisplay(1234.56789)) != 1234.56789);
        QCOMPARE((DepthReference{TvdSubsea, Feet, 25}).toMeasuredM(975 * 3.28084), 1000.0);
        QCOMPARE((DepthReference{MeasuredDepth, Metre, 25}).toMeasuredM(1000), 1000.0);
        QVERIFY(std::isnan((DepthReference{TvdSubsea, Feet, 25}).toDisplay(std::nan(""))));
        (void)(DepthReference{TvdSubsea, Feet, 25}).toDisplay(1e300); // no trap
    }

    // The elevation and the factor are those of double precision; what is kept between is a float.
    void subseaDepthsAreComputedInDoublePrecision()
    {
        constexpr double kb = 25.3;
        int subtractedInFloat = 0;
        int multipliedUnrounded = 0;
        int multipliedInFloat = 0;
        for (int i = 1; i < 1000; ++i) {
            const float depth = 1.37F * static_cast<float>(i);
            const auto exact = static_cast<double>(depth);
            const auto subsea = static_cast<float>(exact - kb);
            const auto feet = static_cast<float>(static_cast<double>(subsea) * 3.28084);
            QCOMPARE((DepthReference{TvdSubsea, Metre, kb}).toDisplay(exact), subsea);
            QCOMPARE((DepthReference{TvdSubsea, Feet, kb}).toDisplay(exact), feet);
            QCOMPARE(limitsAfterChange({}, TvdSubsea, Metre, depth, kb).end, subsea);
            QCOMPARE(limitsAfterChange({}, TvdSubsea, Feet, depth, kb).end, feet);
            subtractedInFloat += depth - static_cast<float>(kb) != subsea ? 1 : 0;
            multipliedUnrounded += static_cast<float>((exact - kb) * 3.28084) != feet ? 1 : 0;
            multipliedInFloat += subsea * 3.28084F != feet ? 1 : 0;
        }
        QVERIFY(subtractedInFloat > 0);
        QVERIFY(multipliedUnrounded > 0);
        QVERIFY(multipliedInFloat > 0);
    }

    void theRangeAfterAChangeOfTypeOrUnit()
    {
        const DepthLimits before{12, 34};
        DepthLimits limits = limitsAfterChange(before, MeasuredDepth, Metre, 1500, 25);
        QCOMPARE(limits.start, 0.0F);
        QCOMPARE(limits.end, 1500.0F);
        limits = limitsAfterChange(before, TvdSubsea, Metre, 1500, 25);
        QCOMPARE(limits.start, -25.0F);
        QCOMPARE(limits.end, 1475.0F);
        limits = limitsAfterChange(before, TvdSubsea, Feet, 1500, 25);
        QCOMPARE(QString::number(static_cast<double>(limits.start), 'g', 6), QString("-82.021"));
        QCOMPARE(QString::number(static_cast<double>(limits.end), 'g', 6), QString("4839.24"));
        limits = limitsAfterChange(before, MeasuredDepth, Feet, 1500, 25);
        QCOMPARE(limits.end, 4921.26F);
        limits = limitsAfterChange(before, 7, Feet, 1500, 25);
        QCOMPARE(limits.start, 12.0F);
        QCOMPARE(limits.end, 34.0F);
    }

    void feetMultiplyATvdKbRangeAgainAndAgain()
    {
        DepthLimits limits{10, 1000};
        limits = limitsAfterChange(limits, TvdKb, Metre, 1500, 25);
        QCOMPARE(limits.end, 1000.0F);
        limits = limitsAfterChange(limits, TvdKb, Feet, 1500, 25);
        QCOMPARE(limits.start, 32.8084F);
        QCOMPARE(limits.end, 3280.84F);
        limits = limitsAfterChange(limits, TvdKb, Feet, 1500, 25);
        QCOMPARE(limits.end, static_cast<float>(static_cast<double>(3280.84F) * 3.28084));
    }

    void typesByText()
    {
        QCOMPARE(depthTypeOfText(QStringLiteral(" MD "), 2), 0);
        QCOMPARE(depthTypeOfText(QStringLiteral("TVDKB"), 2), 1);
        QCOMPARE(depthTypeOfText(QStringLiteral("TVDSS\t"), 0), 2);
        QCOMPARE(depthTypeOfText(QStringLiteral("tvdss"), 1), 1);
        QCOMPARE(depthTypeOfText(QString(), 2), 2);
    }
};

QTEST_GUILESS_MAIN(tst_depthaxis)
#include "tst_depthaxis.moc"
