#pragma once

#include "base/atomicfile.h"

#include <QByteArray>
#include <QDir>
#include <QString>
#include <QStringList>

/// What reading a file of the project came to.
struct ProjectFile
{
    enum class State {
        Missing, ///< nothing of that name is there
        Unreadable, ///< something is there, and it is a user's: never written over
        Read
    };

    State state = State::Missing;
    QByteArray bytes; ///< empty unless read

    bool mayBeReplaced() const { return state != State::Unreadable; }
};

/// Reads a file below the project folder. Only plain files of bounded size are read, and only where no link leads out
/// of the survey, which holds the project folder.
ProjectFile readProjectFile(const QString &projectFolder, const QString &path);

/// Writes a file below the project folder as base::writeFileAtomically() does; fails where a link leads out of the
/// survey or nowhere.
base::WriteResult writeProjectFile(const QString &projectFolder, const QString &path, const QByteArray &bytes,
                                   base::Flush flush = base::Flush::Now);

/// Why nothing may be written at \a path: a link leads from it, or from a folder above it, out of the survey or nowhere.
base::WriteResult checkProjectPath(const QString &projectFolder, const QString &path);

/// Whether a link leads from \a path, or from a folder above it, out of the survey or nowhere.
bool isLinkedAway(const QString &projectFolder, const QString &path);

/// What a folder of the project holds, without links that lead out of the survey. None when such a link leads to it.
QStringList projectEntries(const QString &projectFolder, const QString &path, QDir::Filters filters,
                           QDir::SortFlags sort);
