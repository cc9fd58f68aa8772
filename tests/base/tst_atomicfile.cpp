#include "base/atomicfile.h"
#include "base/filesystemcalls.h"
#include "support/files.h"
#include "support/testmain.h"
#include "support/unprivileged.h"

#include <QDir>
#include <QTemporaryDir>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

enum class Step { None, Open, Write, Fsync, Close, Rename };

// The real calls, with one that fails the n-th time.
class FailingCalls : public base::FileSystemCalls
{
public:
    FailingCalls(Step step, int code, int times = 1)
        : m_step(step)
        , m_code(code)
        , m_countdown(times)
    {
    }
    int openTemporary(char *path) override { return fails(Step::Open) ? -1 : FileSystemCalls::openTemporary(path); }
    ssize_t write(int file, const void *bytes, size_t size) override
    {
        ++writes;
        if (interruptions > 0) {
            --interruptions;
            errno = EINTR;
            return -1;
        }
        if (fails(Step::Write)) {
            if (m_code == 0)
                errno = EINTR; // of an earlier call: this one says nothing
            return m_code == 0 ? 0 : -1;
        }
        return FileSystemCalls::write(file, bytes, qMin(size, largestWrite));
    }
    int fsync(int file) override
    {
        ++fsyncs;
        return fails(Step::Fsync) ? -1 : FileSystemCalls::fsync(file);
    }
    int close(int file) override
    {
        const int result = FileSystemCalls::close(file);
        return fails(Step::Close) ? -1 : result;
    }
    int rename(const char *from, const char *to) override
    {
        ++renames;
        return fails(Step::Rename) ? -1 : FileSystemCalls::rename(from, to);
    }

    size_t largestWrite = SIZE_MAX;
    int interruptions = 0;
    int writes = 0;
    int fsyncs = 0;
    int renames = 0;

private:
    bool fails(Step step)
    {
        if (step != m_step || --m_countdown != 0)
            return false;
        errno = m_code;
        return true;
    }
    Step m_step;
    int m_code;
    int m_countdown;
};

mode_t modeOf(const QString &path)
{
    struct stat info
    { };
    return ::stat(QFile::encodeName(path).constData(), &info) == 0 ? info.st_mode & 07777 : 0;
}

QByteArray reason(int code)
{
    return std::strerror(code);
}

} // namespace

class TestAtomicFile : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void writesANewFile();
    void aProgramWithoutStandardInputWritesToo();
    void replacesAnOldFile();
    void writesEmptyBytes();
    void keepsTheOldContentWhenAStepFails_data();
    void keepsTheOldContentWhenAStepFails();
    void goesOnAfterShortWritesAndInterruptions();
    void ignoresAFolderThatCannotBeFlushed();
    void keepsTheOldContentAtAFileSizeLimit();
    void refusesAWriteProtectedFile();
    void refusesAWriteProtectedFolder();
    void refusesAFolder();
    void refusesAMissingParent();
    void refusesAParentThatIsAFile();
    void refusesWhatIsNoPlainFile();
    void refusesAnEmptyPathAndOneWithANullCharacter();
    void writesNamesOf255Bytes();
    void replacesASymbolicLinkAndLeavesItsTarget();
    void refusesADanglingLink();
    void makesANewFileOnlyWhereNoneIs();
    void aFileMadeInTheMeantimeIsNotReplaced();
    void keepsPermissions();
    void givesNewFilesThePermissionsOfTheMask();
    void writesARelativePath();
    void writerShowsNothingBeforeCommit();
    void writerDestroyedWithoutCommitLeavesNothing();
    void writerReportsItsFirstFailureAgain();
    void writerNeedsAnOpenFile();
    void writerCanBeOpenedAgain();
    void writableCheckTouchesNothing();

private:
    QString path(const char *name) const { return m_folder->filePath(QString::fromUtf8(name)); }
    QMap<QString, QByteArray> content() const { return files::snapshot(m_folder->path()); }
    std::unique_ptr<QTemporaryDir> m_folder;
};

void TestAtomicFile::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
}

void TestAtomicFile::writesANewFile()
{
    QVERIFY(base::writeFileAtomically(path("a"), QByteArray("new\0text", 8)).ok());
    QCOMPARE(content(), (QMap<QString, QByteArray>{{"a", QByteArray("new\0text", 8)}}));
}

