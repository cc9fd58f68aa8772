#include "diskfaults.h"

#include <cerrno>
#include <cstdarg>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace campaign {

namespace {

int calledFromSeam = 0;

// Calls that the seam makes are counted there.
struct InSeam
{
    InSeam() { ++calledFromSeam; }
    ~InSeam() { --calledFromSeam; }
};

int errorOf(Fault fault)
{
    switch (fault) {
    case Fault::NoAccess:
        return EACCES;
    case Fault::BrokenDisk:
        return EIO;
    case Fault::ReadOnlyDisk:
        return EROFS;
    default:
        return ENOSPC;
    }
}

bool isWrite(const char *call)
{
    return std::strcmp(call, "write") == 0;
}

} // namespace

DiskFaults *DiskFaults::inForce = nullptr;

DiskFaults::DiskFaults(int failAt, Fault fault, bool stays)
    : m_failAt(failAt)
    , m_fault(fault)
    , m_stays(stays)
{
    inForce = this;
}

DiskFaults::~DiskFaults()
{
    inForce = nullptr;
}

bool DiskFaults::fails(const char *call)
{
    const int number = static_cast<int>(m_calls.size());
    m_calls.push_back(call);
    if (m_failAt == none || number < m_failAt)
        return false;
    errno = errorOf(m_fault);
    switch (m_fault) {
    case Fault::ShortWrite:
        return false;
    case Fault::ShortThenFull:
        return number > m_failAt && isWrite(call);
    default:
        return number == m_failAt || m_stays;
    }
}

// Of the call that was counted last.
size_t DiskFaults::sizeToWrite(size_t size)
{
    const bool isShort = m_fault == Fault::ShortWrite || m_fault == Fault::ShortThenFull;
    return isShort && static_cast<int>(m_calls.size()) - 1 == m_failAt ? (size + 1) / 2 : size;
}

int DiskFaults::Seam::openTemporary(char *pathTemplate)
{
    const InSeam seam;
    return inForce->fails("openTemporary") ? -1 : FileSystemCalls::openTemporary(pathTemplate);
}

ssize_t DiskFaults::Seam::write(int file, const void *bytes, size_t size)
{
    const InSeam seam;
    return inForce->fails("write") ? -1 : FileSystemCalls::write(file, bytes, inForce->sizeToWrite(size));
}

int DiskFaults::Seam::fsync(int)
{
    const InSeam seam;
    return inForce->fails("fsync") ? -1 : 0;
}

int DiskFaults::Seam::syncfs(int)
{
    const InSeam seam;
    return inForce->fails("syncfs") ? -1 : 0;
}

// The file is closed all the same.
int DiskFaults::Seam::close(int file)
{
    const InSeam seam;
    FileSystemCalls::close(file);
    return inForce->fails("close") ? -1 : 0;
}

int DiskFaults::Seam::rename(const char *from, const char *to)
{
    const InSeam seam;
    return inForce->fails("rename") ? -1 : FileSystemCalls::rename(from, to);
}

int DiskFaults::Seam::renameToNew(const char *from, const char *to)
{
    const InSeam seam;
    return inForce->fails("renameToNew") ? -1 : FileSystemCalls::renameToNew(from, to);
}

int DiskFaults::Seam::unlink(const char *path)
{
    const InSeam seam;
    return inForce->fails("unlink") ? -1 : FileSystemCalls::unlink(path);
}

int DiskFaults::Seam::mkdir(const char *path)
{
    const InSeam seam;
    return inForce->fails("mkdir") ? -1 : FileSystemCalls::mkdir(path);
}

namespace {

template<class Call>
Call *systemsOwn(const char *name)
{
    return reinterpret_cast<Call *>(::dlsym(RTLD_NEXT, name));
}

bool fails(const char *call)
{
    return DiskFaults::inForce && calledFromSeam == 0 && DiskFaults::inForce->fails(call);
}

// Not what the program says, nor the pipes with which its event loops wake each other.
bool isOnDisk(int file)
{
    struct stat status = {};
    return file > STDERR_FILENO && ::fstat(file, &status) == 0 && S_ISREG(status.st_mode);
}

int openFile(const char *name, const char *path, int flags, mode_t mode)
{
    if ((flags & O_CREAT) != 0 && fails("open"))
        return -1;
    return systemsOwn<int(const char *, int, ...)>(name)(path, flags, mode);
}

} // namespace

} // namespace campaign

// These take the place of the C library's in this program.
using campaign::fails;
using campaign::systemsOwn;

#define LORVA_FAILING_CALL(name, parameters, arguments, suffix)                                                      \
    extern "C" int name parameters suffix                                                                            \
    {                                                                                                                \
        static const auto call = systemsOwn<int parameters>(#name);                                                  \
        return fails(#name) ? -1 : call arguments;                                                                   \
    }

LORVA_FAILING_CALL(mkdir, (const char *path, mode_t mode), (path, mode), noexcept)
LORVA_FAILING_CALL(rmdir, (const char *path), (path), noexcept)
LORVA_FAILING_CALL(unlink, (const char *path), (path), noexcept)
LORVA_FAILING_CALL(unlinkat, (int folder, const char *path, int flags), (folder, path, flags), noexcept)
LORVA_FAILING_CALL(rename, (const char *from, const char *to), (from, to), noexcept)
LORVA_FAILING_CALL(link, (const char *from, const char *to), (from, to), noexcept)
LORVA_FAILING_CALL(linkat, (int folder, const char *from, int other, const char *to, int flags),
                   (folder, from, other, to, flags), noexcept)
LORVA_FAILING_CALL(chmod, (const char *path, mode_t mode), (path, mode), noexcept)
LORVA_FAILING_CALL(fchmod, (int file, mode_t mode), (file, mode), noexcept)
LORVA_FAILING_CALL(fsync, (int file), (file), )

extern "C" char *mkdtemp(char *pathTemplate) noexcept
{
    static const auto call = systemsOwn<char *(char *)>("mkdtemp");
    return fails("mkdtemp") ? nullptr : call(pathTemplate);
}

extern "C" ssize_t write(int file, const void *bytes, size_t size)
{
    static const auto call = systemsOwn<ssize_t(int, const void *, size_t)>("write");
    const bool isCounted = campaign::DiskFaults::inForce && campaign::calledFromSeam == 0 && campaign::isOnDisk(file);
    if (isCounted && fails("write"))
        return -1;
    return call(file, bytes, isCounted ? campaign::DiskFaults::inForce->sizeToWrite(size) : size);
}

extern "C" int open(const char *path, int flags, ...)
{
    std::va_list rest;
    va_start(rest, flags);
    const auto mode = static_cast<mode_t>((flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(rest, unsigned) : 0);
    va_end(rest);
    return campaign::openFile("open", path, flags, mode);
}

extern "C" int open64(const char *path, int flags, ...)
{
    std::va_list rest;
    va_start(rest, flags);
    const auto mode = static_cast<mode_t>((flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(rest, unsigned) : 0);
    va_end(rest);
    return campaign::openFile("open64", path, flags, mode);
}
