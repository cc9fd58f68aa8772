#include "base/folderswap.h"

#include "base/filesystemcalls.h"
#include "base/folderlinks.h"
#include "base/folderremoval.h"
#include "base/leftovers.h"
#include "base/safename.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace base {

namespace {

constexpr int folderFlags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;
constexpr char namePattern[] = ".lorva-swap-*"; // unlike the names of other hidden folders, which are just deleted

WriteResult failed(const char *step)
{
    const int code = errno;
    return {QString::fromLatin1(step) + QStringLiteral(": ") + systemErrorText(code)};
}

enum class Kind { Nothing, Folder, Other };

Kind kindOf(const QString &path)
{
    struct stat info;
    if (::lstat(QFile::encodeName(path).constData(), &info) != 0)
        return errno == ENOENT ? Kind::Nothing : Kind::Other;
    return S_ISDIR(info.st_mode) ? Kind::Folder : Kind::Other;
}

bool move(const QString &from, const QString &to)
{
    return fileSystemCalls().rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) == 0;
}

/// The hidden folder of one swap. It holds the new folder, then the name of its place, which is written last and
/// thus says that the new one is whole, then the old folder. Locked as long as the process lives that works in it.
class SwapFolder
{
public:
    static SwapFolder make(const QString &projectFolder)
    {
        QByteArray path = QFile::encodeName(projectFolder) + "/.lorva-swap-XXXXXX";
        SwapFolder made;
        if (::mkdtemp(path.data()) && !made.take(QFile::decodeName(path)))
            ::rmdir(path.constData());
        return made;
    }
    static SwapFolder leftBehind(const QString &path)
    {
        SwapFolder found;
        found.take(path);
        return found;
    }
    ~SwapFolder()
    {
        if (m_file >= 0)
            ::close(m_file);
    }
    SwapFolder(SwapFolder &&other) noexcept
        : m_path(other.m_path)
        , m_file(other.m_file)
    {
        other.m_file = -1;
    }
    SwapFolder(const SwapFolder &) = delete;
    SwapFolder &operator=(const SwapFolder &) = delete;

    bool isValid() const { return m_file >= 0; }
    QString newFolder() const { return m_path + QStringLiteral("/new"); }
    QString oldFolder() const { return m_path + QStringLiteral("/old"); }
    QString placeFile() const { return m_path + QStringLiteral("/place"); }
    /// Relative to the project folder; empty when the swap did not come that far.
    QString place() const
    {
        QFile file(placeFile());
        return file.open(QIODevice::ReadOnly) ? QFile::decodeName(file.readAll()) : QString();
    }
    void remove() { QDir(m_path).removeRecursively(); }

private:
    SwapFolder() = default;

    // False when another process works in it.
    bool take(const QString &path)
    {
        const QByteArray name = QFile::encodeName(path);
        m_path = path;
        m_file = ::open(name.constData(), folderFlags);
        if (m_file >= 0 && !lockHidden(m_file, name)) {
            ::close(m_file);
            m_file = -1;
        }
        return isValid();
    }

    QString m_path;
    int m_file = -1;
};

WriteResult build(const SwapFolder &swap, const QVector<FolderFile> &files, const QString &place)
{
    if (!makeFolder(swap.newFolder()))
        return failed("create");
    WriteResult result;
    for (const FolderFile &file : files) {
        if (!isPathComponent(file.name)) {
            errno = EINVAL;
            return failed("create");
        }
        result = writeFileAtomically(swap.newFolder() + QLatin1Char('/') + file.name, file.bytes);
        if (!result.ok())
            return result;
    }
    return writeFileAtomically(swap.placeFile(), QFile::encodeName(place));
}

void takePermissions(const QString &from, const QString &to)
{
    struct stat info;
    if (::stat(QFile::encodeName(from).constData(), &info) == 0)
        (void)::chmod(QFile::encodeName(to).constData(), info.st_mode & 07777);
}

