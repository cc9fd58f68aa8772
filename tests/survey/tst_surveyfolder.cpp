#include "support/testmain.h"
#include "support/unprivileged.h"
#include "surveyfixture.h"
#include "surveyfolderfixture.h"

#include <QDir>

#include <limits>

#include <sys/stat.h>

using namespace survey;
using survey_fixture::header;
using survey_fixture::withoutDate;

namespace {

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

class TestSurveyFolder : public SurveyFolderTest
{
    Q_OBJECT

private slots:
    void init() { setUp(); }
    void makesWhatTheHostMakes();
    void givesTheGridOfTheExtent();
    void countsLinesInWholeNumbers();
    void readsBackItsInfo();
    void refusesAnExtentThatIsNone();
    void takesTheSmallestSurvey();
    void tellsWhyAFolderIsNoSurvey();
    void tellsWhatTheUserMayNotChange();
    void readsTheHostsInfo();
    void readsTheDepthUnit();
    void readsInfoOfADamagedSurvey();
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

void TestSurveyFolder::tellsWhatTheUserMayNotChange()
{
    QVERIFY(createSurvey(path("S"), demo()).ok());
    const QString survey = path("S");
    QVERIFY(QDir().mkdir(survey + QStringLiteral("/WLC")));
    const QStringList folders{survey, survey + QStringLiteral("/WellInfo"), survey + QStringLiteral("/WLC")};
    const auto setRights = [](const QString &folder, mode_t rights) {
        ::chmod(QFile::encodeName(folder).constData(), rights);
    };
    setRights(m_folder->path(), 0755);
    for (const QString &closed : folders) {
        for (const QString &folder : folders)
            setRights(folder, folder == closed ? 0755 : 0777);
        const int result = testing_support::runUnprivileged([&] { return isReadOnly(survey) ? 0 : 1; });
        if (result == 254)
            QSKIP("there is no user without rights");
        QCOMPARE(result, 0);
    }
    for (const QString &folder : folders)
        setRights(folder, 0777);
    QCOMPARE(testing_support::runUnprivileged([&] { return isReadOnly(survey) ? 0 : 1; }), 1);
    QVERIFY(QDir().rmdir(survey + QStringLiteral("/WLC"))); // not made yet
    QCOMPARE(testing_support::runUnprivileged([&] { return isReadOnly(survey) ? 0 : 1; }), 1);
    QVERIFY(!isReadOnly(QString()));
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
