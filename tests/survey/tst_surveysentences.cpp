// What a user reads of damaged files and of changes that are refused, word by word.

#include "support/failingtarget.h"
#include "support/testmain.h"
#include "survey/logcheck.h"
#include "survey/surveyfolder.h"
#include "survey/wellnames.h"
#include "surveystorefixture.h"

#include <limits>

using namespace survey_fixture;
using survey::WellProperties;

class TestSurveySentences : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_survey = std::make_unique<OneWell>(QVector<QByteArray>{"GR", "RHOB"}); }
    void cleanup() { m_survey.reset(); } // before the next one puts its calls of the file system in place
    void headers_data();
    void headers();
    void lists_data();
    void lists();
    void logFiles_data();
    void logFiles();
    void wellFiles();
    void wellsThatAreNotThere();
    void refusedLogs();
    void refusedWells();
    void refusedMarkers();
    void changesMeanwhile();
    void whatCannotBeDeleted();
    void names_data();
    void names();
    void newSurveys();

private:
    /// With "<wells>" for the folder of wells.
    QString shown(QString text) const { return text.replace(m_survey->wells(), QStringLiteral("<wells>")); }
    QString problems()
    {
        const QStringList all = m_survey->store.takeProblems();
        return shown(all.join(QLatin1Char('\n')));
    }

    std::unique_ptr<OneWell> m_survey;
};

void TestSurveySentences::headers_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("problem");
    QTest::newRow("nothing") << QByteArray() << "it is empty";
    QTest::newRow("another file") << QByteArray("~Version\n")
                                  << "it is no survey file (the first line is not \"dTect V…\")";
    QTest::newRow("no type") << QByteArray("dTect V6.6\n") << "it is cut off within its header";
    QTest::newRow("another type") << header("Well Log") << "its type is \"Well Log\" and not \"Well\"";
    QTest::newRow("no end") << QByteArray("dTect V6.6\nWell\nFri 20 Nov 2026") << "it is cut off within its header";
}

void TestSurveySentences::headers()
{
    QFETCH(QByteArray, bytes);
    QTEST(survey::parseOdFile(bytes, "Well").error, "problem");
}

void TestSurveySentences::lists_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<QString>("problem");
    const QByteArray id = "ID: 100050`3\n";
    QTest::newRow("no number") << QByteArray("Name: x\n!\n") << "it has no \"ID\" line";
    QTest::newRow("cut") << id << "it is cut off within its first section";
    QTest::newRow("cut entry") << id + "!\nA: 2\nWell: x\n"
                               << "it is cut off within the entry \"A: 2\", which is passed over";
    QTest::newRow("unnumbered") << id + "!\nA: none\nWell: x\n!\n"
                                << "the entry \"A: none\" has no number and is passed over";
    QTest::newRow("twice") << id + "!\nA: 2\nWell: x\n!\nB: 2\nWell: x\n!\n"
                           << "the entry \"B: 2\" has the number of another one and is passed over";
}

void TestSurveySentences::lists()
{
    QFETCH(QByteArray, body);
    QStringList problems;
    const auto list = survey::ObjectList::parse(header("Object Management file") + body, &problems);
    QTEST(list.error + problems.join(QLatin1Char('\n')), "problem");
}

void TestSurveySentences::logFiles_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("problem");
    const auto row = [](const char *name, const QByteArray &bytes, const char *problem) {
        QTest::newRow(name) << bytes << QStringLiteral("<wells>/a^1.wll: ") + QString::fromUtf8(problem);
    };
    row("cut", logFile("GR", {100, 1}) + "x", "its last sample is cut off.");
    row("no samples", logFile("GR", {}), "it holds no samples.");
    row("undefined", logFile("GR", {100, host::undefinedValue}), "it holds no samples.");
    row("cut header", logFile("GR", {}).left(80), "it is cut off within its header.");
    row("nameless", logFile({}, {100, 1}), "its header gives the log no name; it is called [1].");
    row("texts", header("Well Log") + "Name: GR\nStorage type: Ascii\n!\n100 1\nx\n",
        "its samples end in something that is no pair of numbers.");
}

void TestSurveySentences::logFiles()
{
    QFETCH(QByteArray, bytes);
    m_survey->write("a^1.wll", bytes);
    (void)m_survey->store.logs(m_survey->key);
    (void)m_survey->store.log(m_survey->key, 0);
    QTEST(problems(), "problem");
    if (bytes.contains("Name: GR")) {
        m_survey->write("a^1.wll", logFile("GR", {100, 1}));
        m_survey->write("a^2.wll", logFile("GR", {100, 1}));
        m_survey->write("a^4.wll", logFile("DT", {100, 1}));
        QCOMPARE(m_survey->store.logs(m_survey->key).value.size(), 1);
        QCOMPARE(problems(),
                 QStringLiteral("<wells>/a^2.wll: a second log named \"GR\" is left out.\n"
                                "<wells>/a^3.wll: it is missing, and the logs behind it are not shown."));
    }
}

