// The tables of the well data manager with many rows, and the import of a large text file.

#include "benchsupport.h"

#include "base/asker.h"
#include "datastore/projectdata.h"
#include "datastore/projectseeds.h"
#include "welldata/columnfile.h"
#include "welldata/columnpreview.h"
#include "welldata/markerdatawidget.h"
#include "welldata/markerrows.h"
#include "welldata/welldatatable.h"
#include "workbench/workbenchhost.h"

#include <QApplication>
#include <QFile>
#include <QTemporaryDir>

#include <memory>

namespace {

class SilentAsker : public base::Asker
{
public:
    base::BoxButton show(const base::Box &box) override { return box.buttons.last(); }
};

/// The marker editor, shown, on a well of its own with so many markers. The survey is shared.
struct Editor
{
    Editor(int markers, int wellIndex)
        : host(QStringLiteral(LORVA_SOURCE_DIR "/icons"))
        , launch(host, asker)
        , well(wellIndex)
    {
        bench::SurveySize size;
        size.wells = 2;
        host.setSurvey(bench::generatedSurvey(size));
        QVector<host::Marker> set;
        for (int i = 0; i < markers; ++i)
            set.append({QStringLiteral("Marker %1").arg(i), static_cast<float>(i) / 16, Qt::red});
        launch.catalogue.build();
        static_cast<void>(host.store().writeMarkers(launch.catalogue.wellKey(well), set));
        launch.catalogue.build();
        openProject(host, &launch.project);
        editor = std::make_unique<MarkerDataWidget>(launch);
        editor->resize(800, 600);
        editor->show();
        load();
    }
    void load() const
    {
        editor->setWell(launch.catalogue.wellNames().at(well));
        handleEvents();
    }
    static void handleEvents()
    {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
    }

    workbench::WorkbenchHost host;
    SilentAsker asker;
    ProjectData launch;
    int well;
    std::unique_ptr<MarkerDataWidget> editor;
};

void loadMarkers(benchmark::State &state)
{
    const Editor few(2500, 0);
    const Editor many(10000, 1);
    bench::compare(
        state, [&] { few.load(); }, [&] { many.load(); });
    state.SetLabel("reference: 2,500 markers shown, subject: 10,000; linear is 4");
}
BENCHMARK(loadMarkers)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(5);

void addAndDeleteARow(benchmark::State &state)
{
    const Editor few(100, 0);
    const Editor many(10000, 1);
    const auto work = [](const Editor &editor) {
        editor.editor->addRow();
        Editor::handleEvents();
        editor.editor->table()->setCurrentCell(0, 0);
        editor.editor->addRow();
        editor.editor->deleteRow();
        editor.editor->deleteRow();
        Editor::handleEvents();
    };
    bench::compare(
        state, [&] { work(few); }, [&] { work(many); });
    state.SetLabel("reference: two rows added and deleted among 100, subject: among 10,000");
}
BENCHMARK(addAndDeleteARow)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(5);

void saveMarkers(benchmark::State &state)
{
    const Editor few(2500, 0);
    const Editor many(10000, 1);
    bench::compare(
        state, [&] { few.editor->updateBtnClicked(); }, [&] { many.editor->updateBtnClicked(); });
    state.SetLabel("reference: 2,500 markers saved, subject: 10,000; linear is 4");
}
BENCHMARK(saveMarkers)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(5);

QByteArray readBytes(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// A text file of a million lines: name, depth and a remark.
struct LargeFile
{
    LargeFile()
        : path(folder.filePath(QStringLiteral("large.txt")))
    {
        QByteArray bytes;
        for (int i = 0; i < 1000000; ++i)
            bytes += "Marker " + QByteArray::number(i) + '\t' + QByteArray::number(i / 256.0, 'f', 3) + "\tpicked\n";
        bench::writePlain(path, bytes);
    }
    QTemporaryDir folder;
    QString path;
};

// What any import does at least: a list of lines, each split at its tabs.
size_t splitPlainly(const QByteArray &bytes)
{
    size_t fields = 0;
    for (const QByteArray &line : bytes.split('\n'))
        fields += static_cast<size_t>(line.split('\t').size());
    return fields;
}

void importAMillionLines(benchmark::State &state)
{
    const LargeFile file;
    bench::compare(
        state, [&] { benchmark::DoNotOptimize(splitPlainly(readBytes(file.path))); },
        [&] {
            const welldata::ColumnFile columns = welldata::readColumns(readBytes(file.path), {0, {1, 2}, 2});
            const auto rows = welldata::markerRows(columns, welldata::MarkerElevations());
            benchmark::DoNotOptimize(welldata::markerRecord(QStringLiteral("W"), rows).names.size());
        });
    state.SetLabel("reference: bytes read and split, subject: read into markers; at most 3");
}
BENCHMARK(importAMillionLines)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(5);

void readAMillionLines(benchmark::State &state)
{
    const LargeFile file;
    bench::compare(
        state, [&] { benchmark::DoNotOptimize(splitPlainly(readBytes(file.path))); },
        [&] {
            benchmark::DoNotOptimize(welldata::readColumns(readBytes(file.path), {0, {1, 2}, 2}).fields.size());
        });
    state.SetLabel("reference: bytes read and split, subject: the column reader");
}
BENCHMARK(readAMillionLines)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(5);

void previewAMillionLines(benchmark::State &state)
{
    const LargeFile file;
    ColumnPreview preview;
    preview.resize(700, 400);
    preview.show();
    bench::compare(
        state, [&] { benchmark::DoNotOptimize(splitPlainly(readBytes(file.path))); },
        [&] {
            preview.setBytes(readBytes(file.path));
            QCoreApplication::processEvents();
        });
    state.SetLabel("reference: bytes read and split, subject: the preview opened");
}
BENCHMARK(previewAMillionLines)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(3);

void showAMillionRows(benchmark::State &state)
{
    const LargeFile file;
    const welldata::ColumnFile columns = welldata::readColumns(readBytes(file.path), {0, {1, 2}, 2});
    const auto rows = welldata::markerRows(columns, welldata::MarkerElevations());
    WellDataTable table(welldata::markerColumns());
    table.resize(700, 400);
    table.show();
    bench::compare(
        state, [&] { benchmark::DoNotOptimize(splitPlainly(readBytes(file.path))); },
        [&] {
            table.setRows(rows);
            Editor::handleEvents();
        });
    state.SetLabel("reference: bytes read and split, subject: a million rows in the table");
}
BENCHMARK(showAMillionRows)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(3);

} // namespace

int main(int argc, char **argv)
{
    return bench::run<QApplication>(argc, argv);
}
