#include "base/filesystemcalls.h"

#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace base {

int FileSystemCalls::openTemporary(char *pathTemplate)
{
    return ::mkostemp(pathTemplate, O_CLOEXEC);
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

int FileSystemCalls::unlink(const char *path)
{
    return ::unlink(path);
}

int FileSystemCalls::mkdir(const char *path)
{
    return ::mkdir(path, 0777);
}

namespace {

FileSystemCalls *&callsInForce()
{
    static FileSystemCalls real;
    static FileSystemCalls *calls = &real;
    return calls;
}

} // namespace

FileSystemCalls &fileSystemCalls()
{
    return *callsInForce();
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
