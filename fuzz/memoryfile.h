#pragma once

#include "fuzz/fuzzcheck.h"

#include <QString>

#include <QTemporaryDir>

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

inline void fill(int file, const uint8_t *data, size_t size)
{
    check(::ftruncate(file, 0) == 0 && ::pwrite(file, data, size, 0) == static_cast<ssize_t>(size),
          "the input is written");
}

/// A folder that goes with the program, in memory where there is such a place.
inline const QString &memoryFolder()
{
    static const QTemporaryDir folder(::access("/dev/shm", W_OK) == 0 ? QStringLiteral("/dev/shm/fuzz-XXXXXX")
                                                                      : QStringLiteral("/tmp/fuzz-XXXXXX"));
    static const QString path = folder.path();
    return path;
}

/// For readers that follow no links.
inline const QString &plainFileHolding(const uint8_t *data, size_t size)
{
    static const QString path = memoryFolder() + QStringLiteral("/input");
    static const int file = ::open(path.toLocal8Bit().constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0666);
    fill(file, data, size);
    return path;
}

/// For readers that take a path and follow links: a file which exists in memory only. It holds the last input that was
/// asked for.
inline const QString &fileHolding(const uint8_t *data, size_t size)
{
    static const int file = ::memfd_create("fuzz", MFD_CLOEXEC);
    static const QString path = QStringLiteral("/proc/self/fd/%1").arg(file);
    fill(file, data, size);
    return path;
}
