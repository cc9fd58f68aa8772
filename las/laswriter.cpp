#include "las/laswriter.h"

#include "base/numbers.h"
#include "base/safename.h"
#include "las/cubicspline.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <optional>
#include <variant>
#include <vector>

namespace las {

namespace {

constexpr int fieldAWidth = 17;
constexpr int fieldBWidth = 32;
constexpr int curveNameWidth = 10;
constexpr int depthDecimals = 4;
constexpr int valueDecimals = 2;
// A double with a few decimals takes up to 309 digits before the point.
constexpr size_t longestNumber = 330;
constexpr size_t bufferSize = 256 * 1024;
// Far above the rounding noise of depths that were summed up, and at most a part of an interval that nobody would call
// another sample.
constexpr double smallestNudge = 1e-6;
constexpr double largestNudge = 0.1;
constexpr char nullText[] = "-999.25 ";

// A line break inside a name would end the line and begin another section.
QString oneLine(QString text)
{
    for (QChar &c : text)
        if (c.category() == QChar::Other_Control || c.category() == QChar::Separator_Line
            || c.category() == QChar::Separator_Paragraph)
            c = QLatin1Char(' ');
    return text;
}

class HeaderWriter
{
public:
    void line(const char *text) { m_bytes.append(text).append('\n'); }

    void line(const QString &a, const QString &b, const QString &c)
    {
        m_bytes += oneLine(a).leftJustified(fieldAWidth).toUtf8();
        m_bytes += oneLine(b).leftJustified(fieldBWidth).toUtf8();
        m_bytes += oneLine(c).toUtf8() + '\n';
    }
    void line(const char *a, const QString &b, const char *c)
    {
        line(QString::fromLatin1(a), b, QString::fromLatin1(c));
    }
    void line(const char *a, const QByteArray &b, const char *c) { line(a, QString::fromLatin1(b), c); }
    void line(const char *a, const char *b, const char *c) { line(a, QString::fromLatin1(b), c); }

    void columns(const char *second, const char *third)
    {
        line("#MNEM.UNIT", second, third);
        line("#--------", "--------------", "---------------------");
    }

    QByteArray bytes() const { return m_bytes; }

private:
    QByteArray m_bytes;
};

/// Data lines, collected in a buffer of fixed size.
class DataWriter
{
public:
    explicit DataWriter(base::AtomicFileWriter &file)
        : m_file(file)
        , m_buffer(bufferSize)
        , m_at(m_buffer.data())
        , m_end(m_buffer.data() + bufferSize)
    {
    }

    void fixed(double value, int decimals)
    {
        makeRoom();
        m_at = std::to_chars(m_at, m_end, value, std::chars_format::fixed, decimals).ptr;
        *m_at++ = ' ';
    }
    void null()
    {
        makeRoom();
        for (const char *c = nullText; *c; ++c)
            *m_at++ = *c;
    }
    void endLine() { *m_at++ = '\n'; }

    /// At the end of a line: whether a buffer's worth was made since the last flush() from outside.
    bool wantsFlush() const { return m_isOverflown || static_cast<size_t>(m_end - m_at) < 2 * longestNumber; }
    base::WriteResult flush()
    {
        m_isOverflown = false;
        if (m_result.ok())
            m_result = m_file.write(m_buffer.data(), m_at - m_buffer.data());
        m_at = m_buffer.data();
        return m_result;
    }

private:
    void makeRoom()
    {
        if (static_cast<size_t>(m_end - m_at) >= longestNumber)
            return;
        static_cast<void>(flush()); // what it came to is kept and told by the next flush
        m_isOverflown = true;
    }

    base::AtomicFileWriter &m_file;
    std::vector<char> m_buffer;
    char *m_at;
    char *m_end;
    base::WriteResult m_result;
    bool m_isOverflown = false; ///< a line was longer than what was left
};

/// The samples of a log that is not resampled.
class StoredSamples
{
public:
    explicit StoredSamples(const LogCurveData &log)
        : m_values(log.values.constData())
        , m_count(std::min(log.depths.size(), log.values.size()))
    {
    }
    std::optional<double> at(double index) const
    {
        return index < m_count ? std::make_optional(m_values[static_cast<int>(index)]) : std::nullopt;
    }

private:
    const double *m_values;
    double m_count;
};

/// The samples of a resampled log, made one after the other when they are asked for in rising order.
class SplineSamples
{
public:
    SplineSamples(const LogCurveData &log, double interval)
        : m_spline(log.depths, log.values, std::min(log.depths.size(), log.values.size()))
        , m_interval(interval)
        , m_depth(log.depths.first())
        , m_last(log.depths.last())
        , m_value(m_spline.valueAt(m_depth, &m_knot))
    {
    }
    std::optional<double> at(double index)
    {
        if (m_index < index) {
            for (; m_index < index && m_depth <= m_last; ++m_index)
                m_depth += m_interval;
            if (m_depth <= m_last)
                m_value = m_spline.valueAt(m_depth, &m_knot);
        }
        return m_depth <= m_last ? std::make_optional(m_value) : std::nullopt;
    }

private:
    CubicSpline m_spline;
    int m_knot = 0;
    double m_interval;
    double m_index = 0;
    double m_depth; ///< of the sample at the index
    double m_last;
    double m_value;
};

class Column
{
public:
    Column(const ExportLog &log, double interval)
        : m_samples(log.isResampled ? Samples(SplineSamples(log.data, interval)) : Samples(StoredSamples(log.data)))
        , m_firstDepth(log.data.depths.isEmpty() ? 0 : log.data.depths.first())
        , m_interval(interval)
    {
    }

