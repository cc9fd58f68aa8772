#include "datastore/textfields.h"

#include <algorithm>
#include <cstring>

namespace textfields {

namespace {

bool isAscii(const QByteArray &bytes)
{
    const char *at = bytes.constData();
    const char *end = at + bytes.size();
    for (; end - at >= 8; at += 8) {
        quint64 word;
        std::memcpy(&word, at, sizeof word);
        if ((word & Q_UINT64_C(0x8080808080808080)) != 0)
            return false;
    }
    return std::none_of(at, end, [](char c) { return (c & 0x80) != 0; });
}

bool isContinuation(char c)
{
    return (c & 0xC0) == 0x80;
}

bool isIgnored(unsigned code)
{
    return code == QChar::ByteOrderMark || QChar(code).isSpace();
}

// How many bytes of white space beyond ASCII begin the field: 0, 2 or 3.
size_t wideSpaceAt(Field field)
{
    const auto byte = [field](size_t at) { return static_cast<unsigned>(static_cast<unsigned char>(field[at])); };
    if (field.size() >= 2 && (byte(0) & 0xE0) == 0xC0)
        return isIgnored((byte(0) & 0x1F) << 6 | (byte(1) & 0x3F)) ? 2 : 0;
    if (field.size() >= 3 && (byte(0) & 0xF0) == 0xE0)
        return isIgnored((byte(0) & 0x0F) << 12 | (byte(1) & 0x3F) << 6 | (byte(2) & 0x3F)) ? 3 : 0;
    return 0;
}

size_t spaceInFront(Field field)
{
    if (field.empty())
        return 0;
    return base::isSpace(field.front()) ? 1 : wideSpaceAt(field);
}

size_t spaceAtEnd(Field field)
{
    if (field.empty())
        return 0;
    if (base::isSpace(field.back()))
        return 1;
    size_t length = 1;
    while (length < field.size() && length < 4 && isContinuation(field[field.size() - length]))
        ++length;
    const size_t space = wideSpaceAt(field.substr(field.size() - length));
    return space == length ? space : 0;
}

// Nearly every name: nothing in it that a line could not hold, or that a reader would take off its ends.
bool isOrdinaryName(const QString &name)
{
    return std::all_of(name.begin(), name.end(),
                       [](QChar c) { return c.unicode() >= ' ' && c.unicode() < 0x7F && c != QLatin1Char('|'); })
        && !name.startsWith(QLatin1Char(' ')) && !name.endsWith(QLatin1Char(' '));
}

QString trimmedString(const QByteArray &line)
{
    return toString(trimmed({line.constData(), static_cast<size_t>(line.size())}));
}

} // namespace

QByteArray utf8Text(const QByteArray &bytes)
{
    return isAscii(bytes) ? bytes : base::decodeText(bytes).toUtf8();
}

Field trimmed(Field field)
{
    while (const size_t space = spaceInFront(field))
        field.remove_prefix(space);
    while (const size_t space = spaceAtEnd(field))
        field.remove_suffix(space);
    return field;
}

QString toString(Field field)
{
    const QString text = QString::fromUtf8(field.data(), static_cast<int>(field.size()));
    // fromUtf8() drops a byte order mark in front; inside a file it is a character.
    return field.substr(0, 3) == "\xEF\xBB\xBF" ? QChar(QChar::ByteOrderMark) + text : text;
}

void split(Field line, char separator, std::vector<Field> *parts)
{
    parts->clear();
    size_t stop = line.find(separator);
    for (; stop != Field::npos; stop = line.find(separator)) {
        parts->push_back(line.substr(0, stop));
        line.remove_prefix(stop + 1);
    }
    parts->push_back(line);
}

void splitSkippingEmpty(Field line, char separator, size_t limit, std::vector<Field> *parts)
{
    parts->clear();
    while (!line.empty() && parts->size() < limit) {
        const size_t stop = std::min(line.find(separator), line.size());
        if (stop > 0)
            parts->push_back(line.substr(0, stop));
        line.remove_prefix(std::min(stop + 1, line.size()));
    }
}

QByteArray oneLine(const QString &name)
{
    QByteArray bytes = name.toUtf8();
    std::replace(bytes.begin(), bytes.end(), '\n', ' ');
    std::replace(bytes.begin(), bytes.end(), '\r', ' ');
    return bytes;
}

QString trimmedLine(const QString &name)
{
    return trimmedString(oneLine(name));
}

QByteArray oneField(const QString &text)
{
    return oneLine(text).replace('|', brokenBar);
}

QString fieldName(const QString &name)
{
    return isOrdinaryName(name) ? name : trimmedString(oneField(name));
}

int indexOfField(const QStringList &names, const QString &text)
{
    const QString wanted = text.trimmed();
    const int same = names.indexOf(wanted);
    if (same >= 0)
        return same;
    const auto isMeant = [&wanted](const QString &name) { return fieldName(name) == wanted; };
    const auto found = std::find_if(names.begin(), names.end(), isMeant);
    return found == names.end() ? -1 : static_cast<int>(found - names.begin());
}

} // namespace textfields
