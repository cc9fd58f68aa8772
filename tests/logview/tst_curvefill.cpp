#include "logshapes.h"

#include "logview/geometry/curvefill.h"
#include "paintrecorder.h"

#include <QTest>

using namespace logview;
using logshapes::samplesOf;

Q_DECLARE_METATYPE(logshapes::Shape)

namespace {

const DepthAxis axis{0, 100, 1000}; // ten rows a metre
const ValueScale scale{false, 0, 100, 100};

CurveFill fillOf(const CurveSamples &samples, const FillSettings &settings, const DepthAxis &on = axis,
                 const ValueScale &across = scale)
{
    return {samples, curveKey(samples, on, {}, across), settings};
}

FillSettings toBoundary(FillSide side)
{
    FillSettings settings;
    settings.side = side;
    settings.limit = side == FillSide::Left ? FillLimit::LeftBoundary : FillLimit::RightBoundary;
    return settings;
}

FillSettings toCurve(FillSide side, const CurveSamples &other, const ValueScale &otherScale = scale)
{
    FillSettings settings;
    settings.side = side;
    settings.limit = FillLimit::Curve;
    settings.other = other;
    settings.otherScale = otherScale;
    return settings;
}

QVector<QRgb> rainbow(int count)
{
    QVector<QRgb> colors;
    for (int i = 0; i < count; ++i)
        colors.append(QColor::fromHsv(i * 300 / count, 255, 220).rgb());
    return colors;
}

/// Notes polygons and their colours.
struct PolygonEngine : PaintRecorderEngine
{
    using QPaintEngine::drawPolygon;
    void updateState(const QPaintEngineState &now) override
    {
        if (now.state() & QPaintEngine::DirtyBrush)
            m_color = now.brush().color();
    }
    void drawPolygon(const QPointF *points, int count, PolygonDrawMode) override
    {
        polygons.append(QPolygonF(QVector<QPointF>(points, points + count)));
        colors.append(m_color);
    }

    QVector<QPolygonF> polygons;
    QVector<QColor> colors;

private:
    QColor m_color;
};

/// From where to where the fill is painted on paper, one polygon behind the other.
QVector<QPair<double, double>> reachesOnPaper(const CurveFill &fill)
{
    PaintRecorder<PolygonEngine> paper;
    QPainter painter(&paper);
    fill.paint(painter, Qt::blue, 0, 1000);
    painter.end();
    QVector<QPair<double, double>> reaches;
    for (const QPolygonF &polygon : paper.engine().polygons)
        reaches.append({polygon.boundingRect().top(), polygon.boundingRect().bottom()});
    return reaches;
}

using Reaches = QVector<QPair<double, double>>;

} // namespace

class tst_curvefill : public QObject
{
    Q_OBJECT

private slots:
    void targets()
    {
        const auto is = [](const char *text, bool isOn, FillLimit limit, int number) {
            const FillTarget target = fillTarget(QString::fromLatin1(text), 3);
            return target.isOn == isOn && (!isOn || (target.limit == limit && target.curveNumber == number));
        };
        QVERIFY(is("None", false, FillLimit::Curve, 0));
        QVERIFY(is("Left Boundary", true, FillLimit::LeftBoundary, 0));
        QVERIFY(is(" Right Boundary ", true, FillLimit::RightBoundary, 0));
        QVERIFY(is("Curve_1", true, FillLimit::Curve, 1));
        QVERIFY(is("Curve_3", true, FillLimit::Curve, 3));
        for (const char *nothing :
             {"Curve_4", "Curve_99", "Curve_0", "Curve_-1", "Curve_", "Curve_x", "", "0", "Curve"})
            QVERIFY2(is(nothing, false, FillLimit::Curve, 0), nothing);
    }

