#include "base/filesystemcalls.h"
#include "base/folderlinks.h"
#include "support/failingtarget.h"
#include "support/otherprogram.h"
#include "support/testmain.h"
#include "support/unprivileged.h"
#include "survey/surveyfolder.h"
#include "survey/surveyplace.h"
#include "surveyfixture.h"

#include <QDir>
#include <QFile>

#include <cerrno>
#include <limits>
#include <sys/stat.h>

using namespace survey;
using survey_fixture::header;
using survey_fixture::withoutDate;

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

NewSurvey demo()
{
    NewSurvey survey;
    survey.name = QStringLiteral("Demo: field");
    survey.comment = QStringLiteral("Two\nlines");
    return survey;
}

// "Key" of every "Key: value" line of a file's first section, and the lines behind it.
QByteArrayList keys(const QByteArray &bytes)
{
    QByteArrayList result;
    for (const QByteArray &line : withoutDate(bytes).split('\n'))
        if (line.contains(": "))
            result.append(line.left(line.indexOf(": ")));
    return result;
}

} // namespace

class TestSurveyFolder : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_folder = std::make_unique<QTemporaryDir>(); }
    void makesWhatTheHostMakes();
    void givesTheGridOfTheExtent();
    void countsLinesInWholeNumbers();
    void readsBackItsInfo();
    void marksANewDataRoot();
    void marksAnEmptyDataRoot();
    void leavesADataRootThatHoldsSomethingAsItIs();
    void takesAnEmptyFolder();
    void refusesAFolderThatHoldsSomething();
    void refusesAFileAndALinkInItsPlace();
    void refusesAnExtentThatIsNone();
    void takesTheSmallestSurvey();
    void leavesNothingWhenAnyWriteFails();
    void leavesNothingWhenAnyFolderFails();
    void leavesNothingWhereItMayNotWrite();
    void whatADeadProgramLeftGoesWithTheNextSurvey();
    void whatADeadProgramLeftGoesWhenASurveyIsOpened();
    void aProgramKilledAtAnyWriteHindersNobody();
    void nothingElseBesideASurveyGoes();
    void tellsWhyAFolderIsNoSurvey();
    void readsTheHostsInfo();
    void readsTheDepthUnit();
    void leavesNothingWhenItCannotBePutInPlace();
    void readsInfoOfADamagedSurvey();

private:
    QString path(const char *name) const { return m_folder->filePath(QString::fromUtf8(name)); }
    QStringList namesIn(const char *name) const
    {
        return QDir(path(name)).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    }
    QMap<QString, QByteArray> content() const { return files::snapshot(m_folder->path()); }
    std::unique_ptr<QTemporaryDir> m_folder;
};

void TestSurveyFolder::makesWhatTheHostMakes()
{
    QCOMPARE(createSurvey(path("root/new"), demo()).error, QString());
    const auto made = files::snapshot(path("root/new"));
    const QStringList folders{"Attribs", "Features", "Geometry", "Locations", "Misc",    "Models",
                              "NLAs",    "Proc",     "Seismics", "Surfaces",  "WellInfo"};
    QStringList expected{".omf", ".survey"};
    for (const QString &folder : folders) {
        expected.append(folder + QLatin1Char('/'));
        if (folder != QLatin1String("Proc"))
            expected.append(folder + QStringLiteral("/.omf"));
    }
    expected.sort();
    QStringList found = made.keys();
    found.sort();
    QCOMPARE(found, expected);

    const QString real = files::sharedFolder(QStringLiteral("od-survey"));
    if (real.isEmpty())
        QSKIP("the survey that the host itself wrote is not here");
    QCOMPARE(withoutDate(made.value(QStringLiteral(".omf"))),
             withoutDate(files::read(real + QStringLiteral("/.omf"))));
    QCOMPARE(keys(made.value(QStringLiteral(".survey"))), keys(files::read(real + QStringLiteral("/.survey"))));
    for (const QString &folder : folders) {
        const QString list = folder + QStringLiteral("/.omf");
        if (!made.contains(list) || folder == QLatin1String("WellInfo"))
            continue;
        QByteArray ours = withoutDate(made.value(list));
        ours.replace("`1\n!\n",
                     "\n!\n"); // the host's lists of empty folders are older and do not name the last number
        QCOMPARE(ours, withoutDate(files::read(real + QLatin1Char('/') + list)));
    }
    const QByteArray wells = withoutDate(files::read(real + QStringLiteral("/WellInfo/.omf")));
    QByteArray ours = withoutDate(made.value(QStringLiteral("WellInfo/.omf")));
    ours.replace("ID: 100050`1", "ID: 100050`3");
    QVERIFY(wells.startsWith(ours));
}

