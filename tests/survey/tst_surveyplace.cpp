// Where a new survey is put, and what is left when it is not finished.

#include "base/filesystemcalls.h"
#include "base/folderlinks.h"
#include "support/failingtarget.h"
#include "support/otherprogram.h"
#include "support/testmain.h"
#include "support/unprivileged.h"
#include "survey/surveyplace.h"
#include "surveyfolderfixture.h"

#include <QDir>
#include <QFile>

#include <cerrno>
#include <cstring>
#include <sys/stat.h>

using namespace survey;

namespace {

// Fails the n-th write of a run, in the manner of a full disk.
class FullDisk : public base::FileSystemCalls
{
public:
    explicit FullDisk(int n)
        : m_left(n)
    {
    }
    ssize_t write(int file, const void *bytes, size_t size) override
    {
        if (--m_left < 0) {
            errno = ENOSPC;
            return -1;
        }
        return FileSystemCalls::write(file, bytes, size);
    }
    int fsync(int) override { return 0; }

private:
    int m_left;
};

// Makes n folders of a run and no more.
class NoMoreFolders : public base::FileSystemCalls
{
public:
    explicit NoMoreFolders(int n)
        : m_left(n)
    {
    }
    int mkdir(const char *path) override
    {
        if (--m_left >= 0)
            return FileSystemCalls::mkdir(path);
        refused = QFile::decodeName(path);
        errno = ENOSPC;
        return -1;
    }

    QString refused;

private:
    int m_left;
};

} // namespace

class TestSurveyPlace : public SurveyFolderTest
{
    Q_OBJECT

private slots:
    void init() { setUp(); }
    void marksANewDataRoot();
    void marksAnEmptyDataRoot();
    void leavesADataRootThatHoldsSomethingAsItIs();
    void takesAnEmptyFolder();
    void refusesAFolderThatHoldsSomething();
    void refusesAFileAndALinkInItsPlace();
    void leavesNothingWhenAnyWriteFails();
    void leavesNothingWhenAnyFolderFails();
    void leavesNothingWhereItMayNotWrite();
    void leavesNothingWhenItCannotBePutInPlace();
    void whatADeadProgramLeftGoesWithTheNextSurvey();
    void whatADeadProgramLeftGoesWhenASurveyIsOpened();
    void aProgramKilledAtAnyWriteHindersNobody();
    void nothingElseBesideASurveyGoes();

private:
    QStringList namesIn(const char *name) const
    {
        return QDir(path(name)).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    }
};

void TestSurveyPlace::marksANewDataRoot()
{
    QVERIFY(createSurvey(path("a/b/root/survey"), demo()).ok());
    const QByteArray mark = files::read(path("a/b/root/.omf"));
    QVERIFY(mark.startsWith("dTect V"));
    QVERIFY(mark.contains("Object Management file\n"));
    QCOMPARE(QDir(path("a/b/root")).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
             (QStringList{".omf", "survey"}));
    QVERIFY(!QFile::exists(path("a/b/.omf")));
}

void TestSurveyPlace::marksAnEmptyDataRoot()
{
    QVERIFY(QDir().mkdir(path("root")));
    QVERIFY(createSurvey(path("root/survey"), demo()).ok());
    QVERIFY(QFile::exists(path("root/.omf")));
    files::write(path("root/.omf"), "of the host");
    QVERIFY(createSurvey(path("root/second"), demo()).ok());
    QCOMPARE(files::read(path("root/.omf")), QByteArray("of the host"));
}

void TestSurveyPlace::leavesADataRootThatHoldsSomethingAsItIs()
{
    files::write(path("root/letter"), "dear");
    QVERIFY(createSurvey(path("root/survey"), demo()).ok());
    QVERIFY(!QFile::exists(path("root/.omf")));
    QVERIFY(isSurveyFolder(path("root/survey")));
}

void TestSurveyPlace::takesAnEmptyFolder()
{
    QVERIFY(QDir().mkpath(path("root/survey")));
    QVERIFY(createSurvey(path("root/survey"), demo()).ok());
    QVERIFY(isSurveyFolder(path("root/survey")));
}

