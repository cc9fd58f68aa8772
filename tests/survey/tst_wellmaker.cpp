#include "base/numbers.h"
#include "support/failingdisk.h"
#include "support/failingtarget.h"
#include "survey/newwellsreport.h"
#include "survey/surveyfolder.h"
#include "survey/wellmaker.h"
#include "surveyfixture.h"

#include <QTest>

using namespace survey;

class TestWellMaker : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void logsComeWithTheWell();
    void feetAndMetres_data();
    void feetAndMetres();
    void feetStayFeetToTheLastDigit();
    void fallingDepths();
    void theWellReachesItsDeepestSample_data();
    void theWellReachesItsDeepestSample();
    void impossibleDepths();
    void filesOfOneWell();
    void clashingLogs();
    void namesThatLookLikePlaces();
    void withoutLogs();
    void aFileThatCannotBeRead();
    void allOrNothing_data();
    void allOrNothing();
    void aFailingStepLeavesNothing_data();
    void aFailingStepLeavesNothing();
    void oneFlushAWell();
    void whatADeadProgramLeftIsNotTaken();
    void manyLogs();

private:
    QString write(const char *name, QByteArray bytes)
    {
        bytes.replace(" / ", "\n");
        const QString path = m_survey->path() + QStringLiteral("/../") + QString::fromUtf8(name);
        files::write(path, bytes);
        return path;
    }
    static QByteArray las(const QByteArray &curves, const QByteArray &rows, const QByteArray &unit = "M")
    {
        return "~W / STRT." + unit + " 1 : / NULL. -999.25 : / WELL. A : / ~C / DEPT." + unit + " : / " + curves
            + " / ~A / " + rows;
    }
    MadeWell make(const QStringList &paths, double totalDepth = 2500)
    {
        WellOrder order;
        order.properties = survey_fixture::properties("A");
        order.properties.totalDepth = totalDepth;
        order.files = paths;
        return makeWell(*m_store, order);
    }
    void setFeet()
    {
        QByteArray info = files::read(m_survey->path() + QStringLiteral("/.survey"));
        files::write(m_survey->path() + QStringLiteral("/.survey"),
                     info.replace("Name: Fixture\n", "Name: Fixture\nZ range: 0`3000`1`F\n"));
        m_store = std::make_unique<SurveyStore>(m_survey->path());
    }
    /// "GR[gAPI] 1=10 2=-" of every log of a well, in metres.
    QStringList logs(const QString &key)
    {
        SurveyStore fresh(m_survey->path());
        QStringList texts;
        const QVector<host::LogInfo> infos = fresh.logs(key).value;
        for (int i = 0; i < infos.size(); ++i) {
            const host::LogData log = fresh.log(key, i).value;
            QString text = QStringLiteral("%1[%2]").arg(log.name, log.unit);
            for (int row = 0; row < log.depths.size(); ++row)
                text +=
                    QStringLiteral(" %1=%2").arg(QString::fromLatin1(base::formatShortest(log.depths.at(row))),
                                                 host::isUndefined(log.values.at(row))
                                                     ? QStringLiteral("-")
                                                     : QString::fromLatin1(base::formatShortest(log.values.at(row))));
            texts.append(text);
        }
        return texts;
    }

    std::unique_ptr<survey_fixture::Survey> m_survey;
    std::unique_ptr<SurveyStore> m_store;
};

void TestWellMaker::init()
{
    m_store.reset();
    m_survey.reset(); // before the next: it holds the file system's calls
    m_survey = std::make_unique<survey_fixture::Survey>();
    m_store = std::make_unique<SurveyStore>(m_survey->path());
}

