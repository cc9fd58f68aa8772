#pragma once

#include <QByteArray>
#include <QString>

#include <sys/stat.h>

/// Reading files that someone else may have put there: a pipe does not make a reader wait, a device or a file of
/// absurd size is not read.
namespace base {

/// Opens a plain file for reading; -1, with an errno value in \a errorCode, for anything else. A link in the file's
/// place is followed only as far as it stays below \a root (see linkProblem()); its folders are not looked at. The
/// caller closes it. \a info gets what the system tells of the opened file.
int openRegularFile(const QString &path, const QString &root, int *errorCode, struct stat *info);

/// The bytes of a file, or why there are none.
struct RegularFile
{
    QByteArray bytes;
    int errorCode = 0; ///< an errno value; ENOENT where nothing has that name

    bool ok() const { return errorCode == 0; }
};

/// More than this no text file of ours has.
constexpr qint64 maximumTextFileSize = 64 << 20;

/// Reads a whole plain file that no link below \a root leads out to. EFBIG for one larger than \a maximumSize bytes,
/// of which nothing is read.
RegularFile readRegularFile(const QString &path, const QString &root, qint64 maximumSize = maximumTextFileSize);

} // namespace base
