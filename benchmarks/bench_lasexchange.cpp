// LAS files on their way into wells and out of them, by the dialogs of import and export.

#include "benchsupport.h"
#include "lasfiles.h"

#include "datastore/hostwriter.h"
#include "datastore/projectdata.h"
#include "las/importplan.h"
#include "las/laswriter.h"
#include "las/resampling.h"
#include "las/wellimportdialog.h"
#include "las/welllogexport.h"
#include "workbench/workbenchhost.h"

#include <QApplication>
#include <QCheckBox>
#include <QFile>
#include <QLineEdit>
#include <QListWidget>
#include <QTableWidget>

#include <algorithm>
#include <charconv>
#include <chrono>
#include <fcntl.h>
#include <map>
#include <random>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

constexpr char interval[] = "0.1"; // m

/// A launch on a survey of one well that is deep enough.
struct Launch
{
    /// Launches with the same depth share the survey and what was written into it.
    explicit Launch(int depth)
        : host(QStringLiteral(LORVA_SOURCE_DIR "/icons"))
        , launch(host, asker)
    {
        bench::SurveySize size;
        size.wells = 1;
        size.logs = 0;
        size.samples = depth;
        host.setSurvey(bench::generatedSurvey(size));
        launch.catalogue.build();
        openProject(host, &launch.project);
        launch.project.groupNames = QStringList{QStringLiteral("None"), QStringLiteral("Others")};
    }
    workbench::WorkbenchHost host;
    bench::YesAsker asker;
    ProjectData launch;
};

las::ImportTab tabOf(const WellInfo &file, const QString &wellKey)
{
    las::ImportTab tab;
    tab.file = &file;
    tab.wellKey = wellKey;
    tab.wellMaximumDepth = 1e9;
    for (int i = 0; i < file.curves.size(); ++i)
        tab.rows.append({i, true, file.curves.at(i).logName, QStringLiteral("None")});
    return tab;
}

host::LogData hostLog(const LogCurveData &curve)
{
    host::LogData log;
    log.name = curve.logName;
    log.unit = curve.unit;
    for (int i = 0; i < curve.values.size(); ++i) {
        log.depths.append(static_cast<float>(curve.depths.at(i)));
        log.values.append(static_cast<float>(curve.values.at(i)));
    }
    return log;
}

struct Part
{
    const char *name;
    std::function<void()> work;
};

double millisecondsOf(const std::function<void()> &work)
{
    const auto begin = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - begin).count();
}

// The reference is the sum of the parts, each timed alone. All figures are medians.
void compareWithParts(benchmark::State &state, const std::vector<Part> &parts, const std::function<void()> &subject)
{
    const auto median = [](std::vector<double> list) {
        std::sort(list.begin(), list.end());
        return list[list.size() / 2];
    };
    std::map<std::string, std::vector<double>> times;
    for (const Part &part : parts)
        part.work(); // all warm before anything counts
    subject();
    for (auto _ : state) {
        double sum = 0;
        for (const Part &part : parts) {
            times[part.name].push_back(millisecondsOf(part.work));
            sum += times[part.name].back();
        }
        const double time = millisecondsOf(subject);
        times["reference_ms"].push_back(sum);
        times["subject_ms"].push_back(time);
        times["ratio"].push_back(time / sum);
        state.SetIterationTime(1e-3 * time);
    }
    for (const auto &[name, list] : times)
        state.counters[name] = median(list);
}

