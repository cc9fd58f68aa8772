#include "base/folderlinks.h"
#include "base/regularfile.h"
#include "support/files.h"
#include "support/testmain.h"

#include <QTemporaryDir>

#include <algorithm>
#include <cerrno>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

int bytesLeft = -1; // of the file that is read; -1: as it is

} // namespace

// Stands before the C library's, for a file that is cut off while it is read.
extern "C" __attribute__((visibility("default"))) ssize_t read(int file, void *bytes, size_t count)
{
    if (bytesLeft == 0)
        errno = EAGAIN; // of an earlier call: the end of a file is no error
    const size_t wanted = bytesLeft < 0 ? count : std::min(count, static_cast<size_t>(bytesLeft));
    const ssize_t got = wanted == 0 && count > 0 ? 0 : static_cast<ssize_t>(::syscall(SYS_read, file, bytes, wanted));
    if (bytesLeft > 0 && got > 0)
        bytesLeft -= static_cast<int>(got);
    return got;
}

class TestFolderLinks : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void aLinkThatStaysInsideIsNoProblem();
    void aLinkOutIsFoundAtAnyComponent();
    void aLinkToNowhereIsNoMissingFile();
    void theRootItselfMayBeReachedByALink();
    void aFolderWithALikeNameIsOutside();
    void allForbiddenLinksAreListed();
    void aPlainFileIsRead();
    void whatIsNoPlainFileIsNotRead();
    void aFileThatIsTooLargeIsNotRead();
    void aProgramWithoutStandardInputReadsToo();
    void aFileThatShrinksMeanwhileGivesWhatIsLeft();
    void linksAreReadAsFarAsTheyStayInside();

private:
    QString path(const char *name) const { return m_folder->filePath(QString::fromUtf8(name)); }
    void link(const char *target, const char *name) const { QVERIFY(QFile::link(path(target), path(name))); }
    QString root() const { return path("survey"); }
    std::unique_ptr<QTemporaryDir> m_folder;
};

void TestFolderLinks::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    files::write(path("survey/WLC/own/a.txt"), "own");
    files::write(path("outside/a.txt"), "precious");
    files::write(path("survey-2/a.txt"), "other survey");
}

void TestFolderLinks::aLinkThatStaysInsideIsNoProblem()
{
    link("survey/WLC/own", "survey/WLC/alias");
    QCOMPARE(base::linkProblem(root(), path("survey/WLC/alias/a.txt")), 0);
    QCOMPARE(base::linkProblem(root(), path("survey/WLC/own/a.txt")), 0);
    QCOMPARE(base::linkProblem(root(), path("survey/WLC/none/a.txt")), 0);
    QCOMPARE(base::linkProblem(root(), root()), 0);
    QVERIFY(base::forbiddenLinks(root(), path("survey/WLC")).isEmpty());
}

void TestFolderLinks::aLinkOutIsFoundAtAnyComponent()
{
    link("outside", "survey/WLC/out");
    link("outside/a.txt", "survey/WLC/own/b.txt");
    QCOMPARE(base::linkProblem(root(), path("survey/WLC/out")), EXDEV);
    QCOMPARE(base::linkProblem(root(), path("survey/WLC/out/")), EXDEV);
    QCOMPARE(base::linkProblem(root(), path("survey/WLC/out/new/file.txt")), EXDEV);
    QCOMPARE(base::linkProblem(root(), path("survey/WLC/own/b.txt")), EXDEV);
    link("survey/WLC/out", "survey/WLC/way"); // inside at first, then out
    QCOMPARE(base::linkProblem(root(), path("survey/WLC/way/a.txt")), EXDEV);
    QCOMPARE(base::linkProblem(QString(), path("survey/WLC/out/a.txt")), 0);
    QCOMPARE(base::linkProblem(root(), path("outside/a.txt")), 0);
    link("survey", "outside/home"); // out and home again stays inside
    QVERIFY(QFile::link(path("outside/home/WLC/own"), path("survey/WLC/home")));
    QCOMPARE(base::linkProblem(root(), path("survey/WLC/home/a.txt")), 0);
    link("survey/WLC", "survey/alias"); // stays inside, but what lies behind it does not
    QCOMPARE(base::linkProblem(root(), path("survey/alias/out/a.txt")), EXDEV);
}

void TestFolderLinks::aLinkToNowhereIsNoMissingFile()
{
    link("nowhere", "survey/WLC/dangling");
    QCOMPARE(base::linkProblem(root(), path("survey/WLC/dangling")), ENOLINK);
    QVERIFY(base::isThere(path("survey/WLC/dangling")));
    QVERIFY(base::isThere(path("survey/WLC/own")));
    QVERIFY(!base::isThere(path("survey/WLC/none")));
    link("survey/WLC/loop", "survey/WLC/loop");
    QCOMPARE(base::linkProblem(root(), path("survey/WLC/loop/a")), ENOLINK);
}

void TestFolderLinks::theRootItselfMayBeReachedByALink()
{
    link("survey", "project");
    QCOMPARE(base::linkProblem(path("project"), path("project/WLC/own/a.txt")), 0);
    link("outside", "survey/WLC/out");
    QCOMPARE(base::linkProblem(path("project"), path("project/WLC/out/a.txt")), EXDEV);
}

void TestFolderLinks::aFolderWithALikeNameIsOutside()
{
    link("survey-2", "survey/WLC/other");
    QCOMPARE(base::linkProblem(root(), path("survey/WLC/other/a.txt")), EXDEV);
}