void TestSurveyFolder::givesTheGridOfTheExtent()
{
    NewSurvey survey = demo();
    survey.xMinimum = 500000;
    survey.xMaximum = 510010;
    survey.yMinimum = 6000000;
    survey.yMaximum = 6012500;
    survey.maximumDepth = 3500;
    QVERIFY(createSurvey(path("s"), survey).ok());
    QCOMPARE(
        withoutDate(files::read(path("s/.survey"))),
        QByteArray("!\nName: Demo: field\nSurvey Data Type: Both 2D and 3D\nIn-line range: 100`501`1\nCross-line "
                   "range: 100`600`1\n"
                   "Z range: 0`3500`5`D\nCoord-X-BinID: 497500`25`0\nCoord-Y-BinID: 5997500`0`25\n"
                   "Set Point.1: 100/100`(500000,6000000)\nSet Point.2: 501/600`(510025,6012500)\n"
                   "Set Point.3: 100/600`(500000,6012500)\nCoordinate System.System name: Unlocated XY\n"
                   "Coordinate System.XY in Feet: No\nXY in feet: No\nSeismic Reference Datum: 0\n!\nTwo\nlines\n"));
}

void TestSurveyFolder::countsLinesInWholeNumbers()
{
    NewSurvey survey = demo();
    survey.xMinimum = 0;
    survey.xMaximum = 99900 * 25;
    QVERIFY(createSurvey(path("s"), survey).ok());
    QVERIFY(files::read(path("s/.survey")).contains("In-line range: 100`100000`1\n"));
}

void TestSurveyFolder::readsBackItsInfo()
{
    QVERIFY(createSurvey(path("folder name"), demo()).ok());
    const host::Outcome<SurveyInfo> info = readSurveyInfo(path("folder name/"));
    QVERIFY(info.ok());
    QCOMPARE(info.value.name, QStringLiteral("Demo: field"));
    QCOMPARE(info.value.folderName, QStringLiteral("folder name"));
    QCOMPARE(info.value.comment, QStringLiteral("Two\nlines"));
    QVERIFY(isSurveyFolder(path("folder name")));
    NewSurvey nameless = demo();
    nameless.name.clear();
    QVERIFY(createSurvey(path("nameless"), nameless).ok());
    QCOMPARE(readSurveyInfo(path("nameless")).value.name, QStringLiteral("nameless"));
}

void TestSurveyFolder::marksANewDataRoot()
{
    QVERIFY(createSurvey(path("a/b/root/survey"), demo()).ok());
    const QByteArray mark = files::read(path("a/b/root/.omf"));
    QVERIFY(mark.startsWith("dTect V"));
    QVERIFY(mark.contains("Object Management file\n"));
    QCOMPARE(QDir(path("a/b/root")).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
             (QStringList{".omf", "survey"}));
    QVERIFY(!QFile::exists(path("a/b/.omf")));
}

void TestSurveyFolder::marksAnEmptyDataRoot()
{
    QVERIFY(QDir().mkdir(path("root")));
    QVERIFY(createSurvey(path("root/survey"), demo()).ok());
    QVERIFY(QFile::exists(path("root/.omf")));
    files::write(path("root/.omf"), "of the host");
    QVERIFY(createSurvey(path("root/second"), demo()).ok());
    QCOMPARE(files::read(path("root/.omf")), QByteArray("of the host"));
}

void TestSurveyFolder::leavesADataRootThatHoldsSomethingAsItIs()
{
    files::write(path("root/letter"), "dear");
    QVERIFY(createSurvey(path("root/survey"), demo()).ok());
    QVERIFY(!QFile::exists(path("root/.omf")));
    QVERIFY(isSurveyFolder(path("root/survey")));
}

void TestSurveyFolder::takesAnEmptyFolder()
{
    QVERIFY(QDir().mkpath(path("root/survey")));
    QVERIFY(createSurvey(path("root/survey"), demo()).ok());
    QVERIFY(isSurveyFolder(path("root/survey")));
}

void TestSurveyFolder::refusesAFolderThatHoldsSomething()
{
    for (const char *name : {"survey/.omf", "survey/.hidden", "survey/WellInfo/x", "survey/file"}) {
        init();
        files::write(path(name), "x");
        const auto before = content();
        QVERIFY(createSurvey(path("survey"), demo()).error.contains(path("survey")));
        QCOMPARE(content(), before);
    }
}

void TestSurveyFolder::refusesAFileAndALinkInItsPlace()
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

void TestSurveyFolder::refusesAnExtentThatIsNone()
{
    for (double NewSurvey::*field : {&NewSurvey::xMinimum, &NewSurvey::yMinimum, &NewSurvey::xMaximum,
                                     &NewSurvey::yMaximum, &NewSurvey::maximumDepth}) {
        for (const double value :
             {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(), -1e300, 1e300}) {
            NewSurvey survey = demo();
            survey.*field = value;
            QVERIFY(!createSurvey(path("root/survey"), survey).ok());
        }
    }
    NewSurvey turned = demo();
    std::swap(turned.xMinimum, turned.xMaximum);
    QVERIFY(!createSurvey(path("root/survey"), turned).ok());
    QVERIFY(content().isEmpty());
}

