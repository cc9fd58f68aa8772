#pragma once

#include <QDir>

namespace programs {

/// The paths of the files that lie beside a demo survey to be imported, as far as their names fit a \a pattern.
inline QStringList demoInputs(const QString &survey, const QString &pattern)
{
    const QDir folder(survey + QStringLiteral("/Import"));
    QStringList paths;
    for (const QString &name : folder.entryList({pattern}, QDir::Files))
        paths.append(folder.filePath(name));
    return paths;
}

} // namespace programs