void TestSurveyPlace::refusesAFolderThatHoldsSomething()
{
    for (const char *name : {"survey/.omf", "survey/.hidden", "survey/WellInfo/x", "survey/file"}) {
        init();
        files::write(path(name), "x");
        const auto before = content();
        QVERIFY(createSurvey(path("survey"), demo()).error.contains(path("survey")));
        QCOMPARE(content(), before);
    }
}

void TestSurveyPlace::refusesAFileAndALinkInItsPlace()
{
    files::write(path("file"), "x");
    QVERIFY(QDir().mkdir(path("elsewhere")));
    QVERIFY(QFile::link(path("elsewhere"), path("link")));
    QVERIFY(QFile::link(path("nowhere"), path("dangling")));
    const auto before = content();
    for (const char *name : {"file", "link", "dangling", "file/below"})
        QVERIFY2(!createSurvey(path(name), demo()).ok(), name);
    QCOMPARE(content(), before);
}

void TestSurveyPlace::leavesNothingWhenAnyWriteFails()
{
    int n = 0;
    for (bool isMade = false; !isMade; ++n) {
        init();
        FullDisk calls(n);
        base::ScopedFileSystemCalls scope(calls);
        const host::Status status = createSurvey(path("a/root/survey"), demo());
        isMade = status.ok();
        if (!isMade) {
            QVERIFY2(status.error.contains(QString::fromLocal8Bit(std::strerror(ENOSPC))), qPrintable(status.error));
            QVERIFY2(content().isEmpty(), qPrintable(QStringList(content().keys()).join(QLatin1Char(' '))));
        }
    }
    QCOMPARE(n,
             14); // ten object folders, the survey's two files and the mark of the data root; the last run succeeds
}

void TestSurveyPlace::leavesNothingWhenAnyFolderFails()
{
    QStringList refused;
    while (true) {
        init();
        NoMoreFolders calls(refused.size());
        const base::ScopedFileSystemCalls scope(calls);
        const host::Status status = createSurvey(path("root/survey"), demo());
        if (status.ok())
            break;
        QCOMPARE(status.error,
                 QStringLiteral("Cannot make the folder %1: %2.").arg(calls.refused, base::systemErrorText(ENOSPC)));
        QVERIFY(content().isEmpty());
        refused.append(QFileInfo(calls.refused).fileName());
    }
    QCOMPARE(refused,
             (QStringList{"survey", "Seismics", "Surfaces", "Locations", "Features", "WellInfo", "NLAs", "Misc",
                          "Attribs", "Models", "Geometry", "Proc"}));
}

void TestSurveyPlace::leavesNothingWhereItMayNotWrite()
{
    ::chmod(QFile::encodeName(m_folder->path()).constData(), 0555);
    const int result = testing_support::runUnprivileged([this] {
        const QString error = createSurvey(path("root/survey"), demo()).error;
        return error.contains(path("root")) && !createSurvey(path("survey"), demo()).ok() ? 0 : 1;
    });
    ::chmod(QFile::encodeName(m_folder->path()).constData(), 0755);
    if (result == 254)
        QSKIP("no user without rights here");
    QCOMPARE(result, 0);
    QVERIFY(content().isEmpty());
}

void TestSurveyPlace::leavesNothingWhenItCannotBePutInPlace()
{
    FailingTarget disk("/survey");
    const base::ScopedFileSystemCalls scope(disk);
    const host::Status status = createSurvey(path("a/root/survey"), demo());
    QVERIFY2(status.error.contains(path("a/root/survey")), qPrintable(status.error));
    QVERIFY2(content().isEmpty(), qPrintable(QStringList(content().keys()).join(QLatin1Char(' '))));
}