void TestAtomicFile::aProgramWithoutStandardInputWritesToo()
{
    const int input = ::dup(0);
    ::close(0); // the next file that is opened gets its number
    const bool isWritten = base::writeFileAtomically(path("a"), "text").ok();
    ::dup2(input, 0);
    ::close(input);
    QVERIFY(isWritten);
    QCOMPARE(content(), (QMap<QString, QByteArray>{{"a", "text"}}));
}

void TestAtomicFile::replacesAnOldFile()
{
    files::write(path("a"), "a longer old text");
    QVERIFY(base::writeFileAtomically(path("a"), "new").ok());
    QCOMPARE(content(), (QMap<QString, QByteArray>{{"a", "new"}}));
}

void TestAtomicFile::writesEmptyBytes()
{
    files::write(path("a"), "old");
    QVERIFY(base::writeFileAtomically(path("a"), {}).ok());
    QVERIFY(base::writeFileAtomically(path("b"), {}).ok());
    QCOMPARE(content(), (QMap<QString, QByteArray>{{"a", ""}, {"b", ""}}));
}

void TestAtomicFile::keepsTheOldContentWhenAStepFails_data()
{
    QTest::addColumn<int>("step");
    QTest::addColumn<int>("code");
    QTest::addColumn<int>("times");
    QTest::addColumn<QByteArray>("says");
    const auto row = [](const char *name, Step step, int code, int times, const QByteArray &says) {
        QTest::newRow(name) << static_cast<int>(step) << code << times << says;
    };
    row("open", Step::Open, EACCES, 1, "create");
    row("first write", Step::Write, ENOSPC, 1, "write");
    row("third write", Step::Write, EIO, 3, "write");
    row("write of nothing", Step::Write, 0, 2, "write");
    row("fsync", Step::Fsync, EIO, 1, "flush");
    row("close", Step::Close, EDQUOT, 1, "close");
    row("rename", Step::Rename, EXDEV, 1, "rename");
}

void TestAtomicFile::keepsTheOldContentWhenAStepFails()
{
    QFETCH(int, step);
    QFETCH(int, code);
    QFETCH(int, times);
    QFETCH(QByteArray, says);
    for (const bool hasOld : {true, false}) {
        m_folder = std::make_unique<QTemporaryDir>();
        if (hasOld)
            files::write(path("a"), "old");
        const auto before = content();
        FailingCalls calls(static_cast<Step>(step), code, times);
        calls.largestWrite = 4;
        base::ScopedFileSystemCalls scope(calls);
        const base::WriteResult result = base::writeFileAtomically(path("a"), "a new text of some length");
        QVERIFY(!result.ok());
        QVERIFY2(result.error.startsWith(QString::fromLatin1(says)), qPrintable(result.error));
        QVERIFY2(result.error.contains(QString::fromLocal8Bit(reason(code == 0 ? ENOSPC : code))),
                 qPrintable(result.error));
        QCOMPARE(content(), before);
        QCOMPARE(calls.renames, static_cast<Step>(step) == Step::Rename ? 1 : 0);
    }
}

void TestAtomicFile::goesOnAfterShortWritesAndInterruptions()
{
    FailingCalls calls(Step::None, 0);
    calls.largestWrite = 7;
    calls.interruptions = 3;
    base::ScopedFileSystemCalls scope(calls);
    QByteArray bytes;
    for (int i = 0; i < 1000; ++i)
        bytes += static_cast<char>(i);
    QVERIFY(base::writeFileAtomically(path("a"), bytes).ok());
    QCOMPARE(content(), (QMap<QString, QByteArray>{{"a", bytes}}));
    QCOMPARE(calls.writes, 3 + 143);
}

void TestAtomicFile::ignoresAFolderThatCannotBeFlushed()
{
    files::write(path("a"), "old");
    FailingCalls calls(Step::Fsync, EINVAL, 2);
    base::ScopedFileSystemCalls scope(calls);
    QVERIFY(base::writeFileAtomically(path("a"), "new").ok());
    QCOMPARE(calls.fsyncs, 2);
    QCOMPARE(content(), (QMap<QString, QByteArray>{{"a", "new"}}));
}

