#include "las/cubicspline.h"
#include "support/testmain.h"

#include <QTest>

#include <cmath>
#include <random>

namespace {

/// A natural spline by another road: four unknowns a cubic, all conditions in one dense system, Gauss with pivoting
/// in long double. The widths are those the class under test holds.
class DenseSpline
{
public:
    DenseSpline(const QVector<double> &x, const QVector<double> &y)
        : m_x(x)
    {
        const int n = x.size() - 1;
        std::vector<std::vector<long double>> rows;
        const auto row = [&rows, n](long double right) -> std::vector<long double> & {
            rows.emplace_back(static_cast<size_t>(4 * n + 1), 0.0L);
            rows.back().back() = right;
            return rows.back();
        };
        const auto at = [](int cubic, int power) { return static_cast<size_t>(4 * cubic + power); };
        for (int i = 0; i < n; ++i) {
            const long double h = static_cast<float>(x.at(i + 1) - x.at(i));
            row(y.at(i))[at(i, 0)] = 1;
            auto &end = row(y.at(i + 1));
            for (int power = 0; power < 4; ++power)
                end[at(i, power)] = std::pow(h, static_cast<long double>(power));
            if (i + 1 == n)
                continue;
            auto &slope = row(0);
            slope[at(i, 1)] = 1;
            slope[at(i, 2)] = 2 * h;
            slope[at(i, 3)] = 3 * h * h;
            slope[at(i + 1, 1)] = -1;
            auto &bend = row(0);
            bend[at(i, 2)] = 2;
            bend[at(i, 3)] = 6 * h;
            bend[at(i + 1, 2)] = -2;
        }
        row(0)[at(0, 2)] = 2;
        auto &last = row(0);
        last[at(n - 1, 2)] = 2;
        last[at(n - 1, 3)] = 6 * static_cast<long double>(static_cast<float>(x.at(n) - x.at(n - 1)));
        solve(rows);
    }

    double valueAt(double x) const
    {
        int i = 0;
        while (i + 2 < m_x.size() && m_x.at(i + 1) <= x)
            ++i;
        const long double t = x - m_x.at(i);
        const long double *c = m_c.data() + 4 * i;
        return static_cast<double>(c[0] + t * (c[1] + t * (c[2] + t * c[3])));
    }

private:
    void solve(std::vector<std::vector<long double>> &a)
    {
        const size_t n = a.size();
        for (size_t column = 0; column < n; ++column) {
            size_t pivot = column;
            for (size_t r = column + 1; r < n; ++r)
                if (std::fabs(a[r][column]) > std::fabs(a[pivot][column]))
                    pivot = r;
            std::swap(a[column], a[pivot]);
            for (size_t r = column + 1; r < n; ++r) {
                const long double factor = a[r][column] / a[column][column];
                for (size_t c = column; c <= n && factor != 0; ++c)
                    a[r][c] -= factor * a[column][c];
            }
        }
        m_c.assign(n, 0);
        for (size_t r = n; r-- > 0;) {
            long double sum = a[r][n];
            for (size_t c = r + 1; c < n; ++c)
                sum -= a[r][c] * m_c[c];
            m_c[r] = sum / a[r][r];
        }
    }

    QVector<double> m_x;
    std::vector<long double> m_c;
};

} // namespace

class TestCubicSpline : public QObject
{
    Q_OBJECT

private slots:
    void agreesWithADenseSolver_data();
    void agreesWithADenseSolver();
    void straightLineStaysStraight();
    void handWorkedExample();
    void goesThroughItsSamples();
    void secondDerivativeIsZeroAtTheEnds();
    void widthsAreSinglePrecision();
    void fewSamples();
    void countLimitsTheSamples();
    void risingArgumentsGiveTheSame();
};

void TestCubicSpline::agreesWithADenseSolver_data()
{
    QTest::addColumn<int>("samples");
    for (int samples : {2, 3, 4, 7, 30})
        for (int seed = 0; seed < 5; ++seed)
            QTest::addRow("%d samples, %d", samples, seed) << samples;
}

