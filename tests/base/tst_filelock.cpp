// Locks, and what dead programs left behind: other programs are children of the test.

#include "base/atomicfile.h"
#include "base/filelock.h"
#include "base/filesystemcalls.h"
#include "base/leftovers.h"
#include "support/files.h"
#include "support/otherprogram.h"
#include "support/testmain.h"

#include <QDir>
#include <QElapsedTimer>
#include <QTemporaryDir>

#include <fcntl.h>
#include <functional>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

std::function<void()> beforeLock;

} // namespace

// Stands before the C library's, for what happens between the making of a folder and its lock.
extern "C" __attribute__((visibility("default"))) int lockAfterwards(int file, int operation) __asm__("flock");
int lockAfterwards(int file, int operation)
{
    if (beforeLock)
        beforeLock();
    return static_cast<int>(::syscall(SYS_flock, file, operation));
}

class TestFileLock : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_folder = std::make_unique<QTemporaryDir>(); }
    void aSecondWriterWaitsForTheFirst();
    void aProgramWithoutStandardInputLocksToo();
    void aLockEndsWithItsProcess();
    void aFolderWithoutALockFileHasNoLock();
    void theLockFileMayBeUsedByAllWhoMayWriteTheFolder();
    void aFileBeingWrittenIsNoLeftover();
    void aHiddenFolderInUseIsNoLeftover();
    void leftoversOfTheDeadGoAndNothingElse();
    void aFileTakenForALeftoverTooEarlyIsMadeAgain();
    void aFolderTakenForALeftoverTooEarlyIsMadeAgain();
    void aHiddenFolderGoesWithItsContent();

private:
    QString folder() const { return m_folder->path(); }
    QString path(const char *name) const { return m_folder->filePath(QString::fromUtf8(name)); }
    QStringList names() const
    {
        return QDir(folder()).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    }
    std::unique_ptr<QTemporaryDir> m_folder;
};

void TestFileLock::aSecondWriterWaitsForTheFirst()
{
    {
        const base::FolderLock first(folder());
        QVERIFY(!first.isRefused());
        const base::FolderLock second(folder(), 30);
        QVERIFY(second.isRefused());
    }
    const base::FolderLock third(folder(), 0);
    QVERIFY(!third.isRefused());
    QCOMPARE(names(), QStringList{QStringLiteral(".lorva.lock")});
}

void TestFileLock::aProgramWithoutStandardInputLocksToo()
{
    QCOMPARE(::chmod(QFile::encodeName(folder()).constData(), 0777), 0);
    const int input = ::dup(0);
    ::close(0); // the next file that is opened gets its number
    bool isRefused = false;
    {
        const base::FolderLock first(folder());
        isRefused = base::FolderLock(folder(), 0).isRefused();
    }
    errno = 0; // what was left there by others is not looked at
    {
        const base::FolderLock again(folder());
    } // the file of the lock is there
    const bool isLeftOpen = ::fcntl(0, F_GETFD) >= 0;
    struct stat info
    { };
    const int result = ::stat(QFile::encodeName(path(".lorva.lock")).constData(), &info);
    ::dup2(input, 0);
    ::close(input);
    QVERIFY(isRefused);
    QVERIFY(!isLeftOpen);
    QCOMPARE(result, 0);
    QCOMPARE(info.st_mode & 0777, 0666u);
}

void TestFileLock::aLockEndsWithItsProcess()
{
    OtherProgram other([this](const auto &wait) {
        const base::FolderLock lock(folder());
        wait();
    });
    QVERIFY(base::FolderLock(folder(), 20).isRefused());
    other.kill();
    QVERIFY(!base::FolderLock(folder(), 0).isRefused());
}

void TestFileLock::aFolderWithoutALockFileHasNoLock()
{
    QVERIFY(!base::FolderLock(path("none"), 0).isRefused());
    QVERIFY(QDir(folder()).mkdir(QStringLiteral(".lorva.lock")));
    QVERIFY(!base::FolderLock(folder(), 0).isRefused());
    QVERIFY(QDir(folder()).rmdir(QStringLiteral(".lorva.lock")));
    files::write(path("target"), {});
    QVERIFY(QFile::link(path("target"), path(".lorva.lock")));
    QVERIFY(!base::FolderLock(folder(), 0).isRefused());
}

void TestFileLock::theLockFileMayBeUsedByAllWhoMayWriteTheFolder()
{
    for (const mode_t mode : {0775u, 0777u, 0700u}) {
        const QByteArray sub = QFile::encodeName(path("sub"));
        QCOMPARE(::mkdir(sub.constData(), mode), 0);
        QCOMPARE(::chmod(sub.constData(), mode), 0);
        QVERIFY(!base::FolderLock(path("sub")).isRefused());
        struct stat info
        { };
        QCOMPARE(::stat((sub + "/.lorva.lock").constData(), &info), 0);
        QCOMPARE(info.st_mode & 0777, mode & 0666);
        QVERIFY(QDir(path("sub")).removeRecursively());
    }
}

