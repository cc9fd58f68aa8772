// A well display as the user has it: opening it, repainting it, the memory it takes.

#include "benchsupport.h"

#include "datastore/projectdata.h"
#include "logview/curveitem.h"
#include "logview/trackitem.h"
#include "logview/welldisplaywidget.h"
#include "logview/welllogsscene.h"
#include "logview/welllogsview.h"
#include "workbench/workbenchhost.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QScrollBar>

#include <algorithm>
#include <map>
#include <memory>

namespace {

constexpr int trackCount = 8;
constexpr int curvesPerTrack = 3;
constexpr int logCount = trackCount * curvesPerTrack;
constexpr float depthRange = 990; // of the generated well

QString logName(int log)
{
    return QStringLiteral("LOG_%1").arg(log);
}

/// A launch on a survey with one well of 24 logs, and a template of 8 tracks with 3 curves each and two fills.
class Launch
{
public:
    explicit Launch(int samples)
        : m_host(QStringLiteral(LORVA_SOURCE_DIR "/icons"))
        , m_launch(m_host, m_asker)
    {
        bench::SurveySize size;
        size.wells = 1;
        size.logs = 1;
        size.samples = samples; // each size of its own is a survey of its own
        m_host.setSurvey(bench::generatedSurvey(size));
        const QString key = m_host.wells().list().value.first().key;
        for (int log = 0; log < logCount; ++log)
            if (!m_host.wells().writeLog(key, bench::makeLog(logName(log), log, samples, depthRange)).ok())
                qFatal("cannot write a log");
        m_launch.catalogue.build();
        openProject(m_host, &m_launch.project);
        m_launch.project.halfDotsPerInch = 48;
        m_launch.project.doubleDotsPerInch = 192;
        writeTemplate();
    }

    QString wellName() const { return m_launch.catalogue.wellNames().first(); }
    void readLogs()
    {
        for (int log = 0; log < logCount; ++log)
            benchmark::DoNotOptimize(m_launch.catalogue.curve(wellName(), logName(log)));
    }
    std::unique_ptr<WellDisplayWidget> open()
    {
        return std::make_unique<WellDisplayWidget>(m_launch, wellName(), QStringLiteral("Bench"), nullptr);
    }
    std::unique_ptr<WellDisplayWidget> openAndPaint()
    {
        std::unique_ptr<WellDisplayWidget> display = open();
        display->resize(1920, 1080);
        display->show();
        QCoreApplication::processEvents();
        return display;
    }

private:
    void writeTemplate() const
    {
        const QString folder =
            m_launch.project.projectFolder + QStringLiteral("/Templates/") + wellName() + QStringLiteral("/Bench");
        QDir().mkpath(folder);
        for (int track = 0; track < trackCount; ++track) {
            QByteArray text = "Linear\n";
            for (int curve = 0; curve < curvesPerTrack; ++curve) {
                const char *fill = track == 0 && curve == 0 ? "Left Boundary"
                    : track == 1 && curve == 0              ? "Curve_2"
                                                            : "None";
                text += "Gamma | " + logName(track * curvesPerTrack + curve).toLatin1()
                    + " | 0 | 150 | #204080|0,#ffe080|0,#ffffff|" + fill + " | None | 0 | 0\n";
            }
            bench::writePlain(folder + QStringLiteral("/Track_%1.txt").arg(track + 1), text);
        }
    }

    workbench::WorkbenchHost m_host;
    bench::SilentAsker m_asker;
    ProjectData m_launch;
};

Launch &launch(int samples)
{
    static std::map<int, std::unique_ptr<Launch>> launches;
    std::unique_ptr<Launch> &launch = launches[samples];
    if (!launch)
        launch = std::make_unique<Launch>(samples);
    return *launch;
}

void openDisplay(benchmark::State &state)
{
    Launch &data = launch(100000);
    bench::compareWork(
        state, [&] { data.readLogs(); }, [&] { data.open(); });
    state.SetLabel("reference: reading the 24 logs of 100,000 samples, subject: making the display; at most 2");
}
BENCHMARK(openDisplay)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(21);

void openAndPaintDisplay(benchmark::State &state)
{
    Launch &data = launch(static_cast<int>(state.range(0)));
    bench::compareWork(
        state, [&] { data.readLogs(); }, [&] { data.openAndPaint(); });
    state.SetLabel("the same until it is on the screen; at most 3, and 1.5 with 1,000,000");
}
BENCHMARK(openAndPaintDisplay)
    ->ArgName("samples")
    ->Arg(100000)
    ->Arg(1000000)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(7);

void repaintWidget(benchmark::State &state)
{
    const std::unique_ptr<WellDisplayWidget> few = launch(10000).openAndPaint();
    const std::unique_ptr<WellDisplayWidget> many = launch(1000000).openAndPaint();
    const auto repaint = [](const WellDisplayWidget &display) {
        for (int i = 0; i < 10; ++i)
            display.logView()->viewport()->repaint();
    };
    for (const auto &display : {few.get(), many.get()}) {
        display->logView()->verticalScrollBar()->setValue(display->scene()->trackHeight() / 2);
        repaint(*display);
    }
    bench::compareWork(
        state, [&] { repaint(*few); }, [&] { repaint(*many); });
    state.SetLabel(
        "ten repaints of the whole view; reference: 10,000 samples a curve, subject: 1,000,000; at most 1.5");
}
BENCHMARK(repaintWidget)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(7);

// A frame of scrolling where the view has not been.
void scrollWidget(benchmark::State &state)
{
    const std::unique_ptr<WellDisplayWidget> few = launch(10000).openAndPaint();
    const std::unique_ptr<WellDisplayWidget> display = launch(static_cast<int>(state.range(0))).openAndPaint();
    for (const auto &each : {few.get(), display.get()}) {
        for (const TrackItem *track : each->scene()->tracks())
            for (CurveItem *curve : track->curves())
                curve->setLineWidth(static_cast<int>(state.range(1)));
        each->logView()->viewport()->repaint();
    }
    constexpr int stepRows = 40;
    QScrollBar *bar = display->logView()->verticalScrollBar();
    bench::compareWork(
        state, [&] { few->logView()->viewport()->repaint(); },
        [&] {
            bar->setValue(bar->value() + stepRows);
            QCoreApplication::processEvents();
        });
    if (bar->value() == bar->maximum())
        qFatal("scrolled to the end");
    state.SetLabel("by 40 rows; reference: repaint of the whole view with 10,000 samples a curve; at most 0.5");
}
BENCHMARK(scrollWidget)
    ->ArgNames({"samples", "pen"})
    ->ArgsProduct({{10000, 1000000}, {1, 2, 4}})
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(61);

void displayMemory(benchmark::State &state)
{
    constexpr int samples = 100000;
    Launch &data = launch(samples);
    data.openAndPaint();
    for (auto _ : state) {
        const size_t before = bench::heapBytes();
        const std::unique_ptr<WellDisplayWidget> display = data.openAndPaint();
        QScrollBar *bar = display->logView()->verticalScrollBar();
        for (int value = 0; value < bar->maximum(); value += display->logView()->viewport()->height()) {
            bar->setValue(value);
            QCoreApplication::processEvents();
        }
        state.counters["ratio"] = static_cast<double>(bench::heapBytes() - before) / (16.0 * samples * logCount);
    }
    state.SetLabel("heap of a display with every row painted, over 16 bytes a sample; at most 3");
}
BENCHMARK(displayMemory)->Unit(benchmark::kMillisecond)->Iterations(1);

} // namespace

int main(int argc, char **argv)
{
    return bench::run<QApplication>(argc, argv);
}
