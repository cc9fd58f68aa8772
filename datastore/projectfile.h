#pragma once

#include <QByteArray>
#include <QString>

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

ProjectFile readProjectFile(const QString &path);
