// Reading a whole survey into the wells catalogue, and reading and writing one long log.

#include "benchsupport.h"

#include "datastore/hostwriter.h"
#include "datastore/wellscatalogue.h"
#include "survey/surveystore.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>

#include <cmath>
#include <cstring>
#include <fcntl.h>
#include <memory>
#include <unistd.h>

namespace {

struct Catalogue
{
    explicit Catalogue(const QString &survey)
        : store(survey)
        , catalogue(store, asker, [](const QString &text) { qFatal("%s", qUtf8Printable(text)); })
    {
    }
    bench::YesAsker asker;
    survey::SurveyStore store;
    WellsCatalogue catalogue;
};

// What any reader of the catalogue has to do: open each header file, read its beginning, close it.
qint64 readHeaderBytes(const QString &survey, const bench::SurveySize &size)
{
    char buffer[4096];
    qint64 sum = 0;
    const auto readOne = [&](const QByteArray &path) {
        const int file = ::open(path.constData(), O_RDONLY | O_CLOEXEC);
        const ssize_t got = ::read(file, buffer, sizeof buffer);
        sum += got > 0 ? got : 0;
        ::close(file);
    };
    const QByteArray folder = QFile::encodeName(survey) + "/WellInfo/Well_";
    for (int well = 0; well < size.wells; ++well) {
        const QByteArray base = folder + QByteArray::number(well);
        readOne(base + ".well");
        readOne(base + ".wlm");
        for (int log = 1; log <= size.logs; ++log)
            readOne(base + '^' + QByteArray::number(log) + ".wll");
    }
    return sum;
}

void catalogueBuild(benchmark::State &state)
{
    bench::SurveySize size;
    size.wells = static_cast<int>(state.range(0));
    const QString survey = bench::generatedSurvey(size);
    bench::compare(
        state, [&] { benchmark::DoNotOptimize(readHeaderBytes(survey, size)); },
        [&] {
            Catalogue reader(survey);
            reader.catalogue.build();
            if (reader.catalogue.wellCount() != size.wells || reader.catalogue.logNames(0).size() != size.logs)
                qFatal("The catalogue is not complete");
        });
    const size_t before = bench::heapBytes();
    Catalogue reader(survey);
    reader.catalogue.build();
    state.counters["bytes_per_well"] = static_cast<double>(bench::heapBytes() - before) / size.wells;
}
BENCHMARK(catalogueBuild)->Arg(1000)->Arg(4000)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(5);

constexpr int longLog = 1000000;

LogCurveData longCurve()
{
    LogCurveData curve;
    curve.logName = QStringLiteral("LONG");
    curve.unit = QStringLiteral("gapi");
    for (int i = 0; i < longLog; ++i) {
        curve.depths.append(0.1 * i);
        curve.values.append(75 + 50 * std::sin(0.001 * i));
    }
    return curve;
}

// A survey with one well that holds the long log as its first and only one.
struct LongLogSurvey
{
    LongLogSurvey()
        : reader(bench::generatedSurvey({1, 0, longLog, 10}))
    {
        reader.catalogue.build();
        HostWriter(reader.store, reader.catalogue, reader.asker, [](const QString &) {
        }).writeLog(0, longCurve(), false);
        reader.catalogue.build();
        path = reader.store.surveyDirectory() + QStringLiteral("/WellInfo/Well_0^1.wll");
    }
    Catalogue reader;
    QString path;
};

void readLongLog(benchmark::State &state)
{
    LongLogSurvey survey;
    bench::compare(
        state,
        [&] {
            QFile file(survey.path);
            if (!file.open(QIODevice::ReadOnly))
                qFatal("no log");
            const QByteArray bytes = file.readAll();
            const int offset = bytes.size() - longLog * 8;
            QVector<double> depths(longLog);
            QVector<double> values(longLog);
            const char *sample = bytes.constData() + offset;
            double *depth = depths.data();
            double *value = values.data();
            for (int i = 0; i < longLog; ++i, sample += 8) {
                float pair[2];
                std::memcpy(pair, sample, sizeof pair);
                depth[i] = static_cast<double>(pair[0]);
                value[i] = static_cast<double>(pair[1]);
            }
            benchmark::DoNotOptimize(depth);
            benchmark::DoNotOptimize(value);
        },
        [&] {
            const LogCurveData curve = survey.reader.catalogue.curve(0, 0);
            if (curve.values.size() != longLog)
                qFatal("The log is not complete");
        });
    const size_t before = bench::heapBytes();
    const LogCurveData curve = survey.reader.catalogue.curve(0, 0);
    state.counters["bytes_per_sample"] = static_cast<double>(bench::heapBytes() - before) / longLog;
}
BENCHMARK(readLongLog)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(30);

void writeLongLog(benchmark::State &state)
{
    LongLogSurvey survey;
    const LogCurveData curve = longCurve();
    QFile file(survey.path);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("no log");
    const QByteArray bytes = file.readAll();
    const QByteArray target = QFile::encodeName(survey.reader.store.surveyDirectory()) + "/WellInfo/reference";
    const QByteArray temporary = target + ".new";
    bench::compare(
        state,
        [&] {
            const int out = ::open(temporary.constData(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
            if (::write(out, bytes.constData(), static_cast<size_t>(bytes.size())) != bytes.size()
                || ::fsync(out) != 0)
                qFatal("cannot write");
            ::close(out);
            if (::rename(temporary.constData(), target.constData()) != 0)
                qFatal("cannot rename");
            const int folder =
                ::open(QByteArray(target.left(target.lastIndexOf('/'))).constData(), O_RDONLY | O_CLOEXEC);
            ::fsync(folder);
            ::close(folder);
        },
        [&] {
            HostWriter writer(survey.reader.store, survey.reader.catalogue, survey.reader.asker,
                              [](const QString &) {});
            if (!writer.writeLog(0, curve, false))
                qFatal("The log was not written");
        });
}
BENCHMARK(writeLongLog)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(20);

} // namespace

int main(int argc, char **argv)
{
    return bench::run<QCoreApplication>(argc, argv);
}
