#pragma once

#include <QByteArray>
#include <QString>

/// Locks that end with the process that holds them, so that a crash leaves none behind.
namespace base {

enum class LockState {
    Locked,
    HeldByOther,
    NotLockable, ///< the file system has no locks
};

/// Opens a plain file, no link, so that it can be locked: for writing, which some network file systems ask for, else for
/// reading. -1 when it cannot.
int openToLock(const QByteArray &path);

/// Locks an open file or folder until it is closed; does not wait.
LockState tryLock(int file);

/// The lock file ".lorva.lock" of a folder, held for the length of a write by all who write there. The file stays; who
/// holds its lock counts. Where it cannot be made or locked (a folder or file system that does not allow it) there is
/// no lock, and the write itself finds out what is possible.
class FolderLock
{
public:
    /// Waits up to \a patienceMs milliseconds for another writer, in this process or another, to end.
    explicit FolderLock(const QString &folder, int patienceMs = 10000);
    ~FolderLock();
    FolderLock(const FolderLock &) = delete;
    FolderLock &operator=(const FolderLock &) = delete;

    /// Another writer did not end: nothing must be written.
    bool isRefused() const { return m_isRefused; }

private:
    int m_file = -1;
    bool m_isRefused = false;
};

} // namespace base
