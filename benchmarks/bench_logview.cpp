// The log display's computing core: repaints, scrolling, scale changes, hover look-up, memory.

#include "benchsupport.h"

#include "logview/geometry/curvefill.h"
#include "logview/geometry/curveline.h"
#include "logview/geometry/curvepath.h"
#include "logview/geometry/samplelookup.h"
#include "logview/geometry/trackgrid.h"

#include <QGuiApplication>
#include <QImage>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <map>
#include <random>
#include <vector>

namespace {

using namespace logview;

constexpr int trackCount = 8;
constexpr int curvesPerTrack = 3;
constexpr QSize viewSize{1920, 1080};
constexpr int trackWidth = viewSize.width() / trackCount;
constexpr float totalDepth = 5000;

// As hosts keep logs. Of every three curves one wanders with noise on it, one is noise over the whole track, one has spikes and gaps.
CurveSamples makeLog(int index, int count)
{
    std::mt19937 random(static_cast<unsigned>(index));
    std::normal_distribution<double> normal;
    QVector<float> depths;
    QVector<float> values;
    depths.reserve(count);
    values.reserve(count);
    double value = 75;
    for (int i = 0; i < count; ++i) {
        depths.append(static_cast<float>(static_cast<double>(totalDepth) * i / count));
        value = std::clamp(value + normal(random) * std::sqrt(10000.0 / count), 1.0, 149.0);
        double noisy = value + 2 * normal(random);
        if (index % curvesPerTrack == 1)
            noisy = 75 + 35 * normal(random);
        if (index % curvesPerTrack == 2)
            noisy = random() % 500 == 0 ? nullSampleValue : value + (random() % 100 == 0 ? 40 : 0);
        values.append(static_cast<float>(noisy));
    }
    return {depths, values};
}

const std::vector<CurveSamples> &logs(int count)
{
    static std::map<int, std::vector<CurveSamples>> made;
    std::vector<CurveSamples> &logs = made[count];
    for (int i = static_cast<int>(logs.size()); i < trackCount * curvesPerTrack; ++i)
        logs.push_back(makeLog(i, count));
    return logs;
}

QPen curvePen(int index, int width)
{
    const QColor color = QColor::fromHsv(index * 359 / (trackCount * curvesPerTrack), 255, 160);
    return {color, static_cast<double>(width), Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin};
}

/// The tracks of a display as its items paint them.
struct Display
{
    Display(int samples, float paperScale, int width = 1)
        : scale(paperScale)
        , axis(DepthAxis::of(0, totalDepth, paperScale))
        , penWidth(width)
        , count(samples)
        , lines(logs(samples).size())
    {
        for (size_t i = 0; i < lines.size(); ++i)
            lines[i].update(logs(samples)[i], keyOf(logs(samples)[i]));
        settings[1].limit = FillLimit::Curve;
        settings[1].other = logs(samples)[4];
        settings[1].otherScale = {false, 0, 150, static_cast<float>(trackWidth)};
    }

    CurveKey keyOf(const CurveSamples &samples) const
    {
        return curveKey(samples, axis, {}, {false, 0, 150, static_cast<float>(trackWidth)});
    }
    // Rows that a user may have scrolled to.
    int middle() const { return std::max(0, axis.heightPx() / 2 - viewSize.height() / 2); }
    static QColor fillColor(int track) { return track == 0 ? QColor(240, 220, 130) : QColor(170, 210, 240); }

    QVector<GridLine> horizontals(int top, int bottom) const
    {
        return horizontalGrid(axis, scale, static_cast<float>(trackWidth), top, bottom);
    }
    QVector<GridLine> verticals(int top, int bottom) const
    {
        QVector<GridLine> grid = linearGrid(static_cast<float>(trackWidth), axis.height);
        for (GridLine &line : grid)
            line.line = cutVertical(line, top, bottom);
        return grid;
    }

    const CurveSamples &filled(int track) const { return logs(count)[static_cast<size_t>(track * curvesPerTrack)]; }
    void paint(QPainter &painter, int top, int bottom) const
    {
        for (int track = 0; track < trackCount; ++track) {
            painter.save();
            painter.translate(track * trackWidth, 0);
            painter.fillRect(0, top, trackWidth, bottom - top + 1, Qt::white);
            for (const QVector<GridLine> &grid : {horizontals(top, bottom), verticals(top, bottom)})
                for (const GridLine &line : grid) {
                    painter.setPen(gridPen(line.pen));
                    painter.drawLine(line.line);
                }
            if (track < 2) {
                const ShownRows rows{static_cast<double>(top), static_cast<double>(bottom)};
                fills[track].show(painter, filled(track), keyOf(filled(track)), settings[track], fillColor(track),
                                  rows);
            }
            for (int i = track * curvesPerTrack; i < (track + 1) * curvesPerTrack; ++i)
                lines[static_cast<size_t>(i)].paint(painter, curvePen(i, penWidth), top, bottom);
            painter.restore();
        }
    }