void TestFolderLinks::allForbiddenLinksAreListed()
{
    link("outside", "survey/WLC/out");
    link("outside/a.txt", "survey/WLC/own/b.txt");
    link("nowhere", "survey/WLC/dangling");
    link("survey/WLC/own", "survey/WLC/alias");
    QVERIFY(QFile::link(path("outside"), path("outside/deeper"))); // not followed to
    QCOMPARE(base::forbiddenLinks(root(), path("survey/WLC")),
             (QStringList{path("survey/WLC/dangling"), path("survey/WLC/out"), path("survey/WLC/own/b.txt")}));
    link("outside", "survey/Linked");
    QCOMPARE(base::forbiddenLinks(root(), path("survey/Linked")), QStringList{path("survey/Linked")});
    QVERIFY(base::forbiddenLinks(root(), path("survey/none")).isEmpty());
    // By name, in whatever order the file system gives them.
    for (const char *name : {"b", "d", "a", "c", "e"})
        link("outside", (QByteArray("survey/WLC/own/sorted-") + name).constData());
    const QStringList found = base::forbiddenLinks(root(), path("survey/WLC/own"));
    QCOMPARE(found.size(), 6);
    QVERIFY(std::is_sorted(found.begin(), found.end()));
}

void TestFolderLinks::aPlainFileIsRead()
{
    const base::RegularFile file = base::readRegularFile(path("survey/WLC/own/a.txt"), root());
    QVERIFY(file.ok());
    QCOMPARE(file.bytes, QByteArray("own"));
    QCOMPARE(base::readRegularFile(path("survey/none"), root()).errorCode, ENOENT);
    files::write(path("survey/empty"), {});
    QVERIFY(base::readRegularFile(path("survey/empty"), root()).ok());
}

void TestFolderLinks::whatIsNoPlainFileIsNotRead()
{
    QCOMPARE(::mkfifo(QFile::encodeName(path("survey/pipe")).constData(), 0666), 0);
    QCOMPARE(base::readRegularFile(path("survey/pipe"), root()).errorCode, EINVAL); // and does not wait
    QCOMPARE(base::readRegularFile(path("survey/WLC"), root()).errorCode, EISDIR);
    QCOMPARE(base::readRegularFile(QStringLiteral("/dev/zero"), root()).errorCode, EINVAL);
    link("outside/a.txt", "survey/out.txt");
    for (const char *name : {"survey/pipe", "survey/WLC", "survey/none", "survey/out.txt"}) {
        int errorCode = 0;
        struct stat info
        { };
        QCOMPARE(base::openRegularFile(path(name), root(), &errorCode, &info), -1);
        QVERIFY(errorCode != 0);
    }
}

void TestFolderLinks::aProgramWithoutStandardInputReadsToo()
{
    const int input = ::dup(0);
    ::close(0); // the next file that is opened gets its number
    errno = ELOOP; // of an earlier call
    const base::RegularFile file = base::readRegularFile(path("survey/WLC/own/a.txt"), root());
    ::dup2(input, 0);
    ::close(input);
    QVERIFY(file.ok());
    QCOMPARE(file.bytes, QByteArray("own"));
}

void TestFolderLinks::aFileThatShrinksMeanwhileGivesWhatIsLeft()
{
    files::write(path("survey/shrinking"), "0123456789");
    bytesLeft = 4;
    const base::RegularFile file = base::readRegularFile(path("survey/shrinking"), root());
    bytesLeft = -1;
    QVERIFY(file.ok());
    QCOMPARE(file.bytes, QByteArray("0123"));
}

void TestFolderLinks::aFileThatIsTooLargeIsNotRead()
{
    files::write(path("survey/large"), {});
    const QByteArray name = QFile::encodeName(path("survey/large"));
    QCOMPARE(::truncate(name.constData(), 1900000000), 0); // sparse
    QCOMPARE(base::readRegularFile(path("survey/large"), root()).errorCode, EFBIG);
    files::write(path("survey/ten"), "0123456789");
    QCOMPARE(base::readRegularFile(path("survey/ten"), root(), 10).bytes.size(), 10);
    QCOMPARE(base::readRegularFile(path("survey/ten"), root(), 9).errorCode, EFBIG);
}

void TestFolderLinks::linksAreReadAsFarAsTheyStayInside()
{
    link("survey/WLC/own/a.txt", "survey/in");
    link("outside/a.txt", "survey/out");
    link("nowhere", "survey/dangling");
    link("outside", "survey/folder");
    QCOMPARE(base::readRegularFile(path("survey/in"), root()).bytes, QByteArray("own"));
    QCOMPARE(base::readRegularFile(path("survey/out"), root()).errorCode, EXDEV);
    QVERIFY(base::readRegularFile(path("survey/out"), root()).bytes.isEmpty());
    QCOMPARE(base::readRegularFile(path("survey/folder/a.txt"), root()).errorCode, EXDEV);
    QCOMPARE(base::readRegularFile(path("survey/dangling"), root()).errorCode, ENOLINK);
    QCOMPARE(base::readRegularFile(path("survey/dangling"), QString()).errorCode, ENOLINK);
    QCOMPARE(base::readRegularFile(path("survey/out"), QString()).bytes, QByteArray("precious"));
}

LORVA_TEST_MAIN(TestFolderLinks)
#include "tst_folderlinks.moc"