    // Truncation toward zero gives index 0 already one interval above the log's first depth. That is required, and so
    // is counting samples of a log that was not resampled by the interval. Without the nudge noise would decide where a
    // depth stands on a sample, and the sample before it would be written.
    void write(DataWriter &writer, double depth)
    {
        const double quotient = (depth - m_firstDepth) / m_interval;
        const double index = std::trunc(quotient + std::copysign(nudge(depth), quotient));
        const std::optional<double> value =
            index >= 0 ? std::visit([index](auto &samples) { return samples.at(index); }, m_samples) : std::nullopt;
        if (value && std::isfinite(*value))
            writer.fixed(*value, valueDecimals);
        else
            writer.null();
    }

private:
    // The grid's first depth and the log's come from hosts that hold depths in single precision.
    double nudge(double depth) const
    {
        const double noise = std::fabs(depth) * static_cast<double>(std::numeric_limits<float>::epsilon());
        return std::clamp(noise / m_interval, smallestNudge, largestNudge);
    }

    using Samples = std::variant<StoredSamples, SplineSamples>;

    Samples m_samples;
    double m_firstDepth;
    double m_interval;
};

std::vector<Column> columnsOf(const ExportFile &file)
{
    std::vector<Column> columns;
    columns.reserve(static_cast<size_t>(file.logs.size()));
    for (const ExportLog &log : file.logs)
        columns.emplace_back(log, file.interval);
    return columns;
}

} // namespace

ExportFile exportFile(const WellRecord &well, const QString &wellName, double interval)
{
    ExportFile file;
    file.well = well;
    file.well.wellName = wellName;
    file.interval = interval;
    file.range = ExportRange(well.totalDepth);
    return file;
}

bool addLog(ExportFile *file, const LogCurveData &log, bool isResampling)
{
    bool isUnsuited = false;
    file->range.add(log);
    file->logs.append(isResampling ? exportLog(log, file->interval, &isUnsuited) : ExportLog{log, false});
    return !isUnsuited;
}

QByteArray lasHeader(const ExportFile &file)
{
    const WellRecord &well = file.well;
    HeaderWriter header;
    header.line("~Version Information Section");
    header.line("VERS.", "2.0", ":CWLS log ASCII Standard - VERSION 2.0");
    header.line("WRAP.", "NO", ":One line per depth step");
    header.line("~Well Information Section");
    header.columns("VALUE / NAME", "DESCRIPTION");
    header.line("STRT.M", base::formatGeneral(file.range.start), ":START DEPTH");
    header.line("STOP.M", base::formatGeneral(file.range.stop), ":STOP DEPTH");
    header.line("STEP.M", base::formatGeneral(file.interval), ":STEP");
    header.line("NULL.", base::formatGeneral(nullSampleValue), ":NULL VALUE");
    header.line("COMP.", "", ":COMPANY");
    header.line("WELL.", well.wellName, ":WELL");
    header.line("FLD.", "", ":FIELD");
    header.line("LOC.", base::formatFixed(well.x, 2) + " , " + base::formatFixed(well.y, 2), ":LOCATION");
    const auto elevation = static_cast<double>(static_cast<float>(well.kbElevation));
    header.line("LMF.", base::formatGeneral(elevation), ":LOG MEASURED FROM (KB)");
    header.line("PROV.", "", ":PROVINCE");
    header.line("SRVC.", "", ":SERVICE COMPANY");
    header.line("LIC.", "", ":ERCB LICENCE NUMBER");
    header.line("DATE.", "", ":LOG DATE");
    header.line("UWI.", well.wellName, ":UNIQUE WELL ID");
    header.line("~Curve Information Section");
    header.columns("API CODE", "Curve Description");
    header.line("DEPT.M", "", ":1 DEPTH");
    int number = 1;
    for (const ExportLog &log : file.logs)
        header.line(log.data.logName + QLatin1Char('.') + log.data.unit, QString(),
                    QStringLiteral(":%1 %2").arg(QString::number(++number), log.data.curveGroup));
    header.line("~Parameter Information Section");
    header.columns("VALUE", "DESCRIPTION");
    header.line("~Other Information Section");
    header.line("Log(s) exported from LORVA plugin of Opendtect.");
    QByteArray bytes = header.bytes() + "~A DEPT ";
    for (const ExportLog &log : file.logs)
        bytes += oneLine(log.data.logName).leftJustified(curveNameWidth).toUtf8() + ' ';
    return bytes + '\n';
}

base::WriteResult writeLas(const QString &path, const ExportFile &file, const std::function<bool()> &goOn,
                           bool *isCreated)
{
    base::AtomicFileWriter output;
    base::WriteResult result = output.open(path);
    *isCreated = result.ok();
    if (!result.ok())
        return result;
    const QByteArray header = lasHeader(file);
    result = output.write(header.constData(), header.size());
    DataWriter writer(output);
    std::vector<Column> columns = columnsOf(file);
    for (double depth = file.range.start; result.ok() && depth <= file.range.stop; depth += file.interval) {
        writer.fixed(depth, depthDecimals);
        for (Column &column : columns)
            column.write(writer, depth);
        writer.endLine();
        if (!writer.wantsFlush())
            continue;
        result = writer.flush();
        if (!goOn())
            return result;
    }
    if (result.ok())
        result = writer.flush();
    if (result.ok())
        result = output.commit();
    return result;
}

QString lasFileName(const QString &wellName)
{
    const QString suffix = QStringLiteral(".las");
    return base::fileNameFor(wellName, suffix.size()) + suffix;
}

} // namespace las
