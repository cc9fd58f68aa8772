// Filling the project tree, and showing markers from it.

#include "benchsupport.h"

#include "datastore/curvegrouptable.h"
#include "datastore/defaultlogs.h"
#include "datastore/projectdata.h"
#include "datastore/projectseeds.h"
#include "mainwin/mainwindow.h"
#include "mainwin/projecttreewidget.h"
#include "mainwin/reportwriter.h"
#include "workbench/workbenchhost.h"

#include <QApplication>
#include <QDialog>

#include <map>
#include <memory>

namespace {

/// A launch on a generated survey of so many wells, each with 20 logs and 10 markers.
struct Launch
{
    explicit Launch(int wells, int logs = 20, int markers = 10)
        : host(QStringLiteral(LORVA_SOURCE_DIR "/icons"))
        , launch(host, asker)
    {
        bench::SurveySize size;
        size.wells = wells;
        size.logs = logs;
        size.markers = markers;
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

/// A survey of 30 logs and 20 markers a well, in the plug-in's window.
struct LargeWindow
{
    explicit LargeWindow(int wells)
        : launch(wells, 30, 20)
        , window(std::make_unique<MainWindow>(launch.launch))
    {
        runDefaultLogsPass(launch.launch);
        window->show();
        last = QStringLiteral("Well %1").arg(wells - 1);
    }
    Launch launch;
    std::unique_ptr<MainWindow> window;
    QString last; ///< name of a well
};

std::map<int, std::unique_ptr<LargeWindow>> largeWindows;

LargeWindow &largeWindow(int wells)
{
    if (largeWindows.empty())
        qAddPostRoutine([] { largeWindows.clear(); }); // no window outlives its application
    auto &window = largeWindows[wells];
    if (!window)
        window = std::make_unique<LargeWindow>(wells);
    return *window;
}

void buildCatalogue(LargeWindow &large)
{
    large.launch.launch.catalogue.build();
}

void passOverDefaultLogs(LargeWindow &large)
{
    CurveGroupTable::instance().clear();
    runDefaultLogsPass(large.launch.launch);
}

void openWindow(LargeWindow &large)
{
    MainWindow(large.launch.launch).show();
}

void synchronise(LargeWindow &large)
{
    large.window->syncODDBActionClicked();
}

void searchTree(LargeWindow &large)
{
    large.window->projectTree()->setCurrentItem(large.window->projectTree()->wellsItem());
    large.window->projectTree()->keyboardSearch(large.last);
}

void reportMarkers(LargeWindow &large)
{
    writeMarkersReport(large.launch.launch);
}

void openDialogs(LargeWindow &large)
{
    large.window->importWellLogsActionClicked();
    large.window->exportWellLogsActionClicked();
    for (QDialog *dialog : large.window->findChildren<QDialog *>())
        delete dialog;
}

// What a user does in a survey of 10,000 wells, against one of 2,500. Some gigabytes of memory are wanted for the files.
void largeSurvey(benchmark::State &state, void (*work)(LargeWindow &))
{
    LargeWindow &few = largeWindow(2500);
    LargeWindow &many = largeWindow(10000);
    bench::compareWork(
        state, [&] { work(few); }, [&] { work(many); });
    state.SetLabel("reference: 2,500 wells, subject: 10,000; linear is 4");
}
BENCHMARK_CAPTURE(largeSurvey, catalogue, buildCatalogue)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(3);
BENCHMARK_CAPTURE(largeSurvey, defaultLogs, passOverDefaultLogs)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(3);
BENCHMARK_CAPTURE(largeSurvey, window, openWindow)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK_CAPTURE(largeSurvey, synchronise, synchronise)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(3);
BENCHMARK_CAPTURE(largeSurvey, search, searchTree)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK_CAPTURE(largeSurvey, markersReport, reportMarkers)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(3);
BENCHMARK_CAPTURE(largeSurvey, dialogs, openDialogs)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(3);

// --- a project with files of others

/// A survey of 100 wells, opened in the plug-in's window, with so many files of others in the folders of its project.
struct SharedProject
{
    explicit SharedProject(int files)
        : host(QStringLiteral(LORVA_SOURCE_DIR "/icons"))
        , folder(bench::generatedSurvey({100, 20, files == 0 ? 100 : 101, 10})) // two surveys
    {
        host.setSurvey(folder);
        launch();
        int number = 0;
        for (const char *place : {"", "DefaultLogs/", "CurveGroups/", "Templates/Global/", "Correlations/"})
            for (int i = 0; i < files / 5; ++i)
                bench::writePlain(data->project.projectFolder + QLatin1Char('/') + QString::fromLatin1(place)
                                      + QStringLiteral("foreign %1.txt").arg(++number),
                                  "x");
    }
    void launch()
    {
        window.reset();
        data = std::make_unique<ProjectData>(host, asker);
        data->catalogue.build();
        openProject(host, &data->project);
        seedProject(data->project.projectFolder);
        window = std::make_unique<MainWindow>(*data);
        runDefaultLogsPass(*data);
        window->show();
    }
    workbench::WorkbenchHost host;
    bench::SilentAsker asker;
    QString folder;
    std::unique_ptr<ProjectData> data;
    std::unique_ptr<MainWindow> window;
};

void launchShared(SharedProject &project)
{
    project.launch();
}

void synchroniseShared(SharedProject &project)
{
    project.window->syncODDBActionClicked();
}

void listTemplates(SharedProject &project)
{
    for (int i = 0; i < 10; ++i)
        benchmark::DoNotOptimize(globalTemplateNames(project.data->project));
}

void foreignFiles(benchmark::State &state, void (*work)(SharedProject &))
{
    static std::unique_ptr<SharedProject> own;
    static std::unique_ptr<SharedProject> shared;
    if (!own) {
        own = std::make_unique<SharedProject>(0);
        shared = std::make_unique<SharedProject>(100000);
        qAddPostRoutine([] {
            own.reset();
            shared.reset();
        });
    }
    bench::compareWork(
        state, [&] { work(*own); }, [&] { work(*shared); });
    state.SetLabel("reference: no file of others, subject: 100,000");
}
BENCHMARK_CAPTURE(foreignFiles, launch, launchShared)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK_CAPTURE(foreignFiles, synchronise, synchroniseShared)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(5);
BENCHMARK_CAPTURE(foreignFiles, templates, listTemplates)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(5);

} // namespace

int main(int argc, char **argv)
{
    return bench::run<QApplication>(argc, argv);
}
