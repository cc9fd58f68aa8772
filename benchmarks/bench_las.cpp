// LAS files: reading, memory, resampling.
// --reader=COMMAND also times another reader: the command is run with a file's path as its last argument.

#include "benchsupport.h"
#include "lasfiles.h"

#include "las/lasheader.h"
#include "las/resampling.h"
#include "las/wellinfo.h"

#include <QCoreApplication>
#include <QFile>
#include <QProcess>

#include <charconv>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace {

QString otherReader;

QByteArray readPlain(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// What any reader has to do: read the bytes, convert every token.
double convertTokens(const QString &path)
{
    const QByteArray bytes = readPlain(path);
    const int begin = bytes.indexOf("~A\n") + 3;
    std::vector<double> values;
    values.reserve(static_cast<size_t>(bytes.size() / 8));
    const char *at = bytes.constData() + begin;
    const char *end = bytes.constData() + bytes.size();
    while (at < end) {
        while (at < end && (*at == ' ' || *at == '\n'))
            ++at;
        double value = 0;
        at = std::from_chars(at, end, value).ptr;
        values.push_back(value);
    }
    return values.back();
}

void parse(benchmark::State &state)
{
    const QString path = bench::makeLasFile(bench::hundredMegabytes);
    bench::compare(
        state, [&] { benchmark::DoNotOptimize(convertTokens(path)); },
        [&] {
            WellInfo info;
            benchmark::DoNotOptimize(info.load(path));
        });
    state.counters["MB_per_s"] =
        1e-6 * static_cast<double>(QFile(path).size()) / (1e-3 * state.counters["subject_ms"]);
    state.SetLabel("reference: read and std::from_chars of every token, subject: WellInfo::load; at most 1.2");
}
BENCHMARK(parse)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(7);

void otherReaderBenchmark(benchmark::State &state)
{
    const QString path = bench::makeLasFile(10 * 1000 * 1000);
    bench::compare(
        state,
        [&] {
            WellInfo info;
            benchmark::DoNotOptimize(info.load(path));
        },
        [&] {
            QStringList words = QProcess::splitCommand(otherReader) + QStringList{path};
            const QString program = words.takeFirst();
            if (QProcess::execute(program, words) != 0)
                qFatal("the other reader failed");
        });
    state.SetLabel("reference: WellInfo::load, subject: the other reader, with its start");
}
long peakKilobytes(const std::function<void()> &work)
{
    const pid_t child = ::fork();
    if (child == 0) {
        work();
        ::_exit(0);
    }
    int status = 0;
    rusage usage{};
    if (child < 0 || ::wait4(child, &status, 0, &usage) != child || status != 0)
        qFatal("the measured child failed");
    return usage.ru_maxrss;
}

// A process of its own for each: the peak is the process's.
void peakMemory(benchmark::State &state)
{
    const QString path = bench::makeLasFile(bench::hundredMegabytes);
    for (auto _ : state) {
        const long before = peakKilobytes([] {});
        const long after = peakKilobytes([&] {
            WellInfo info;
            if (info.load(path) != 0)
                ::_exit(1);
        });
        state.counters["times_file"] =
            1024.0 * static_cast<double>(after - before) / static_cast<double>(QFile(path).size());
    }
    state.SetLabel("peak resident memory of WellInfo::load in files; at most 3");
}
BENCHMARK(peakMemory)->Unit(benchmark::kMillisecond)->Iterations(1);

qint64 bytesReadSoFar()
{
    for (const QByteArray &line : readPlain(QStringLiteral("/proc/self/io")).split('\n'))
        if (line.startsWith("rchar: "))
            return line.mid(7).toLongLong();
    return 0;
}

void headerOfOneGigabyte(benchmark::State &state)
{
    const QString path = bench::lasFolder() + QStringLiteral("/huge.las");
    bench::writePlain(path, bench::lasHeader(1), 1LL << 30); // data of zeros, as a hole
    for (auto _ : state) {
        const qint64 before = bytesReadSoFar();
        benchmark::DoNotOptimize(las::readHeader(path).header.items.size());
        state.counters["kB_read"] = 1e-3 * static_cast<double>(bytesReadSoFar() - before);
    }
    state.counters["kB_header"] = 1e-3 * bench::lasHeader(1).size();
    QFile::remove(path);
}
BENCHMARK(headerOfOneGigabyte)->Unit(benchmark::kMillisecond)->Iterations(3);

void resampleCurve(benchmark::State &state)
{
    const auto ramp = [](int count) {
        QVector<double> list(count);
        for (int i = 0; i < count; ++i)
            list[i] = i * bench::lasStepM;
        return list;
    };
    const QVector<double> few = ramp(250000);
    const QVector<double> many = ramp(1000000);
    bench::compare(
        state, [&] { benchmark::DoNotOptimize(las::resample(few, few, 0.1).values.last()); },
        [&] { benchmark::DoNotOptimize(las::resample(many, many, 0.1).values.last()); });
    state.SetLabel("reference: 250,000 samples, subject: 1,000,000; linear is 4");
}
BENCHMARK(resampleCurve)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(9);

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    for (int i = 1; i < argc; ++i)
        if (QByteArray(argv[i]).startsWith("--reader="))
            otherReader = QString::fromLocal8Bit(argv[i] + 9);
    if (!otherReader.isEmpty())
        benchmark::RegisterBenchmark("otherReader", otherReaderBenchmark)
            ->UseManualTime()
            ->Unit(benchmark::kMillisecond)
            ->Iterations(3);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