    void toTheBoundary()
    {
        const CurveSamples samples = samplesOf({10, 20, 30}, {40, 60, 40});
        const CurveFill left = fillOf(samples, toBoundary(FillSide::Left));
        QCOMPARE(left.runs().size(), 1);
        QCOMPARE(left.polygon(left.runs().first()),
                 QPolygonF({{40, 100}, {60, 200}, {40, 300}, {0, 300}, {0, 200}, {0, 100}}));
        const CurveFill right = fillOf(samples, toBoundary(FillSide::Right));
        QCOMPARE(right.polygon(right.runs().first()).at(3), QPointF(100, 300));
        QCOMPARE(left.color(left.runs().first(), Qt::red), QColor(Qt::red));
    }

    // A left fill to the right boundary has its limit on the wrong side everywhere.
    void aLimitOnTheOtherSideFillsNothing()
    {
        FillSettings settings;
        settings.side = FillSide::Left;
        settings.limit = FillLimit::RightBoundary;
        QVERIFY(fillOf(samplesOf({10, 20, 30}, {40, 60, 40}), settings).isEmpty());
        settings.side = FillSide::Right;
        settings.limit = FillLimit::LeftBoundary;
        QVERIFY(fillOf(samplesOf({10, 20, 30}, {40, 60, 40}), settings).isEmpty());
    }

    void runsEndAtNullsAndSkippedSamples()
    {
        const CurveSamples samples =
            samplesOf({-5, 5, 10, 20, 30, 40, 50, 60, 120}, {9, 9, 9, nullSampleValue, 9, 9, nullSampleValue, 9, 9});
        const CurveFill fill = fillOf(samples, toBoundary(FillSide::Left));
        QCOMPARE(fill.runs().size(), 2); // the single sample at 60 fills nothing
        QCOMPARE(fill.runs().at(0).top, 50.0);
        QCOMPARE(fill.runs().at(0).bottom, 100.0);
        QCOMPARE(fill.runs().at(1).top, 300.0);
        QCOMPARE(fill.runs().at(1).bottom, 400.0);
    }

    void toAnotherCurve()
    {
        const CurveSamples other = samplesOf({0, 10, 15, 20, 30, 35}, {0, 20, 90, 20, 2, 0});
        const CurveSamples samples = samplesOf({10, 20, 30}, {40, 60, 40});
        const ValueScale otherScale{false, 0, 200, 100};
        const CurveFill fill = fillOf(samples, toCurve(FillSide::Left, other, otherScale));
        QCOMPARE(fill.runs().size(), 1);
        // Half the other curve's value by its own limits, less 0.1.
        QCOMPARE(fill.polygon(fill.runs().first()),
                 QPolygonF({{40, 100}, {60, 200}, {40, 300}, {0.9, 300}, {9.9, 200}, {9.9, 100}}));
        QVERIFY(fillOf(samples, toCurve(FillSide::Right, other, otherScale)).isEmpty());
    }

    void limitsAreClamped()
    {
        const CurveSamples other = samplesOf({10, 20}, {0, 500});
        const CurveFill fill = fillOf(samplesOf({10, 20}, {0, 40}), toCurve(FillSide::Right, other));
        QCOMPARE(fill.edges().last().limitX, 99.9);
        const CurveFill left =
            fillOf(samplesOf({10, 20}, {50, 50}), toCurve(FillSide::Left, samplesOf({10, 20}, {0, -5})));
        QCOMPARE(left.edges().first().limitX, 0.0);
        QCOMPARE(left.edges().last().limitX, 0.0);
    }

    void samplesWithoutPartnerEndARun()
    {
        const QVector<double> depths{10, 20, 30, 40, 50, 60};
        const CurveSamples samples = samplesOf(depths, QVector<double>(6, 50));
        QCOMPARE(fillOf(samples, toCurve(FillSide::Left, samplesOf(depths, QVector<double>(6, 10)))).runs().size(),
                 1);
        QCOMPARE(fillOf(samples,
                        toCurve(FillSide::Left, samplesOf({10, 20, 30.00001, 40, 50, 60}, QVector<double>(6, 10))))
                     .runs()
                     .size(),
                 2);
        QCOMPARE(fillOf(samples, toCurve(FillSide::Left, samplesOf(depths, {10, 10, 10, nullSampleValue, 10, 10})))
                     .runs()
                     .size(),
                 2);
        QVERIFY(fillOf(samples, toCurve(FillSide::Left, CurveSamples())).isEmpty());
    }