void TestWellMaker::logsComeWithTheWell()
{
    const QString path = write("a.las",
                               las("GR.GAPI : / RT.OHMM : / LITH. : / E. :",
                                   "1 10 0.5 SAND -999.25 / 2 -999.25 0.6 LIME -999.25 / 3 30 -999.25 SAND -999.25"));
    const MadeWell made = make({path});
    QCOMPARE(made.error, QString());
    QCOMPARE(made.name, QStringLiteral("A"));
    QCOMPARE(made.files, QStringList{path});
    QCOMPARE(made.logCount, 2);
    QCOMPARE(logs(made.key), (QStringList{"GR[GAPI] 1=10 2=- 3=30", "RT[OHMM] 1=0.5 2=0.6"}));
    QCOMPARE(made.notices,
             (QStringList{"Columns of texts are left out: LITH.", "Without a sample and so left out: E."}));
    SurveyStore fresh(m_survey->path());
    QCOMPARE(fresh.properties(made.key).value.totalDepth, 2500.0);
    QCOMPARE(fresh.properties(made.key).value.groundElevation, 12.5);
    QVERIFY(fresh.takeProblems().isEmpty());
    QCOMPARE(m_survey->names(), (QStringList{".omf", "A.well", "A^1.wll", "A^2.wll"}));
}

void TestWellMaker::feetAndMetres_data()
{
    QTest::addColumn<bool>("isSurveyInFeet");
    QTest::addColumn<QByteArray>("unit");
    QTest::addColumn<float>("deepest");
    QTest::newRow("metres in metres") << false << QByteArray("M") << 1000.5f;
    QTest::newRow("feet in metres") << false << QByteArray("FT") << 304.9524f;
    QTest::newRow("metres in feet") << true << QByteArray("M") << 1000.5f;
    QTest::newRow("feet in feet") << true << QByteArray("F") << 304.9524f;
    QTest::newRow("tenths of an inch in metres") << false << QByteArray(".1IN") << 2.54127f;
}

void TestWellMaker::feetAndMetres()
{
    QFETCH(bool, isSurveyInFeet);
    QFETCH(QByteArray, unit);
    QFETCH(float, deepest);
    if (isSurveyInFeet)
        setFeet();
    const MadeWell made = make({write("a.las", las("GR. :", "1000 1 / 1000.5 2", unit))}, 20000);
    QCOMPARE(made.error, QString());
    const host::LogData log = m_store->log(made.key, 0).value; // in metres, as every host
    QCOMPARE(log.values, (QVector<float>{1, 2}));
    QCOMPARE(log.depths.last(), deepest);
    QVERIFY(m_survey->read("A^1.wll").contains(isSurveyInFeet ? "\nDepth-Unit: Feet\n" : "\nDepth-Unit: Meter\n"));
}

void TestWellMaker::feetStayFeetToTheLastDigit()
{
    setFeet();
    QByteArray rows;
    for (int i = 0; i < 2000; ++i)
        rows += QByteArray::number(7000 + 0.1 * i, 'f', 1) + " 1 / ";
    make({write("a.las", las("GR. :", rows, "FT"))}, 20000);
    const QByteArray bytes = m_survey->read("A^1.wll");
    const char *at = bytes.constData() + bytes.size() - 2000 * 8;
    for (int i = 0; i < 2000; ++i, at += 8) {
        float depth = 0;
        std::memcpy(&depth, at, sizeof depth);
        QCOMPARE(depth, static_cast<float>(70000 + i) / 10.0f);
    }
}

void TestWellMaker::fallingDepths()
{
    const MadeWell made = make({write("a.las", las("GR. : / B. :", "3 30 - / 2 20 5 / 1 10 6"))});
    QCOMPARE(logs(made.key), (QStringList{"GR[] 1=10 2=20 3=30", "B[] 1=6 2=5"}));
    QVERIFY(made.notices.isEmpty());
}

void TestWellMaker::theWellReachesItsDeepestSample_data()
{
    QTest::addColumn<bool>("isSurveyInFeet");
    QTest::addColumn<QByteArray>("unit");
    for (const bool inFeet : {false, true})
        for (const char *unit : {"M", "FT"})
            QTest::newRow(QByteArray(unit) + (inFeet ? " in feet" : " in metres")) << inFeet << QByteArray(unit);
}