void TestCubicSpline::agreesWithADenseSolver()
{
    QFETCH(int, samples);
    std::mt19937 random(static_cast<unsigned>(qHash(QByteArray(QTest::currentDataTag()))));
    std::uniform_real_distribution<double> step(0.05, 2.0);
    std::uniform_real_distribution<double> value(-1000, 200);
    QVector<double> x{1000};
    QVector<double> y{value(random)};
    while (x.size() < samples) {
        x.append(x.last() + step(random));
        y.append(value(random));
    }
    const CubicSpline spline(x, y, samples);
    const DenseSpline dense(x, y);
    for (int i = 0; i <= 500; ++i) {
        const double at = x.first() + (x.last() - x.first()) * i / 500;
        const double expected = dense.valueAt(at);
        QVERIFY2(std::fabs(spline.valueAt(at) - expected) < 1e-7 * (1 + std::fabs(expected)),
                 qPrintable(QStringLiteral("%1: %2, not %3").arg(at).arg(spline.valueAt(at)).arg(expected)));
    }
}

void TestCubicSpline::straightLineStaysStraight()
{
    const CubicSpline spline({0, 1, 3, 4, 8}, {5, 7, 11, 13, 21}, 5);
    for (double x = 0; x <= 8; x += 0.125)
        QCOMPARE(spline.valueAt(x), 5 + 2 * x);
}

// Samples 0, 1, 0 at 0, 1, 2: the middle second derivative is -3, so the first cubic is 1.5 x - 0.5 x^3.
void TestCubicSpline::handWorkedExample()
{
    const CubicSpline spline({0, 1, 2}, {0, 1, 0}, 3);
    QCOMPARE(spline.valueAt(0.5), 0.6875);
    QCOMPARE(spline.valueAt(1.5), 0.6875);
    QCOMPARE(spline.valueAt(1.0), 1.0);
}

void TestCubicSpline::goesThroughItsSamples()
{
    const QVector<double> x{100, 100.5, 101.25, 102};
    const QVector<double> y{10, -999.25, 30, 7};
    const CubicSpline spline(x, y, 4);
    for (int i = 0; i < 4; ++i)
        QVERIFY(std::fabs(spline.valueAt(x.at(i)) - y.at(i)) < 1e-9);
}

void TestCubicSpline::secondDerivativeIsZeroAtTheEnds()
{
    const CubicSpline spline({0, 1, 2, 3}, {4, -2, 9, 1}, 4);
    const double e = 1e-3;
    // Going on outside the samples, the cubic is straight to second order there.
    QVERIFY(std::fabs(spline.valueAt(-e) - 2 * spline.valueAt(0) + spline.valueAt(e)) / (e * e) < 1e-4);
    QVERIFY(std::fabs(spline.valueAt(3 - e) - 2 * spline.valueAt(3) + spline.valueAt(3 + e)) / (e * e) < 1e-4);
}

// 0.1 has no exact single precision: the slope between two samples shows which width was used.
void TestCubicSpline::widthsAreSinglePrecision()
{
    const CubicSpline spline({0, 0.1}, {0, 1}, 2);
    QCOMPARE(spline.valueAt(0.05), 0.05 / static_cast<double>(0.1f));
    QVERIFY(spline.valueAt(0.05) != 0.05 / 0.1);
}

void TestCubicSpline::fewSamples()
{
    QCOMPARE(CubicSpline({}, {}, 0).valueAt(5), 0.0);
    QCOMPARE(CubicSpline({7}, {3}, 1).valueAt(5), 3.0);
    QCOMPARE(CubicSpline({1, 2}, {10, 20}, 2).valueAt(1.5), 15.0);
    int interval = 0;
    QCOMPARE(CubicSpline({7}, {3}, 1).valueAt(5, &interval), 3.0);
}

void TestCubicSpline::countLimitsTheSamples()
{
    const CubicSpline two({0, 1, 2}, {0, 1, 50}, 2);
    QCOMPARE(two.valueAt(0.5), 0.5);
    QCOMPARE(CubicSpline({0, 1}, {0, 1}, 9).valueAt(0.5), 0.5);
    QCOMPARE(CubicSpline({0, 1}, {0, 1}, -1).valueAt(0.5), 0.0);
}

void TestCubicSpline::risingArgumentsGiveTheSame()
{
    const QVector<double> x{0, 0.5, 2, 2.25, 9};
    const QVector<double> y{1, 4, -3, 0, 2};
    const CubicSpline spline(x, y, 5);
    int interval = 0;
    for (double at = -1; at <= 10; at += 0.0625)
        QCOMPARE(spline.valueAt(at, &interval), spline.valueAt(at));
    QCOMPARE(interval, 3);
}

LORVA_TEST_MAIN(TestCubicSpline)
#include "tst_cubicspline.moc"
