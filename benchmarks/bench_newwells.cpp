// A folder of LAS files into wells with logs, against reading the same files and writing the same log files alone; and the
// table of wells for 2,000 files.

#include "benchsupport.h"

#include "base/atomicfile.h"
#include "las/logreader.h"
#include "survey/logfile.h"
#include "survey/newwells.h"
#include "survey/surveyfolder.h"

#include <QCoreApplication>
#include <QDir>
#include <QTemporaryDir>

#include <cmath>

namespace {

constexpr int fileCount = 200;
constexpr int curveCount = 10;
constexpr int fileSize = 1 << 20;

QByteArray lasFile(int number, int size)
{
    QByteArray text =
        "~V\nVERS. 2.0 :\nWRAP. NO :\n~W\nSTRT.M 500 :\nSTOP.M 3000 :\nSTEP.M 0.1524 :\nNULL. -999.25 :\nWELL. W"
        + QByteArray::number(number) + " :\n~C\nDEPT.M :\n";
    for (int curve = 0; curve < curveCount; ++curve)
        text += "CURVE" + QByteArray::number(curve) + ".UNIT :\n";
    text += "~A\n";
    for (int row = 0; text.size() < size; ++row) {
        text += QByteArray::number(500 + 0.1524 * row, 'f', 4);
        for (int curve = 0; curve < curveCount; ++curve)
            text += ' ' + QByteArray::number(50 + 40 * std::sin(0.01 * row * (curve + 1)), 'f', 4);
        text += '\n';
    }
    return text;
}

QStringList makeFiles(const QString &folder, int count, int size)
{
    QStringList paths;
    for (int i = 0; i < count; ++i) {
        paths.append(folder + QStringLiteral("/%1.las").arg(i));
        bench::writePlain(paths.last(), lasFile(i, size));
    }
    return paths;
}

/// Reads the files and writes the files of their logs, flushed once a well: what cannot be done without.
void readAndWrite(const QStringList &paths, const QString &folder)
{
    QDir().mkpath(folder);
    int number = 0;
    for (const QString &path : paths) {
        const las::LogFile file = las::readLogs(path);
        for (const las::LogSet &set : file.sets) {
            QVector<float> depths;
            for (const double depth : set.depths)
                depths.append(static_cast<float>(depth));
            for (const las::FileLog &log : set.logs) {
                const auto bytes = survey::logFileBytes({log.name, log.unit, depths, log.values}, "Meter", nullptr);
                if (!base::writeFileAtomically(folder + QStringLiteral("/%1.wll").arg(number++), bytes.value,
                                               base::Flush::Later)
                         .ok())
                    qFatal("A log was not written");
            }
        }
        if (!base::flushFileSystem(folder).ok())
            qFatal("Not flushed");
    }
}

void makeWells(const QStringList &paths, const QString &folder)
{
    if (!survey::createSurvey(folder, {}).ok())
        qFatal("no survey");
    survey::SurveyStore store(folder);
    survey::NewWells wells;
    wells.addFiles(paths);
    for (const survey::NewWell &well : wells.wells()) {
        survey::WellOrder order;
        order.properties = survey::wellProperties(well.texts);
        order.files = well.files;
        if (survey::makeWell(store, order).logCount != curveCount)
            qFatal("A well was not made");
    }
    if (!store.flush().ok())
        qFatal("Not flushed");
}

void wellsOfFiles(benchmark::State &state)
{
    const QTemporaryDir folder;
    const QStringList paths = makeFiles(folder.path(), fileCount, fileSize);
    int run = 0;
    const auto place = [&] { return folder.filePath(QString::number(++run)); };
    bench::compare(
        state, [&] { readAndWrite(paths, place()); }, [&] { makeWells(paths, place()); });
}
BENCHMARK(wellsOfFiles)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(3);

void headersOf2000Files(benchmark::State &state)
{
    const QTemporaryDir folder;
    const QStringList paths = makeFiles(folder.path(), 2000, 20000);
    for (auto _ : state) {
        survey::NewWells wells;
        wells.addFiles(paths);
        if (wells.wells().size() != 2000)
            qFatal("not all wells");
    }
}
BENCHMARK(headersOf2000Files)->Unit(benchmark::kMillisecond)->Iterations(3);

} // namespace

int main(int argc, char **argv)
{
    return bench::run<QCoreApplication>(argc, argv);
}