void TestWellMaker::theWellReachesItsDeepestSample()
{
    QFETCH(bool, isSurveyInFeet);
    QFETCH(QByteArray, unit);
    if (isSurveyInFeet)
        setFeet();
    for (int i = 0; i < 40; ++i) {
        const QByteArray depth = QByteArray::number(1000 + 7.0123 * i, 'f', 4);
        const MadeWell made =
            make({write("a.las", las("GR. :", "10 1 / " + depth + " 2 / 9000 -999.25", unit))}, 100);
        QCOMPARE(made.error, QString());
        QVERIFY(made.notices.last().startsWith(QLatin1String("The total depth is ")));
        const float deepest = m_store->log(made.key, 0).value.depths.last();
        const double total = m_store->header(made.key).value.totalDepth;
        QVERIFY(total >= static_cast<double>(deepest));
        QVERIFY(total - static_cast<double>(deepest) < 0.002);
        QVERIFY(m_store->removeWell(made.key).ok());
    }
    QVERIFY(make({write("a.las", las("GR. :", "10 1", unit))}, 100).notices.isEmpty());
}

void TestWellMaker::impossibleDepths()
{
    const MadeWell made = make({write("a.las", las("GR. :", "10 1 / 1e9 2"))}, 100);
    QCOMPARE(made.error, QString());
    QCOMPARE(made.logCount, 0);
    QCOMPARE(made.notices, QStringList{"A section with samples down to 1e+09 m is left out: no well is so deep."});
    QCOMPARE(m_store->properties(made.key).value.totalDepth, 100.0);
}

void TestWellMaker::filesOfOneWell()
{
    const MadeWell made =
        make({write("a.las", las("GR. :", "1 10 / 2 20")), write("b.las", las("RT. : / T. :", "5 1 x / 6 2 y"))});
    QCOMPARE(logs(made.key), (QStringList{"GR[] 1=10 2=20", "RT[] 5=1 6=2"}));
    QCOMPARE(made.notices, QStringList{"b.las: Columns of texts are left out: T."});
}

void TestWellMaker::clashingLogs()
{
    const MadeWell made = make({write("a.las", las("GR.GAPI : / RT. : / RT. :", "1 10 1 1 / 2 20 2 2")),
                                write("b.las", las("GR.GAPI : / RT. : / GR_2. :", "1 10 1 7 / 2 21 2 8")),
                                write("c.las", las("GR.GAPI :", "2 20 / 1 10"))});
    QCOMPARE(logs(made.key),
             (QStringList{"GR[GAPI] 1=10 2=20", "RT[] 1=1 2=2", "GR_2[GAPI] 1=10 2=21", "GR_2_2[] 1=7 2=8"}));
    QCOMPARE(made.notices,
             (QStringList{"a.las: Names that stand more than once or are missing: RT as RT_2.",
                          "a.las: RT_2 is left out: it repeats RT.",
                          "b.las: GR becomes GR_2: a.las has another log of that name.",
                          "b.las: RT is left out: it repeats that of a.las.",
                          "b.las: GR_2 becomes GR_2_2: b.las has another log of that name.",
                          "c.las: GR is left out: it repeats that of a.las."}));
}

// "%2" is how a sentence marks the place of its second part.
void TestWellMaker::namesThatLookLikePlaces()
{
    const MadeWell made = make(
        {write("a.las", las("A%2. : / A%2. :", "1 10 11 / 2 20 21")), write("b.las", las("A%2. :", "1 5 / 2 6"))});
    QCOMPARE(logs(made.key), (QStringList{"A%2[] 1=10 2=20", "A%2_2[] 1=11 2=21", "A%2_3[] 1=5 2=6"}));
    LogFiles files;
    QCOMPARE(files.remove(QStringLiteral("/W%2"), 7, {}).error, QStringLiteral("The well /W%2 has no log number 7."));
}

void TestWellMaker::withoutLogs()
{
    WellOrder order;
    order.properties = survey_fixture::properties("A");
    order.files = QStringList{write("a.las", las("GR. :", "1 10"))};
    order.withLogs = false;
    const MadeWell made = makeWell(*m_store, order);
    QCOMPARE(made.error, QString());
    QCOMPARE(made.logCount, 0);
    QVERIFY(logs(made.key).isEmpty());
}

