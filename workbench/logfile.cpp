#include "workbench/logfile.h"

#include "base/numbers.h"

#include <QtEndian>

#include <algorithm>
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

bool isDepth(float depth)
{
    return std::isfinite(depth) && !host::isUndefined(depth);
}

float asValue(float value)
{
    return std::isfinite(value) ? value : host::undefinedValue;
}

void dropUndefinedEnds(host::LogData *log)
{
    int begin = 0;
    int end = log->values.size();
    while (begin < end && host::isUndefined(log->values.at(begin)))
        ++begin;
    while (end > begin && host::isUndefined(log->values.at(end - 1)))
        --end;
    if (begin == 0 && end == log->values.size())
        return;
    log->depths = log->depths.mid(begin, end - begin);
    log->values = log->values.mid(begin, end - begin);
}

// The samples as the store keeps them.
host::LogData storedSamples(const host::LogData &log)
{
    host::LogData stored;
    stored.depths.reserve(log.depths.size());
    stored.values.reserve(log.values.size());
    for (int i = 0; i < log.depths.size(); ++i) {
        if (!isDepth(log.depths.at(i)))
            continue;
        stored.depths.append(log.depths.at(i));
        stored.values.append(asValue(log.values.at(i)));
    }
    dropUndefinedEnds(&stored);
    return stored;
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
        values[kept] = asValue(toFloat(sample + sizeof(float), isBigEndian));
        kept += isDepth(depths[kept]) ? 1 : 0; // the host drops samples without a depth too
    }
    log->depths.resize(kept);
    log->values.resize(kept);
}

// False where no number begins; what a float cannot hold is undefined, or zero where it is too small.
bool readTextNumber(const char **begin, const char *end, float *number)
{
    if (end - *begin > 1 && **begin == '+' && (*begin)[1] != '-')
        ++*begin;
    std::from_chars_result result = std::from_chars(*begin, end, *number);
    if (result.ec == std::errc::result_out_of_range) {
        double wide = 0;
        result = std::from_chars(*begin, end, wide);
        *number = result.ec == std::errc() && std::fabs(wide) < 1 ? 0.0f : host::undefinedValue;
    } else if (result.ec != std::errc()) {
        return false;
    }
    *number = asValue(*number);
    *begin = result.ptr;
    return true;
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
        if (!readTextNumber(&begin, end, &pair[have]))
            return false;
        if (++have < 2)
            continue;
        have = 0;
        if (isDepth(pair[0])) {
            log->depths.append(pair[0]);
            log->values.append(pair[1]);
        }
    }
}

void setRanges(const host::LogData &log, KeyValues *keys)
{
    float minimum = std::numeric_limits<float>::max();
    float maximum = std::numeric_limits<float>::lowest();
    for (float value : log.values) {
        if (!host::isUndefined(value)) {
            minimum = std::min(minimum, value);
            maximum = std::max(maximum, value);
        }
    }
    const auto depths = std::minmax_element(log.depths.begin(), log.depths.end());
    keys->set("Dah range", base::formatPlain(*depths.first) + '`' + base::formatPlain(*depths.second));
    keys->set("Log range", base::formatShortest(minimum) + '`' + base::formatShortest(maximum));
}

void appendSamples(const host::LogData &log, QByteArray *bytes)
{
    const int headerSize = bytes->size();
    bytes->resize(headerSize + log.values.size() * sampleSize);
    char *out = bytes->data() + headerSize;
    for (int i = 0; i < log.values.size(); ++i) {
        qToLittleEndian(log.depths.at(i), out);
        qToLittleEndian(log.values.at(i), out + sizeof(float));
        out += sampleSize;
    }
}

} // namespace

host::Outcome<LogFileHeader> parseLogHeader(const QByteArray &bytes, bool *isCut)
{
    const host::Outcome<OdFile> parsed = parseOdFile(bytes, logType);
    if (isCut)
        *isCut = parsed.value.isCut;
    if (!parsed.ok())
        return {{}, parsed.error};
    LogFileHeader header;
    header.keys = parsed.value.keys;
    header.name = header.keys.text("Name");
    header.unit = header.keys.text("Unit of Measure");
    header.storage = storageOf(header.keys.value("Storage type"));
    header.dataOffset = parsed.value.bodyOffset;
    bool ends = !parsed.value.isCut;
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
    const int size = qMax(0, static_cast<int>(bytes.size()) - header.dataOffset);
    const char *begin = bytes.constData() + bytes.size() - size;
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
    if (storedText(log.name).isEmpty())
        return {{}, QStringLiteral("the log has no name")};
    if (log.depths.size() != log.values.size())
        return {{}, QStringLiteral("the log has not as many depths as values")};
    const host::LogData stored = storedSamples(log);
    if (stored.values.isEmpty())
        return {{}, QStringLiteral("the log has no defined sample")};
    if (static_cast<qint64>(stored.values.size()) * sampleSize > std::numeric_limits<int>::max() - (1 << 25))
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
    setRanges(stored, &keys);
    QByteArray bytes = odFileHeader(logType) + keys.toBytes() + "!\n" + parameters;
    appendSamples(stored, &bytes);
    return {bytes, {}};
}

} // namespace workbench
