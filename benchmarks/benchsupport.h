#pragma once

#include "base/asker.h"
#include "host/hostrecords.h"

#include <benchmark/benchmark.h>

#include <QByteArray>
#include <QString>

#include <functional>

/// Shared parts of the benchmarks. Figures are ratios of a subject to a reference, both measured in the same run,
/// one right after the other.
namespace bench {

/// What a benchmark program does, under an application of this class.
template<class Application>
int run(int argc, char **argv)
{
    const Application application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}

/// Runs reference and subject in turn for each iteration. Reports the subject's time, and as counters the median
/// time of both in milliseconds and the median of their ratios.
void compare(benchmark::State &state, const std::function<void()> &reference, const std::function<void()> &subject);
/// The same in processor time, the system's included, for how work grows: the longer of two works is held up by other
/// programs more often, and a disk in between has times of its own.
void compareWork(benchmark::State &state, const std::function<void()> &reference,
                 const std::function<void()> &subject);

/// A survey of generated wells; log files have full size, their samples are holes of zeros.
struct SurveySize
{
    int wells = 0;
    int logs = 20;
    int samples = 5000;
    int markers = 10;
};
/// Makes the survey once per process and size and gives its folder, which is deleted at the end of the process.
QString generatedSurvey(const SurveySize &size);

/// Plain writing for test data, without the product's guarantees.
void writePlain(const QString &path, const QByteArray &bytes, qint64 fileSize = -1);

/// A log in gapi whose values wander between 1 and 149, at even depths from 0 to before \a depthRange. The same \a seed
/// gives the same log.
host::LogData makeLog(const QString &name, int seed, int samples, float depthRange);

/// Answers each box with its first button and shows nothing.
class SilentAsker : public base::Asker
{
public:
    base::BoxButton show(const base::Box &box) override { return box.buttons.first(); }
};

/// Answers "Yes" where that can be answered, and shows nothing.
class YesAsker : public base::Asker
{
public:
    base::BoxButton show(const base::Box &box) override
    {
        return box.buttons.contains(base::BoxButton::Yes) ? base::BoxButton::Yes : box.buttons.first();
    }
};

/// Bytes on the heap now.
size_t heapBytes();

} // namespace bench
