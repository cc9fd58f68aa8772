#include "base/safename.h"

#include <QByteArray>
#include <QCryptographicHash>

namespace base {

namespace {

bool isOffending(char byte)
{
    const auto value = static_cast<unsigned char>(byte);
    return byte == '/' || value < 0x20 || value == 0x7f;
}

bool isHexDigit(char c)
{
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

bool looksEscaped(const QByteArray &name, int at)
{
    return name.at(at) == '%' && at + 2 < name.size() && isHexDigit(name.at(at + 1)) && isHexDigit(name.at(at + 2));
}

bool needsEscapes(const QByteArray &name)
{
    for (int i = 0; i < name.size(); ++i)
        if (isOffending(name.at(i)) || looksEscaped(name, i))
            return true;
    return false;
}

QByteArray escaped(const QByteArray &name, bool dotsToo)
{
    QByteArray result;
    for (char byte : name) {
        if (isOffending(byte) || byte == '%' || (dotsToo && byte == '.'))
            result += '%' + QByteArray(1, byte).toHex().toUpper();
        else
            result += byte;
    }
    return result;
}

// The bytes FE and FF never occur in UTF-8, so no name gives these escapes of itself.
constexpr char emptyName[] = "%FF";
constexpr char digestMark[] = "%FE";

QByteArray shortened(const QByteArray &encoded, const QByteArray &name, int limit)
{
    const QByteArray tail = digestMark + QCryptographicHash::hash(name, QCryptographicHash::Sha1).toHex();
    int keep = qMax(0, limit - static_cast<int>(tail.size()));
    while (keep > 0 && (static_cast<unsigned char>(encoded.at(keep)) & 0xC0) == 0x80)
        --keep;
    return encoded.left(keep) + tail;
}

} // namespace

QString fileNameFor(const QString &name, int otherBytes)
{
    const QByteArray bytes = name.toUtf8();
    if (bytes.isEmpty())
        return QString::fromLatin1(emptyName);
    // What is named like our own hidden files would be taken for a leftover of them.
    const bool areDotsEscaped = bytes == "." || bytes == ".." || isReservedName(name);
    QByteArray result = areDotsEscaped || needsEscapes(bytes) ? escaped(bytes, areDotsEscaped) : bytes;
    const int limit = maximumFileNameBytes - otherBytes;
    if (result.size() > limit)
        result = shortened(result, bytes, limit);
    // Qt drops a byte order mark in front; as part of a name it is a character.
    return QString::fromUtf8('x' + result).mid(1);
}

bool isPathComponent(const QString &name)
{
    return !name.isEmpty() && name != QLatin1String(".") && name != QLatin1String("..")
        && !name.contains(QLatin1Char('/')) && !name.contains(QChar(0));
}

bool isReservedName(const QString &name)
{
    return name.startsWith(QLatin1String(".lorva-"));
}

QString typedNameProblem(const QString &name, int otherBytes)
{
    if (name.isEmpty())
        return QStringLiteral("The name is empty.");
    if (name == QLatin1String(".") || name == QLatin1String(".."))
        return QStringLiteral("\"%1\" cannot be a name.").arg(name);
    if (isReservedName(name))
        return QStringLiteral("Names that begin with \".lorva-\" are kept for the program's own folders.");
    if (!name.isValidUtf16())
        return QStringLiteral("The name holds half of a character.");
    for (QChar c : name) {
        if (c == QLatin1Char('/') || c == QLatin1Char('\\'))
            return QStringLiteral("The name must not hold a \"%1\".").arg(c);
        if (c.category() == QChar::Other_Control)
            return QStringLiteral("The name must not hold a control character.");
    }
    const int limit = maximumFileNameBytes - otherBytes;
    if (name.toUtf8().size() > limit)
        return QStringLiteral("The name is too long: more than %1 bytes.").arg(limit);
    return {};
}

} // namespace base
