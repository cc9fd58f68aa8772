#pragma once

#include <QString>

struct stat;

namespace base {

/// What tells one state of a file from another without reading it.
struct FileState
{
    quint64 inode = 0;
    qint64 size = -1;
    qint64 modifiedNs = 0;
    qint64 changedNs = 0;
    /// False for a file that was touched only just now: file systems count time in steps of some milliseconds, so
    /// another change within the same step could not be told.
    bool isSettled = false;

    bool isSame(const FileState &other) const { return isSettled && other.isSettled && hasSameStamp(other); }
    /// The same as far as the file system tells, which it does not for a change within the same step.
    bool hasSameStamp(const FileState &other) const
    {
        return inode == other.inode && size == other.size && modifiedNs == other.modifiedNs
            && changedNs == other.changedNs;
    }
};

/// A state that is the same as no other one when there is no such file.
FileState fileState(const QString &path);
/// The same of an open file.
FileState stateOf(const struct stat &info);

} // namespace base
