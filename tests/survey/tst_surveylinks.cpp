// Links in a survey that lead out of it or nowhere, files that are none, and names that nobody reads.

#include "support/testmain.h"
#include "survey/surveyfolder.h"
#include "surveyfixture.h"

#include <QDir>

#include <sys/stat.h>
#include <unistd.h>

using namespace survey_fixture;
using survey::SurveyStore;

namespace {

constexpr char well[] = "100050.2";

} // namespace

class TestSurveyLinks : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void wellFolderThatLeadsOut();
    void wellFolderInsideIsFollowed();
    void fileThatLeadsOut_data();
    void fileThatLeadsOut();
    void danglingLogIsNoMissingOne();
    void danglingFileOfANewWell();
    void leftoversGoWhenASurveyIsOpened();
    void longNamesAreCut();
    void longNamesStayInTheirFiles();
    void whatIsNoFileIsNotRead();

private:
    QString outside(const char *name) const { return m_outside->filePath(QString::fromUtf8(name)); }
    void link(const QString &target, const char *name) const
    {
        QFile::remove(m_survey->file(name));
        QVERIFY(QFile::link(target, m_survey->file(name)));
    }
    std::unique_ptr<Survey> m_survey;
    std::unique_ptr<QTemporaryDir> m_outside;
};

void TestSurveyLinks::init()
{
    m_survey.reset();
    m_survey = std::make_unique<Survey>();
    m_outside = std::make_unique<QTemporaryDir>();
    m_survey->write(".omf", wellList({{"A", "a.well"}}));
    m_survey->write("a.well", wellFile());
    m_survey->write("a^1.wll", logFile("GR", {100, 1, 101, 2}));
}

void TestSurveyLinks::wellFolderThatLeadsOut()
{
    QVERIFY(QDir().rename(m_survey->wells(), outside("wells")));
    QVERIFY(QFile::link(outside("wells"), m_survey->wells()));
    const auto before = files::snapshot(m_outside->path());
    survey::removeSurveyLeftovers(m_survey->path());
    SurveyStore store(m_survey->path());
    const QString error = store.list().error;
    QVERIFY2(error.contains(QStringLiteral("a link that leads out of the survey")), qPrintable(error));
    QVERIFY(!store.logs(well).ok());
    QVERIFY(!store.writeLog(well, log("SP", {1, 2})).ok());
    QVERIFY(!store.writeMarkers(well, {marker("M", 10)}).ok());
    QVERIFY(!store.addWell(properties("New")).ok());
    QVERIFY(!store.removeWell(well).ok());
    QCOMPARE(files::snapshot(m_outside->path()), before);
    QVERIFY(!QFile::exists(outside("wells/.lorva.lock"))); // of which a snapshot says nothing
}

void TestSurveyLinks::wellFolderInsideIsFollowed()
{
    QVERIFY(QDir().rename(m_survey->wells(), m_survey->path() + QStringLiteral("/Moved")));
    QVERIFY(QFile::link(m_survey->path() + QStringLiteral("/Moved"), m_survey->wells()));
    SurveyStore store(m_survey->path());
    QCOMPARE(store.list().value.size(), 1);
    QVERIFY(store.writeLog(well, log("SP", {1, 2})).ok());
    QCOMPARE(store.logs(well).value.size(), 2);
}

void TestSurveyLinks::fileThatLeadsOut_data()
{
    QTest::addColumn<QByteArray>("name");
    for (const char *name : {".omf", "a.well", "a^1.wll", "a.wlm", "a.track"})
        QTest::newRow(name) << QByteArray(name);
}

void TestSurveyLinks::fileThatLeadsOut()
{
    QFETCH(QByteArray, name);
    const QByteArray theirs = name == "a^1.wll" ? logFile("GR", {100, 8, 101, 9})
        : name == ".omf"                        ? wellList({{"Theirs", "a.well"}})
        : name == "a.wlm"   ? header("Well Markers") + "Depth-Unit: Meter\n1.Name: T\n1.Depth along hole: 9\n"
        : name == "a.track" ? QByteArray("1\t2\t0\t0\n1\t2\t900\t900\n")
                            : wellFile().replace("2500", "900");
    files::write(outside("file"), theirs);
    link(outside("file"), name.constData());
    SurveyStore store(m_survey->path());
    (void)store.list();
    if (const host::Outcome<host::WellHeader> read = store.header(well); read.ok())
        QCOMPARE(read.value.totalDepth, 2500.0);
    QVERIFY(store.markers(well).value.isEmpty());
    if (!store.logs(well).value.isEmpty())
        QCOMPARE(store.log(well, 0).value.values, (QVector<float>{1, 2}));
    (void)store.writeLog(well, log("GR", {5, 6}));
    (void)store.writeMarkers(well, {marker("M", 10)});
    (void)store.changeWell(well, properties("A"));
    (void)store.renameWell(well, QStringLiteral("B"));
    QCOMPARE(QFileInfo(m_survey->file(name.constData())).symLinkTarget(), outside("file"));
    QCOMPARE(files::read(outside("file")), theirs);
    const QString said = store.list().error + store.header(well).error + store.problems().join(' ');
    QVERIFY2(said.contains(QStringLiteral("a link that leads out of the survey")), qPrintable(said));
}

