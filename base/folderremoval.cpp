#include "base/folderremoval.h"

#include "base/filesystemcalls.h"
#include "base/folderlinks.h"
#include "base/leftovers.h"

#include <QFile>
#include <QFileInfo>

#include <sys/stat.h>

namespace base {

namespace {

bool isRealFolder(const QString &path)
{
    struct stat info;
    return ::lstat(QFile::encodeName(path).constData(), &info) == 0 && S_ISDIR(info.st_mode);
}

} // namespace

bool removeFolder(const QString &parent, const QString &name, const QString &projectFolder)
{
    if (name.isEmpty() || name == QLatin1String(".") || name == QLatin1String("..") || name.contains(QLatin1Char('/'))
        || name.contains(QChar(0)))
        return false;
    const QString path = parent + QLatin1Char('/') + name;
    if (!isRealFolder(path) || linkProblem(QFileInfo(projectFolder).path(), parent) != 0)
        return false;
    // Its destructor deletes what was moved into it; links inside are deleted, never followed.
    const HiddenFolder aside(projectFolder);
    if (!aside.isValid())
        return false;
    const QString removed = aside.filePath(QStringLiteral("removed"));
    return fileSystemCalls().rename(QFile::encodeName(path).constData(), QFile::encodeName(removed).constData()) == 0;
}

} // namespace base
