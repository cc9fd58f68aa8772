#include "base/atomicfile.h"

#include "base/filesystemcalls.h"
#include "base/folderlinks.h"
#include "base/leftovers.h"

#include <QFile>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>

namespace base {

namespace {

WriteResult systemError(int code)
{
    return {QString::fromLocal8Bit(std::strerror(code))};
}

QByteArray folderOf(const QByteArray &path)
{
    const int slash = path.lastIndexOf('/');
    if (slash < 0)
        return QByteArray(".");
    return slash == 0 ? QByteArray("/") : path.left(slash);
}

// The permissions of an existing file go to the new one; *mode stays as it is where there is none.
WriteResult checkTarget(const QByteArray &path, std::optional<mode_t> *mode)
{
    if (path.isEmpty() || path.contains('\0'))
        return systemError(EINVAL);
    struct stat info;
    if (::lstat(path.constData(), &info) != 0) {
        if (errno != ENOENT)
            return systemError(errno);
        return ::access(folderOf(path).constData(), W_OK | X_OK) == 0 ? WriteResult{} : systemError(errno);
    }
    if (S_ISLNK(info.st_mode)) {
        struct stat target
        { };
        if (::stat(path.constData(), &target) != 0)
            return {systemErrorText(ENOLINK)}; // a share that is not mounted: the file is there all the same
        return ::access(folderOf(path).constData(), W_OK | X_OK) == 0 ? WriteResult{} : systemError(errno);
    }
    if (S_ISDIR(info.st_mode))
        return systemError(EISDIR);
    if (!S_ISREG(info.st_mode))
        return systemError(EINVAL);
    *mode = info.st_mode & 07777;
    return ::access(path.constData(), W_OK) == 0 ? WriteResult{} : systemError(errno);
}

} // namespace

WriteResult checkWritable(const QString &path)
{
    std::optional<mode_t> mode;
    return checkTarget(QFile::encodeName(path), &mode);
}

AtomicFileWriter::~AtomicFileWriter()
{
    discard();
}

WriteResult AtomicFileWriter::fail(const char *step)
{
    const int code = errno;
    if (m_result.ok())
        m_result = {QString::fromLatin1(step) + QStringLiteral(": ") + systemError(code).error};
    discard();
    errno = code;
    return m_result;
}

void AtomicFileWriter::discard()
{
    if (m_file >= 0) {
        ::close(m_file);
        m_file = -1;
    }
    if (!m_temporary.isEmpty()) {
        ::unlink(m_temporary.constData());
        m_temporary.clear();
    }
}

WriteResult AtomicFileWriter::open(const QString &path)
{
    discard();
    m_path = QFile::encodeName(path);
    std::optional<mode_t> mode;
    m_result = checkTarget(m_path, &mode);
    if (!m_result.ok())
        return m_result;
    // A name of its own, not the target's with a suffix: it cannot grow too long or meet a user's file, and it is
    // hidden from every listing of ours.
    constexpr int tries = 10;
    for (int i = 0; i < tries && m_file < 0; ++i) {
        QByteArray name = folderOf(m_path) + "/.lorva-XXXXXX";
        m_file = fileSystemCalls().openTemporary(name.data());
        if (m_file < 0)
            return fail("create");
        m_temporary = name;
        if (!lockHidden(m_file, name))
            discard();
    }
    if (m_file < 0) {
        errno = EAGAIN;
        return fail("create");
    }
    if (mode && ::fchmod(m_file, *mode) != 0)
        return fail("set permissions");
    return m_result;
}

WriteResult AtomicFileWriter::write(const char *bytes, qint64 size)
{
    if (!m_result.ok() || m_file < 0) {
        errno = EBADF;
        return fail("write");
    }
    while (size > 0) {
        const ssize_t done = fileSystemCalls().write(m_file, bytes, static_cast<size_t>(size));
        if (done < 0 && errno == EINTR)
            continue;
        if (done <= 0) {
            if (done == 0)
                errno = ENOSPC;
            return fail("write");
        }
        bytes += done;
        size -= done;
    }
    return m_result;
}

WriteResult AtomicFileWriter::seek(qint64 position)
{
    if (!m_result.ok() || m_file < 0)
        errno = EBADF;
    else if (::lseek(m_file, position, SEEK_SET) >= 0)
        return m_result;
    return fail("seek");
}

WriteResult AtomicFileWriter::commit(Flush flush)
{
    return putInPlace(&FileSystemCalls::rename, flush);
}

WriteResult AtomicFileWriter::commitAsNew(bool *isTaken)
{
    errno = 0;
    const WriteResult result = putInPlace(&FileSystemCalls::renameToNew, Flush::Now);
    *isTaken = !result.ok() && errno == EEXIST;
    return result;
}

WriteResult AtomicFileWriter::putInPlace(Rename rename, Flush flush)
{
    if (!m_result.ok() || m_file < 0) {
        errno = EBADF;
        return fail("write");
    }
    if (flush == Flush::Now && fileSystemCalls().fsync(m_file) != 0)
        return fail("flush");
    // Closing tells the last errors; the second descriptor keeps the lock until the file has its name.
    const int file = m_file;
    m_file = ::fcntl(file, F_DUPFD_CLOEXEC, 0);
    if (fileSystemCalls().close(file) != 0)
        return fail("close");
    if ((fileSystemCalls().*rename)(m_temporary.constData(), m_path.constData()) != 0)
        return fail("rename");
    if (m_file >= 0)
        ::close(m_file);
    m_file = -1;
    m_temporary.clear();
    if (flush == Flush::Later)
        return m_result;
    // The new name reaches the disk with its folder. The content is already in place whatever this says.
    const int folder = ::open(folderOf(m_path).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder >= 0) {
        fileSystemCalls().fsync(folder);
        ::close(folder);
    }
    return m_result;
}

WriteResult writeFileAtomically(const QString &path, const QByteArray &bytes, Flush flush)
{
    AtomicFileWriter writer;
    WriteResult result = writer.open(path);
    if (result.ok())
        result = writer.write(bytes.constData(), bytes.size());
    if (result.ok())
        result = writer.commit(flush);
    return result;
}

WriteResult flushFileSystem(const QString &folder)
{
    const int opened = ::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    const bool isDone = opened >= 0 && fileSystemCalls().syncfs(opened) == 0;
    const WriteResult result = isDone ? WriteResult{} : systemError(errno);
    if (opened >= 0)
        ::close(opened);
    return result;
}

WriteResult writeNewFileAtomically(const QString &path, const QByteArray &bytes, bool *isTaken)
{
    *isTaken = isThere(path);
    if (*isTaken)
        return systemError(EEXIST);
    AtomicFileWriter writer;
    WriteResult result = writer.open(path);
    if (result.ok())
        result = writer.write(bytes.constData(), bytes.size());
    return result.ok() ? writer.commitAsNew(isTaken) : result;
}

} // namespace base