    void joinsDoNotDependOnTheOrderOfDepths()
    {
        const QVector<double> depths{10, 20, 30, 40};
        const CurveSamples samples = samplesOf(depths, {50, 51, 52, 53});
        const CurveFill expected = fillOf(samples, toCurve(FillSide::Left, samplesOf(depths, {1, 2, 3, 4})));
        for (const CurveSamples &other :
             {samplesOf({40, 30, 20, 10}, {4, 3, 2, 1}), samplesOf({30, 10, 40, 20}, {3, 1, 4, 2})}) {
            const CurveFill fill = fillOf(samples, toCurve(FillSide::Left, other));
            QCOMPARE(fill.runs().size(), 1);
            QCOMPARE(fill.polygon(fill.runs().first()), expected.polygon(expected.runs().first()));
        }
        // Of several samples at one depth the first counts.
        const CurveFill fill =
            fillOf(samples, toCurve(FillSide::Left, samplesOf({10, 10, 20, 30, 40}, {1, 9, 2, 3, 4})));
        QCOMPARE(fill.polygon(fill.runs().first()), expected.polygon(expected.runs().first()));
    }

    // Where curves cross, the fill ends at the crossing.
    void fillsEndAtCrossings()
    {
        const CurveSamples samples = samplesOf({10, 20, 30}, {60.1, 20.1, 60.1});
        const CurveFill fill = fillOf(samples, toCurve(FillSide::Left, samplesOf({10, 20, 30}, {40.2, 40.2, 40.2})));
        QCOMPARE(fill.runs().size(), 2);
        QCOMPARE(fill.runs().at(0).top, 100.0);
        QVERIFY(std::abs(fill.runs().at(0).bottom - 150) < 1e-3);
        QVERIFY(std::abs(fill.runs().at(1).top - 250) < 1e-3);
        for (const CurveFill::Edge &edge : fill.edges())
            QVERIFY(edge.x >= edge.limitX - 1e-9);
    }

    void aFillUpToItselfIsASliver()
    {
        const CurveSamples samples = samplesOf({10, 20, 30}, {60, 20, 60});
        const CurveFill sliver = fillOf(samples, toCurve(FillSide::Left, samples));
        QVERIFY(!sliver.isEmpty());
        for (const CurveFill::Edge &edge : sliver.edges())
            QVERIFY(std::abs(edge.x - edge.limitX - 0.1) < 1e-9);
        QVERIFY(fillOf(samples, toCurve(FillSide::Right, samples)).isEmpty());
    }

    void coloursOfABar()
    {
        // n = 4: up to 25, 50, 75; from 100 on the colour before stays.
        FillSettings settings = toBoundary(FillSide::Left);
        settings.barColors = {qRgb(1, 0, 0), qRgb(2, 0, 0), qRgb(3, 0, 0), qRgb(4, 0, 0), qRgb(5, 0, 0)};
        const CurveSamples samples = samplesOf({10, 20, 30, 40, 50, 60}, {10, 60, 100, 200, 80, 5});
        const CurveFill fill = fillOf(samples, settings);
        QVector<int> colors;
        for (const CurveFill::Run &run : fill.runs())
            colors.append(run.color);
        QCOMPARE(colors, (QVector<int>{0, 2, 3})); // 10; 60, 100 and 200; 80
        QCOMPARE(fill.runs().at(1).top, 200.0);
        QCOMPARE(fill.runs().at(1).bottom, 500.0);
        QCOMPARE(fill.color(fill.runs().at(1), Qt::blue), QColor(3, 0, 0));
        // Before any colour was found: the solid one.
        const CurveFill high = fillOf(samplesOf({10, 20, 30}, {100, 100, 100}), settings);
        QCOMPARE(high.runs().size(), 1);
        QCOMPARE(high.color(high.runs().first(), Qt::blue), QColor(Qt::blue));
    }