void TestAtomicFile::keepsTheOldContentAtAFileSizeLimit()
{
    const auto write = [this](int size, rlim_t limit) {
        const pid_t child = ::fork();
        if (child == 0) {
            ::signal(SIGXFSZ, SIG_IGN);
            const rlimit limits{limit, limit};
            ::setrlimit(RLIMIT_FSIZE, &limits);
            const base::WriteResult result = base::writeFileAtomically(path("a"), QByteArray(size, 'x'));
            if (result.ok())
                ::_exit(0);
            ::_exit(result.error.contains(QString::fromLocal8Bit(reason(EFBIG))) ? 1 : 2);
        }
        int status = 0;
        ::waitpid(child, &status, 0);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    };
    for (const int size : {1, 100, 4096, 16384, 16385, 200000}) {
        files::write(path("a"), "old");
        for (const int room : {0, 50, 4096}) {
            if (size <= room)
                continue;
            QCOMPARE(write(size, static_cast<rlim_t>(room)), 1);
            QCOMPARE(content(), (QMap<QString, QByteArray>{{"a", "old"}}));
        }
        QCOMPARE(write(size, static_cast<rlim_t>(size)), 0);
        QCOMPARE(content(), (QMap<QString, QByteArray>{{"a", QByteArray(size, 'x')}}));
    }
}

void TestAtomicFile::refusesAWriteProtectedFile()
{
    ::chmod(QFile::encodeName(m_folder->path()).constData(), 0777);
    files::write(path("a"), "old");
    ::chmod(QFile::encodeName(path("a")).constData(), 0444);
    const int result = testing_support::runUnprivileged([this] {
        if (::access(QFile::encodeName(path("a")).constData(), R_OK) != 0)
            return 9;
        const base::WriteResult written = base::writeFileAtomically(path("a"), "new");
        return !written.ok() && written.error == QString::fromLocal8Bit(reason(EACCES))
                && base::checkWritable(path("a")).error == written.error
            ? 0
            : 1;
    });
    if (result == 9 || result == 254)
        QSKIP("no user without rights can reach the temporary folder");
    QCOMPARE(result, 0);
    QCOMPARE(content(), (QMap<QString, QByteArray>{{"a", "old"}}));
}

void TestAtomicFile::refusesAWriteProtectedFolder()
{
    ::chmod(QFile::encodeName(m_folder->path()).constData(), 0555);
    const int result = testing_support::runUnprivileged([this] {
        if (::access(QFile::encodeName(m_folder->path()).constData(), R_OK | X_OK) != 0)
            return 9;
        const base::WriteResult written = base::writeFileAtomically(path("a"), "new");
        return !written.ok() && written.error == QString::fromLocal8Bit(reason(EACCES))
                && !base::checkWritable(path("a")).ok()
            ? 0
            : 1;
    });
    ::chmod(QFile::encodeName(m_folder->path()).constData(), 0755);
    if (result == 9 || result == 254)
        QSKIP("no user without rights can reach the temporary folder");
    QCOMPARE(result, 0);
    QVERIFY(content().isEmpty());
}

void TestAtomicFile::refusesAFolder()
{
    QVERIFY(QDir().mkdir(path("a")));
    QCOMPARE(base::writeFileAtomically(path("a"), "new").error, QString::fromLocal8Bit(reason(EISDIR)));
    QVERIFY(!base::checkWritable(path("a")).ok());
    QCOMPARE(content(), (QMap<QString, QByteArray>{{"a/", {}}}));
}

void TestAtomicFile::refusesAMissingParent()
{
    QCOMPARE(base::writeFileAtomically(path("none/a"), "new").error, QString::fromLocal8Bit(reason(ENOENT)));
    QVERIFY(content().isEmpty());
}

void TestAtomicFile::refusesAParentThatIsAFile()
{
    files::write(path("file"), "old");
    QCOMPARE(base::writeFileAtomically(path("file/a"), "new").error, QString::fromLocal8Bit(reason(ENOTDIR)));
    QCOMPARE(content(), (QMap<QString, QByteArray>{{"file", "old"}}));
}

void TestAtomicFile::refusesWhatIsNoPlainFile()
{
    QCOMPARE(::mkfifo(QFile::encodeName(path("pipe")).constData(), 0666), 0);
    QVERIFY(!base::writeFileAtomically(path("pipe"), "new").ok());
    QVERIFY(!base::writeFileAtomically(QStringLiteral("/dev/null"), "new").ok());
    struct stat info
    { };
    QCOMPARE(::stat(QFile::encodeName(path("pipe")).constData(), &info), 0);
    QVERIFY(S_ISFIFO(info.st_mode));
    QCOMPARE(QDir(m_folder->path())
                 .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot)
                 .size(),
             1);
}