void importEndToEnd(benchmark::State &state)
{
    const QString path = bench::makeLasFile(bench::hundredMegabytes);
    Launch launch(1000000);
    const las::ImportOptions options{true, las::floatIntervalFromText(QString::fromLatin1(interval))};
    const auto load = [&path](WellInfo *file) {
        if (file->load(path) != 0)
            qFatal("cannot load");
    };
    WellInfo loaded;
    load(&loaded);
    const las::ImportTab tab = tabOf(loaded, launch.launch.catalogue.wellKey(0));
    QVector<host::LogData> logs;
    for (const las::ImportRow &row : tab.rows)
        logs.append(hostLog(las::importedCurve(tab, row, options).record));
    const QString key = launch.launch.catalogue.wellKey(0);
    // Each part alone, on the results of the part before.
    const std::vector<Part> parts{
        {"parse_ms",
         [&] {
             WellInfo file;
             load(&file);
         }},
        {"resample_ms",
         [&] {
             for (const las::ImportRow &row : tab.rows)
                 benchmark::DoNotOptimize(las::importedCurve(tab, row, options).record.values.size());
         }},
        {"write_ms",
         [&] {
             for (const host::LogData &log : qAsConst(logs))
                 if (!launch.host.wells().writeLog(key, log).ok())
                     qFatal("cannot write");
         }},
    };
    const auto dialog = [&] {
        WellImportDialog window(launch.launch);
        window.chooseFiles = [&path](QWidget *, const QString &, const QString &) { return QStringList{path}; };
        window.show();
        window.selectLasFilesClicked();
        window.findChild<QCheckBox *>(QStringLiteral("intervalBox"))->setChecked(true);
        window.findChild<QLineEdit *>(QStringLiteral("intervalEdit"))->setText(QString::fromLatin1(interval));
        for (QTableWidget *table : window.findChildren<QTableWidget *>())
            for (int row = 0; row < table->rowCount(); ++row)
                table->item(row, 2)->setCheckState(Qt::Checked); // they exist from the run before
        window.importSelectedClicked();
    };
    compareWithParts(state, parts, dialog);
    state.counters["MB_file"] = 1e-6 * static_cast<double>(QFile(path).size());
    state.SetLabel("reference: parse, resample and write, each alone; at most 2");
}
BENCHMARK(importEndToEnd)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(3);

QString manyCurvesFile(int curves)
{
    const QString path = bench::lasFolder() + QStringLiteral("/%1curves.las").arg(curves);
    QByteArray bytes = "~Version\nVERS. 2.0 :\nWRAP. NO :\n~Well\nSTRT.M 0 :\nSTOP.M 30 :\nSTEP.M 0.1524 :\n"
                       "NULL. -999.25 :\nUWI. Well 0 :\n~Curve\n";
    for (int i = 0; i < curves; ++i)
        bytes += "LAS" + QByteArray::number(i) + ".x : a curve\n";
    bytes += "~A\n";
    for (int row = 0; row < 200; ++row) {
        for (int i = 0; i < curves; ++i)
            bytes += QByteArray::number(row * bench::lasStepM, 'f', 4) + ' ';
        bytes += '\n';
    }
    bench::writePlain(path, bytes);
    return path;
}

// Into a well without logs each time.
void importManyLogs(benchmark::State &state)
{
    const auto import = [](const QString &path) {
        Launch launch(100);
        launch.launch.project.groupNames.append(QStringLiteral("Gamma"));
        const QString key = launch.launch.catalogue.wellKey(0);
        auto &store = launch.host.store();
        for (int log = launch.launch.catalogue.logNames(0).size(); log > 0; --log)
            if (!store.removeLog(key, log - 1).ok())
                qFatal("cannot remove");
        launch.launch.catalogue.build();
        WellImportDialog window(launch.launch);
        window.chooseFiles = [&path](QWidget *, const QString &, const QString &) { return QStringList{path}; };
        window.show();
        const double milliseconds = millisecondsOf([&window] {
            window.selectLasFilesClicked();
            window.importSelectedClicked();
        });
        if (launch.launch.catalogue.logNames(0).size() < 100)
            qFatal("nothing was imported");
        return milliseconds;
    };
    const QString few = manyCurvesFile(100);
    const QString many = manyCurvesFile(400);
    import(many);
    std::vector<double> ratios;
    for (auto _ : state) {
        const double reference = import(few);
        const double subject = import(many);
        ratios.push_back(subject / reference);
        state.SetIterationTime(1e-3 * subject);
        state.counters["reference_ms"] = reference;
        state.counters["subject_ms"] = subject;
    }
    std::sort(ratios.begin(), ratios.end());
    state.counters["ratio"] = ratios[ratios.size() / 2];
    state.SetLabel("reference: a file of 100 curves into a well, subject: of 400; at most 4.5");
}
BENCHMARK(importManyLogs)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(7);