    float scale;
    DepthAxis axis;
    int penWidth;
    int count;
    std::vector<CurveLine> lines;
    FillSettings settings[2];
    mutable CurveFill fills[2];
};

/// The same with nothing but the painter: lines, polygons and polylines that lie ready.
class PlainDisplay
{
public:
    PlainDisplay(const Display &display, int top, int bottom)
        : m_top(top)
        , m_bottom(bottom)
        , m_penWidth(display.penWidth)
        , m_grid(display.horizontals(top, bottom) + display.verticals(top, bottom))
    {
        const ShownRows rows{static_cast<double>(top), static_cast<double>(bottom)};
        for (const CurveSamples &log : logs(display.count)) {
            const QList<QPolygonF> polylines = reducedPath(log, display.keyOf(log), rows).toSubpathPolygons();
            m_polylines.push_back({polylines.begin(), polylines.end()});
        }
        for (int track = 0; track < 2; ++track) {
            const CurveFill fill(display.filled(track), display.keyOf(display.filled(track)), display.settings[track],
                                 rows);
            for (const CurveFill::Run &run : fill.runs()) {
                CurveFill::Run shown = run;
                shown.count = 0;
                for (int i = run.first; i < run.first + run.count; ++i) {
                    if (fill.edges().at(i).y < top - 1 || fill.edges().at(i).y > bottom + 1)
                        continue;
                    shown.first = shown.count++ == 0 ? i : shown.first;
                }
                if (shown.count > 1)
                    m_polygons[track].append(fill.polygon(shown));
            }
        }
    }

