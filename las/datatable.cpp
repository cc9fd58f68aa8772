#include "las/datatable.h"

#include "base/numbers.h"
#include "datastore/storedsample.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>

namespace las {

namespace {

char separatorOf(Delimiter delimiter)
{
    return delimiter == Delimiter::Comma ? ',' : delimiter == Delimiter::Semicolon ? ';' : '\t';
}

/// What programs write where there is no number.
bool standsForNothing(const QByteArray &text)
{
    static const QVector<QByteArray> words{"",     "nan",  "-nan", "+nan", "inf", "-inf", "+inf",
                                           "null", "none", "n/a",  "na",   "-",   "--"};
    const QByteArray word = text.toLower();
    return words.contains(word) || word.contains("#qnan") || word.contains("#ind") || word.contains("#inf");
}

/// "7.330-19508.961" as two numbers: columns of a fixed width that run together at a sign.
QVector<double> numbersRunTogether(const QByteArray &text)
{
    QVector<double> numbers;
    int begin = 0;
    for (int i = 1; i <= text.size(); ++i) {
        const bool isJoint = i < text.size() && (text.at(i) == '-' || text.at(i) == '+')
            && (std::isdigit(static_cast<unsigned char>(text.at(i - 1))) || text.at(i - 1) == '.');
        if (i < text.size() && !isJoint)
            continue;
        const std::optional<double> number = base::parseNumber(text.mid(begin, i - begin));
        if (!number)
            return {};
        numbers.append(*number);
        begin = i;
    }
    return numbers;
}

/// The null value of the plug-in, which is none of its host, and of most files, whatever they declare.
constexpr double usualNull = -999.25;

bool isDefined(double number)
{
    return !host::isUndefined(storedSample(number));
}

const char *endOfQuoted(const char *begin, const char *end)
{
    const char *close = std::find(begin + 1, end, '"');
    return close == end ? end : close + 1;
}

} // namespace

QStringList valuesOfLine(const QString &line, Delimiter delimiter)
{
    QStringList values;
    QString value;
    bool isQuoted = false;
    const auto append = [&] {
        const QString trimmed = value.trimmed();
        if (delimiter != Delimiter::Blank || !trimmed.isEmpty())
            values.append(trimmed);
        value.clear();
    };
    for (const QChar c : line) {
        const bool separates = delimiter == Delimiter::Blank ? c.isSpace() : c == QLatin1Char(separatorOf(delimiter));
        if (c == u'"')
            isQuoted = !isQuoted;
        else if (separates && !isQuoted)
            append();
        else
            value += c;
    }
    append();
    return values;
}

DataTable::DataTable(const DataFormat &format, Encoding encoding)
    : m_format(format)
    , m_encoding(encoding)
    , m_columns(format.columns)
{
}

DataTable::Value DataTable::valueOf(const char *begin, const char *end) const
{
    QByteArray text = QByteArray(begin, static_cast<int>(end - begin)).trimmed();
    if (text.size() > 1 && text.startsWith('"') && text.endsWith('"'))
        text = text.mid(1, text.size() - 2).trimmed();
    std::optional<double> number = base::parseNumber(text);
    if (!number && m_format.isDecimalComma && text.count(',') == 1)
        number = base::parseNumber(QByteArray(text).replace(',', '.'));
    if (!number)
        return {0, standsForNothing(text) ? Kind::Undefined : Kind::Text};
    return {*number, Kind::Number};
}

void DataTable::appendText(const char *begin, const char *end)
{
    const Value value = valueOf(begin, end);
    m_line.push_back(value);
    if (value.kind == Kind::Text)
        m_texts.append(QByteArray(begin, static_cast<int>(end - begin)));
}

void DataTable::readBlankSeparated(const char *begin, const char *end)
{
    for (const char *at = begin; at < end;) {
        if (base::isSpace(*at)) {
            ++at;
            continue;
        }
        double number = 0;
        const std::from_chars_result result = std::from_chars(at, end, number);
        if (result.ec == std::errc() && (result.ptr == end || base::isSpace(*result.ptr)) && std::isfinite(number)) {
            m_line.push_back({number, Kind::Number});
            at = result.ptr;
            continue;
        }
        const char *stop = *at == '"' ? endOfQuoted(at, end) : at;
        while (stop < end && !base::isSpace(*stop))
            ++stop;
        appendText(at, stop);
        at = stop;
    }
}

void DataTable::readDelimited(const char *begin, const char *end)
{
    const char separator = separatorOf(m_format.delimiter);
    for (const char *at = begin;;) {
        while (at < end && base::isSpace(*at) && *at != separator)
            ++at;
        const char *stop = at < end && *at == '"' ? endOfQuoted(at, end) : at;
        stop = std::find(stop, end, separator);
        double number = 0;
        const std::from_chars_result result = std::from_chars(at, stop, number);
        if (result.ec == std::errc() && result.ptr == stop && std::isfinite(number))
            m_line.push_back({number, Kind::Number});
        else
            appendText(at, stop);
        if (stop == end)
            return;
        at = stop + 1;
    }
}

const char *DataTable::readLine(const char *begin, const char *end)
{
    const char *stop = base::lineStop(begin, end);
    const char *first = begin;
    while (first < stop && base::isSpace(*first))
        ++first;
    if (first == stop || *first == '#')
        return stop;
    m_line.clear();
    m_texts.clear();
    if (m_format.delimiter == Delimiter::Blank)
        readBlankSeparated(first, stop);
    else
        readDelimited(m_format.delimiter == Delimiter::Tab ? begin : first, stop);
    if (++m_lineCount == 1) {
        m_isDepthAlone = m_line.size() == 1;
        if (!m_format.isWrapped)
            reserve(end - begin, stop - begin + 1);
    } else if (m_lineCount == 2 && m_line.size() == 1 && m_format.columns > 2) {
        m_isDepthAlone = false; // every value has a line of its own
    }
    if (m_format.isWrapped)
        takeWrappedLine();
    else
        takeLine();
    return stop;
}

/// Takes the first row for typical; a wrong guess costs address space or a reallocation, never a wrong result.
void DataTable::reserve(qint64 bytesLeft, qint64 lineLength)
{
    const auto rows = static_cast<int>(std::min<qint64>(bytesLeft / lineLength + 1, 1 << 26));
    m_depths.reserve(rows);
    const int filled = std::min(m_format.columns, static_cast<int>(m_line.size()));
    for (int i = 0; i < filled; ++i)
        m_columns[i].values.reserve(rows);
}

/// A short row in which one text stands for several columns: numbers that run together, or something that hides them.
/// What is behind it keeps its column.
void DataTable::fillShortRow()
{
    const size_t missing = static_cast<size_t>(m_format.columns) - m_line.size();
    if (m_texts.size() != 1)
        return;
    const auto text =
        std::find_if(m_line.begin(), m_line.end(), [](const Value &value) { return value.kind == Kind::Text; });
    const QVector<double> numbers = numbersRunTogether(m_texts.first());
    const bool isSplit = static_cast<size_t>(numbers.size()) == missing + 1;
    const auto place = m_line.insert(text, missing, Value{});
    for (size_t i = 0; i <= missing; ++i)
        place[static_cast<std::ptrdiff_t>(i)] =
            isSplit ? Value{numbers.at(static_cast<int>(i)), Kind::Number} : Value{};
}

void DataTable::takeLine()
{
    const auto columns = static_cast<size_t>(m_format.columns);
    // An empty value behind a last delimiter is no value.
    if (m_line.size() == columns + 1 && m_format.delimiter != Delimiter::Blank
        && m_line.back().kind == Kind::Undefined)
        m_line.pop_back();
    if (m_line.size() < columns && m_format.delimiter == Delimiter::Blank)
        fillShortRow();
    m_row = m_line;
    commit();
}

void DataTable::takeWrappedLine()
{
    const auto columns = static_cast<size_t>(m_format.columns);
    // A depth on a line of its own begins a row, whatever became of the one before.
    if (m_isDepthAlone && m_line.size() == 1 && m_row.size() > 1 && m_row.size() + 1 < columns)
        commit();
    if (m_isDepthAlone && m_row.empty() && m_line.size() > 1) {
        ++m_unevenRows; // more values than the row before had columns
        return;
    }
    for (const Value &value : m_line) {
        m_row.push_back(value);
        if (m_row.size() == columns) {
            commit();
            if (m_isDepthAlone)
                return;
        }
    }
}

void DataTable::finish()
{
    if (!m_row.empty())
        commit();
}

void DataTable::commit()
{
    const auto columns = static_cast<size_t>(m_format.columns);
    if (m_row.size() != columns)
        ++m_unevenRows;
    m_row.resize(columns);
    const auto isNull = [this](const Value &value) {
        return isStoredAs(value.number, usualNull) || (m_format.hasNull && isStoredAs(value.number, m_format.null));
    };
    const Value &depth = m_row[static_cast<size_t>(m_format.depthColumn)];
    // A null value of 0 does not make 0 a missing depth.
    const bool hasDepth =
        depth.kind == Kind::Number && isDefined(depth.number) && (depth.number >= 0 || !isNull(depth));
    if (!hasDepth) {
        ++m_rowsWithoutDepth;
        m_row.clear();
        return;
    }
    m_depths.append(depth.number);
    for (size_t i = 0; i < columns; ++i) {
        const Value &value = m_row[i];
        Column &column = m_columns[static_cast<int>(i)];
        const bool isNumber = value.kind == Kind::Number && isDefined(value.number) && !isNull(value);
        column.numbers += isNumber ? 1 : 0;
        column.texts += value.kind == Kind::Text ? 1 : 0;
        column.values.append(isNumber ? storedSample(value.number) : host::undefinedValue);
    }
    m_row.clear();
}

} // namespace las