void TestFileLock::aFileBeingWrittenIsNoLeftover()
{
    base::AtomicFileWriter writer;
    QVERIFY(writer.open(path("a")).ok());
    base::removeLeftovers(folder());
    QVERIFY(writer.write("text", 4).ok());
    base::removeLeftovers(folder());
    // Also between its closing and its move.
    class CleanUpBefore : public base::FileSystemCalls
    {
    public:
        int rename(const char *from, const char *to) override
        {
            base::removeLeftovers(folder);
            return FileSystemCalls::rename(from, to);
        }
        QString folder;
    };
    CleanUpBefore calls;
    calls.folder = folder();
    base::ScopedFileSystemCalls scope(calls);
    QVERIFY(writer.commit().ok());
    QCOMPARE(files::snapshot(folder()), (QMap<QString, QByteArray>{{"a", "text"}}));
}

void TestFileLock::aHiddenFolderInUseIsNoLeftover()
{
    OtherProgram other([this](const auto &wait) {
        const base::HiddenFolder hidden(folder());
        files::write(hidden.filePath("file"), "f");
        wait();
    });
    base::removeLeftovers(folder());
    QCOMPARE(names().size(), 1);
    other.kill();
    base::removeLeftovers(folder());
    QVERIFY(names().isEmpty());
}

void TestFileLock::leftoversOfTheDeadGoAndNothingElse()
{
    OtherProgram other([this](const auto &wait) {
        base::AtomicFileWriter writer;
        (void)writer.open(path("a"));
        (void)writer.write("half", 4);
        wait();
    });
    other.kill();
    QCOMPARE(names().size(), 1);
    files::write(path(".lorva-abc123/deep/file"), "f");
    for (const char *name : {".lorva-abcdef.txt", ".lorva-short", ".lorva-longername", ".lorva-A.well", ".lorva-",
                             ".lorva.lock", "lorva-abcdef", ".lorva-a-b-c-", "folder/.lorva-inside"})
        files::write(path(name), "kept");
    files::write(path("outside/file"), "kept");
    QVERIFY(QFile::link(path("outside"), path(".lorva-link00")));
    QVERIFY(QFile::link(path("outside"), path(".lorva-abc123/link")));
    QCOMPARE(::mkfifo(QFile::encodeName(path(".lorva-pipe00")).constData(), 0666), 0);
    const QStringList before = names();
    base::removeLeftovers(folder());
    QStringList gone = before;
    for (const QString &name : names())
        gone.removeAll(name);
    QCOMPARE(gone.size(), 2);
    QVERIFY(gone.contains(QStringLiteral(".lorva-abc123")));
    QCOMPARE(files::read(path("outside/file")), QByteArray("kept"));
    QCOMPARE(files::read(path("folder/.lorva-inside")), QByteArray("kept"));
    base::removeLeftovers(path("none"));
}

// The clean-up of another program comes between the making of a file and its locking.
void TestFileLock::aFileTakenForALeftoverTooEarlyIsMadeAgain()
{
    class EarlyCleanUp : public base::FileSystemCalls
    {
    public:
        int openTemporary(char *pathTemplate) override
        {
            const int file = FileSystemCalls::openTemporary(pathTemplate);
            if (++count == 1)
                ::unlink(pathTemplate);
            return file;
        }
        int count = 0;
    };
    EarlyCleanUp calls;
    base::ScopedFileSystemCalls scope(calls);
    QVERIFY(base::writeFileAtomically(path("a"), "text").ok());
    QCOMPARE(calls.count, 2);
    QCOMPARE(files::snapshot(folder()), (QMap<QString, QByteArray>{{"a", "text"}}));
}

void TestFileLock::aFolderTakenForALeftoverTooEarlyIsMadeAgain()
{
    const auto openFiles = [] { return QDir(QStringLiteral("/proc/self/fd")).count(); };
    const int input = ::dup(0);
    ::close(0); // the next file that is opened gets its number
    const auto before = openFiles();
    int locks = 0;
    beforeLock = [this, &locks] {
        if (++locks == 1)
            QDir(folder()).rmdir(names().first());
    };
    bool isThere = false;
    {
        const base::HiddenFolder hidden(folder());
        isThere = hidden.isValid() && QFileInfo(hidden.path()).isDir();
    }
    beforeLock = nullptr;
    const auto after = openFiles();
    ::dup2(input, 0);
    ::close(input);
    QVERIFY(isThere);
    QCOMPARE(locks, 2);
    QCOMPARE(after, before);
}

void TestFileLock::aHiddenFolderGoesWithItsContent()
{
    {
        const base::HiddenFolder hidden(folder());
        QVERIFY(hidden.isValid());
        files::write(hidden.filePath("a/b"), "text");
        QCOMPARE(names(), QStringList{hidden.path().section('/', -1)});
        QVERIFY(hidden.path().section('/', -1).startsWith(".lorva-"));
    }
    QVERIFY(names().isEmpty());
    const base::HiddenFolder nowhere(path("none"));
    QVERIFY(!nowhere.isValid());
}

LORVA_TEST_MAIN(TestFileLock)
#include "tst_filelock.moc"