void TestAtomicFile::refusesAnEmptyPathAndOneWithANullCharacter()
{
    QVERIFY(!base::writeFileAtomically({}, "new").ok());
    QVERIFY(!base::writeFileAtomically(path("a") + QChar(0) + QStringLiteral("b"), "new").ok());
    QVERIFY(content().isEmpty());
}

void TestAtomicFile::writesNamesOf255Bytes()
{
    const QByteArray longest(255, 'n');
    QVERIFY(base::writeFileAtomically(path(longest), "new").ok());
    QVERIFY(base::writeFileAtomically(path(longest), "newer").ok());
    QCOMPARE(base::writeFileAtomically(path(longest + 'n'), "new").error,
             QString::fromLocal8Bit(reason(ENAMETOOLONG)));
    QCOMPARE(content(), (QMap<QString, QByteArray>{{QString::fromLatin1(longest), "newer"}}));
}

void TestAtomicFile::replacesASymbolicLinkAndLeavesItsTarget()
{
    files::write(path("target"), "target");
    QVERIFY(QFile::link(path("target"), path("link")));
    QVERIFY(base::writeFileAtomically(path("link"), "new").ok());
    QCOMPARE(content(), (QMap<QString, QByteArray>{{"link", "new"}, {"target", "target"}}));
}

// The share that holds the file may not be mounted.
void TestAtomicFile::refusesADanglingLink()
{
    QVERIFY(QFile::link(path("nowhere"), path("link")));
    const auto before = content();
    QCOMPARE(base::writeFileAtomically(path("link"), "new").error,
             QStringLiteral("it is reached by a link that leads nowhere"));
    QVERIFY(!base::checkWritable(path("link")).ok());
    bool isTaken = false;
    QVERIFY(!base::writeNewFileAtomically(path("link"), "new", &isTaken).ok());
    QVERIFY(isTaken);
    QCOMPARE(content(), before);
}

void TestAtomicFile::makesANewFileOnlyWhereNoneIs()
{
    bool isTaken = true;
    QVERIFY(base::writeNewFileAtomically(path("a"), "new", &isTaken).ok());
    QVERIFY(!isTaken);
    QVERIFY(!base::writeNewFileAtomically(path("a"), "newer", &isTaken).ok());
    QVERIFY(isTaken);
    QCOMPARE(content(), (QMap<QString, QByteArray>{{"a", "new"}}));
    QVERIFY(!base::writeNewFileAtomically(path("none/a"), "new", &isTaken).ok());
    QVERIFY(!isTaken);
    for (const Step step : {Step::Open, Step::Write, Step::Fsync, Step::Close}) {
        FailingCalls calls(step, ENOSPC);
        base::ScopedFileSystemCalls scope(calls);
        isTaken = true;
        QVERIFY(!base::writeNewFileAtomically(path("b"), "new", &isTaken).ok());
        QVERIFY(!isTaken);
    }
    QCOMPARE(content(), (QMap<QString, QByteArray>{{"a", "new"}}));
}

// Another program makes the file in the moment before ours would take its name.
void TestAtomicFile::aFileMadeInTheMeantimeIsNotReplaced()
{
    class Rival : public base::FileSystemCalls
    {
    public:
        int renameToNew(const char *from, const char *to) override
        {
            files::write(QFile::decodeName(to), "rival");
            return FileSystemCalls::renameToNew(from, to);
        }
    };
    Rival calls;
    base::ScopedFileSystemCalls scope(calls);
    bool isTaken = false;
    QVERIFY(!base::writeNewFileAtomically(path("a"), "new", &isTaken).ok());
    QVERIFY(isTaken);
    QCOMPARE(content(), (QMap<QString, QByteArray>{{"a", "rival"}}));
}

void TestAtomicFile::keepsPermissions()
{
    for (const mode_t mode : {0600u, 0640u, 0664u, 0755u, 0666u}) {
        files::write(path("a"), "old");
        ::chmod(QFile::encodeName(path("a")).constData(), mode);
        QVERIFY(base::writeFileAtomically(path("a"), "new").ok());
        QCOMPARE(modeOf(path("a")), mode);
    }
}