void TestSurveyLinks::danglingLogIsNoMissingOne()
{
    link(outside("not mounted"), "a^2.wll");
    m_survey->write("a^3.wll", logFile("SP", {100, 1, 101, 2}));
    SurveyStore store(m_survey->path());
    QCOMPARE(store.logs(well).value.size(), 2);
    QVERIFY(store.problems().join(' ').contains(QStringLiteral("a link that leads nowhere")));
    QVERIFY(store.writeLog(well, log("NEW", {1, 2})).ok());
    QCOMPARE(QFileInfo(m_survey->file("a^2.wll")).symLinkTarget(), outside("not mounted"));
    QVERIFY(m_survey->names().contains(QStringLiteral("a^4.wll")));
    link(outside("not mounted"), "a.wlm");
    QVERIFY(!store.writeMarkers(well, {marker("M", 10)}).ok());
    QVERIFY(QFileInfo(m_survey->file("a.wlm")).isSymLink());
}

void TestSurveyLinks::danglingFileOfANewWell()
{
    link(outside("not mounted"), "New.wlm");
    SurveyStore store(m_survey->path());
    QVERIFY(store.addWell(properties("New")).ok());
    QVERIFY(m_survey->names().contains(QStringLiteral("New_2.well")));
}

void TestSurveyLinks::leftoversGoWhenASurveyIsOpened()
{
    m_survey->write(".lorva-abc123", "half of a file");
    m_survey->write(".lorva-mine.txt", "kept");
    files::write(m_survey->path() + QStringLiteral("/.lorva-ABCDEF/WLC/file"), "half of a folder");
    SurveyStore store(m_survey->path());
    QVERIFY(store.list().ok());
    QVERIFY(m_survey->names().contains(QStringLiteral(".lorva-abc123"))); // reading removes nothing
    survey::removeSurveyLeftovers(m_survey->path());
    QCOMPARE(m_survey->names().filter(QStringLiteral(".lorva")), QStringList{QStringLiteral(".lorva-mine.txt")});
    QVERIFY(!QFileInfo::exists(m_survey->path() + QStringLiteral("/.lorva-ABCDEF")));
}

void TestSurveyLinks::longNamesAreCut()
{
    const QByteArray longName(1000000, 'n');
    m_survey->write(".omf", wellList({{longName, "a.well"}}));
    m_survey->write("a^1.wll", logFile(longName, {100, 1, 101, 2}));
    m_survey->write("a.wlm",
                    header("Well Markers") + "Depth-Unit: Meter\n1.Name: " + longName
                        + "\n1.Depth along hole: 9\n1.Strat Level: -1\n1.Color: 1`2`3\n");
    SurveyStore store(m_survey->path());
    const QString cut = QString(4096, 'n') + QStringLiteral("…");
    QCOMPARE(store.list().value.first().name, cut);
    QCOMPARE(store.logs(well).value.first().name, cut);
    QCOMPARE(store.log(well, 0).value.name, cut);
    QCOMPARE(store.markers(well).value.first().name, cut);
    QCOMPARE(survey::shownText(QByteArray(4096, 'n')), QString(4096, 'n'));
    const QByteArray wide = QByteArray(4095, 'n')
        + "\xC3\xA4"
          "end"; // not within a character
    QCOMPARE(survey::shownText(wide), QString(4095, 'n') + QStringLiteral("…"));
}

void TestSurveyLinks::longNamesStayInTheirFiles()
{
    const QByteArray longName(5000, 'n');
    m_survey->write("a^1.wll", logFile(longName, {100, 1, 101, 2}));
    m_survey->write("a.wlm",
                    header("Well Markers") + "Depth-Unit: Meter\n1.Name: " + longName
                        + "\n1.Depth along hole: 9\n1.Strat Level: -1\n1.Color: 1`2`3\n");
    SurveyStore store(m_survey->path());
    host::LogData data = log("", {5, 6});
    data.name = store.logs(well).value.first().name;
    QVERIFY(store.writeLog(well, data).ok());
    QCOMPARE(store.logs(well).value.size(), 1);
    QVERIFY(m_survey->read("a^1.wll").contains("Name: " + longName + '\n'));
    QVector<host::Marker> markers = store.markers(well).value;
    markers[0].depth = 12;
    QVERIFY(store.writeMarkers(well, markers).ok());
    QVERIFY(m_survey->read("a.wlm").contains("Name: " + longName + '\n'));
    QCOMPARE(store.markers(well).value.first().depth, 12.0f);
}

void TestSurveyLinks::whatIsNoFileIsNotRead()
{
    for (const char *name : {"a.wlm", "a.track", "a^1.wll"}) {
        QFile::remove(m_survey->file(name));
        QCOMPARE(::mkfifo(QFile::encodeName(m_survey->file(name)).constData(), 0666), 0);
    }
    SurveyStore store(m_survey->path());
    QVERIFY(store.header(well).ok());
    QVERIFY(!store.markers(well).ok());
    QVERIFY(store.logs(well).value.isEmpty());
    QVERIFY(!store.writeMarkers(well, {marker("M", 10)}).ok());
}

LORVA_TEST_MAIN(TestSurveyLinks)
#include "tst_surveylinks.moc"
