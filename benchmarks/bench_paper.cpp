// A well's log on paper: pages at true scale, against the same tracks painted on the screen.

#include "benchsupport.h"

#include "datastore/projectdata.h"
#include "logview/paper/displaysheet.h"
#include "logview/paper/sheetfile.h"
#include "logview/paper/sheetpainter.h"
#include "logview/welldisplaywidget.h"
#include "logview/welllogsscene.h"
#include "logview/welllogsscenepropertywidget.h"
#include "logview/welllogsview.h"
#include "workbench/workbenchhost.h"

#include <QApplication>
#include <QDir>
#include <QGraphicsView>
#include <QScrollBar>

#include <memory>

namespace {

constexpr int trackCount = 8;
constexpr int curvesPerTrack = 3;
constexpr float depthRangeM = 3000;
constexpr int samples = 19685; // half a foot apart
constexpr float scale = 500;

/// A launch on a survey with one well of 24 logs over 3,000 m, and a template of 8 tracks with 3 curves each.
class Launch
{
public:
    Launch()
        : m_host(QStringLiteral(LORVA_SOURCE_DIR "/icons"))
        , m_launch(m_host, m_asker)
    {
        bench::SurveySize size;
        size.wells = 1;
        size.logs = 1;
        size.samples = samples;
        m_host.setSurvey(bench::generatedSurvey(size));
        const QString key = m_host.wells().list().value.first().key;
        for (int log = 0; log < trackCount * curvesPerTrack; ++log)
            if (!m_host.wells().writeLog(key, bench::makeLog(logName(log), log, samples, depthRangeM)).ok())
                qFatal("cannot write a log");
        m_launch.catalogue.build();
        openProject(m_host, &m_launch.project);
        const QString well = m_launch.catalogue.wellNames().first();
        const QString folder =
            m_launch.project.projectFolder + QStringLiteral("/Templates/") + well + QStringLiteral("/Paper");
        QDir().mkpath(folder);
        for (int track = 0; track < trackCount; ++track) {
            QByteArray text = "Linear\n";
            for (int curve = 0; curve < curvesPerTrack; ++curve)
                text += "Gamma | " + logName(track * curvesPerTrack + curve).toLatin1()
                    + " | 0 | 150 | #204080|0,#ffe080|0,#ffffff|None | None | 0 | 0\n";
            bench::writePlain(folder + QStringLiteral("/Track_%1.txt").arg(track + 1), text);
        }
        display = std::make_unique<WellDisplayWidget>(m_launch, well, QStringLiteral("Paper"), nullptr);
        WellLogsScene *scene = display->scene();
        scene->panel()->setEndDepth(depthRangeM);
        scene->applyDepthRange();
        scene->panel()->enterScale(scale);
        display->resize(1920, 1080);
        display->show();
        QCoreApplication::processEvents();
    }

    std::unique_ptr<WellDisplayWidget> display;

private:
    static QString logName(int log) { return QStringLiteral("LOG_%1").arg(log); }

    workbench::WorkbenchHost m_host;
    bench::SilentAsker m_asker;
    ProjectData m_launch;
};

// What scrolling through the whole log paints.
void paintAll(const WellDisplayWidget &display)
{
    QScrollBar *bar = display.logView()->verticalScrollBar();
    for (int value = 0; value <= bar->maximum(); value += display.logView()->viewport()->height()) {
        bar->setValue(value);
        display.logView()->viewport()->repaint();
    }
}

void pdfPages(benchmark::State &state)
{
    const Launch launch;
    WellDisplayWidget &display = *launch.display;
    QGraphicsScene &headers = *display.headerView()->scene();
    const logview::Sheet sheet = logview::layOutSheet(logview::sheetContents(headers, *display.scene()),
                                                      logview::Paper::A4, logview::pdfLimits());
    if (!sheet.ok())
        qFatal("%s", qPrintable(sheet.problem));
    int size = 0;
    bench::compareWork(
        state, [&] { paintAll(display); },
        [&] { size = logview::pdfBytes(logview::SheetPainter(headers, *display.scene(), sheet)).size(); });
    state.counters["MB"] = size / 1e6;
    state.counters["pages"] = sheet.pages.size();
    state.SetLabel("3,000 m at 1:500 on A4; reference: the same on the screen, view by view; at most 3 and 2 MB");
}
BENCHMARK(pdfPages)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(5);

} // namespace

int main(int argc, char **argv)
{
    return bench::run<QApplication>(argc, argv);
}
