#include "openedfiles.h"

#include <climits>
#include <cstdarg>
#include <dlfcn.h>
#include <fcntl.h>
#include <unistd.h>

namespace campaign {

OpenedFiles *OpenedFiles::inForce = nullptr;

OpenedFiles::OpenedFiles(const QByteArray &folder)
    : m_folder(folder + '/')
{
    inForce = this;
}

OpenedFiles::~OpenedFiles()
{
    inForce = nullptr;
}

void OpenedFiles::note(int file)
{
    char target[PATH_MAX];
    const ssize_t size = ::readlink(("/proc/self/fd/" + QByteArray::number(file)).constData(), target, sizeof target);
    const QByteArray path(target, static_cast<int>(qMax<ssize_t>(size, 0)));
    if (path.startsWith(m_folder))
        m_paths.append(path);
}

namespace {

int opened(int file)
{
    if (file >= 0 && OpenedFiles::inForce)
        OpenedFiles::inForce->note(file);
    return file;
}

} // namespace

} // namespace campaign

// These take the place of the C library's in this program.
#define LORVA_OPENING_CALL(name)                                                                                     \
    extern "C" int name(const char *path, int flags, ...)                                                            \
    {                                                                                                                \
        static const auto call = reinterpret_cast<int (*)(const char *, int, ...)>(::dlsym(RTLD_NEXT, #name));       \
        std::va_list rest;                                                                                           \
        va_start(rest, flags);                                                                                       \
        const auto mode = static_cast<mode_t>((flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(rest, unsigned) : 0);    \
        va_end(rest);                                                                                                \
        return campaign::opened(call(path, flags, mode));                                                            \
    }

LORVA_OPENING_CALL(open)
LORVA_OPENING_CALL(open64)
