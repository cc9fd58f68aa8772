#include "base/leftovers.h"

#include "base/filelock.h"
#include "base/filesystemcalls.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace base {

namespace {

constexpr int folderFlags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;

bool isSame(const struct stat &a, const struct stat &b)
{
    return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

void removeLeftover(const QString &path)
{
    const QByteArray name = QFile::encodeName(path);
    struct stat there
    { };
    if (::lstat(name.constData(), &there) != 0 || !(S_ISREG(there.st_mode) || S_ISDIR(there.st_mode)))
        return;
    const bool isFolder = S_ISDIR(there.st_mode);
    const int file = isFolder ? ::open(name.constData(), folderFlags) : openToLock(name);
    struct stat opened
    { };
    if (file < 0)
        return;
    if (tryLock(file) == LockState::Locked && ::fstat(file, &opened) == 0 && isSame(there, opened)) {
        if (isFolder)
            QDir(path).removeRecursively();
        else
            fileSystemCalls().unlink(name.constData());
    }
    ::close(file);
}

// Of the names that mkdtemp() and mkstemp() give after this prefix.
void removeUnlocked(const QString &folder, const QString &prefix, QDir::Filters kinds)
{
    const QRegularExpression own(QLatin1Char('^') + QRegularExpression::escape(prefix)
                                 + QStringLiteral("[A-Za-z0-9]{6}$"));
    const QStringList entries = folder.isEmpty()
        ? QStringList()
        : QDir(folder).entryList({prefix + QLatin1Char('*')}, kinds | QDir::Hidden | QDir::NoDotAndDotDot);
    for (const QString &name : entries)
        if (own.match(name).hasMatch())
            removeLeftover(folder + QLatin1Char('/') + name);
}

} // namespace

bool lockHidden(int file, const QByteArray &path)
{
    struct stat opened
    { };
    struct stat there
    { };
    return tryLock(file) != LockState::HeldByOther && ::fstat(file, &opened) == 0
        && ::lstat(path.constData(), &there) == 0 && isSame(opened, there);
}

HiddenFolder::HiddenFolder(const QString &parent, const QByteArray &prefix)
{
    constexpr int tries = 10;
    for (int i = 0; i < tries; ++i) {
        QByteArray path = QFile::encodeName(parent) + '/' + prefix + "XXXXXX";
        if (!::mkdtemp(path.data()))
            return;
        m_file = ::open(path.constData(), folderFlags);
        if (m_file >= 0 && lockHidden(m_file, path)) {
            m_path = QFile::decodeName(path);
            return;
        }
        if (m_file >= 0)
            ::close(m_file);
        m_file = -1;
        ::rmdir(path.constData());
    }
}

HiddenFolder::~HiddenFolder()
{
    if (!isValid())
        return;
    QDir(m_path).removeRecursively();
    ::close(m_file);
}

void removeLeftovers(const QString &folder)
{
    removeUnlocked(folder, QStringLiteral(".lorva-"), QDir::Files | QDir::Dirs | QDir::System);
}

void removeHiddenFolders(const QString &folder, const QByteArray &prefix)
{
    removeUnlocked(folder, QString::fromLatin1(prefix), QDir::Dirs);
}

} // namespace base