void TestWellMaker::aFileThatCannotBeRead()
{
    const QString good = write("a.las", las("GR. :", "1 10"));
    const MadeWell made = make({good, good + QStringLiteral(".missing")});
    QVERIFY(made.key.isEmpty());
    QVERIFY(made.error.contains(QLatin1String("does not exist")));
    QVERIFY(m_store->list().value.isEmpty());
}

void TestWellMaker::allOrNothing_data()
{
    QTest::addColumn<QByteArray>("failing");
    QTest::newRow("the well") << QByteArray("/A.well");
    QTest::newRow("the first log") << QByteArray("/A^1.wll");
    QTest::newRow("the last log") << QByteArray("/A^2.wll");
    QTest::newRow("the list") << QByteArray("/.omf");
}

void TestWellMaker::allOrNothing()
{
    QFETCH(QByteArray, failing);
    const QString path = write("a.las", las("GR. : / RT. :", "1 10 2"));
    const QMap<QString, QByteArray> before = files::snapshot(m_survey->path());
    {
        FailingTarget disk(failing.constData());
        const base::ScopedFileSystemCalls scope(disk);
        const MadeWell made = make({path});
        QVERIFY(made.key.isEmpty());
        QVERIFY2(made.error.contains(QString::fromLatin1(failing)), qPrintable(made.error));
        QCOMPARE(made.logCount, 0);
    }
    QCOMPARE(files::snapshot(m_survey->path()), before);
    QCOMPARE(make({path}).logCount, 2);
}

void TestWellMaker::aFailingStepLeavesNothing_data()
{
    QTest::addColumn<int>("step");
    for (const FailingStep &step : failingSteps)
        QTest::newRow(step.name) << static_cast<int>(step.step);
}

void TestWellMaker::aFailingStepLeavesNothing()
{
    QFETCH(int, step);
    const QString path = write("a.las", las("GR. :", "1 10"));
    const QMap<QString, QByteArray> before = files::snapshot(m_survey->path());
    FailingDisk disk(static_cast<FailingDisk::Step>(step));
    {
        const base::ScopedFileSystemCalls scope(disk);
        QVERIFY(!make({path}).error.isEmpty());
    }
    QCOMPARE(files::snapshot(m_survey->path()), before);
}

// The flush covers the new list too, which only changes its name after it: a crash leaves the old list or the new one
// with all it names.
void TestWellMaker::oneFlushAWell()
{
    const QString path = write("a.las", las("GR. : / RT. :", "1 10 2"));
    FailingDisk disk;
    const base::ScopedFileSystemCalls scope(disk);
    for (int well = 1; well <= 3; ++well) {
        QCOMPARE(make({path}).error, QString());
        QCOMPARE(disk.commonFlushes, well);
        QCOMPARE(disk.flushes, 0);
        QCOMPARE(disk.writesSinceCommonFlush, 0);
        QCOMPARE(disk.written.size(), disk.writtenAtCommonFlush + 1);
        QVERIFY(disk.written.last().endsWith(QLatin1String("/.omf")));
    }
    QCOMPARE(m_store->list().value.size(), 3);
}

// A crash before the list was written leaves files that no well of the list names.
void TestWellMaker::whatADeadProgramLeftIsNotTaken()
{
    m_survey->write("A.well", survey_fixture::wellFile());
    m_survey->write("A^1.wll", survey_fixture::logFile("OLD", {1, 2}));
    m_survey->write("A^2.wll", survey_fixture::logFile("OLDER", {1, 2}));
    const MadeWell made = make({write("a.las", las("GR. :", "1 10"))});
    QCOMPARE(logs(made.key), QStringList{"GR[] 1=10"});
}

void TestWellMaker::manyLogs()
{
    QByteArray curves;
    QByteArray row = "1";
    for (int i = 0; i < 300; ++i) {
        curves += "L" + QByteArray::number(i) + ". : / ";
        row += ' ' + QByteArray::number(i);
    }
    const MadeWell made = make({write("a.las", las(curves, row))});
    QCOMPARE(made.logCount, 300);
    QCOMPARE(logs(made.key).last(), QStringLiteral("L299[] 1=299"));
}

QTEST_GUILESS_MAIN(TestWellMaker)
#include "tst_wellmaker.moc"
