#include "base/folderremoval.h"

#include "base/filesystemcalls.h"
#include "base/folderlinks.h"
#include "base/safename.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cerrno>
#include <sys/stat.h>
#include <unistd.h>

namespace base {

namespace {

constexpr int numberWidth = 6;
constexpr int maximumNumber = 1000000000;
constexpr int maximumTries = 100;

bool isRealFolder(const QString &path)
{
    struct stat info;
    return ::lstat(QFile::encodeName(path).constData(), &info) == 0 && S_ISDIR(info.st_mode);
}

/// The folder in which a project keeps what was deleted, one numbered folder a deletion.
class DeletedFolders
{
public:
    explicit DeletedFolders(const QString &projectFolder)
        : m_path(projectFolder + QStringLiteral("/.lorva-deleted"))
    {
    }

    bool take(const QString &path, const QString &place)
    {
        if (!isRealFolder(m_path) && !makeFolder(m_path))
            return false;
        const QString entry = makeEntry();
        const QString target = entry + QLatin1Char('/') + place;
        if (!entry.isEmpty() && makeParents(entry, place)
            && fileSystemCalls().rename(QFile::encodeName(path).constData(), QFile::encodeName(target).constData())
                == 0)
            return true;
        if (!entry.isEmpty())
            QDir(entry).removeRecursively();
        ::rmdir(QFile::encodeName(m_path).constData()); // stays unless it is empty
        return false;
    }

    void forgetOldest() const
    {
        const QVector<int> kept = numbers();
        for (int i = 0; i < kept.size() - maximumDeletedFolders; ++i)
            QDir(entryPath(kept.at(i))).removeRecursively();
    }

private:
    QVector<int> numbers() const
    {
        QVector<int> result;
        for (const QString &name : QDir(m_path).entryList(QDir::Dirs | QDir::NoDotAndDotDot | QDir::NoSymLinks)) {
            const int number = name.toInt();
            if (number > 0 && number < maximumNumber && entryName(number) == name)
                result.append(number);
        }
        std::sort(result.begin(), result.end());
        return result;
    }

    static QString entryName(int number)
    {
        return QString::number(number).rightJustified(numberWidth, QLatin1Char('0'));
    }
    QString entryPath(int number) const { return m_path + QLatin1Char('/') + entryName(number); }

    // Another process may take the number in between.
    QString makeEntry() const
    {
        const QVector<int> taken = numbers();
        int number = taken.isEmpty() ? 0 : taken.last();
        for (int i = 0; i < maximumTries; ++i) {
            const QString path = entryPath(++number);
            if (makeFolder(path))
                return path;
            if (errno != EEXIST)
                break;
        }
        return {};
    }

    static bool makeParents(const QString &entry, const QString &place)
    {
        QString path = entry;
        QStringList components = place.split(QLatin1Char('/'));
        components.removeLast();
        return std::all_of(components.begin(), components.end(), [&path](const QString &component) {
            path += QLatin1Char('/') + component;
            return makeFolder(path);
        });
    }

    QString m_path;
};

} // namespace

bool keepDeletedFolder(const QString &path, const QString &place, const QString &projectFolder)
{
    DeletedFolders deleted(projectFolder);
    if (!deleted.take(path, place))
        return false;
    deleted.forgetOldest();
    return true;
}

bool removeFolder(const QString &parent, const QString &name, const QString &projectFolder)
{
    const QString path = parent + QLatin1Char('/') + name;
    if (!isPathComponent(name) || !parent.startsWith(projectFolder + QLatin1Char('/')) || !isRealFolder(path)
        || linkProblem(QFileInfo(projectFolder).path(), parent) != 0)
        return false;
    return keepDeletedFolder(path, path.mid(projectFolder.size() + 1), projectFolder);
}

} // namespace base
