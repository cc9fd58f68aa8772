#include "benchsupport.h"

#include "survey/objectlist.h"
#include "survey/surveyfolder.h"
#include "survey/wellfile.h"

#include <QDir>
#include <QFile>
#include <QMap>
#include <QTemporaryDir>

#include <algorithm>
#include <chrono>
#include <malloc.h>
#include <memory>
#include <random>
#include <sys/resource.h>
#include <vector>

namespace bench {

namespace {

double wallSeconds()
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

double processorSeconds()
{
    rusage usage{};
    ::getrusage(RUSAGE_SELF, &usage);
    const auto seconds = [](const timeval &time) {
        return static_cast<double>(time.tv_sec) + 1e-6 * static_cast<double>(time.tv_usec);
    };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values.empty() ? 0 : values[values.size() / 2];
}

void compareBy(double (*clock)(), benchmark::State &state, const std::function<void()> &reference,
               const std::function<void()> &subject)
{
    const auto secondsOf = [clock](const std::function<void()> &work) {
        const double begin = clock();
        work();
        return clock() - begin;
    };
    std::vector<double> references;
    std::vector<double> subjects;
    std::vector<double> ratios;
    reference(); // both warm before anything counts
    subject();
    for (auto _ : state) {
        references.push_back(secondsOf(reference));
        subjects.push_back(secondsOf(subject));
        ratios.push_back(subjects.back() / references.back());
        state.SetIterationTime(subjects.back());
    }
    state.counters["reference_ms"] = 1e3 * median(references);
    state.counters["subject_ms"] = 1e3 * median(subjects);
    state.counters["ratio"] = median(ratios);
}

QByteArray logHeader(int log, const SurveySize &size)
{
    return "dTect V6.6\nWell Log\nFri 20 Nov 2026, 17:09:32\n!\nDepth-Unit: Meter\nName: LOG"
        + QByteArray::number(log)
        + "\nMnemonic: GR\nUnit of Measure: gAPI\nHeader info: No\nStorage type: Binary\nDah range: 0`"
        + QByteArray::number(size.samples) + "\nLog range: 0`0\n!\n";
}

QByteArray markerFile(const SurveySize &size)
{
    QByteArray bytes = "dTect V6.6\nWell Markers\nFri 20 Nov 2026, 17:09:32\n!\nDepth-Unit: Meter\n";
    for (int i = 1; i <= size.markers; ++i) {
        const QByteArray n = QByteArray::number(i);
        bytes += n + ".Name: Top " + n + '\n' + n + ".Depth along hole: " + QByteArray::number(100 * i) + '\n' + n
            + ".Strat Level: -1\n" + n + ".Color: 255`0`" + n + '\n';
    }
    return bytes;
}

void makeSurvey(const QString &folder, const SurveySize &size)
{
    if (!survey::createSurvey(folder, {}).ok())
        qFatal("Cannot make a survey in %s", qUtf8Printable(folder));
    const QString wells = folder + QStringLiteral("/WellInfo");
    survey::ObjectList list = survey::ObjectList::forFolder("100050", "WellInfo", "Well Info directory", "WellInfo");
    const QByteArray markers = markerFile(size);
    for (int well = 0; well < size.wells; ++well) {
        const QString stem = QStringLiteral("Well_%1").arg(well);
        list.append(QStringLiteral("Well %1").arg(well), "Well", stem + QStringLiteral(".well"));
        const QString base = wells + QLatin1Char('/') + stem;
        survey::WellProperties properties;
        properties.name = stem;
        properties.x = 500000 + well;
        properties.y = 6000000;
        properties.kbElevation = 25;
        properties.totalDepth = size.samples;
        writePlain(base + QStringLiteral(".well"), survey::wellFileBytes(survey::makeWellFile(properties)));
        writePlain(base + QStringLiteral(".wlm"), markers);
        for (int log = 1; log <= size.logs; ++log) {
            const QByteArray header = logHeader(log, size);
            writePlain(base + QStringLiteral("^%1.wll").arg(log), header, header.size() + 8LL * size.samples);
        }
    }
    writePlain(wells + QStringLiteral("/.omf"), list.toBytes());
}

} // namespace

void compare(benchmark::State &state, const std::function<void()> &reference, const std::function<void()> &subject)
{
    compareBy(wallSeconds, state, reference, subject);
}

void compareWork(benchmark::State &state, const std::function<void()> &reference,
                 const std::function<void()> &subject)
{
    compareBy(processorSeconds, state, reference, subject);
}

QString generatedSurvey(const SurveySize &size)
{
    static QTemporaryDir root;
    static QMap<QString, bool> made;
    const QString folder = root.filePath(
        QStringLiteral("s%1_%2_%3_%4").arg(size.wells).arg(size.logs).arg(size.samples).arg(size.markers));
    if (!made.contains(folder)) {
        makeSurvey(folder, size);
        made.insert(folder, true);
    }
    return folder;
}

void writePlain(const QString &path, const QByteArray &bytes, qint64 fileSize)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()
        || (fileSize > bytes.size() && !file.resize(fileSize)))
        qFatal("Cannot write %s", qUtf8Printable(path));
}

host::LogData makeLog(const QString &name, int seed, int samples, float depthRange)
{
    std::mt19937 random(static_cast<unsigned>(seed));
    std::normal_distribution<float> normal;
    host::LogData data;
    data.name = name;
    data.unit = QStringLiteral("gapi");
    float value = 75;
    for (int i = 0; i < samples; ++i) {
        data.depths.append(depthRange * static_cast<float>(i) / static_cast<float>(samples));
        value = std::min(std::max(value + normal(random), 1.0F), 149.0F);
        data.values.append(value);
    }
    return data;
}

size_t heapBytes()
{
    const struct mallinfo2 info = ::mallinfo2();
    return info.uordblks + info.hblkhd;
}

} // namespace bench
