#include "workbench/logfile.h"

#include "base/numbers.h"

#include <QtEndian>

#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>

namespace workbench {

namespace {

constexpr char logType[] = "Well Log";
constexpr int sampleSize = 2 * sizeof(float);

LogStorage storageOf(const QByteArray &text)
{
    if (text.startsWith('B'))
        return LogStorage::LittleEndian;
    return text.startsWith('S') ? LogStorage::BigEndian : LogStorage::Ascii;
}

bool isYes(const QByteArray &text)
{
    return text.startsWith('Y') || text.startsWith('y');
}

// Samples that the store keeps: index of the first and one past the last defined value.
struct DefinedRange
{
    int begin = 0;
    int end = 0;
};

DefinedRange definedRange(const QVector<float> &values)
{
    DefinedRange range {0, values.size()};
    while (range.begin < range.end && host::isUndefined(values.at(range.begin)))
        ++range.begin;
    while (range.end > range.begin && host::isUndefined(values.at(range.end - 1)))
        --range.end;
    return range;
}

void dropUndefinedEnds(host::LogData *log)
{
    const DefinedRange range = definedRange(log->values);
    if (range.begin == 0 && range.end == log->values.size())
        return;
    log->depths = log->depths.mid(range.begin, range.end - range.begin);
    log->values = log->values.mid(range.begin, range.end - range.begin);
}

float toFloat(const char *bytes, bool isBigEndian)
{
    quint32 word;
    std::memcpy(&word, bytes, sizeof word);
    word = isBigEndian ? qFromBigEndian(word) : qFromLittleEndian(word);
    float value;
    std::memcpy(&value, &word, sizeof value);
    return value;
}

bool isDepth(float depth)
{
    return std::isfinite(depth) && !host::isUndefined(depth);
}

void readBinarySamples(const char *bytes, int count, bool isBigEndian, host::LogData *log)
{
    log->depths.resize(count);
    log->values.resize(count);
    float *depths = log->depths.data();
    float *values = log->values.data();
    int kept = 0;
    for (int i = 0; i < count; ++i) {
        const char *sample = bytes + static_cast<qint64>(i) * sampleSize;
        depths[kept] = toFloat(sample, isBigEndian);
        values[kept] = toFloat(sample + sizeof(float), isBigEndian);
        kept += isDepth(depths[kept]) ? 1 : 0; // the host drops samples without a depth too
    }
    log->depths.resize(kept);
    log->values.resize(kept);
}

// Numbers separated by white space; false at the first thing that is none.
bool readTextSamples(const char *begin, const char *end, host::LogData *log)
{
    float pair[2];
    int have = 0;
    while (true) {
        while (begin < end && (*begin == ' ' || (*begin >= '\t' && *begin <= '\r')))
            ++begin;
        if (begin == end)
            return have == 0;
        const std::from_chars_result result = std::from_chars(begin, end, pair[have]);
        if (result.ec == std::errc::result_out_of_range)
            pair[have] = host::undefinedValue;
        else if (result.ec != std::errc())
            return false;
        begin = result.ptr;
        if (++have < 2)
            continue;
        have = 0;
        if (isDepth(pair[0])) {
            log->depths.append(pair[0]);
            log->values.append(pair[1]);
        }
    }
}

QByteArray rangeText(float first, float last)
{
    return base::formatShortest(first) + '`' + base::formatShortest(last);
}

void setRanges(const host::LogData &log, DefinedRange range, KeyValues *keys)
{
    float minimum = std::numeric_limits<float>::max();
    float maximum = std::numeric_limits<float>::lowest();
    float top = minimum;
    float bottom = maximum;
    for (int i = range.begin; i < range.end; ++i) {
        const float value = log.values.at(i);
        top = std::min(top, log.depths.at(i));
        bottom = std::max(bottom, log.depths.at(i));
        if (!host::isUndefined(value)) {
            minimum = std::min(minimum, value);
            maximum = std::max(maximum, value);
        }
    }
    keys->set("Dah range", rangeText(top, bottom));
    keys->set("Log range", rangeText(minimum, maximum));
}

void appendSamples(const host::LogData &log, DefinedRange range, QByteArray *bytes)
{
    const int headerSize = bytes->size();
    const int count = range.end - range.begin;
    QByteArray result(headerSize + count * sampleSize, Qt::Uninitialized);
    std::memcpy(result.data(), bytes->constData(), static_cast<size_t>(headerSize));
    char *out = result.data() + headerSize;
    const float *depths = log.depths.constData() + range.begin;
    const float *values = log.values.constData() + range.begin;
    int kept = 0;
    for (int i = 0; i < count; ++i) {
        if (!isDepth(depths[i]))
            continue;
        qToLittleEndian(depths[i], out);
        qToLittleEndian(values[i], out + sizeof(float));
        out += sampleSize;
        ++kept;
    }
    result.truncate(headerSize + kept * sampleSize);
    *bytes = result;
}

} // namespace

host::Outcome<LogFileHeader> parseLogHeader(const QByteArray &bytes, bool *isCut)
{
    const host::Outcome<OdFile> parsed = parseOdFile(bytes, logType);
    if (isCut)
        *isCut = true;
    if (!parsed.ok())
        return {{}, parsed.error};
    LogFileHeader header;
    header.keys = parsed.value.keys;
    header.name = header.keys.text("Name");
    header.unit = header.keys.text("Unit of Measure");
    header.storage = storageOf(header.keys.value("Storage type"));
    header.dataOffset = parsed.value.bodyOffset;
    bool ends = bytes.mid(0, header.dataOffset).endsWith("!\n") || bytes.mid(0, header.dataOffset).endsWith("!\r\n");
    if (ends && isYes(header.keys.value("Header info"))) {
        const int begin = header.dataOffset;
        const int mark = bytes.mid(begin, 2) == "!\n" ? begin - 1 : bytes.indexOf("\n!\n", begin);
        ends = mark >= 0;
        header.dataOffset = ends ? mark + 3 : bytes.size();
        header.parameters = bytes.mid(begin, header.dataOffset - begin);
    }
    if (isCut)
        *isCut = !ends;
    if (!ends)
        return {header, QStringLiteral("it is cut off within its header")};
    return {header, {}};
}

host::LogData parseLogSamples(const LogFileHeader &header, const QByteArray &bytes, QString *problem)
{
    host::LogData log;
    log.name = header.name;
    log.unit = header.unit;
    const char *begin = bytes.constData() + header.dataOffset;
    const int size = bytes.size() - header.dataOffset;
    if (header.storage == LogStorage::Ascii) {
        if (!readTextSamples(begin, begin + size, &log) && problem)
            *problem = QStringLiteral("its samples end in something that is no pair of numbers");
    } else {
        readBinarySamples(begin, size / sampleSize, header.storage == LogStorage::BigEndian, &log);
        if (size % sampleSize != 0 && problem)
            *problem = QStringLiteral("its last sample is cut off");
    }
    dropUndefinedEnds(&log);
    if (log.values.isEmpty() && problem && problem->isEmpty())
        *problem = QStringLiteral("it holds no samples");
    return log;
}

host::Outcome<QByteArray> logFileBytes(const host::LogData &log, const QByteArray &depthUnit,
                                       const LogFileHeader *old)
{
    if (log.name.isEmpty())
        return {{}, QStringLiteral("the log has no name")};
    if (log.depths.size() != log.values.size())
        return {{}, QStringLiteral("the log has not as many depths as values")};
    const DefinedRange range = definedRange(log.values);
    if (range.begin == range.end)
        return {{}, QStringLiteral("the log has no defined sample")};
    if (static_cast<qint64>(range.end - range.begin) * sampleSize > std::numeric_limits<int>::max() - (1 << 20))
        return {{}, QStringLiteral("the log has too many samples")};

    KeyValues keys = old ? old->keys : KeyValues();
    if (!keys.contains("Depth-Unit"))
        keys.set("Depth-Unit", depthUnit);
    keys.set("Name", log.name);
    if (log.unit.isEmpty())
        keys.remove("Unit of Measure");
    else
        keys.set("Unit of Measure", log.unit);
    const QByteArray parameters = old ? old->parameters : QByteArray();
    keys.set("Header info", QByteArray(parameters.isEmpty() ? "No" : "Yes"));
    keys.set("Storage type", QByteArray("Binary"));
    setRanges(log, range, &keys);
    QByteArray bytes = odFileHeader(logType) + keys.toBytes() + "!\n" + parameters;
    appendSamples(log, range, &bytes);
    return {bytes, {}};
}

} // namespace workbench
