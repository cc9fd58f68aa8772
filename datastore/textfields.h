#pragma once

#include "base/textbytes.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <string_view>
#include <vector>

/// Lines and fields of the project's text files, read on the bytes of the file: no string per line or field.
namespace textfields {

/// Part of a UTF-8 text; refers to bytes that someone else keeps.
using Field = std::string_view;

/// The text of a file as UTF-8 without a byte order mark, decoded as base::decodeText() does.
QByteArray utf8Text(const QByteArray &bytes);

/// Calls \a line(Field) for every line of a UTF-8 text.
template<class LineFunction>
void forEachLine(const QByteArray &text, LineFunction line)
{
    base::forEachLine(text.constData(), text.constData() + text.size(), [&line](const char *begin, const char *end) {
        line(Field(begin, static_cast<size_t>(end - begin)));
        return true;
    });
}

/// The field without white space at its ends, as QString::trimmed() has it, and without byte order marks there:
/// files that were joined have them in the middle.
Field trimmed(Field field);

QString toString(Field field);

/// What stands between the separators; as many parts as there are separators, and one more.
void split(Field line, char separator, std::vector<Field> *parts);
/// The parts that are not empty, no more than \a limit of them.
void splitSkippingEmpty(Field line, char separator, size_t limit, std::vector<Field> *parts);

/// A name as it can stand in a line: line breaks become blanks.
QByteArray oneLine(const QString &name);
/// The same without white space at its ends, as it is read back.
QString trimmedLine(const QString &name);

/// A text as it can stand between bars: one line with a broken bar for each "|".
QByteArray oneField(const QString &text);
/// The same for a name, without white space at its ends, as it is read back. Names are compared in this form wherever
/// a file that has such fields holds one of them.
QString fieldName(const QString &name);
/// The place of the name that the text of a field means: of the one that reads so, else of the first that stands so in a
/// field; -1 where none does. \a names are trimmed.
int indexOfField(const QStringList &names, const QString &text);
/// What stands for a "|" inside a field, as UTF-8.
constexpr char brokenBar[] = "\xC2\xA6";

} // namespace textfields