    // Who shows a file of paper smooths edges: between two fills that only met the paper would shine through.
    void coloursReachUnderTheNextOnPaper()
    {
        FillSettings settings = toBoundary(FillSide::Left);
        settings.barColors = rainbow(10);
        const auto reaches = [&settings](const QVector<double> &depths, const QVector<double> &values) {
            return reachesOnPaper(fillOf(samplesOf(depths, values), settings));
        };
        QCOMPARE(reaches({10, 20, 30, 40}, {15, 55, 85, 25}), Reaches({{100, 201}, {200, 301}, {300, 400}}));
        QCOMPARE(reaches({40, 30, 20, 10}, {15, 55, 85, 25}), Reaches({{299, 400}, {199, 300}, {100, 200}}));
        // Of a thin one no further than that goes.
        QVERIFY(qAbs(reaches({10, 20, 20.06, 30}, {15, 55, 85, 25}).first().second - 200.6) < 0.001);
        // Not into a gap, and not where the colour stays.
        QCOMPARE(reaches({10, 20, 25, 30, 40}, {15, 55, nullSampleValue, 85, 25}), Reaches({{100, 200}, {300, 400}}));
        QCOMPARE(reaches({10, 20, 30}, {15, 16, 15}), Reaches({{100, 300}}));
        // What lies under a colour that lets it through would show.
        settings.barColors[4] = qRgba(0, 0, 0, 100);
        QCOMPARE(reaches({10, 20, 30, 40}, {15, 55, 85, 25}), Reaches({{100, 200}, {200, 301}, {300, 400}}));
    }

    // The part that reaches on has the shape of what covers it.
    void whatReachesOnIsCovered()
    {
        FillSettings settings = toBoundary(FillSide::Left);
        settings.barColors = rainbow(10);
        const CurveFill fill = fillOf(samplesOf({10, 20, 30}, {15, 55, 5}), settings);
        PaintRecorder<PolygonEngine> paper;
        QPainter painter(&paper);
        fill.paint(painter, Qt::blue, 0, 1000);
        painter.end();
        QCOMPARE(paper.engine().polygons.first(),
                 QPolygonF({{15, 100}, {55, 200}, {54.5, 201}, {0, 201}, {0, 200}, {0, 100}}));
        QCOMPARE(paper.engine().polygons.last(), fill.polygon(fill.runs().last()));
        QCOMPARE(paper.engine().colors, (QVector<QColor>{settings.barColors[1], settings.barColors[4]}));
    }

    void coloursUpToACurveAreThoseOfItsValues()
    {
        FillSettings settings = toCurve(FillSide::Left, samplesOf({10, 20, 30}, {30, 10, 10}), {false, 40, 0, 100});
        settings.barColors = rainbow(5);
        settings.side = FillSide::Right;
        const CurveFill fill = fillOf(samplesOf({10, 20, 30}, {0, 0, 0}), settings);
        QCOMPARE(fill.runs().size(), 2);
        QCOMPARE(fill.runs().at(0).color, 1); // (40 - 30) × 4 / 40
        QCOMPARE(fill.runs().at(1).color, 3);
    }