void flushNames(const QString &folder)
{
    const int opened = ::open(QFile::encodeName(folder).constData(), folderFlags);
    if (opened < 0)
        return;
    fileSystemCalls().fsync(opened);
    ::close(opened);
}

// The new folder is whole. The hidden one stays for finishFolderSwaps() when the old one can no longer be put back.
ReplaceResult swapIn(SwapFolder *swap, const QString &target, bool replaces)
{
    if (replaces && !move(target, swap->oldFolder())) {
        const ReplaceResult result{failed("rename"), true};
        swap->remove();
        return result;
    }
    if (move(swap->newFolder(), target)) {
        flushNames(QFileInfo(target).path());
        swap->remove();
        return {};
    }
    const ReplaceResult result{failed("rename")};
    if (!replaces || move(swap->oldFolder(), target))
        swap->remove();
    return result;
}

// A place inside the project, without a step up.
bool isPlace(const QString &place)
{
    for (const QString &component : place.split(QLatin1Char('/')))
        if (!isPathComponent(component))
            return false;
    return true;
}

// True when nothing of it is needed any more.
bool finish(const SwapFolder &swap, const QString &projectFolder)
{
    if (kindOf(swap.oldFolder()) == Kind::Nothing)
        return true; // it had not begun to move, or is over
    if (kindOf(swap.placeFile()) == Kind::Nothing)
        return true; // it was over, and being cleared away
    const QString place = swap.place();
    if (!isPlace(place))
        return false;
    const QString target = projectFolder + QLatin1Char('/') + place;
    const bool hasNew = kindOf(swap.newFolder()) != Kind::Nothing;
    const bool isTaken = kindOf(target) != Kind::Nothing;
    if (hasNew && !isTaken) {
        makeFolder(QFileInfo(target).path());
        return move(swap.newFolder(), target);
    }
    if (!hasNew && isTaken)
        return true;
    // Somebody else made or deleted the folder meanwhile.
    return keepDeletedFolder(swap.oldFolder(), place, projectFolder)
        && (!hasNew || keepDeletedFolder(swap.newFolder(), place, projectFolder));
}

} // namespace

ReplaceResult replaceFolder(const QString &parent, const QString &name, const QVector<FolderFile> &files,
                            const QString &projectFolder)
{
    const QString target = parent + QLatin1Char('/') + name;
    const QString place = target.mid(projectFolder.size() + 1);
    const Kind kind = kindOf(target);
    if (!isPathComponent(name) || isReservedName(name) || !target.startsWith(projectFolder + QLatin1Char('/'))
        || !isPlace(place) || kind == Kind::Other) {
        errno = EINVAL;
        return {failed("create"), kind == Kind::Other};
    }
    const int problem = linkProblem(QFileInfo(projectFolder).path(), parent);
    if (problem != 0)
        return {{systemErrorText(problem)}};
    SwapFolder swap = SwapFolder::make(projectFolder);
    if (!swap.isValid())
        return {failed("create")};
    const WriteResult built = build(swap, files, place);
    if (!built.ok()) {
        swap.remove();
        return {built};
    }
    if (kind == Kind::Folder)
        takePermissions(target, swap.newFolder());
    const bool isParentMade = kind == Kind::Nothing && makeFolder(parent);
    const ReplaceResult result = swapIn(&swap, target, kind == Kind::Folder);
    if (!result.ok() && isParentMade)
        ::rmdir(QFile::encodeName(parent).constData());
    return result;
}

void finishFolderSwaps(const QString &projectFolder)
{
    const QStringList left = QDir(projectFolder)
                                 .entryList({QString::fromLatin1(namePattern)},
                                            QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot | QDir::NoSymLinks);
    for (const QString &name : left) {
        SwapFolder swap = SwapFolder::leftBehind(projectFolder + QLatin1Char('/') + name);
        if (swap.isValid() && finish(swap, projectFolder))
            swap.remove();
    }
}

} // namespace base
