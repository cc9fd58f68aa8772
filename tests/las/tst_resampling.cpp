#include "las/cubicspline.h"
#include "las/resampling.h"
#include "support/commalocale.h"
#include "support/testmain.h"

#include <QTest>

#include <limits>

namespace {

QVector<double> ramp(double first, double step, int count)
{
    QVector<double> depths;
    for (int i = 0; i < count; ++i)
        depths.append(first + i * step);
    return depths;
}

const double infinity = std::numeric_limits<double>::infinity();
const double notANumber = std::numeric_limits<double>::quiet_NaN();

} // namespace

class TestResampling : public QObject
{
    Q_OBJECT

private slots:
    void gridIsMadeByRepeatedAddition();
    void importHoldsTheIntervalAsFloat();
    void gridEndsAtTheLastDepth();
    void valuesAreTheSplines();
    void noSamples();
    void stepTolerance_data();
    void stepTolerance();
    void strictlyIncreasing_data();
    void strictlyIncreasing();
    void intervalTexts_data();
    void intervalTexts();
    void intervalTextsUnderACommaLocale();
    void intervalProblems();
    void gridProblems();
};

void TestResampling::gridIsMadeByRepeatedAddition()
{
    const las::Samples samples = las::resample(ramp(0, 0.5, 2001), ramp(0, 1, 2001), 0.1);
    double depth = 0;
    for (int i = 0; i < samples.depths.size(); ++i, depth += 0.1)
        QCOMPARE(samples.depths.at(i), depth);
    QVERIFY(samples.depths.at(9999) != 9999 * 0.1); // so multiplication would be seen
}

void TestResampling::importHoldsTheIntervalAsFloat()
{
    const float interval = las::floatIntervalFromText(QStringLiteral("0.1524"));
    QCOMPARE(interval, 0.1524f);
    const las::Samples samples = las::resample(ramp(100, 1, 5), ramp(0, 1, 5), static_cast<double>(interval));
    QCOMPARE(samples.depths.at(1), 100 + static_cast<double>(0.1524f));
    QVERIFY(samples.depths.at(1) != 100 + 0.1524);
}

void TestResampling::gridEndsAtTheLastDepth()
{
    const QVector<double> depths = ramp(10, 1, 3);
    QCOMPARE(las::resample(depths, depths, 0.5).depths, (QVector<double>{10, 10.5, 11, 11.5, 12}));
    QCOMPARE(las::resample(depths, depths, 0.75).depths, (QVector<double>{10, 10.75, 11.5}));
    QCOMPARE(las::resample(depths, depths, 5).depths, QVector<double>{10});
}

void TestResampling::valuesAreTheSplines()
{
    const QVector<double> depths{0, 1, 2, 4, 5};
    const QVector<double> values{3, -999.25, 8, 1, 2}; // nulls take part
    const CubicSpline spline(depths, values, 5);
    const las::Samples samples = las::resample(depths, values, 0.25);
    QCOMPARE(samples.depths.size(), 21);
    QCOMPARE(samples.values.size(), 21);
    for (int i = 0; i < 21; ++i)
        QCOMPARE(samples.values.at(i), spline.valueAt(samples.depths.at(i)));
}

void TestResampling::noSamples()
{
    QVERIFY(las::resample({}, {}, 0.5).depths.isEmpty());
    QCOMPARE(las::resample({7}, {3}, 0.5).values, QVector<double>{3});
}

void TestResampling::stepTolerance_data()
{
    QTest::addColumn<QVector<double>>("depths");
    QTest::addColumn<double>("interval");
    QTest::addColumn<bool>("differs");
    QTest::newRow("same") << QVector<double>{0, 0.5} << 0.5 << false;
    QTest::newRow("0.15240005") << QVector<double>{0, 0.15240005} << 0.1524 << false;
    QTest::newRow("just within") << QVector<double>{0, 0.50009} << 0.5 << false;
    QTest::newRow("just beyond") << QVector<double>{0, 0.50011} << 0.5 << true;
    QTest::newRow("just below") << QVector<double>{0, 0.49989} << 0.5 << true;
    QTest::newRow("no step") << QVector<double>{7} << 0.5 << false;
    QTest::newRow("no samples") << QVector<double>{} << 0.5 << false;
    QTest::newRow("constant") << QVector<double>{7, 7} << 0.5 << true;
    QTest::newRow("not a number") << QVector<double>{7, notANumber} << 0.5 << true;
}