void TestSurveySentences::wellFiles()
{
    OneWell &survey = *m_survey;
    survey.write("a.well", header("Well") + "!\nrubbish\n");
    QCOMPARE(shown(survey.store.header(survey.key).error),
             QStringLiteral("Cannot read the file <wells>/a.well: it holds no valid well track."));
    survey.write("a.well", wellFile() + "rubbish\n");
    survey.write("a.track", "x");
    QVERIFY(survey.store.header(survey.key).ok());
    QCOMPARE(problems(),
             QStringLiteral("<wells>/a.track: it holds no valid well track.\n"
                            "<wells>/a.well: its track ends after 2 points in a line that is none."));
    QCOMPARE(shown(survey.store.changeWell(survey.key, properties("A")).error),
             QStringLiteral("The track of the well <wells>/a is damaged: changing the well would lose what follows "
                            "the damaged line. Nothing was changed."));
    // What the check of a survey says.
    survey.write("a^1.wll", logFile({}, {100, 1}));
    survey.write("a^3.wll", logFile("RHOB", {100, 1}));
    QStringList told;
    survey::checkLogs(survey.file("a"), [&told](const QString &, const QString &problem) { told.append(problem); });
    QCOMPARE(told, (QStringList{"its header gives the log no name", "a second log named \"RHOB\" is left out"}));
    QCOMPARE(survey::wellStems(survey.path()),
             (QHash<QString, QString>{{survey.key, survey.wells() + QStringLiteral("/a")}}));
}

void TestSurveySentences::wellsThatAreNotThere()
{
    OneWell &survey = *m_survey;
    const QString other = QStringLiteral("100050.9");
    const QString missing = QStringLiteral("The well with the key 100050.9 is not in the list <wells>/.omf.");
    QCOMPARE(shown(survey.store.header(other).error), missing);
    QCOMPARE(shown(survey.store.renameWell(other, QStringLiteral("B")).error), missing);
    survey.write(".omf", wellList({{"A", "../a.well"}}));
    QCOMPARE(shown(survey.store.header(survey.key).error),
             QStringLiteral("The list <wells>/.omf gives the well \"A\" no file of its folder (\"../a.well\")."));
    survey.write(".omf", wellList({{"A", "a.well"}}).replace("`2", "`999999999"));
    QCOMPARE(shown(survey.store.addWell(properties("B")).error),
             QStringLiteral("The list of wells <wells>/.omf has no number left for a new well."));
    survey.write(".omf", wellList({{"A", "a.well"}}).chopped(5));
    QCOMPARE(shown(survey.store.addWell(properties("B")).error),
             QStringLiteral("The list of wells <wells>/.omf is cut off; writing it would lose the wells behind the "
                            "cut. Nothing was changed."));
    survey.write(".omf", "");
    QCOMPARE(shown(survey.store.list().error),
             QStringLiteral("Cannot read the list of wells <wells>/.omf: it is empty."));
}

void TestSurveySentences::refusedLogs()
{
    OneWell &survey = *m_survey;
    const auto writing = [&](const host::LogData &log) {
        return shown(survey.store.writeLog(survey.key, log).error);
    };
    host::LogData uneven = log("X", {1, 2});
    uneven.depths.removeLast();
    QCOMPARE(writing(log(" ", {1})), QStringLiteral("Cannot write the log \" \" of <wells>/a: the log has no name."));
    QCOMPARE(writing(uneven),
             QStringLiteral("Cannot write the log \"X\" of <wells>/a: the log has not as many depths as values."));
    QCOMPARE(writing(log("X", {host::undefinedValue})),
             QStringLiteral("Cannot write the log \"X\" of <wells>/a: the log has no defined sample."));
    QCOMPARE(shown(survey.store.addWell(properties("B"), {log(" ", {1})}).error),
             QStringLiteral("Cannot write the log \" \" of <wells>/B: the log has no name."));
    QCOMPARE(shown(survey.store.log(survey.key, 7).error), QStringLiteral("The well <wells>/a has no log number 7."));
    const auto renaming = [&](const char *from, const char *to) {
        return survey.store.renameLog(survey.key, QString::fromLatin1(from), QString::fromLatin1(to)).error;
    };
    QCOMPARE(renaming("GR", " "), QStringLiteral("A log needs a name."));
    QCOMPARE(renaming("DT", "X"), QStringLiteral("The well has no log \"DT\" any more."));
    QCOMPARE(renaming("GR", "RHOB"), QStringLiteral("The well has a log \"RHOB\" already."));
}

void TestSurveySentences::refusedWells()
{
    const QVector<QPair<double WellProperties::*, const char *>> numbers{
        {&WellProperties::x, "X coordinate"},
        {&WellProperties::y, "Y coordinate"},
        {&WellProperties::kbElevation, "kelly bushing elevation"},
        {&WellProperties::groundElevation, "ground elevation"},
        {&WellProperties::totalDepth, "total depth"}};
    for (const auto &number : numbers) {
        WellProperties well = properties("A");
        well.*number.first = 1e16;
        QCOMPARE(m_survey->store.changeWell(m_survey->key, well).error,
                 QStringLiteral("The %1 of the well \"A\" is no usable number.").arg(QLatin1String(number.second)));
    }
}

