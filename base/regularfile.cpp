#include "base/regularfile.h"

#include "base/folderlinks.h"

#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace base {

int openRegularFile(const QString &path, const QString &root, int *errorCode, struct stat *info)
{
    const QByteArray name = QFile::encodeName(path);
    *errorCode = 0;
    // Not blocking: a pipe in a file's place would wait for ever.
    constexpr int flags = O_RDONLY | O_CLOEXEC | O_NONBLOCK;
    int file = ::open(name.constData(), flags | O_NOFOLLOW);
    if (file < 0 && errno == ELOOP) {
        *errorCode = linkProblem(root, path);
        if (*errorCode != 0)
            return -1;
        file = ::open(name.constData(), flags);
        if (file < 0 && errno == ENOENT)
            errno = ENOLINK;
    }
    if (file < 0) {
        *errorCode = errno;
        return -1;
    }
    if (::fstat(file, info) != 0)
        *errorCode = errno;
    else if (!S_ISREG(info->st_mode))
        *errorCode = S_ISDIR(info->st_mode) ? EISDIR : EINVAL;
    if (*errorCode == 0)
        return file;
    ::close(file);
    return -1;
}

RegularFile readRegularFile(const QString &path, const QString &root, qint64 maximumSize)
{
    RegularFile result;
    result.errorCode = linkProblem(root, path);
    if (!result.ok())
        return result;
    struct stat info
    { };
    const int file = openRegularFile(path, root, &result.errorCode, &info);
    if (file < 0)
        return result;
    if (info.st_size > maximumSize)
        result.errorCode = EFBIG;
    QByteArray bytes(result.ok() ? static_cast<int>(info.st_size) : 0, Qt::Uninitialized);
    int done = 0;
    while (done < bytes.size()) {
        const ssize_t got = ::read(file, bytes.data() + done, static_cast<size_t>(bytes.size() - done));
        if (got < 0 && errno == EINTR)
            continue;
        if (got < 0)
            result.errorCode = errno;
        if (got <= 0)
            break;
        done += static_cast<int>(got);
    }
    ::close(file);
    if (result.ok()) {
        bytes.truncate(done);
        result.bytes = bytes;
    }
    return result;
}

} // namespace base
