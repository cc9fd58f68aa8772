#include "base/numbers.h"

#include "base/textbytes.h"

#include <charconv>
#include <cmath>

namespace base {

namespace {

const char *skipSpaceAndPlus(const char *begin, const char *end)
{
    while (begin < end && isSpace(*begin))
        ++begin;
    // from_chars refuses a leading plus; "+-1" must stay an error.
    if (end - begin > 1 && *begin == '+' && begin[1] != '-' && begin[1] != '+')
        ++begin;
    return begin;
}

// Of a double without a given number of decimals: 309 digits in front of the point or 326 behind it, and a sign.
constexpr int longestWithoutDecimals = 340;

bool isWrittenPlain(double value)
{
    const double size = std::fabs(value);
    return size == 0 || (size >= 1e-6 && size < 1e12);
}

template<class Format>
QByteArray formatted(double value, int decimals, Format format)
{
    QByteArray text(longestWithoutDecimals + qMax(6, decimals), Qt::Uninitialized);
    const std::to_chars_result result = format(text.data(), text.data() + text.size(), value);
    text.truncate(static_cast<int>(result.ptr - text.constData()));
    return text;
}

} // namespace

std::optional<double> parseNumber(const char *begin, const char *end)
{
    begin = skipSpaceAndPlus(begin, end);
    while (end > begin && isSpace(end[-1]))
        --end;
    double value = 0;
    const std::from_chars_result result = std::from_chars(begin, end, value);
    if (result.ec != std::errc() || result.ptr != end || !std::isfinite(value))
        return std::nullopt;
    return value;
}

std::optional<double> parseNumber(const QByteArray &text)
{
    return parseNumber(text.constData(), text.constData() + text.size());
}

std::optional<double> parseNumber(const QString &text)
{
    return parseNumber(text.toUtf8());
}

std::optional<int> parseInteger(const QByteArray &text)
{
    const char *end = text.constData() + text.size();
    const char *begin = skipSpaceAndPlus(text.constData(), end);
    while (end > begin && isSpace(end[-1]))
        --end;
    int value = 0;
    const std::from_chars_result result = std::from_chars(begin, end, value);
    if (result.ec != std::errc() || result.ptr != end)
        return std::nullopt;
    return value;
}

QByteArray formatGeneral(double value, int digits)
{
    return formatted(value, digits, [digits](char *begin, char *end, double v) {
        return std::to_chars(begin, end, v, std::chars_format::general, digits);
    });
}

QByteArray formatFixed(double value, int decimals)
{
    return formatted(value, decimals, [decimals](char *begin, char *end, double v) {
        return std::to_chars(begin, end, v, std::chars_format::fixed, decimals);
    });
}

QByteArray formatShortest(double value)
{
    return formatted(value, 0, [](char *begin, char *end, double v) { return std::to_chars(begin, end, v); });
}

QByteArray formatShortest(float value)
{
    return formatted(static_cast<double>(value), 0, [](char *begin, char *end, double v) {
        return std::to_chars(begin, end, static_cast<float>(v));
    });
}

QByteArray formatPlain(double value)
{
    return formatted(value, 0, [](char *begin, char *end, double v) {
        return std::to_chars(begin, end, v, std::chars_format::fixed);
    });
}

QByteArray formatPlain(float value)
{
    return formatted(static_cast<double>(value), 0, [](char *begin, char *end, double v) {
        return std::to_chars(begin, end, static_cast<float>(v), std::chars_format::fixed);
    });
}

QByteArray formatWritten(double value)
{
    return isWrittenPlain(value) ? formatPlain(value) : formatShortest(value);
}

QByteArray formatWritten(float value)
{
    return isWrittenPlain(static_cast<double>(value)) ? formatPlain(value) : formatShortest(value);
}

} // namespace base