    void reducedFillsPaintTheSamePixels_data()
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
    void reducedFillsPaintTheSamePixels()
    {
        QFETCH(logshapes::Shape, shape);
        for (const double density : {0.05, 1.0, 4.0, 25.0}) {
            for (const bool isLogarithmic : {false, true}) {
                const int rows = 900;
                const int count = static_cast<int>(density * rows);
                const logshapes::Log log = logshapes::make(shape, count, 1000, 5);
                const logshapes::Log other = logshapes::make(
                    shape == logshapes::Descending ? shape
                                                   : (shape == logshapes::Clumped ? shape : logshapes::Wander),
                    count, 1000, 9);
                const DepthAxis on{0, 1000, 899.6F};
                const ValueScale across{isLogarithmic, isLogarithmic ? 0.2F : 0, isLogarithmic ? 2000.0F : 150.0F,
                                        200};
                const CurveSamples samples = log.samples();
                const CurveSamples otherSamples = other.samples();
                const CurveKey key = curveKey(samples, on, {}, across);
                const CurveKey otherKey = curveKey(otherSamples, on, {}, across);
                for (FillSettings settings : {toBoundary(FillSide::Left), toBoundary(FillSide::Right),
                                              toCurve(FillSide::Left, otherSamples, across),
                                              toCurve(FillSide::Right, otherSamples, across)}) {
                    for (const bool isBar : {false, true}) {
                        logshapes::EverySampleFill every;
                        if (isBar)
                            every.bar = rainbow(64);
                        settings.barColors = every.bar;
                        CurveFill fill;
                        QVERIFY(fill.update(samples, key, settings));
                        for (const int top : {0, 431}) {
                            const QImage expected = logshapes::picture({200, 400}, top, [&](QPainter &painter) {
                                every.paint(painter, log, key, settings, other, otherKey);
                            });
                            const QImage painted = logshapes::picture({200, 400}, top, [&](QPainter &painter) {
                                fill.paint(painter, Qt::blue, top, top + 400);
                            });
                            const int differing = logshapes::difference(painted, expected);
                            QVERIFY2(differing == 0,
                                     qPrintable(QStringLiteral(
                                                    "%1 of %2 pixels differ: %3 a row, log %4, side %5, limit %6, "
                                                    "bar %7, from %8")
                                                    .arg(differing)
                                                    .arg(logshapes::paintedPixels(expected))
                                                    .arg(density)
                                                    .arg(isLogarithmic)
                                                    .arg(static_cast<int>(settings.side))
                                                    .arg(static_cast<int>(settings.limit))
                                                    .arg(isBar)
                                                    .arg(top)));
                        }
                    }
                }
            }
        }
    }

    // On a scaled screen the rows are those of the device, which a scrolled view may begin within.
    void scaledScreens()
    {
        FillSettings settings = toBoundary(FillSide::Left);
        settings.barColors = rainbow(64);
        logshapes::EverySampleFill every;
        every.bar = settings.barColors;
        struct Screen
        {
            double factor;
            double offset;
        };
        for (const int count : {900, 5000, 20000}) {
            const logshapes::Log log = logshapes::make(logshapes::Noisy, count, 100, 5);
            const CurveSamples samples = log.samples();
            for (const Screen screen : {Screen{1.25, 0}, Screen{1.25, 0.25}, Screen{1.5, 0}, Screen{1.5, 0.5},
                                        Screen{2, 0}, Screen{3, 0}}) {
                const CurveKey key = curveKey(samples, axis, {}, scale);
                ShownRows rows;
                rows.perPixel = screen.factor;
                const CurveFill fill(samples, key, settings, rows);
                const auto picture = [&screen](const std::function<void(QPainter &)> &paint) {
                    return logshapes::picture({300, 600}, 0, [&](QPainter &painter) {
                        painter.translate(0, screen.offset);
                        painter.scale(screen.factor, screen.factor);
                        paint(painter);
                    });
                };
                const QImage expected =
                    picture([&](QPainter &painter) { every.paint(painter, log, key, settings, log, key); });
                const QImage image = picture([&](QPainter &painter) { fill.paint(painter, Qt::blue, -1e9, 1e9); });
                QVERIFY(logshapes::paintedPixels(expected) > 10000);
                QCOMPARE(logshapes::difference(image, expected), 0);
            }
        }
    }

