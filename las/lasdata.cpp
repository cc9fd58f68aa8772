#include "las/lasdata.h"

#include "base/numbers.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <optional>

namespace las {

namespace {

constexpr size_t tokensInLastRows = 4096; // 32 kB, which stay in the processor's nearest memory

} // namespace

void DataColumns::Column::append(const double *added, int count, size_t stride, double nullValue)
{
    const int before = values.size();
    values.resize(before + count);
    double *at = values.data() + before;
    double *const end = at + count;
    if (before == 0 && at < end) {
        // Odd at first sight, but prescribed: the first value is a maximum only, and a value that lowers the
        // minimum is not tested against the maximum.
        minimum = 1e8;
        maximum = *at++ = *added;
        added += stride;
    }
    double lowest = minimum;
    double highest = maximum;
    for (; at < end; added += stride) {
        const double value = *added;
        *at++ = value;
        if (lowest > value && value - nullValue > 0.1)
            lowest = value;
        else if (value > highest)
            highest = value;
    }
    minimum = lowest;
    maximum = highest;
}

const char *DataColumns::readLine(const char *begin, const char *end, Encoding encoding)
{
    if (begin < end && *begin == '#')
        return base::lineStop(begin, end);

    size_t token = 0;
    m_isDepthUnreadable = false;
    m_hasSurplus = false;
    const char *at = begin;
    while (true) {
        while (at < end && (*at == ' ' || (base::isSpace(*at) && !base::isLineEnd(*at))))
            ++at;
        if (at == end || base::isLineEnd(*at))
            break;
        if (token == m_columns.size()) {
            m_hasSurplus = true;
            at = base::lineStop(at, end);
            break;
        }
        double value = 0;
        const std::from_chars_result number = std::from_chars(at, end, value);
        const bool whole = number.ptr == end || base::isSpace(*number.ptr);
        if (number.ec == std::errc() && whole && std::isfinite(value)) {
            at = number.ptr;
            m_lastRows.push_back(value);
            ++token;
        } else {
            const char *stop = at;
            while (stop < end && !base::isSpace(*stop))
                ++stop;
            appendUnusualToken(at, stop, encoding, token);
            at = stop;
        }
    }
    if (token == 0)
        return at;
    if (m_tokenCounts.empty())
        reserveRows(end - begin, at - begin + 1, token);
    m_tokenCounts.push_back(static_cast<int>(token));
    if (m_hasSurplus || token < m_columns.size())
        ++m_unevenRows;
    if (m_isDepthUnreadable)
        m_unreadableDepthTokens = std::max(m_unreadableDepthTokens, token);
    if (m_lastRows.size() >= tokensInLastRows)
        moveRowsToColumns();
    return at;
}

void DataColumns::moveRowsToColumns()
{
    const auto first = m_tokenCounts.begin() + static_cast<std::ptrdiff_t>(m_rowsInColumns);
    const auto last = m_tokenCounts.end();
    m_rowsInColumns = m_tokenCounts.size();
    const double *row = m_lastRows.data();
    if (first != last && std::all_of(first, last, [first](int count) { return count == *first; })) {
        const auto columns = static_cast<size_t>(*first);
        for (size_t i = 0; i < columns; ++i)
            m_columns[i].append(row + i, static_cast<int>(last - first), columns, m_nullValue);
    } else {
        for (auto count = first; count != last; ++count)
            for (int i = 0; i < *count; ++i)
                m_columns[static_cast<size_t>(i)].append(row++, 1, 0, m_nullValue);
    }
    m_lastRows.clear();
}

/// A token with a sign "+", text, or bytes above 0x7F, among which may be white space (a no-break space).
void DataColumns::appendUnusualToken(const char *begin, const char *end, Encoding encoding, size_t &token)
{
    const auto append = [&](std::optional<double> number) {
        if (token == m_columns.size()) {
            m_hasSurplus = true;
            return;
        }
        if (token == 0)
            m_isDepthUnreadable = !number;
        m_lastRows.push_back(number.value_or(0.0));
        ++token;
    };
    if (std::all_of(begin, end, [](char c) { return static_cast<signed char>(c) >= 0; })) {
        append(base::parseNumber(begin, end));
        return;
    }
    const QString text = decode(begin, end, encoding);
    int from = 0;
    while (from < text.size()) {
        int to = from;
        while (to < text.size() && !text.at(to).isSpace())
            ++to;
        if (to > from)
            append(base::parseNumber(text.mid(from, to - from)));
        from = to + 1;
    }
}

/// Takes the first row for typical. A wrong guess costs address space (at most four times the bytes that are
/// left) or a reallocation, never a wrong result.
void DataColumns::reserveRows(qint64 bytesLeft, qint64 lineLength, size_t tokens)
{
    const qint64 rows = std::min<qint64>(bytesLeft / lineLength + 1, 1 << 26);
    for (size_t i = 0; i < tokens; ++i)
        m_columns[i].values.reserve(static_cast<int>(rows));
    m_tokenCounts.reserve(static_cast<size_t>(rows));
}

void DataColumns::moveTo(QVector<LogCurveData> &curves, int firstCurve)
{
    moveRowsToColumns();
    QVector<double> depths;
    const int count = std::min(static_cast<int>(m_columns.size()), curves.size() - firstCurve);
    for (int i = 0; i < count; ++i) {
        Column &column = m_columns[static_cast<size_t>(i)];
        if (column.values.capacity() - column.values.size() > column.values.size() / 8)
            column.values.squeeze();
        if (i == 0) {
            depths = column.values;
        } else if (column.values.size() != depths.size()) {
            // The rows of column i are among those of column i - 1: equal numbers mean equal rows, and every
            // filtering goes over the previous list only.
            QVector<double> fewer;
            fewer.reserve(column.values.size());
            std::vector<int> counts;
            counts.reserve(static_cast<size_t>(column.values.size()));
            for (int row = 0; row < depths.size(); ++row) {
                const int tokens = m_tokenCounts[static_cast<size_t>(row)];
                if (tokens > i) {
                    fewer.append(depths.at(row));
                    counts.push_back(tokens);
                }
            }
            depths = fewer;
            m_tokenCounts = std::move(counts);
        }
        LogCurveData &curve = curves[firstCurve + i];
        curve.minimum = column.minimum;
        curve.maximum = column.maximum;
        curve.values = std::move(column.values);
        curve.depths = depths;
    }
    m_columns.clear();
    m_tokenCounts.clear();
}

} // namespace las
