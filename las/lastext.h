#pragma once

#include <QByteArray>
#include <QString>

/// The bytes of a LAS file and their meaning. A large file stays bytes; only the lines asked for become
/// QStrings.
namespace las {

enum class Encoding { Utf8, Windows1252 };

struct Text
{
    QByteArray bytes; ///< without byte order mark and without NUL and 0x1A bytes at the end of the file
    Encoding encoding = Encoding::Utf8;
};

/// Decides how \a bytes are encoded: a byte order mark, else UTF-8 where they are valid UTF-8, else
/// Windows-1252. UTF-16 is converted to UTF-8 here, so that everything after this sees single bytes below
/// 0x80 as themselves.
Text prepareText(QByteArray bytes);

/// The characters of one line or one piece of it. Never fails: bytes that are wrong become U+FFFD.
QString decode(const char *begin, const char *end, Encoding encoding);

/// The same for the first \a maximumBytes bytes of a longer text; no character is cut.
QString decodeFront(const char *begin, const char *end, Encoding encoding, int maximumBytes);

/// True where every byte belongs to a complete and correct UTF-8 sequence.
bool isUtf8(const char *begin, const char *end);

/// White space among the bytes below 0x80, as QChar::isSpace() has it; line ends are white space.
inline bool isSpace(char c)
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}

inline bool isLineEnd(char c)
{
    return c == '\n' || c == '\r';
}

/// The end of the line that holds \a begin: its line end character or \a end.
inline const char *lineStop(const char *begin, const char *end)
{
    while (begin < end && !isLineEnd(*begin))
        ++begin;
    return begin;
}

/// The start of the next line, for the \a stop of a line; LF, CRLF and CR end a line.
inline const char *nextLine(const char *stop, const char *end)
{
    if (stop == end)
        return end;
    return stop + (*stop == '\r' && stop + 1 < end && stop[1] == '\n' ? 2 : 1);
}

} // namespace las