void TestSurveyFolder::takesTheSmallestSurvey()
{
    NewSurvey small = demo();
    small.xMaximum = small.xMinimum + 1;
    small.yMaximum = small.yMinimum + 1;
    small.maximumDepth = 1; // as the window of new surveys does
    QCOMPARE(createSurvey(path("s"), small).error, QString());
    QVERIFY(files::read(path("s/.survey")).contains("In-line range: 100`101`1\n"));
    small.maximumDepth = 0;
    QVERIFY(!createSurvey(path("flat"), small).ok());
}

void TestSurveyFolder::leavesNothingWhenAnyWriteFails()
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

void TestSurveyFolder::leavesNothingWhenAnyFolderFails()
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

void TestSurveyFolder::leavesNothingWhereItMayNotWrite()
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

void TestSurveyFolder::whatADeadProgramLeftGoesWithTheNextSurvey()
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

void TestSurveyFolder::whatADeadProgramLeftGoesWhenASurveyIsOpened()
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

void TestSurveyFolder::aProgramKilledAtAnyWriteHindersNobody()
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

void TestSurveyFolder::nothingElseBesideASurveyGoes()
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

void TestSurveyFolder::tellsWhyAFolderIsNoSurvey()
{
    const auto told = [this](const char *name) {
        return surveyFolderProblem(path(name)).replace(path(name), QStringLiteral("<path>"));
    };
    QCOMPARE(told("none"), QStringLiteral("The folder <path> does not exist."));
    files::write(path("file"), "x");
    QCOMPARE(told("file"), QStringLiteral("<path> is not a folder."));
    QVERIFY(QDir().mkdir(path("empty")));
    QCOMPARE(told("empty"), QStringLiteral("The folder <path> is no survey: it holds no file \".omf\"."));
    files::write(path("half/.omf"), "x");
    QCOMPARE(told("half"), QStringLiteral("The folder <path> is no survey: it holds no file \".survey\"."));
    QVERIFY(QDir().mkpath(path("folders/.omf")));
    QVERIFY(QDir().mkpath(path("folders/.survey")));
    QVERIFY(!isSurveyFolder(path("folders")));
    QVERIFY(!isSurveyFolder(QString()));
}

void TestSurveyFolder::readsTheHostsInfo()
{
    const QString real = files::sharedFolder(QStringLiteral("od-survey"));
    if (real.isEmpty())
        QSKIP("the survey that the host itself wrote is not here");
    const host::Outcome<SurveyInfo> info = readSurveyInfo(real);
    QVERIFY(info.ok());
    QCOMPARE(info.value.name, QStringLiteral("Probe survey"));
    QCOMPARE(info.value.comment, QStringLiteral("Written by a probe program"));
}

void TestSurveyFolder::readsTheDepthUnit()
{
    const auto unitOf = [this](const QByteArray &line) {
        files::write(path("s/.survey"), header("Survey Info") + "Name: Probe\n" + line + "!\n");
        return readSurveyInfo(path("s")).value.depthUnit;
    };
    QCOMPARE(unitOf("Z range: 0`9000`5`F\n"), DepthUnit::Foot);
    QCOMPARE(unitOf("Z range: 0`9000`5`F \r\n"), DepthUnit::Foot);
    QCOMPARE(unitOf("Z range: 0`3000`5`D\n"), DepthUnit::Metre);
    QCOMPARE(unitOf("Z range: 0`3`0.004`T\n"), DepthUnit::Metre);
    QCOMPARE(unitOf("Z range: \n"), DepthUnit::Metre);
    QCOMPARE(unitOf({}), DepthUnit::Metre);
}

void TestSurveyFolder::leavesNothingWhenItCannotBePutInPlace()
{
    FailingTarget disk("/survey");
    const base::ScopedFileSystemCalls scope(disk);
    const host::Status status = createSurvey(path("a/root/survey"), demo());
    QVERIFY2(status.error.contains(path("a/root/survey")), qPrintable(status.error));
    QVERIFY2(content().isEmpty(), qPrintable(QStringList(content().keys()).join(QLatin1Char(' '))));
}

void TestSurveyFolder::readsInfoOfADamagedSurvey()
{
    const QByteArray whole = header("Survey Info") + "Name: Probe\nZ range: 0`3`0.004`T\n!\nFree comment\n";
    for (int size = 0; size <= whole.size(); ++size) {
        files::write(path("s/.survey"), whole.left(size));
        const host::Outcome<SurveyInfo> info = readSurveyInfo(path("s"));
        QCOMPARE(info.value.folderName, QStringLiteral("s"));
        QVERIFY(!info.value.name.isEmpty());
        if (!info.ok())
            QVERIFY(info.error.contains(path("s/.survey")));
        QCOMPARE(info.ok(), size >= header("Survey Info").size() - 1);
    }
    files::write(path("s/.survey"),
                 QByteArray("\x7f"
                            "ELF\0\0\xff",
                            7));
    QVERIFY(readSurveyInfo(path("s")).error.contains(path("s/.survey")));
    QVERIFY(readSurveyInfo(path("none")).error.contains(path("none/.survey")));
}

LORVA_TEST_MAIN(TestSurveyFolder)
#include "tst_surveyfolder.moc"