las::ExportFile exportFile(int rows)
{
    las::ExportFile file;
    file.well.wellName = QStringLiteral("W");
    file.interval = bench::lasStepM;
    file.range = las::ExportRange(1e9);
    std::mt19937 random(1);
    std::uniform_real_distribution<float> value(0, 3000);
    for (int i = 0; i < bench::lasCurveCount; ++i) {
        LogCurveData log;
        log.logName = QStringLiteral("LOG%1").arg(i);
        for (int row = 0; row < rows; ++row) {
            log.depths.append(row * bench::lasStepM);
            log.values.append(static_cast<double>(value(random)));
        }
        file.range.add(log);
        file.logs.append({log, false});
    }
    return file;
}

void formatAndWrite(const las::ExportFile &file, const QString &path)
{
    std::vector<char> buffer;
    const int rows = file.logs.first().data.values.size();
    buffer.resize(static_cast<size_t>(rows) * (bench::lasCurveCount + 1) * 16);
    char *at = buffer.data();
    char *end = at + buffer.size();
    const auto put = [&](double value, int decimals) {
        at = std::to_chars(at, end, value, std::chars_format::fixed, decimals).ptr;
        *at++ = ' ';
    };
    for (int row = 0; row < rows; ++row) {
        put(row * file.interval, 4);
        for (const las::ExportLog &log : file.logs)
            put(log.data.values.at(row), 2);
        *at++ = '\n';
    }
    const int output = ::open(QFile::encodeName(path).constData(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    if (output < 0 || ::write(output, buffer.data(), static_cast<size_t>(at - buffer.data())) != at - buffer.data())
        qFatal("cannot write");
    ::fsync(output);
    ::close(output);
}

void exportLas(benchmark::State &state)
{
    const las::ExportFile file = exportFile(100000);
    const QString path = bench::lasFolder() + QStringLiteral("/out.las");
    bench::compare(
        state, [&] { formatAndWrite(file, path); },
        [&] {
            bool isCreated = false;
            if (!las::writeLas(
                     path, file, [] { return true; }, &isCreated)
                     .ok())
                qFatal("cannot write");
        });
    state.SetLabel("reference: std::to_chars of the same numbers and one write; at most 3");
}
BENCHMARK(exportLas)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(7);

void exportDialog(benchmark::State &state)
{
    const las::ExportFile file = exportFile(100000);
    const QString path = bench::lasFolder() + QStringLiteral("/plain.las");
    Launch launch(2000000);
    for (const las::ExportLog &log : file.logs)
        if (!launch.host.wells().writeLog(launch.launch.catalogue.wellKey(0), hostLog(log.data)).ok())
            qFatal("cannot write");
    launch.launch.catalogue.build();
    const auto dialog = [&] {
        WellLogExport window(launch.launch);
        window.show();
        window.findChild<QListWidget *>(QStringLiteral("wellList"))->item(0)->setCheckState(Qt::Checked);
        window.findChild<QCheckBox *>(QStringLiteral("allBox"))->setChecked(true);
        window.findChild<QLineEdit *>(QStringLiteral("folderEdit"))->setText(bench::lasFolder());
        window.findChild<QLineEdit *>(QStringLiteral("intervalEdit"))->setText(QString::fromLatin1(interval));
        window.exportBtnClicked();
    };
    las::ExportFile resampled = file; // the same numbers
    resampled.interval = las::intervalFromText(QString::fromLatin1(interval));
    for (las::ExportLog &log : resampled.logs) {
        const las::Samples samples = las::resample(log.data.depths, log.data.values, resampled.interval);
        log.data.depths = samples.depths;
        log.data.values = samples.values;
    }
    bench::compare(
        state, [&] { formatAndWrite(resampled, path); }, dialog);
    state.SetLabel("reference: std::to_chars of the same numbers and one write; subject reads, resamples and writes");
}
BENCHMARK(exportDialog)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(5);

} // namespace

int main(int argc, char **argv)
{
    return bench::run<QApplication>(argc, argv);
}
