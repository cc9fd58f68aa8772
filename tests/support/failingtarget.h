#pragma once

#include "base/filesystemcalls.h"

#include <QByteArray>

#include <cerrno>

/// A disk on which nothing can be put in place at paths with a certain end, nor be deleted from there.
class FailingTarget : public base::FileSystemCalls
{
public:
    explicit FailingTarget(const QByteArray &pathEnd)
        : m_pathEnd(pathEnd)
    {
    }

    int rename(const char *from, const char *to) override
    {
        return isConcerned(to) ? full() : FileSystemCalls::rename(from, to);
    }
    int unlink(const char *path) override { return isConcerned(path) ? full() : FileSystemCalls::unlink(path); }

private:
    bool isConcerned(const char *path) const { return QByteArray(path).endsWith(m_pathEnd); }
    static int full()
    {
        errno = ENOSPC;
        return -1;
    }

    QByteArray m_pathEnd;
};
