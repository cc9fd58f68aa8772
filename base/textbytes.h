#pragma once

#include <QByteArray>
#include <QString>
#include <QVector>

/// Text files as bytes: decoding, lines and white space.
namespace base {

/// Decodes the text of a file: a byte order mark decides (UTF-8, UTF-16), else UTF-8 where the bytes are valid
/// UTF-8, else Windows-1252, which never fails.
QString decodeText(const QByteArray &bytes);

/// Calls \a line(const char *begin, const char *end) for every line of the bytes, without its line end. LF, CRLF
/// and CR end a line; a last line without an end counts, an empty rest does not. Stops when \a line returns false.
template<class LineFunction>
void forEachLine(const char *begin, const char *end, LineFunction line)
{
    while (begin < end) {
        const char *stop = begin;
        while (stop < end && *stop != '\n' && *stop != '\r')
            ++stop;
        if (!line(begin, stop))
            return;
        if (stop + 1 < end && stop[0] == '\r' && stop[1] == '\n')
            ++stop;
        begin = stop + 1;
    }
}

/// The lines of a text that was decoded already, split like forEachLine().
QVector<QString> splitLines(const QString &text);

} // namespace base
