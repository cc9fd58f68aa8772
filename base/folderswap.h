#pragma once

#include "base/atomicfile.h"

#include <QByteArray>
#include <QString>
#include <QVector>

namespace base {

/// One file of a folder that is written whole; the name is a single path component.
struct FolderFile
{
    QString name;
    QByteArray bytes;
};

/// What a replacement came to.
struct [[nodiscard]] ReplaceResult : WriteResult
{
    bool isOldStuck = false; ///< it failed because what was there could not be taken from its place
};

/// Makes the folder \a name directly inside \a parent, a folder below \a projectFolder, hold exactly \a files. What
/// was there goes, with all its content. At every moment, also after a crash or on a full disk, the place holds the
/// old folder or the new one whole, or finishFolderSwaps() puts one there: the new folder is built and flushed in a
/// hidden folder of \a projectFolder, the old one is moved there, the new one to its place. A missing \a parent is
/// made; its own parent must exist. Refused, with nothing touched: a name that is no single path component or is
/// reserved, a link or a file in the folder's place, a \a parent that a link out of the survey leads to (the survey
/// holds the project folder).
ReplaceResult replaceFolder(const QString &parent, const QString &name, const QVector<FolderFile> &files,
                            const QString &projectFolder);

/// Finishes or undoes what replaceFolder() of a process that is gone left half done in \a projectFolder: before the
/// old folder was moved it is undone, after that finished. Whatever took the place in between stays there, and what
/// would be lost is kept as a deleted folder is (see removeFolder()). Silent; what cannot be done now is left for the
/// next call.
void finishFolderSwaps(const QString &projectFolder);

} // namespace base