void TestSurveyPlace::whatADeadProgramLeftGoesWithTheNextSurvey()
{
    OtherProgram other([this](const auto &wait) {
        const SurveyPlace place(path("root/first"));
        (void)createSurvey(place.buildFolder(), demo());
        wait();
    });
    QCOMPARE(namesIn("root").size(), 1);
    QVERIFY(namesIn("root").first().startsWith(".lorva-survey-"));
    const QString building = namesIn("root").first();
    QVERIFY(createSurvey(path("root/second"), demo()).ok());
    removeUnfinishedSurveys(path("root"));
    removeSurveyLeftovers(path("root/second"));
    QCOMPARE(namesIn("root"), (QStringList{building, "second"})); // it may still be finished
    other.kill();
    const auto second = files::snapshot(path("root/second"));
    QVERIFY(createSurvey(path("root/third"), demo()).ok());
    QCOMPARE(namesIn("root"), (QStringList{"second", "third"}));
    QCOMPARE(files::snapshot(path("root/second")), second);
}

void TestSurveyPlace::whatADeadProgramLeftGoesWhenASurveyIsOpened()
{
    QVERIFY(createSurvey(path("root/survey"), demo()).ok());
    OtherProgram other([this](const auto &wait) {
        const SurveyPlace place(path("root/first"));
        (void)createSurvey(place.buildFolder(), demo());
        wait();
    });
    other.kill();
    QCOMPARE(namesIn("root").size(), 3);
    removeSurveyLeftovers(path("root/survey"));
    QCOMPARE(namesIn("root"), (QStringList{".omf", "survey"}));
}

void TestSurveyPlace::aProgramKilledAtAnyWriteHindersNobody()
{
    class Killed : public FullDisk
    {
    public:
        using FullDisk::FullDisk;
        ssize_t write(int file, const void *bytes, size_t size) override
        {
            const ssize_t done = FullDisk::write(file, bytes, size);
            if (done < 0)
                ::raise(SIGKILL);
            return done;
        }
    };
    for (int n = 0; n < 13; ++n) {
        init();
        const pid_t child = ::fork();
        if (child == 0) {
            Killed calls(n);
            const base::ScopedFileSystemCalls scope(calls);
            (void)createSurvey(path("root/survey"), demo());
            ::_exit(0);
        }
        int status = 0;
        ::waitpid(child, &status, 0);
        QVERIFY(WIFSIGNALED(status));
        QVERIFY(!namesIn("root").contains("survey"));
        QVERIFY(createSurvey(path("root/survey"), demo()).ok());
        QCOMPARE(namesIn("root"), (QStringList{".omf", "survey"})); // and is marked, as a new folder of surveys is
    }
}

void TestSurveyPlace::nothingElseBesideASurveyGoes()
{
    QVERIFY(createSurvey(path("root/survey"), demo()).ok());
    files::write(path("outside/file"), "kept");
    for (const char *name :
         {".lorva-survey-short/f", ".lorva-survey-longername/f", ".lorva-survey-/f", ".lorva-survey-a b-c_/f",
          "lorva-survey-abcdef/f", ".lorva-abcdef/f", ".lorva-other-abcdef/f", "x/.lorva-survey-abcdef/f",
          ".lorva-survey-abcdeF", ".lorva-abcdeg"})
        files::write(path("root/") + QLatin1String(name), "kept");
    QVERIFY(QFile::link(path("outside"), path("root/.lorva-survey-link00")));
    const auto before = content();
    files::write(path("root/.lorva-survey-dead01/survey/.omf"), "half");
    QVERIFY(QFile::link(path("outside"), path("root/.lorva-survey-dead01/link")));
    removeSurveyLeftovers(path("root/survey"));
    QCOMPARE(content(), before);
    QVERIFY(createSurvey(path("root/next"), demo()).ok());
    QVERIFY(QDir(path("root/next")).removeRecursively());
    QCOMPARE(content(), before);
    // Nor is it the folder in which the program happens to stand.
    const QDir here = QDir::current();
    QVERIFY(QDir::setCurrent(path("root")));
    files::write(path("root/.lorva-survey-dead01/f"), "f");
    removeUnfinishedSurveys(QString());
    QVERIFY(QDir::setCurrent(here.path()));
    QVERIFY(QFileInfo::exists(path("root/.lorva-survey-dead01/f")));
}

LORVA_TEST_MAIN(TestSurveyPlace)
#include "tst_surveyplace.moc"
