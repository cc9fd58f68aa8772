#include "las/laswriter.h"

#include "base/numbers.h"
#include "base/safename.h"

#include <charconv>
#include <cmath>
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

struct Column
{
    const double *values;
    double count;
    double firstDepth;
};

std::vector<Column> columnsOf(const ExportFile &file)
{
    std::vector<Column> columns;
    for (const LogCurveData &log : file.logs) {
        const int count = std::min(log.depths.size(), log.values.size());
        columns.push_back({log.values.constData(), static_cast<double>(count), count > 0 ? log.depths.first() : 0});
    }
    return columns;
}

// Truncation toward zero gives index 0 already one interval above the log's first depth. That is required, and so is
// counting samples of a log that was not resampled by the interval.
void writeValue(DataWriter &writer, const Column &column, double depth, double interval)
{
    const double index = std::trunc((depth - column.firstDepth) / interval);
    if (index >= 0 && index < column.count) {
        const double value = column.values[static_cast<int>(index)];
        if (std::isfinite(value)) {
            writer.fixed(value, valueDecimals);
            return;
        }
    }
    writer.null();
}

} // namespace

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
    for (const LogCurveData &log : file.logs)
        header.line(log.logName + QLatin1Char('.') + log.unit, QString(),
                    QStringLiteral(":%1 %2").arg(++number).arg(log.curveGroup));
    header.line("~Parameter Information Section");
    header.columns("VALUE", "DESCRIPTION");
    header.line("~Other Information Section");
    header.line("Log(s) exported from LORVA plugin of Opendtect.");
    QByteArray bytes = header.bytes() + "~A DEPT ";
    for (const LogCurveData &log : file.logs)
        bytes += oneLine(log.logName).leftJustified(curveNameWidth).toUtf8() + ' ';
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
    const std::vector<Column> columns = columnsOf(file);
    for (double depth = file.range.start; result.ok() && depth <= file.range.stop; depth += file.interval) {
        writer.fixed(depth, depthDecimals);
        for (const Column &column : columns)
            writeValue(writer, column, depth, file.interval);
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
