// A correlation as the user has it: opening it, drawing it anew, scrolling, the memory it takes.

#include "benchsupport.h"

#include "correlation/correlationdisplaywidget.h"
#include "correlation/correlationstore.h"
#include "correlation/correlationview.h"
#include "correlation/correlationviewproperty.h"
#include "datastore/projectdata.h"
#include "logview/curveitem.h"
#include "logview/geometry/curveline.h"
#include "logview/geometry/curvepath.h"
#include "logview/trackitem.h"
#include "workbench/workbenchhost.h"

#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QPainter>
#include <QScrollBar>

#include <algorithm>
#include <map>
#include <memory>
#include <tuple>

namespace {

constexpr int usualTracks = 6;
constexpr int curvesPerTrack = 3;
constexpr int logCount = usualTracks * curvesPerTrack;
constexpr int markerCount = 10;
constexpr int zoneCount = 5;
constexpr float depthRange = 5000;
constexpr QSize windowSize{1920, 1080};

QString logName(int log)
{
    return QStringLiteral("CURVE_%1").arg(log);
}

/// A launch on a survey of wells with 18 logs each, and the correlation "Bench" of all of them, with a template of some
/// tracks.
class Launch
{
public:
    Launch(int wells, int samples, int tracks)
        : m_host(QStringLiteral(LORVA_SOURCE_DIR "/icons"))
        , m_launch(m_host, m_asker)
    {
        bench::SurveySize size;
        size.wells = wells;
        size.logs = 1;
        size.samples = samples;
        size.markers = markerCount;
        const QString survey = bench::generatedSurvey(size);
        m_host.setSurvey(survey);
        const QString key = m_host.wells().list().value.first().key;
        for (int log = 0; log < tracks * curvesPerTrack; ++log)
            if (!m_host.wells().writeLog(key, bench::makeLog(logName(log), log, samples, depthRange)).ok())
                qFatal("cannot write a log");
        copyLogs(survey + QStringLiteral("/WellInfo/"), wells, tracks * curvesPerTrack);
        m_launch.catalogue.build();
        openProject(m_host, &m_launch.project);
        m_launch.project.halfDotsPerInch = 48;
        m_launch.project.doubleDotsPerInch = 192;
        writeTemplate(tracks);
        writeCorrelation();
    }

    void readLogs()
    {
        for (const QString &well : m_launch.catalogue.wellNames())
            for (int log = 0; log < logCount; ++log)
                benchmark::DoNotOptimize(m_launch.catalogue.curve(well, logName(log)));
    }
    std::unique_ptr<CorrelationDisplayWidget> openAndPaint()
    {
        auto display = std::make_unique<CorrelationDisplayWidget>(m_launch, QStringLiteral("Bench"), nullptr);
        display->resize(windowSize);
        display->show();
        QCoreApplication::processEvents();
        return display;
    }

private:
    // All wells have the logs of the first one.
    static void copyLogs(const QString &folder, int wells, int logs)
    {
        for (int log = 2; log < 2 + logs; ++log) {
            QFile file(folder + QStringLiteral("Well_0^%1.wll").arg(log));
            if (!file.open(QIODevice::ReadOnly))
                qFatal("no log to copy");
            const QByteArray bytes = file.readAll();
            for (int well = 1; well < wells; ++well)
                bench::writePlain(folder + QStringLiteral("Well_%1^%2.wll").arg(well).arg(log), bytes);
        }
    }
    void writeTemplate(int tracks)
    {
        const QString folder = m_launch.project.projectFolder + QStringLiteral("/Templates/Global/Bench");
        QDir().mkpath(folder);
        for (int track = 0; track < tracks; ++track) {
            QByteArray text = "Linear\n";
            for (int curve = 0; curve < curvesPerTrack; ++curve)
                text += "Gamma | " + logName(track * curvesPerTrack + curve).toLatin1()
                    + " | 0 | 150 | #204080|0,#ffe080|0,#ffffff|None | None | 0 | 0\n";
            bench::writePlain(folder + QStringLiteral("/Track_%1.txt").arg(track + 1), text);
        }
        m_launch.project.globalTemplateNames.append(QStringLiteral("Bench"));
    }
    void writeCorrelation()
    {
        CorrelationProperties properties;
        properties.name = QStringLiteral("Bench");
        properties.showsPerforations = true;
        for (const QString &well : m_launch.catalogue.wellNames())
            properties.wells.append({well, QStringLiteral("Bench")});
        for (int i = 1; i <= markerCount; ++i)
            properties.markers.append(QStringLiteral("Top %1").arg(i));
        for (int i = 1; i <= zoneCount; ++i) {
            CorrelationZone zone;
            zone.name = QStringLiteral("Zone %1").arg(i);
            zone.start = properties.markers.at(2 * i - 2);
            zone.end = properties.markers.at(2 * i - 1);
            zone.color = QStringLiteral("#e6b800");
            properties.zones.append(zone);
        }
        if (!correlation::write(m_launch.project, properties).ok())
            qFatal("cannot write the correlation");
    }

