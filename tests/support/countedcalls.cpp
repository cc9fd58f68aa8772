#include "support/countedcalls.h"

#include <atomic>
#include <cstdarg>
#include <dlfcn.h>

// No header of these calls is included: each would declare them with promises of its own.
struct stat;
struct stat64;
struct statx;
using ssize_t = long;

namespace {

std::atomic<long> calls{0};
std::atomic<void (*)()> onCall{nullptr};

void count()
{
    ++calls;
    if (void (*function)() = onCall)
        function();
}

constexpr int makesFile = 0100 | 020200000; // O_CREAT, O_TMPFILE

// What wakes an event loop is a number of 8 bytes, and no file.
constexpr bool isWakeUp(unsigned long size)
{
    return size == 8;
}

template<class Function>
Function *original(const char *name)
{
    return reinterpret_cast<Function *>(::dlsym(RTLD_NEXT, name));
}

} // namespace

namespace counted_calls {

long total()
{
    return calls;
}

void setOnCall(void (*function)())
{
    onCall = function;
}

} // namespace counted_calls

// Each counts and does what the system's function of its name does.
#define COUNTED_UNLESS(isOther, Result, name, parameters, arguments)                                                 \
    Result name parameters;                                                                                          \
    Result name parameters                                                                                           \
    {                                                                                                                \
        static auto *const function = original<Result parameters>(#name);                                            \
        if (!(isOther))                                                                                              \
            count();                                                                                                 \
        return function arguments;                                                                                   \
    }

#define COUNTED(Result, name, parameters, arguments) COUNTED_UNLESS(false, Result, name, parameters, arguments)

#define COUNTED_OPENING(name, parameters, arguments)                                                                 \
    int name parameters;                                                                                             \
    int name parameters                                                                                              \
    {                                                                                                                \
        static auto *const function = original<int parameters>(#name);                                               \
        unsigned mode = 0;                                                                                           \
        if (flags & makesFile) {                                                                                     \
            va_list more;                                                                                            \
            va_start(more, flags);                                                                                   \
            mode = va_arg(more, unsigned);                                                                           \
            va_end(more);                                                                                            \
        }                                                                                                            \
        count();                                                                                                     \
        return function arguments;                                                                                   \
    }

extern "C" {
COUNTED_OPENING(open, (const char *path, int flags, ...), (path, flags, mode))
COUNTED_OPENING(open64, (const char *path, int flags, ...), (path, flags, mode))
COUNTED_OPENING(openat, (int folder, const char *path, int flags, ...), (folder, path, flags, mode))
COUNTED_OPENING(openat64, (int folder, const char *path, int flags, ...), (folder, path, flags, mode))
COUNTED_UNLESS(isWakeUp(size), ssize_t, read, (int file, void *bytes, unsigned long size), (file, bytes, size))
COUNTED_UNLESS(isWakeUp(size), ssize_t, write, (int file, const void *bytes, unsigned long size), (file, bytes, size))
COUNTED(int, fsync, (int file), (file))
COUNTED(int, syncfs, (int file), (file))
COUNTED(int, stat, (const char *path, struct stat *info), (path, info))
COUNTED(int, stat64, (const char *path, struct stat64 *info), (path, info))
COUNTED(int, lstat, (const char *path, struct stat *info), (path, info))
COUNTED(int, lstat64, (const char *path, struct stat64 *info), (path, info))
COUNTED(int, fstatat, (int folder, const char *path, struct stat *info, int flags), (folder, path, info, flags))
COUNTED(int, fstatat64, (int folder, const char *path, struct stat64 *info, int flags), (folder, path, info, flags))
COUNTED(int, statx, (int folder, const char *path, int flags, unsigned mask, struct statx *info),
        (folder, path, flags, mask, info))
COUNTED(int, access, (const char *path, int mode), (path, mode))
COUNTED(int, faccessat, (int folder, const char *path, int mode, int flags), (folder, path, mode, flags))
COUNTED(ssize_t, readlink, (const char *path, char *target, unsigned long size), (path, target, size))
COUNTED(char *, realpath, (const char *path, char *resolved), (path, resolved))
COUNTED(void *, opendir, (const char *path), (path))
COUNTED(int, rename, (const char *from, const char *to), (from, to))
COUNTED(int, renameat2, (int fromFolder, const char *from, int toFolder, const char *to, unsigned flags),
        (fromFolder, from, toFolder, to, flags))
COUNTED(int, unlink, (const char *path), (path))
COUNTED(int, mkdir, (const char *path, unsigned mode), (path, mode))
COUNTED(int, rmdir, (const char *path), (path))
COUNTED(int, mkostemp64, (char *path, int flags), (path, flags))
COUNTED(int, mkostemp, (char *path, int flags), (path, flags))
COUNTED(char *, mkdtemp, (char *path), (path))
COUNTED(int, flock, (int file, int operation), (file, operation))
}