    void paint(QPainter &painter) const
    {
        for (int track = 0; track < trackCount; ++track) {
            painter.save();
            painter.translate(track * trackWidth, 0);
            painter.fillRect(0, m_top, trackWidth, m_bottom - m_top + 1, Qt::white);
            for (const GridLine &line : m_grid) {
                painter.setPen(gridPen(line.pen));
                painter.drawLine(line.line);
            }
            if (track < 2) {
                painter.setPen(Qt::NoPen);
                painter.setBrush(Display::fillColor(track));
                for (const QPolygonF &polygon : m_polygons[track])
                    painter.drawPolygon(polygon);
            }
            painter.setBrush(Qt::NoBrush);
            for (int i = track * curvesPerTrack; i < (track + 1) * curvesPerTrack; ++i) {
                painter.setPen(curvePen(i, m_penWidth));
                for (const QPolygonF &polyline : m_polylines[static_cast<size_t>(i)])
                    painter.drawPolyline(polyline);
            }
            painter.restore();
        }
    }

private:
    int m_top;
    int m_bottom;
    int m_penWidth;
    QVector<GridLine> m_grid;
    QVector<QPolygonF> m_polygons[2];
    std::vector<QVector<QPolygonF>> m_polylines;
};

QImage &screen()
{
    static QImage image(viewSize, QImage::Format_ARGB32_Premultiplied);
    return image;
}

void repaint(const Display &display, int top)
{
    QPainter painter(&screen());
    painter.translate(0, -top);
    display.paint(painter, top, top + viewSize.height() - 1);
}

void repaint(const PlainDisplay &display, int top)
{
    QPainter painter(&screen());
    painter.translate(0, -top);
    display.paint(painter);
}

void repaintBySamples(benchmark::State &state)
{
    const int penWidth = static_cast<int>(state.range(0));
    const Display few(10000, defaultDepthScale, penWidth);
    const Display many(1000000, defaultDepthScale, penWidth);
    bench::compareWork(
        state, [&] { repaint(few, few.middle()); }, [&] { repaint(many, many.middle()); });
    state.SetLabel("reference: 10,000 samples a curve, subject: 1,000,000; at most 1.5");
}
BENCHMARK(repaintBySamples)
    ->ArgName("pen")
    ->Arg(1)
    ->Arg(2)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(41);

void repaintAgainstPainter(benchmark::State &state)
{
    const Display display(static_cast<int>(state.range(0)), static_cast<float>(state.range(1)),
                          static_cast<int>(state.range(2)));
    const int top = display.middle();
    const PlainDisplay plain(display, top, top + viewSize.height() - 1);
    bench::compareWork(
        state, [&] { repaint(plain, top); }, [&] { repaint(display, top); });
    state.SetLabel("reference: the painter with the same grid, fills and reduced polylines; at most 2");
}
BENCHMARK(repaintAgainstPainter)
    ->ArgNames({"samples", "scale", "pen"})
    ->ArgsProduct({{10000, 100000, 1000000}, {1, 1000, 1000000}, {1, 2}})
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(21);

// A frame of scrolling where the view has not been: the rows that come into view, each for the first time.
void scroll(benchmark::State &state)
{
    const Display few(10000, defaultDepthScale, static_cast<int>(state.range(1)));
    const Display display(static_cast<int>(state.range(0)), defaultDepthScale, static_cast<int>(state.range(1)));
    constexpr int stepRows = 40;
    int top = 0;
    repaint(few, 0);
    bench::compareWork(
        state, [&] { repaint(few, 0); },
        [&] {
            top += stepRows;
            QPainter painter(&screen());
            painter.translate(0, -top);
            painter.setClipRect(0, top + viewSize.height() - stepRows, viewSize.width(), stepRows);
            display.paint(painter, top + viewSize.height() - stepRows, top + viewSize.height() - 1);
        });
    state.SetLabel("reference: repaint of the whole view with 10,000 samples a curve; at most 0.5");
}
BENCHMARK(scroll)
    ->ArgNames({"samples", "pen"})
    ->ArgsProduct({{10000, 100000, 1000000}, {1, 2}})
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(101);

// Smallest and largest value of all logs: the least that anyone who looks at all samples has to do.
void plainPass(int samples)
{
    for (const CurveSamples &log : logs(samples)) {
        float smallest = log.values()[0];
        float largest = smallest;
        for (const float *value = log.values(); value != log.values() + log.size(); ++value) {
            smallest = std::min(smallest, *value);
            largest = std::max(largest, *value);
        }
        benchmark::DoNotOptimize(smallest);
        benchmark::DoNotOptimize(largest);
    }
}

void changeScale(benchmark::State &state)
{
    const int samples = static_cast<int>(state.range(0));
    (void)logs(samples);
    auto scale = static_cast<float>(state.range(1));
    bench::compareWork(
        state, [samples] { plainPass(samples); },
        [&] {
            scale *= 1.0001F;
            const Display display(samples, scale);
            repaint(display, display.middle());
        });
    state.SetLabel("reference: smallest and largest of all values; at most 0.5, and 4 with all samples in view");
}
BENCHMARK(changeScale)
    ->ArgNames({"samples", "scale"})
    ->ArgsProduct({{10000, 1000000}, {1000, 2000, 1000000}})
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(9);

void hover(benchmark::State &state)
{
    constexpr int lookUps = 10000;
    const auto lookUp = [](const CurveSamples &samples) {
        double sum = 0;
        for (int i = 0; i < lookUps; ++i)
            sum += sampleAt(samples, static_cast<double>(totalDepth) * i / lookUps).value;
        benchmark::DoNotOptimize(sum);
    };
    bench::compareWork(
        state, [&] { lookUp(logs(10000).front()); }, [&] { lookUp(logs(1000000).front()); });
    state.SetLabel("10,000 look-ups down the log; reference: 10,000 samples, subject: 1,000,000; linear is 100, "
                   "logarithmic 1.5");
}
BENCHMARK(hover)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(21);

// Whether a curve passes under the mouse, where a row of the screen has 5 samples and where it has none.
void pick(benchmark::State &state)
{
    constexpr int looks = 10000;
    const auto look = [](const CurveSamples &samples) {
        const CurveKey key = Display(10000, defaultDepthScale).keyOf(samples);
        int hits = 0;
        for (int i = 0; i < looks; ++i)
            hits += passes(samples, key, QRectF(i % trackWidth, 18.0 * i, 7, 7));
        benchmark::DoNotOptimize(hits);
    };
    bench::compareWork(
        state, [&] { look(logs(10000).front()); }, [&] { look(logs(1000000).front()); });
    state.SetLabel("10,000 places down the log; reference: 10,000 samples, subject: 1,000,000; linear is 100");
}
BENCHMARK(pick)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(21);

void memory(benchmark::State &state)
{
    const int samples = static_cast<int>(state.range(0));
    (void)logs(samples);
    for (auto _ : state) {
        const size_t before = bench::heapBytes();
        const Display display(samples, defaultDepthScale, 2);
        for (int top = 0; top < display.axis.heightPx(); top += viewSize.height())
            repaint(display, top);
        const double count = static_cast<double>(samples) * trackCount * curvesPerTrack;
        constexpr double held = 2 * sizeof(float); // depth and value
        state.counters["ratio"] = (static_cast<double>(bench::heapBytes() - before) + held * count) / (16 * count);
    }
    state.SetLabel("of samples and all that was made of them, every row painted, over 16 bytes a sample; at most 3");
}
BENCHMARK(memory)
    ->ArgName("samples")
    ->Arg(10000)
    ->Arg(100000)
    ->Arg(1000000)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1);

} // namespace

int main(int argc, char **argv)
{
    return bench::run<QGuiApplication>(argc, argv);
}
