#pragma once

#include <QFile>
#include <QString>

namespace memorymap {

/// Whether this system gives out large pages where a program asks for them, or everywhere.
inline bool hasLargePages()
{
    QFile file(QStringLiteral("/sys/kernel/mm/transparent_hugepage/enabled"));
    return file.open(QIODevice::ReadOnly) && !file.readAll().contains("[never]");
}

/// Whether large pages were asked for where a byte of this process stands.
inline bool isWishedLarge(const void *byte)
{
    QFile file(QStringLiteral("/proc/self/smaps"));
    if (!file.open(QIODevice::ReadOnly))
        return false;
    bool isInside = false;
    const auto address = reinterpret_cast<quintptr>(byte);
    for (const QByteArray &line : file.readAll().split('\n')) {
        const QList<QByteArray> range = line.left(line.indexOf(' ')).split('-');
        bool isFirst = false;
        bool isLast = false;
        const qulonglong first = range.value(0).toULongLong(&isFirst, 16);
        const qulonglong end = range.value(1).toULongLong(&isLast, 16);
        if (isFirst && isLast)
            isInside = address >= first && address < end;
        else if (isInside && line.startsWith("VmFlags:"))
            return (line + ' ').contains(" hg ");
    }
    return false;
}

} // namespace memorymap
