// Filling the project tree, and showing markers from it.

#include "benchsupport.h"

#include "datastore/projectdata.h"
#include "datastore/projectseeds.h"
#include "mainwin/mainwindow.h"
#include "mainwin/projecttreewidget.h"
#include "workbench/workbenchhost.h"

#include <QApplication>

#include <memory>

namespace {

/// A launch on a generated survey of so many wells, each with 20 logs and 10 markers.
struct Launch
{
    explicit Launch(int wells)
        : host(QStringLiteral(LORVA_SOURCE_DIR "/icons"))
        , launch(host, asker)
    {
        bench::SurveySize size;
        size.wells = wells;
        size.samples = 5000;
        host.setSurvey(bench::generatedSurvey(size));
        launch.catalogue.build();
        openProject(host, &launch.project);
        seedProject(launch.project.projectFolder);
        launch.project.globalTemplateNames = globalTemplateNames(launch.project);
    }
    workbench::WorkbenchHost host;
    bench::SilentAsker asker;
    ProjectData launch;
};

void fillTree(benchmark::State &state)
{
    Launch few(500);
    Launch many(2000);
    bench::compare(
        state, [&] { ProjectTreeWidget(few.launch).show(); }, [&] { ProjectTreeWidget(many.launch).show(); });
    state.SetLabel("reference: 500 wells, subject: 2,000; linear is 4");
}
BENCHMARK(fillTree)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(5);

void synchroniseTree(benchmark::State &state)
{
    Launch few(500);
    Launch many(2000);
    ProjectTreeWidget fewTree(few.launch);
    ProjectTreeWidget manyTree(many.launch);
    bench::compare(
        state, [&] { fewTree.synchronise(); }, [&] { manyTree.synchronise(); });
    state.SetLabel("reference: 500 wells, subject: 2,000; linear is 4");
}
BENCHMARK(synchroniseTree)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(5);

/// A window on one well with so many markers, displayed.
struct MarkersWindow
{
    explicit MarkersWindow(int markers)
        : launch(1)
    {
        QVector<host::Marker> set;
        for (int i = 0; i < markers; ++i)
            set.append({QStringLiteral("Marker %1").arg(i), 10.0F + static_cast<float>(i) / 8, Qt::red});
        const QString key = launch.launch.catalogue.wellKey(0);
        static_cast<void>(launch.host.store().writeMarkers(key, set));
        launch.launch.catalogue.build();
        window = std::make_unique<MainWindow>(launch.launch);
        QTreeWidgetItem *well = window->projectTree()->wellsItem()->child(0);
        click(well, Qt::Checked);
    }
    void click(QTreeWidgetItem *item, Qt::CheckState state) const
    {
        item->setCheckState(0, state);
        emit window->projectTree()->itemClicked(item, 0);
    }
    void tick() const
    {
        QTreeWidgetItem *markers = markersBranch(window->projectTree()->wellsItem()->child(0));
        click(markers, Qt::Checked);
        click(markers, Qt::Unchecked);
    }
    Launch launch;
    std::unique_ptr<MainWindow> window;
};

void tickMarkers(benchmark::State &state)
{
    const MarkersWindow few(500);
    const MarkersWindow many(2000);
    bench::compare(
        state, [&] { few.tick(); }, [&] { many.tick(); });
    state.SetLabel("reference: 500 markers shown and hidden, subject: 2,000; linear is 4");
}
BENCHMARK(tickMarkers)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(3);

} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
