#pragma once

#include "survey/odfile.h"

#include <QStringList>

namespace survey {

/// What was found wrong with a survey's files. A problem stays known until its file changes.
class FileProblems
{
public:
    /// \a problem is a sentence without the file's name and its full stop. False when it is known already.
    bool add(const QString &path, const QString &problem);
    /// Sentences that name their files, in the order in which they were found. Those of files that changed since
    /// are forgotten.
    QStringList sentences();
    /// The same for one file only.
    QStringList sentencesOf(const QString &path);
    void clear() { m_problems.clear(); }

private:
    struct Problem
    {
        QString path;
        QString sentence;
        FileState state;
    };
    void forgetChangedFiles();

    QVector<Problem> m_problems;
};

} // namespace survey
