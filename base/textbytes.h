#pragma once

#include <QByteArray>
#include <QString>
#include <QVector>

/// Text files as bytes: decoding, lines and white space.
namespace base {

/// Decodes the text of a file: a byte order mark decides (UTF-8, UTF-16), else UTF-8 where the bytes are valid
/// UTF-8, else Windows-1252, which never fails.
QString decodeText(const QByteArray &bytes);

/// White space among the bytes below 0x80, as QChar::isSpace() has it; line ends are white space.
inline bool isSpace(char c)
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}

/// Of bytes or UTF-16 units.
template<class Char>
bool isLineEnd(Char c)
{
    return c == '\n' || c == '\r';
}

/// The end of the line that holds \a begin: its line end character or \a end.
template<class Char>
const Char *lineStop(const Char *begin, const Char *end)
{
    while (begin < end && !isLineEnd(*begin))
        ++begin;
    return begin;
}

/// The start of the next line, for the \a stop of a line; LF, CRLF and CR end a line.
template<class Char>
const Char *nextLine(const Char *stop, const Char *end)
{
    if (stop == end)
        return end;
    return stop + (*stop == '\r' && stop + 1 < end && stop[1] == '\n' ? 2 : 1);
}

/// Calls \a line(const Char *begin, const Char *end) for every line of the text, without its line end. LF, CRLF
/// and CR end a line; a last line without an end counts, an empty rest does not. Stops when \a line returns false.
template<class Char, class LineFunction>
void forEachLine(const Char *begin, const Char *end, LineFunction line)
{
    while (begin < end) {
        const Char *stop = lineStop(begin, end);
        if (!line(begin, stop))
            return;
        begin = nextLine(stop, end);
    }
}

/// The lines of a text that was decoded already, split like forEachLine().
QVector<QString> splitLines(const QString &text);

} // namespace base
