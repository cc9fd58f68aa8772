#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

/// Numbers as text, the same under every locale.
namespace base {

/// Reads a decimal number that fills \a text but for white space around it; a leading "+" is allowed. Nothing for
/// anything else, for "nan" and "inf", and for what a double cannot hold (1e400).
std::optional<double> parseNumber(const char *begin, const char *end);
std::optional<double> parseNumber(const QByteArray &text);
std::optional<double> parseNumber(const QString &text);
std::optional<int> parseInteger(const QByteArray &text);

/// The shorter of fixed and exponent notation with \a digits significant digits, as printf's "%g".
QByteArray formatGeneral(double value, int digits = 6);
/// Fixed notation with \a decimals decimals, as printf's "%f".
QByteArray formatFixed(double value, int decimals);
/// The fewest digits that read back as the same value.
QByteArray formatShortest(double value);
QByteArray formatShortest(float value);
/// The same, never with an exponent.
QByteArray formatPlain(double value);
QByteArray formatPlain(float value);
/// As a person writes it: the fewest digits that read back as the same value, 6000000 and not 6e+06. Only what is
/// smaller than a millionth or larger than a million million has an exponent.
QByteArray formatWritten(double value);
QByteArray formatWritten(float value);

} // namespace base
