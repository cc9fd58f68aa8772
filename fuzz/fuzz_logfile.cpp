#include "fuzz/memoryfile.h"
#include "survey/logfile.h"
#include "survey/odfile.h"

#include <algorithm>
#include <cmath>

using namespace survey;

namespace {

void checkSamples(const host::LogData &log)
{
    check(log.depths.size() == log.values.size(), "depths and values are parallel");
    for (const float depth : log.depths)
        check(std::isfinite(depth) && !host::isUndefined(depth), "a sample has a depth");
    for (const float value : log.values)
        check(std::isfinite(value), "a value is a number or undefined");
}

int definedCount(const host::LogData &log)
{
    return static_cast<int>(
        std::count_if(log.values.begin(), log.values.end(), [](float value) { return !host::isUndefined(value); }));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray bytes = bytesOf(data, size);
    LogFileHeader header;
    QString problem;
    const host::Outcome<host::LogData> fromDisk = readLogFile(plainFileHolding(data, size), &header, &problem);
    const host::Outcome<LogFileHeader> parsed = parseLogHeader(bytes);
    check(parsed.ok() == fromDisk.ok(), "the file and its bytes are read alike");
    if (!parsed.ok())
        return 0;
    check(parsed.value.dataOffset >= 0 && parsed.value.dataOffset <= bytes.size(), "samples begin in the file");
    static_cast<void>(sampleSizeProblem(parsed.value, bytes.size()));
    QString otherProblem;
    const host::LogData log = parseLogSamples(parsed.value, bytes, &otherProblem);
    checkSamples(log);
    check(fromDisk.value.depths == log.depths && fromDisk.value.values == log.values && problem == otherProblem,
          "the file has the samples of its bytes");

    const host::Outcome<QByteArray> renamed = renamedLogFile(bytes, QStringLiteral("New"));
    if (renamed.ok()) {
        const host::Outcome<LogFileHeader> newHeader = parseLogHeader(renamed.value);
        check(newHeader.ok() && newHeader.value.name == QLatin1String("New"), "a new name reads back");
        check(renamed.value.mid(newHeader.value.dataOffset) == bytes.mid(parsed.value.dataOffset),
              "a new name leaves the samples");
    }
    const host::Outcome<QByteArray> written = logFileBytes(log, "Meter", &parsed.value);
    if (!written.ok())
        return 0;
    const host::Outcome<LogFileHeader> newHeader = parseLogHeader(written.value);
    check(newHeader.ok() && newHeader.value.name == storedText(log.name), "a written log has its name");
    const host::LogData again = parseLogSamples(newHeader.value, written.value);
    const host::Outcome<QByteArray> settled = logFileBytes(again, "Meter", &newHeader.value);
    // In the order of depths other undefined samples may lie at the ends, which are left out.
    check(settled.ok() && definedCount(again) == definedCount(log), "a written log has all samples");
    check(settled.value.mid(parseLogHeader(settled.value).value.dataOffset)
              == written.value.mid(newHeader.value.dataOffset),
          "a written log stays the same");
    return 0;
}
