#pragma once

#include "base/filesystemcalls.h"

#include <QFile>
#include <QStringList>

#include <cerrno>

/// A disk on which one step of every write fails; it also counts the files that were put in place.
class FailingDisk : public base::FileSystemCalls
{
public:
    enum Step { Nothing, Open, Write, HalfWrite, Flush, Close, Rename };

    explicit FailingDisk(Step step = Nothing)
        : m_step(step)
    {
    }

    int openTemporary(char *pathTemplate) override
    {
        return m_step == Open ? full() : FileSystemCalls::openTemporary(pathTemplate);
    }
    ssize_t write(int file, const void *bytes, size_t size) override
    {
        if (m_step == Write || (m_step == HalfWrite && m_isHalfWritten))
            return full();
        if (m_step == HalfWrite) {
            m_isHalfWritten = true;
            size = (size + 1) / 2;
        }
        ++writesSinceCommonFlush;
        return FileSystemCalls::write(file, bytes, size);
    }
    int fsync(int file) override
    {
        ++flushes;
        return m_step == Flush ? full() : FileSystemCalls::fsync(file);
    }
    int syncfs(int file) override
    {
        ++commonFlushes;
        writtenAtCommonFlush = written.size();
        writesSinceCommonFlush = 0;
        return m_step == Flush ? full() : FileSystemCalls::syncfs(file);
    }
    int close(int file) override
    {
        const int result = FileSystemCalls::close(file);
        return m_step == Close ? full() : result;
    }
    int rename(const char *from, const char *to) override
    {
        m_isHalfWritten = false;
        if (m_step == Rename)
            return full();
        written.append(QFile::decodeName(to));
        return FileSystemCalls::rename(from, to);
    }
    int renameToNew(const char *from, const char *to) override
    {
        m_isHalfWritten = false;
        if (m_step == Rename)
            return full();
        written.append(QFile::decodeName(to));
        return FileSystemCalls::renameToNew(from, to);
    }

    QStringList written; ///< paths in the order in which they came into place
    int flushes = 0; ///< of single files and folders
    int commonFlushes = 0; ///< of the whole file system
    int writtenAtCommonFlush = 0; ///< how many files were in place at the last of these
    int writesSinceCommonFlush = 0; ///< calls that wrote bytes after it

private:
    static int full()
    {
        errno = ENOSPC;
        return -1;
    }

    Step m_step;
    bool m_isHalfWritten = false;
};

/// The steps that can fail, for the rows of a data-driven test.
struct FailingStep
{
    const char *name;
    FailingDisk::Step step;
};
constexpr FailingStep failingSteps[] = {
    {"open", FailingDisk::Open},   {"write", FailingDisk::Write}, {"half a write", FailingDisk::HalfWrite},
    {"flush", FailingDisk::Flush}, {"close", FailingDisk::Close}, {"rename", FailingDisk::Rename},
};