    // Whether the painter fills a row is decided in its middle, to 1/64 pixel.
    void pairsThatReachTheMiddleOfARow()
    {
        const DepthAxis on{0, 1000, 1000};
        int painted = 0;
        int left = 0;
        for (int from = 0; from < 128; from += 4) {
            for (int to = from + 1; to < 160; to += 3) {
                logshapes::Log log;
                log.depths = {10 + from / 64.0, 10 + to / 64.0};
                log.values = {50, 50};
                const CurveSamples samples = log.samples();
                const CurveKey key = curveKey(samples, on, {}, scale);
                const FillSettings settings = toBoundary(FillSide::Left);
                const QImage expected = logshapes::picture({100, 20}, 0, [&](QPainter &painter) {
                    logshapes::EverySampleFill().paint(painter, log, key, settings, log, key);
                });
                const CurveFill fill(samples, key, settings);
                QCOMPARE(logshapes::difference(
                             logshapes::picture({100, 20}, 0,
                                                [&](QPainter &painter) { fill.paint(painter, Qt::blue, 0, 20); }),
                             expected),
                         0);
                ++(logshapes::paintedPixels(expected) > 0 ? painted : left);
            }
        }
        QVERIFY(painted > 100 && left > 100);
    }

    void fillsArePaintedAtAll()
    {
        const logshapes::Log log = logshapes::make(logshapes::Noisy, 5000, 100, 5);
        const CurveSamples samples = log.samples();
        const CurveFill fill = fillOf(samples, toBoundary(FillSide::Left));
        const QImage image =
            logshapes::picture({100, 400}, 300, [&](QPainter &painter) { fill.paint(painter, Qt::blue, 300, 700); });
        QVERIFY(logshapes::paintedPixels(image) > 400 * 60);
        QCOMPARE(image.pixel(20, 0), QColor(Qt::blue).rgb()); // the first column of the track
        QCOMPARE(image.pixel(19, 0), QColor(Qt::white).rgb());
    }

    void costDependsOnTheRows()
    {
        const logshapes::Log log = logshapes::make(logshapes::Random, 100000, 100, 5);
        const CurveSamples samples = log.samples();
        QVERIFY(fillOf(samples, toBoundary(FillSide::Left)).edges().size() <= 4 * 1001);
        FillSettings settings = toBoundary(FillSide::Left);
        settings.barColors = rainbow(64);
        QVERIFY(fillOf(samples, settings).edges().size() <= 4 * 1001);
        QVERIFY(fillOf(samples, settings).runs().size() <= 2 * 1001);
        const logshapes::Log other = logshapes::make(logshapes::Random, 100000, 100, 6);
        QVERIFY(fillOf(samples, toCurve(FillSide::Left, other.samples())).edges().size() <= 4 * 1001);
    }

    void builtAnewOnlyWhenSomethingChanged()
    {
        const CurveSamples samples = samplesOf({10, 20, 30}, {40, 60, 40});
        const CurveKey key = curveKey(samples, axis, {}, scale);
        FillSettings settings = toBoundary(FillSide::Left);
        CurveFill fill;
        QVERIFY(fill.update(samples, key, settings));
        QVERIFY(!fill.update(samples, key, settings));
        for (const QColor &color : {QColor(Qt::red), QColor(Qt::green)})
            (void)logshapes::picture({100, 400}, 0, [&](QPainter &painter) { fill.paint(painter, color, 0, 400); });
        settings.barColors = rainbow(4);
        QVERIFY(fill.update(samples, key, settings));
        settings.side = FillSide::Right;
        QVERIFY(fill.update(samples, key, settings));
        settings = toCurve(FillSide::Left, samplesOf({10, 20, 30}, {4, 6, 4}));
        QVERIFY(fill.update(samples, key, settings));
        QVERIFY(!fill.update(samples, key, settings));
        settings.otherScale.maximum = 50;
        QVERIFY(fill.update(samples, key, settings));
        QVERIFY(fill.update(samples, curveKey(samples, DepthAxis{0, 100, 500}, {}, scale), settings));
    }

