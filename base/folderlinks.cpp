#include "base/folderlinks.h"

#include <QFile>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <dirent.h>
#include <memory>
#include <sys/stat.h>

namespace base {

namespace {

// Empty for what does not exist.
QByteArray canonical(const QByteArray &path)
{
    const std::unique_ptr<char, decltype(&std::free)> real(::realpath(path.constData(), nullptr), &std::free);
    return QByteArray(real.get());
}

bool isInside(const QByteArray &path, const QByteArray &folder)
{
    return path == folder || folder == "/" || path.startsWith(folder + '/');
}

int problemOfLink(const QByteArray &root, const QByteArray &link)
{
    const QByteArray target = canonical(link);
    if (target.isEmpty())
        return ENOLINK;
    return isInside(target, canonical(root)) ? 0 : EXDEV;
}

QByteArray withoutSlashAtEnd(QByteArray path)
{
    while (path.size() > 1 && path.endsWith('/'))
        path.chop(1);
    return path;
}

struct CloseFolder
{
    void operator()(DIR *folder) const { ::closedir(folder); }
};

void collectLinks(const QByteArray &root, const QByteArray &folder, QStringList *found)
{
    const std::unique_ptr<DIR, CloseFolder> entries(::opendir(folder.constData()));
    if (!entries)
        return;
    while (const dirent *entry = ::readdir(entries.get())) {
        const QByteArray name(entry->d_name);
        if (name == "." || name == "..")
            continue;
        const QByteArray path = folder + '/' + name;
        unsigned char type = entry->d_type;
        struct stat info
        { };
        if (type == DT_UNKNOWN && ::lstat(path.constData(), &info) == 0)
            type = S_ISLNK(info.st_mode) ? DT_LNK : S_ISDIR(info.st_mode) ? DT_DIR : DT_REG;
        if (type == DT_DIR)
            collectLinks(root, path, found);
        else if (type == DT_LNK && problemOfLink(root, path) != 0)
            found->append(QFile::decodeName(path));
    }
}

} // namespace

bool isThere(const QString &path)
{
    struct stat info
    { };
    return ::lstat(QFile::encodeName(path).constData(), &info) == 0;
}

int linkProblem(const QString &root, const QString &path)
{
    const QByteArray folder = withoutSlashAtEnd(QFile::encodeName(root));
    const QByteArray file = withoutSlashAtEnd(QFile::encodeName(path));
    if (folder.isEmpty() || file == folder || !isInside(file, folder))
        return 0;
    int end = folder.size();
    while (end < file.size()) {
        const int slash = file.indexOf('/', end + 1);
        end = slash < 0 ? file.size() : slash;
        const QByteArray part = file.left(end);
        struct stat info
        { };
        if (::lstat(part.constData(), &info) != 0)
            return 0; // nothing there; whoever opens it learns why
        if (!S_ISLNK(info.st_mode))
            continue;
        const int problem = problemOfLink(folder, part);
        if (problem != 0)
            return problem;
    }
    return 0;
}

QStringList forbiddenLinks(const QString &root, const QString &folder)
{
    if (linkProblem(root, folder) != 0)
        return {folder};
    QStringList found;
    collectLinks(QFile::encodeName(root), withoutSlashAtEnd(QFile::encodeName(folder)), &found);
    found.sort();
    return found;
}

QString systemErrorText(int code)
{
    if (code == EXDEV)
        return QStringLiteral("it is reached by a link that leads out of the survey");
    if (code == ENOLINK)
        return QStringLiteral("it is reached by a link that leads nowhere");
    return QString::fromLocal8Bit(std::strerror(code));
}

} // namespace base
