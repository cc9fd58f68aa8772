#pragma once

#include <QString>
#include <QStringList>

/// What reports for the user are put together from.
namespace survey {

/// "1 well", "3 wells".
inline QString counted(int count, const char *one, const char *many)
{
    return QStringLiteral("%1 %2").arg(count).arg(QLatin1String(count == 1 ? one : many));
}

/// Adds lines under a title, behind an empty line; nothing where there are none.
inline void addBlock(QStringList *lines, const QString &title, const QStringList &block)
{
    if (!block.isEmpty())
        *lines << QString() << title << block;
}

} // namespace survey
