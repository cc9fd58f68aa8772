#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QVector>

/// Bytes and names that a reader of files must survive.
namespace badbytes {

/// All 256 byte values, over and over, in an order of its own.
inline QByteArray binary(int size)
{
    QByteArray bytes(size, Qt::Uninitialized);
    quint32 state = 12345;
    for (char &byte : bytes) {
        state = state * 1664525 + 1013904223;
        byte = static_cast<char>(state >> 24);
    }
    return bytes;
}

/// 100 MB that begin with \a start: a few lines of many megabytes, with bars in them, and no line end at the end.
inline QByteArray huge(const QByteArray &start)
{
    constexpr int size = 100 << 20;
    constexpr int lineLength = 25 << 20;
    QByteArray bytes(size, 'x');
    for (int at = 0; at < size; at += 8192)
        bytes[at] = '|';
    for (int at = lineLength; at < size; at += lineLength)
        bytes[at] = '\n';
    bytes.replace(0, start.size(), start);
    return bytes;
}

/// A line of this many fields, each \a field.
inline QByteArray manyFields(const QByteArray &field, int count = 10000)
{
    return (field + '|').repeated(count - 1) + field;
}

/// Names that are no file names, or look like paths.
inline QStringList names()
{
    return {QStringLiteral("15/9-F-1"),
            QStringLiteral("../x"),
            QStringLiteral("../../x"),
            QStringLiteral("."),
            QStringLiteral(".."),
            QString(QLatin1String("")),
            QString(300, QLatin1Char('n')),
            QString(300, QChar(0x00F8)),
            QStringLiteral("%2F"),
            QStringLiteral("/etc/passwd"),
            QStringLiteral("A\\B"),
            QStringLiteral("50%"),
            QStringLiteral("a\tb"),
            QStringLiteral(" "),
            QStringLiteral("a\nb"),
            QStringLiteral("a\rb"),
            QStringLiteral("a\u007Fb"),
            QString::fromUtf16(u"a\0b", 3),
            QStringLiteral("a") + QChar(0xD800)};
}

} // namespace badbytes
