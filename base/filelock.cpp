#include "base/filelock.h"

#include <QElapsedTimer>
#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace base {

namespace {

constexpr int waitBetweenTriesUs = 2000;
constexpr int openFlags = O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK;

// Who may write in the folder may lock it, whoever made the lock file.
int openLockFile(const QByteArray &folder)
{
    const QByteArray path = folder + "/.lorva.lock";
    int file = openToLock(path);
    if (file >= 0 || errno != ENOENT)
        return file;
    file = ::open(path.constData(), O_RDWR | O_CREAT | openFlags, 0666);
    struct stat info
    { };
    if (file >= 0 && ::stat(folder.constData(), &info) == 0)
        (void)::fchmod(file, info.st_mode & 0666);
    return file;
}

} // namespace

int openToLock(const QByteArray &path)
{
    const int file = ::open(path.constData(), O_RDWR | openFlags);
    return file >= 0 || errno == ENOENT ? file : ::open(path.constData(), O_RDONLY | openFlags);
}

LockState tryLock(int file)
{
    int result = 0;
    do {
        result = ::flock(file, LOCK_EX | LOCK_NB);
    } while (result != 0 && errno == EINTR);
    if (result == 0)
        return LockState::Locked;
    return errno == EWOULDBLOCK ? LockState::HeldByOther : LockState::NotLockable;
}

FolderLock::FolderLock(const QString &folder, int patienceMs)
    : m_file(openLockFile(QFile::encodeName(folder)))
{
    if (m_file < 0)
        return;
    QElapsedTimer waiting;
    waiting.start();
    LockState state = tryLock(m_file);
    while (state == LockState::HeldByOther && waiting.elapsed() < patienceMs) {
        ::usleep(waitBetweenTriesUs);
        state = tryLock(m_file);
    }
    m_isRefused = state == LockState::HeldByOther;
}

FolderLock::~FolderLock()
{
    if (m_file >= 0)
        ::close(m_file);
}

} // namespace base