void TestSurveySentences::refusedMarkers()
{
    OneWell &survey = *m_survey;
    survey.write("a.wlm", "x");
    const QString what = QStringLiteral("it is no survey file (the first line is not \"dTect V…\")");
    QCOMPARE(shown(survey.store.markers(survey.key).error),
             QStringLiteral("Cannot read the file <wells>/a.wlm: %1.").arg(what));
    QCOMPARE(shown(survey.store.writeMarkers(survey.key, {marker("M", 1)}).error),
             QStringLiteral("The file <wells>/a.wlm is no list of markers: %1. It was not written over.").arg(what));
}

void TestSurveySentences::changesMeanwhile()
{
    OneWell &survey = *m_survey;
    QVERIFY(survey.store.properties(survey.key).ok());
    survey.write("a.well", wellFile() + "1 1 9000 9025\n");
    QCOMPARE(shown(survey.store.changeWell(survey.key, properties("A")).error),
             QStringLiteral("Another program changed the file <wells>/a.well meanwhile. It was not written over."));

    const auto markers = [](const char *depth) {
        return header("Well Markers") + "1.Name: M\n1.Depth along hole: " + depth + "\n";
    };
    survey.write("a.wlm", markers("5"));
    QCOMPARE(survey.store.markers(survey.key).value.size(), 1);
    survey.write("a.wlm", markers("6.5"));
    QCOMPARE(survey.store.writeMarkers(survey.key, {marker("M", 7)}).error,
             QStringLiteral("Another program changed the marker \"M\" meanwhile. Nothing was written."));

    QCOMPARE(survey.store.logs(survey.key).value.size(), 2);
    survey.write("a^1.wll", logFile("GR", {100, 1, 101, 2, 102, 3}));
    QCOMPARE(shown(survey.store.writeLog(survey.key, log("GR", {1})).error),
             QStringLiteral("Another program wrote the log \"GR\" of <wells>/a meanwhile. It was not written over."));
    QCOMPARE(survey.store.logs(survey.key).value.size(), 2);
    survey.write("a^1.wll", logFile("DT", {100, 1}));
    QCOMPARE(shown(survey.store.removeLog(survey.key, 0).error),
             QStringLiteral("Another program changed the logs of <wells>/a meanwhile. Nothing was deleted."));
}

void TestSurveySentences::whatCannotBeDeleted()
{
    OneWell &survey = *m_survey;
    {
        FailingTarget disk("/a^1.wll");
        const base::ScopedFileSystemCalls scope(disk);
        QCOMPARE(shown(survey.store.removeLog(survey.key, 0).error),
                 QStringLiteral("Cannot delete the log file <wells>/a^1.wll. Nothing is changed."));
    }
    FailingTarget disk(".wll");
    const base::ScopedFileSystemCalls scope(disk);
    QCOMPARE(shown(survey.store.removeWell(survey.key).error),
             QStringLiteral("The well is no longer in the list, but these files of it could not be deleted in "
                            "<wells>: a^1.wll, a^2.wll."));
}

void TestSurveySentences::names_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("problem");
    QTest::newRow("none") << QString() << "A well needs a name.";
    QTest::newRow("control") << "A\tB"
                             << "The well name \"A\tB\" holds a control character.";
    QTest::newRow("half") << QString(QChar(0xD800))
                          << QStringLiteral("The well name \"%1\" holds half of a character.").arg(QChar(0xD800));
    const QString mark = QChar(QChar::ByteOrderMark);
    for (const QString &first :
         {QStringLiteral("@"), QStringLiteral("!"), QStringLiteral("--"), QStringLiteral(":"), mark})
        QTest::newRow(qPrintable(first))
            << first + 'A' << QStringLiteral("A well name cannot begin like \"%1A\".").arg(first);
    QTest::newRow("end") << "A\\"
                         << "A well name cannot end like \"A\\\".";
    QTest::newRow("good") << "A--!@:B \\C" << QString();
}

void TestSurveySentences::names()
{
    QFETCH(QString, name);
    QTEST(survey::storedNameProblem(name), "problem");
}

void TestSurveySentences::newSurveys()
{
    survey::NewSurvey flat;
    flat.name = QStringLiteral("Flat");
    flat.xMaximum = flat.xMinimum;
    QCOMPARE(survey::createSurvey(m_survey->path() + QStringLiteral("/new"), flat).error,
             QStringLiteral("The extent of the survey \"Flat\" is no usable range of coordinates and depths."));
    QCOMPARE(survey::createSurvey(m_survey->path(), survey::NewSurvey()).error,
             QStringLiteral("%1 exists already and is not empty. Nothing was changed.").arg(m_survey->path()));
    FailingTarget disk("/new");
    const base::ScopedFileSystemCalls scope(disk);
    const QString path = m_survey->path() + QStringLiteral("/new");
    QCOMPARE(survey::createSurvey(path, survey::NewSurvey()).error,
             QStringLiteral("Cannot put the new survey in its place %1.").arg(path));
}

LORVA_TEST_MAIN(TestSurveySentences)
#include "tst_surveysentences.moc"
