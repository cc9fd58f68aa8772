#include "survey/logfile.h"

#include "base/largepages.h"
#include "base/numbers.h"
#include "base/textbytes.h"

#include <QtEndian>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>

namespace survey {

namespace {

constexpr char logType[] = "Well Log";
constexpr int sampleSize = 2 * sizeof(float);
constexpr int blockSize = 256 << 10;
constexpr int maximumSamples = std::numeric_limits<int>::max() / sampleSize - (1 << 20);

LogStorage storageOf(const QByteArray &text)
{
    if (text.startsWith('B'))
        return LogStorage::LittleEndian;
    return text.startsWith('S') ? LogStorage::BigEndian : LogStorage::Ascii;
}

QString cutText()
{
    return QStringLiteral("its last sample is cut off");
}

QString emptyText()
{
    return QStringLiteral("it holds no samples");
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

bool isStoredAsItIs(const host::LogData &log)
{
    return std::all_of(log.depths.begin(), log.depths.end(), isDepth)
        && std::all_of(log.values.begin(), log.values.end(), [](float value) { return std::isfinite(value); });
}

// The samples as the store keeps them. Most logs share their arrays with the result.
host::LogData storedSamples(const host::LogData &log)
{
    host::LogData stored;
    if (isStoredAsItIs(log)) {
        stored = log;
    } else {
        for (int i = 0; i < log.depths.size(); ++i) {
            if (!isDepth(log.depths.at(i)))
                continue;
            stored.depths.append(log.depths.at(i));
            stored.values.append(asValue(log.values.at(i)));
        }
    }
    host::sortByDepth(&stored);
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

// Collects binary samples block by block, so that a long log needs no second copy of its bytes.
class BinarySamples
{
public:
    BinarySamples(int count, bool isBigEndian)
        : m_isBigEndian(isBigEndian)
    {
        m_log.depths.reserve(count); // exactly: growing takes room for the next power of two
        m_log.values.reserve(count);
        for (QVector<float> *numbers : {&m_log.depths, &m_log.values})
            base::wishForLargePages(numbers->data(), static_cast<size_t>(count) * sizeof(float));
    }

    void add(const char *bytes, int count)
    {
        // Made block by block: they are still near to the processor when they are filled.
        m_log.depths.resize(m_count + count);
        m_log.values.resize(m_count + count);
        float *depths = m_log.depths.data() + m_count;
        float *values = m_log.values.data() + m_count;
        const bool isClean = m_isBigEndian ? take<qFromBigEndian<quint32>>(bytes, count, depths, values)
                                           : take<qFromLittleEndian<quint32>>(bytes, count, depths, values);
        m_isClean = m_isClean && isClean;
        m_count += count;
    }

    // The samples so far. Like the host, without those that have no depth.
    void finish(host::LogData *log)
    {
        int kept = m_count;
        if (!m_isClean) {
            kept = 0;
            for (int i = 0; i < m_count; ++i) {
                if (!isDepth(m_log.depths.at(i)))
                    continue;
                m_log.depths[kept] = m_log.depths.at(i);
                m_log.values[kept++] = asValue(m_log.values.at(i));
            }
        }
        m_log.depths.resize(kept);
        m_log.values.resize(kept);
        log->depths = m_log.depths;
        log->values = m_log.values;
    }

private:
    static constexpr quint32 magnitudeBits = 0x7fffffff; // all but the sign: they grow with the number

    // False if there is a depth that is none or a value that is not a finite number.
    template<quint32 (*fromFile)(quint32)>
    static bool take(const char *bytes, int count, float *depths, float *values)
    {
        const qint32 noDepth = bitsOf(9e29f);
        const qint32 notFinite = bitsOf(std::numeric_limits<float>::infinity()); // what is no number has more
        int odd = 0;
        // As whole numbers, through arrays of few and without a branch: compilers make vector instructions of that.
        const auto takeFew = [&](int first, auto few) {
            constexpr int size = decltype(few)::value;
            quint32 words[2 * size];
            std::memcpy(words, bytes + static_cast<qint64>(first) * sampleSize, sizeof words);
            quint32 depthBits[size];
            quint32 valueBits[size];
            for (int i = 0; i < size; ++i) {
                depthBits[i] = fromFile(words[2 * i]);
                valueBits[i] = fromFile(words[2 * i + 1]);
            }
            std::memcpy(depths + first, depthBits, sizeof depthBits);
            std::memcpy(values + first, valueBits, sizeof valueBits);
            for (int i = 0; i < size; ++i) {
                odd |= static_cast<qint32>(depthBits[i] & magnitudeBits) >= noDepth ? 1 : 0;
                odd |= static_cast<qint32>(valueBits[i] & magnitudeBits) >= notFinite ? 1 : 0;
            }
        };
        constexpr int few = 8;
        int i = 0;
        for (; i + few <= count; i += few)
            takeFew(i, std::integral_constant<int, few>());
        for (; i < count; ++i)
            takeFew(i, std::integral_constant<int, 1>());
        return odd == 0;
    }

    static qint32 bitsOf(float number)
    {
        qint32 bits;
        std::memcpy(&bits, &number, sizeof bits);
        return bits;
    }

    host::LogData m_log;
    int m_count = 0;
    bool m_isBigEndian;
    bool m_isClean = true;
};

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
        while (begin < end && base::isSpace(*begin))
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

QByteArray withSamples(const QByteArray &header, const host::LogData &log)
{
    const int count = log.values.size();
    QByteArray bytes(header.size() + count * sampleSize, Qt::Uninitialized);
    std::memcpy(bytes.data(), header.constData(), static_cast<size_t>(header.size()));
    char *out = bytes.data() + header.size();
    const float *depths = log.depths.constData();
    const float *values = log.values.constData();
    for (int i = 0; i < count; ++i, out += sampleSize) {
        qToLittleEndian(depths[i], out);
        qToLittleEndian(values[i], out + sizeof(float));
    }
    return bytes;
}

void finishSamples(host::LogData *log, QString *problem)
{
    dropUndefinedEnds(log);
    if (log->values.isEmpty() && problem && problem->isEmpty())
        *problem = emptyText();
}

bool hasDefinedSample(const char *bytes, int count, bool isBigEndian)
{
    for (int i = 0; i < count; ++i, bytes += sampleSize)
        if (isDepth(toFloat(bytes, isBigEndian))
            && !host::isUndefined(asValue(toFloat(bytes + sizeof(float), isBigEndian))))
            return true;
    return false;
}

// The header of a log's file; \a head is what was read for it.
host::Outcome<LogFileHeader> readHeader(InputFile &file, const QString &path, QByteArray *head)
{
    *head = file.read(blockSize);
    bool isCut = false;
    host::Outcome<LogFileHeader> parsed = parseLogHeader(*head, &isCut);
    while (isCut && !parsed.ok() && head->size() < maximumLogHeaderSize) {
        const QByteArray more = file.read(head->size());
        if (more.isEmpty())
            break;
        *head += more;
        parsed = parseLogHeader(*head, &isCut);
    }
    if (file.errorCode() != 0)
        return {{}, readErrorText(path, file.errorCode())};
    if (!parsed.ok())
        return {{}, QStringLiteral("Cannot read the file %1: %2.").arg(path, parsed.error)};
    return parsed;
}

host::Outcome<host::LogData> readSamples(InputFile &file, const QString &path, const LogFileHeader &header,
                                         const QByteArray &head, QString *problem)
{
    const qint64 dataSize = file.size() - header.dataOffset;
    if (header.storage == LogStorage::Ascii || dataSize <= head.size() || dataSize / sampleSize > maximumSamples) {
        const bool isWhole = head.size() == file.size(); // most are small: they are not read twice
        const host::Outcome<QByteArray> bytes = isWhole ? host::Outcome<QByteArray>{head, {}} : readFileBytes(path);
        if (!bytes.ok())
            return {{}, bytes.error};
        return {parseLogSamples(header, bytes.value, problem), {}};
    }
    BinarySamples samples(static_cast<int>(dataSize / sampleSize), header.storage == LogStorage::BigEndian);
    int room = static_cast<int>(dataSize / sampleSize);
    QByteArray block = head.mid(header.dataOffset);
    while (room > 0 && block.size() >= sampleSize) {
        const int count = qMin(room, static_cast<int>(block.size()) / sampleSize);
        samples.add(block.constData(), count);
        room -= count;
        block.remove(0, count * sampleSize);
        block += file.read(blockSize);
    }
    if (file.errorCode() != 0)
        return {{}, readErrorText(path, file.errorCode())};
    host::LogData log;
    log.name = header.name;
    log.unit = header.unit;
    samples.finish(&log);
    if ((dataSize % sampleSize != 0 || room > 0) && problem)
        *problem = cutText();
    finishSamples(&log, problem);
    return {log, {}};
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

QString sampleSizeProblem(const LogFileHeader &header, qint64 fileSize)
{
    const qint64 size = fileSize - header.dataOffset;
    if (size <= 0)
        return emptyText();
    return header.storage != LogStorage::Ascii && size % sampleSize != 0 ? cutText() : QString();
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
        BinarySamples samples(size / sampleSize, header.storage == LogStorage::BigEndian);
        samples.add(begin, size / sampleSize);
        samples.finish(&log);
        if (size % sampleSize != 0 && problem)
            *problem = cutText();
    }
    finishSamples(&log, problem);
    return log;
}

host::Outcome<host::LogData> readLogFile(const QString &path, LogFileHeader *header, QString *problem)
{
    InputFile file(path);
    QByteArray head;
    const host::Outcome<LogFileHeader> parsed = readHeader(file, path, &head);
    if (!parsed.ok())
        return {{}, parsed.error};
    *header = parsed.value;
    return readSamples(file, path, *header, head, problem);
}

host::Outcome<LogFileHeader> checkLogFile(const QString &path, QString *problem)
{
    InputFile file(path);
    QByteArray head;
    const host::Outcome<LogFileHeader> header = readHeader(file, path, &head);
    if (!header.ok())
        return header;
    const qint64 samples = (file.size() - header.value.dataOffset) / sampleSize;
    if (header.value.storage == LogStorage::Ascii || samples > maximumSamples)
        return {header.value, readSamples(file, path, header.value, head, problem).error};
    bool hasDefined = false;
    qint64 seen = 0;
    QByteArray block = head.mid(header.value.dataOffset);
    while (!block.isEmpty()) {
        const int count = block.size() / sampleSize;
        hasDefined =
            hasDefined || hasDefinedSample(block.constData(), count, header.value.storage == LogStorage::BigEndian);
        seen += count;
        const QByteArray more = file.read(blockSize);
        block = more.isEmpty() ? more : block.mid(count * sampleSize) + more;
    }
    if (file.errorCode() != 0)
        return {{}, readErrorText(path, file.errorCode())};
    *problem = sampleSizeProblem(header.value, file.size());
    if (problem->isEmpty() && seen < samples)
        *problem = cutText();
    if (problem->isEmpty() && !hasDefined)
        *problem = emptyText();
    return header;
}

host::Outcome<QByteArray> renamedLogFile(const QByteArray &bytes, const QString &name)
{
    const host::Outcome<LogFileHeader> parsed = parseLogHeader(bytes);
    if (!parsed.ok())
        return {{}, parsed.error};
    LogFileHeader header = parsed.value;
    header.keys.set("Name", name);
    const int samples = header.dataOffset;
    return {odFileHeader(logType) + header.keys.toBytes() + "!\n" + header.parameters + bytes.mid(samples), {}};
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
    if (keys.text("Name") != storedText(log.name)) // a name that is only shown cut stays whole
        keys.set("Name", log.name);
    if (log.unit.isEmpty())
        keys.remove("Unit of Measure");
    else
        keys.set("Unit of Measure", log.unit);
    const QByteArray parameters = old ? old->parameters : QByteArray();
    keys.set("Header info", QByteArray(parameters.isEmpty() ? "No" : "Yes"));
    keys.set("Storage type", QByteArray("Binary"));
    setRanges(stored, &keys);
    return {withSamples(odFileHeader(logType) + keys.toBytes() + "!\n" + parameters, stored), {}};
}

} // namespace survey