void TestAtomicFile::givesNewFilesThePermissionsOfTheMask()
{
    const mode_t before = ::umask(027);
    const bool isWritten = base::writeFileAtomically(path("a"), "new").ok();
    const mode_t after = ::umask(before);
    QVERIFY(isWritten);
    QCOMPARE(after, mode_t(027));
    QCOMPARE(modeOf(path("a")), mode_t(0640));
}

void TestAtomicFile::writesARelativePath()
{
    const QString before = QDir::currentPath();
    QVERIFY(QDir::setCurrent(m_folder->path()));
    const bool isWritten = base::writeFileAtomically(QStringLiteral("a"), "new").ok();
    QVERIFY(QDir::setCurrent(before));
    QVERIFY(isWritten);
    QCOMPARE(content(), (QMap<QString, QByteArray>{{"a", "new"}}));
}

void TestAtomicFile::writerShowsNothingBeforeCommit()
{
    files::write(path("a"), "old");
    base::AtomicFileWriter writer;
    QVERIFY(writer.open(path("a")).ok());
    QVERIFY(writer.write("one ", 4).ok());
    QVERIFY(writer.write("", 0).ok());
    QVERIFY(writer.write("two", 3).ok());
    QCOMPARE(files::read(path("a")), QByteArray("old"));
    const QStringList visible = QDir(m_folder->path()).entryList(QDir::Files);
    QCOMPARE(visible, QStringList{QStringLiteral("a")});
    QVERIFY(writer.commit().ok());
    QCOMPARE(content(), (QMap<QString, QByteArray>{{"a", "one two"}}));
}

void TestAtomicFile::writerDestroyedWithoutCommitLeavesNothing()
{
    files::write(path("a"), "old");
    {
        base::AtomicFileWriter writer;
        QVERIFY(writer.open(path("a")).ok());
        QVERIFY(writer.write("new", 3).ok());
    }
    {
        base::AtomicFileWriter writer;
        QVERIFY(writer.open(path("b")).ok());
    }
    QCOMPARE(content(), (QMap<QString, QByteArray>{{"a", "old"}}));
}

void TestAtomicFile::writerReportsItsFirstFailureAgain()
{
    files::write(path("a"), "old");
    FailingCalls calls(Step::Write, ENOSPC);
    base::ScopedFileSystemCalls scope(calls);
    base::AtomicFileWriter writer;
    QVERIFY(writer.open(path("a")).ok());
    const QString error = writer.write("new", 3).error;
    QVERIFY(error.contains(QString::fromLocal8Bit(reason(ENOSPC))));
    QCOMPARE(writer.write("more", 4).error, error);
    QCOMPARE(writer.commit().error, error);
    QCOMPARE(content(), (QMap<QString, QByteArray>{{"a", "old"}}));
}

void TestAtomicFile::writerNeedsAnOpenFile()
{
    const QString closed = QStringLiteral("write: ") + QString::fromLocal8Bit(reason(EBADF));
    QCOMPARE(base::AtomicFileWriter().write("new", 3).error, closed);
    QCOMPARE(base::AtomicFileWriter().commit().error, closed);
    base::AtomicFileWriter done;
    QVERIFY(done.open(path("a")).ok());
    QVERIFY(done.commit().ok());
    QCOMPARE(done.commit().error, closed);
    QCOMPARE(content(), (QMap<QString, QByteArray>{{"a", ""}}));
}

void TestAtomicFile::writerCanBeOpenedAgain()
{
    base::AtomicFileWriter writer;
    QVERIFY(!writer.open(path("none/a")).ok());
    QVERIFY(writer.open(path("a")).ok());
    QVERIFY(writer.write("lost", 4).ok());
    QVERIFY(writer.open(path("b")).ok());
    QVERIFY(writer.write("kept", 4).ok());
    QVERIFY(writer.commit().ok());
    QCOMPARE(content(), (QMap<QString, QByteArray>{{"b", "kept"}}));
}

void TestAtomicFile::writableCheckTouchesNothing()
{
    files::write(path("a"), "old");
    QVERIFY(base::checkWritable(path("a")).ok());
    QVERIFY(base::checkWritable(path("new")).ok());
    QVERIFY(!base::checkWritable(path("none/new")).ok());
    QCOMPARE(content(), (QMap<QString, QByteArray>{{"a", "old"}}));
}

LORVA_TEST_MAIN(TestAtomicFile)
#include "tst_atomicfile.moc"