void TestResampling::stepTolerance()
{
    QFETCH(QVector<double>, depths);
    QFETCH(double, interval);
    QTEST(las::differsFromStep(depths, interval), "differs");
}

void TestResampling::strictlyIncreasing_data()
{
    QTest::addColumn<QVector<double>>("depths");
    QTest::addColumn<bool>("isIncreasing");
    QTest::newRow("even") << QVector<double>{1, 2, 3} << true;
    QTest::newRow("uneven") << QVector<double>{1, 1.001, 300} << true;
    QTest::newRow("constant") << QVector<double>{1, 1, 1} << false;
    QTest::newRow("one repeats") << QVector<double>{1, 2, 2, 3} << false;
    QTest::newRow("turns") << QVector<double>{1, 2, 1.5, 3} << false;
    QTest::newRow("falls") << QVector<double>{3, 2, 1} << false;
    QTest::newRow("not a number") << QVector<double>{1, notANumber, 3} << false;
    QTest::newRow("infinite") << QVector<double>{1, 2, infinity} << false;
    QTest::newRow("too wide for a float") << QVector<double>{0, 1e300} << false;
    QTest::newRow("too narrow for a float") << QVector<double>{0, 1e-300} << false;
    QTest::newRow("one") << QVector<double>{1} << true;
}

void TestResampling::strictlyIncreasing()
{
    QFETCH(QVector<double>, depths);
    QTEST(las::isStrictlyIncreasing(depths), "isIncreasing");
}

void TestResampling::intervalTexts_data()
{
    QTest::addColumn<double>("interval");
    QTest::newRow("0.1524") << 0.1524;
    QTest::newRow(" 1e-1 ") << 0.1;
    QTest::newRow("-2") << -2.0;
    QTest::newRow("") << 0.0;
    QTest::newRow("-") << 0.0;
    QTest::newRow("0,5") << 0.0;
    QTest::newRow("nan") << 0.0;
    QTest::newRow("1e999") << 0.0;
}

void TestResampling::intervalTexts()
{
    QFETCH(double, interval);
    const QString text = QString::fromLatin1(QTest::currentDataTag());
    QCOMPARE(las::intervalFromText(text), interval);
    QCOMPARE(las::floatIntervalFromText(text), static_cast<float>(interval));
    QCOMPARE(las::floatIntervalFromText(QStringLiteral("1e300")), 0.0f);
}

void TestResampling::intervalTextsUnderACommaLocale()
{
    const testing_support::CommaLocale locale;
    if (!locale.isInForce())
        QSKIP("no locale with a decimal comma could be made");
    QCOMPARE(las::intervalFromText(QStringLiteral("0.1524")), 0.1524);
}

void TestResampling::intervalProblems()
{
    QVERIFY(las::intervalProblem(0.1524).isEmpty());
    QVERIFY(las::intervalProblem(0.0001).isEmpty());
    QVERIFY(las::intervalProblem(static_cast<double>(0.0001f)).isEmpty());
    for (double bad : {0.0, -0.1524, 0.00009, 1e-300, notANumber, infinity, -infinity})
        QCOMPARE(las::intervalProblem(bad),
                 QStringLiteral("The depth interval must be a number and at least 0.0001 m.\nNothing was written."));
}

void TestResampling::gridProblems()
{
    const QString what = QStringLiteral("GR");
    QVERIFY(las::gridProblem(0, 5000, 0.0001, what)
                .endsWith(QStringLiteral("Please choose a larger depth interval. Nothing was written.")));
    QCOMPARE(
        las::gridProblem(0, 5000, 0.0001, what).section(QLatin1Char('\n'), 0, 0),
        QStringLiteral("GR: the depths 0 to 5000 at an interval of 0.0001 would give more than 50 million samples."));
    QVERIFY(las::gridProblem(0, 4999, 0.0001, what).isEmpty());
    QVERIFY(las::gridProblem(100, 50, 0.1, what).isEmpty()); // no data line at all
    QVERIFY(!las::gridProblem(0, 1e12, 0.1524, what).isEmpty());
    QVERIFY(!las::gridProblem(1e17, 1e17 + 64, 0.1524, what).isEmpty()); // the interval would not move the depth
    QVERIFY(!las::gridProblem(0, notANumber, 0.1524, what).isEmpty());
}

LORVA_TEST_MAIN(TestResampling)
#include "tst_resampling.moc"
