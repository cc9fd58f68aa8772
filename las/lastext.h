#pragma once

#include "base/textbytes.h"

#include <QByteArray>
#include <QString>
#include <QVector>

/// The bytes of a LAS file and their meaning. A large file stays bytes; only the lines asked for become
/// QStrings.
namespace las {

enum class Encoding { Utf8, Windows1252 };

struct Text
{
    QByteArray bytes; ///< without byte order mark and without NUL and 0x1A bytes at the end of the file
    Encoding encoding = Encoding::Utf8;
    bool isUnicode = true; ///< the bytes say so themselves (a mark, or all of them are valid UTF-8)
};

/// An encoding that a user may choose for files that are no Unicode.
struct TextCodec
{
    const char *name; ///< for prepareText()
    const char *label;
};
/// The first one is the default.
const QVector<TextCodec> &textCodecs();

/// Decides how \a bytes are encoded: a byte order mark, else UTF-8 where they are valid UTF-8, else
/// Windows-1252. UTF-16 is converted to UTF-8 here, so that everything after this sees single bytes below
/// 0x80 as themselves. What is no Unicode is converted in the same way from \a codec, one of textCodecs(); without one
/// it is Windows-1252.
Text prepareText(QByteArray bytes, const QByteArray &codec = {});

/// The characters of one line or one piece of it. Never fails: bytes that are wrong become U+FFFD.
QString decode(const char *begin, const char *end, Encoding encoding);

/// The same for the first \a maximumBytes bytes of a longer text; no character is cut.
QString decodeFront(const char *begin, const char *end, Encoding encoding, int maximumBytes);

/// True where every byte belongs to a complete and correct UTF-8 sequence.
bool isUtf8(const char *begin, const char *end);

} // namespace las