    workbench::WorkbenchHost m_host;
    bench::SilentAsker m_asker;
    ProjectData m_launch;
};

Launch &launch(int wells, int samples, int tracks = usualTracks)
{
    static std::map<std::tuple<int, int, int>, std::unique_ptr<Launch>> launches;
    std::unique_ptr<Launch> &launch = launches[{wells, samples, tracks}];
    if (!launch)
        launch = std::make_unique<Launch>(wells, samples, tracks);
    return *launch;
}

QVector<const CurveItem *> curvesInView(const CorrelationView &view)
{
    const QRectF area = view.mapToScene(view.viewport()->rect()).boundingRect();
    QVector<const CurveItem *> curves;
    for (const TrackItem *track : view.tracks())
        if (track->sceneBoundingRect().intersects(area))
            for (const CurveItem *curve : track->curves())
                curves.append(curve);
    return curves;
}

logview::CurveKey keyOf(const CurveItem &curve)
{
    const auto *track = static_cast<const TrackItem *>(curve.parentItem());
    return logview::curveKey(curve.samples(), track->axis(), track->depthReference(), curve.scale());
}

void buildPaths(const QVector<const CurveItem *> &curves)
{
    for (const CurveItem *curve : curves)
        benchmark::DoNotOptimize(logview::reducedPath(curve->samples(), keyOf(*curve)).elementCount());
}

// The curves in view and nothing else: their paths, and their lines on an image.
void drawCurves(const CorrelationView &view)
{
    QImage image(windowSize, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QPainter painter(&image);
    const QRectF area = view.mapToScene(view.viewport()->rect()).boundingRect();
    for (const CurveItem *curve : curvesInView(view)) {
        logview::CurveLine line;
        line.update(curve->samples(), keyOf(*curve));
        painter.save();
        painter.translate(static_cast<int>(curve->parentItem()->x() - area.left()), static_cast<int>(-area.top()));
        line.paint(painter, curve->pen(), area.top(), area.bottom());
        painter.restore();
    }
}

void redrawAndPaint(CorrelationView *view)
{
    view->redraw();
    QCoreApplication::processEvents();
}

void openCorrelation(benchmark::State &state)
{
    Launch &data = launch(20, 50000);
    const auto display = data.openAndPaint();
    bench::compareWork(
        state,
        [&] {
            data.readLogs();
            drawCurves(*display->view());
        },
        [&] { data.openAndPaint(); });
    state.SetLabel("20 wells; reference: reading the logs and drawing the curves in view; at most 1.5");
}
BENCHMARK(openCorrelation)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(7);

void openMoreWells(benchmark::State &state)
{
    Launch &few = launch(20, 10000);
    Launch &many = launch(100, 10000);
    bench::compareWork(
        state, [&] { few.openAndPaint(); }, [&] { many.openAndPaint(); });
    state.SetLabel("reference: 20 wells, subject: 100; linear is 5");
}
BENCHMARK(openMoreWells)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(7);

enum Change { Scale, Unit, Type, Flattening };

void redrawCorrelation(benchmark::State &state)
{
    const auto display = launch(20, 50000).openAndPaint();
    CorrelationView *view = display->view();
    bool isOther = false;
    const auto change = [&] {
        isOther = !isOther;
        switch (state.range(0)) {
        case Scale:
            view->setScaleFactor(isOther ? 900 : 1000);
            break;
        case Unit:
            view->setDepthUnit(isOther ? logview::Feet : logview::Metre);
            break;
        case Type:
            view->setDepthType(isOther ? logview::TvdSubsea : logview::MeasuredDepth);
            break;
        default:
            view->setFlatMarker(isOther ? QStringLiteral("Top 9") : QString());
        }
        QCoreApplication::processEvents();
    };
    if (state.range(1) != 0)
        bench::compareWork(
            state, [&] { buildPaths(curvesInView(*view)); }, change);
    else
        bench::compareWork(
            state, [&] { drawCurves(*view); }, change);
    state.SetLabel(state.range(1) != 0 ? "reference: building the paths of the curves in view; at most 2"
                                       : "reference: building these paths and drawing the lines");
}
BENCHMARK(redrawCorrelation)
    ->ArgNames({"change", "pathsOnly"})
    ->ArgsProduct({{Scale, Unit, Type, Flattening}, {0, 1}})
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(9);

void redrawMoreWells(benchmark::State &state)
{
    const auto few = launch(20, 10000).openAndPaint();
    const auto many = launch(100, 10000).openAndPaint();
    bench::compareWork(
        state, [&] { redrawAndPaint(few->view()); }, [&] { redrawAndPaint(many->view()); });
    state.SetLabel("reference: 20 wells, subject: 100; at most 1.2");
}
BENCHMARK(redrawMoreWells)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(9);

// The first paint after a change of scale: of many wells, and of as many as are in view.
void zoomManyWells(benchmark::State &state)
{
    constexpr int samples = 20000;
    constexpr int tracks = 3;
    const auto many = launch(100, samples, tracks).openAndPaint();
    const int curves = curvesInView(*many->view()).size();
    const int wells = (curves + tracks * curvesPerTrack - 1) / (tracks * curvesPerTrack);
    const auto few = launch(wells, samples, tracks).openAndPaint();
    float scale = 1000;
    const auto zoom = [&scale](CorrelationView *view) {
        view->setScaleFactor(scale);
        QCoreApplication::processEvents();
    };
    bench::compareWork(
        state,
        [&] {
            scale = scale == 1000 ? 900 : 1000;
            zoom(few->view());
        },
        [&] { zoom(many->view()); });
    state.counters["wells_in_view"] = wells;
    state.SetLabel("100 wells x 3 tracks x 3 curves of 20,000 samples; reference: those in view alone; at most 1.3");
}
BENCHMARK(zoomManyWells)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(41);

void scrollCorrelation(benchmark::State &state)
{
    const auto display = launch(20, 50000).openAndPaint();
    CorrelationView *view = display->view();
    QScrollBar *bar = state.range(0) == 0 ? view->verticalScrollBar() : view->horizontalScrollBar();
    constexpr int step = 40;
    int place = 0;
    bench::compareWork(
        state, [&] { view->viewport()->repaint(); },
        [&] {
            bar->setValue(place += step);
            QCoreApplication::processEvents();
        });
    state.SetLabel("a step of 40 pixels; reference: repaint of the whole view; 16 ms are 60 frames a second");
}
BENCHMARK(scrollCorrelation)
    ->ArgName("sideways")
    ->Arg(0)
    ->Arg(1)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(61);

void correlationMemory(benchmark::State &state)
{
    const int wells = static_cast<int>(state.range(0));
    constexpr int samples = 10000;
    Launch &data = launch(wells, samples);
    data.openAndPaint();
    for (auto _ : state) {
        const size_t before = bench::heapBytes();
        const auto display = data.openAndPaint();
        QScrollBar *bar = display->view()->horizontalScrollBar();
        for (int value = 0; value < bar->maximum(); value += display->view()->viewport()->width()) {
            bar->setValue(value);
            QCoreApplication::processEvents();
        }
        state.counters["ratio"] =
            static_cast<double>(bench::heapBytes() - before) / (16.0 * samples * logCount * wells);
    }
    state.SetLabel("heap of a display with every well painted, over 16 bytes a sample; at most 1.7");
}
BENCHMARK(correlationMemory)->ArgName("wells")->Arg(20)->Arg(100)->Unit(benchmark::kMillisecond)->Iterations(1);

} // namespace

int main(int argc, char **argv)
{
    return bench::run<QApplication>(argc, argv);
}
