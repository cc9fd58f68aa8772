#include "base/filesystemcalls.h"

#include <QFile>
#include <QRandomGenerator>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace base {

// mkstemp() makes files that only their owner may read, and the process' mask for other files cannot be read without
// setting it, which other threads would notice.
int FileSystemCalls::openTemporary(char *pathTemplate)
{
    constexpr char letters[] = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789";
    constexpr int randomLength = 6;
    constexpr int tries = 100;
    char *const random = pathTemplate + std::strlen(pathTemplate) - randomLength;
    for (int i = 0; i < tries; ++i) {
        for (int at = 0; at < randomLength; ++at)
            random[at] = letters[QRandomGenerator::system()->bounded(static_cast<int>(sizeof letters) - 1)];
        const int file = ::open(pathTemplate, O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (file >= 0 || errno != EEXIST)
            return file;
    }
    return -1;
}

ssize_t FileSystemCalls::write(int file, const void *bytes, size_t size)
{
    return ::write(file, bytes, size);
}

int FileSystemCalls::fsync(int file)
{
    return ::fsync(file);
}

int FileSystemCalls::syncfs(int file)
{
    return ::syncfs(file);
}

int FileSystemCalls::close(int file)
{
    return ::close(file);
}

int FileSystemCalls::rename(const char *from, const char *to)
{
    return ::rename(from, to);
}

// File systems know one way or the other. Where they know none, writers are kept apart by their lock file.
int FileSystemCalls::renameToNew(const char *from, const char *to)
{
    if (::renameat2(AT_FDCWD, from, AT_FDCWD, to, RENAME_NOREPLACE) == 0)
        return 0;
    if (errno != EINVAL && errno != ENOSYS)
        return -1;
    if (::link(from, to) == 0)
        return ::unlink(from);
    if (errno == EEXIST)
        return -1;
    struct stat there
    { };
    if (::lstat(to, &there) != 0)
        return rename(from, to);
    errno = EEXIST;
    return -1;
}

int FileSystemCalls::unlink(const char *path)
{
    return ::unlink(path);
}

int FileSystemCalls::mkdir(const char *path)
{
    return ::mkdir(path, 0777);
}

namespace {

// Never destroyed: what goes with the program or the plug-in, after objects made later, still writes what it remembers.
union RealCalls
{
    RealCalls()
        : calls()
    {
    }
    ~RealCalls() { }
    FileSystemCalls calls;
};

FileSystemCalls *&callsInForce()
{
    static RealCalls real;
    static FileSystemCalls *calls = &real.calls;
    return calls;
}

} // namespace

FileSystemCalls &fileSystemCalls()
{
    return *callsInForce();
}

bool makeFolder(const QString &path)
{
    return fileSystemCalls().mkdir(QFile::encodeName(path).constData()) == 0;
}

ScopedFileSystemCalls::ScopedFileSystemCalls(FileSystemCalls &calls)
    : m_previous(callsInForce())
{
    callsInForce() = &calls;
}

ScopedFileSystemCalls::~ScopedFileSystemCalls()
{
    callsInForce() = m_previous;
}

} // namespace base