    // The fill of some rows shows there what the whole fill does, also where its colour was found far above.
    void someRowsOfAFill()
    {
        int painted = 0;
        for (const bool isDescending : {false, true}) {
            logshapes::Log log =
                logshapes::make(isDescending ? logshapes::Descending : logshapes::Wander, 90000, 1000, 5);
            for (int i = 30000; i < 70000; ++i)
                log.values[i] = 150; // no colour of the bar: the last one stays
            log.values[60000] = nullSampleValue;
            const logshapes::Log other =
                logshapes::make(isDescending ? logshapes::Descending : logshapes::Wander, 90000, 1000, 9);
            const CurveSamples samples = log.samples();
            const DepthAxis on{0, 1000, 30000};
            const ValueScale across{false, 0, 150, 200};
            const CurveKey key = curveKey(samples, on, {}, across);
            for (FillSettings settings :
                 {toBoundary(FillSide::Left), toCurve(FillSide::Right, other.samples(), across)}) {
                settings.barColors = rainbow(64);
                const CurveFill whole(samples, key, settings);
                for (const int top : {0, 9900, 15000, 20000, 29600}) {
                    const qint64 before = readSampleCount();
                    CurveFill part;
                    QVERIFY(part.update(samples, key, settings, {top + 0.0, top + 400.0}));
                    const qint64 read = readSampleCount() - before;
                    QVERIFY2(read < 5000, qPrintable(QString::number(read)));
                    QVERIFY(!part.update(samples, key, settings, {top + 40.0, top + 340.0}));
                    const auto picture = [top](const CurveFill &fill) {
                        return logshapes::picture({200, 400}, top, [&](QPainter &painter) {
                            fill.paint(painter, Qt::blue, top, top + 400);
                        });
                    };
                    QCOMPARE(logshapes::difference(picture(part), picture(whole)), 0);
                    painted += logshapes::paintedPixels(picture(part));
                    QVERIFY(part.update(samples, key, settings, {top + 1000.0, top + 1400.0}));
                }
            }
        }
        QVERIFY(painted > 100000);
    }

    void longPairsAreFilledFarBelow()
    {
        const DepthAxis on = DepthAxis::of(0, 5000, 1);
        const CurveSamples samples = samplesOf({0, 5000}, {60, 60});
        const CurveFill fill = fillOf(samples, toBoundary(FillSide::Left), on);
        const int top = on.heightPx() / 2;
        const QImage image = logshapes::picture(
            {100, 400}, top, [&](QPainter &painter) { fill.paint(painter, Qt::blue, top, top + 400); });
        QCOMPARE(logshapes::paintedPixels(image), 60 * 400);
    }

    void badInput()
    {
        constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
        for (const CurveSamples &samples :
             {CurveSamples(), samplesOf({5}, {5}), samplesOf({5, notANumber, 6}, {1, 2, 3}),
              samplesOf({9, 3, 7}, {1, 2, 3}), samplesOf({1, 2}, {nullSampleValue, nullSampleValue}),
              samplesOf({1, 2, 3}, {notANumber, 1e308, -1e308})}) {
            for (const ValueScale &across :
                 {scale, ValueScale{false, 5, 5, 100}, ValueScale{true, 0, 100, 100}, ValueScale{true, -1, 5, 100},
                  ValueScale{false, 0, 100, -10}, ValueScale{false, NAN, NAN, 100}}) {
                for (const DepthAxis &on :
                     {axis, DepthAxis::of(5, 5), DepthAxis::of(100, 0), DepthAxis::of(0, 100, 1e-20F)}) {
                    for (FillSettings settings :
                         {toBoundary(FillSide::Left), toCurve(FillSide::Right, samples, across)}) {
                        settings.barColors = rainbow(3);
                        const CurveFill fill = fillOf(samples, settings, on, across);
                        (void)logshapes::picture(
                            {100, 100}, 0, [&](QPainter &painter) { fill.paint(painter, Qt::blue, -1e9, 1e9); });
                        for (const CurveFill::Edge &edge : fill.edges())
                            QVERIFY(std::isfinite(edge.x) && std::isfinite(edge.y) && std::isfinite(edge.limitX));
                    }
                }
            }
        }
    }
};

QTEST_GUILESS_MAIN(tst_curvefill)
#include "tst_curvefill.moc"
