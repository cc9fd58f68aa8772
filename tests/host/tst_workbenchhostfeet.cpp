#include "support/testmain.h"
#include "survey/logfile.h"
#include "survey/markerfile.h"
#include "survey/wellfile.h"
#include "survey/wellsummary.h"
#include "workbenchcontract.h"

/// The same contract on surveys whose depths are in feet, and what lies in their files.
class tst_workbenchhostfeet : public WorkbenchContract
{
    Q_OBJECT

protected:
    bool isInFeet() const override { return true; }

private slots:
    void filesAreInFeetAndTheInterfaceInMetres()
    {
        const QString key = addInFeet(7000);
        const host::WellHeader header = wells().header(key).value;
        QCOMPARE(header.kbElevation, 30.48f);
        QCOMPARE(header.groundElevation, 15.24f);
        QCOMPARE(header.totalDepth, 7000 * 0.3048);
        QVERIFY(wells().writeLog(key, {"GR", "gAPI", {30.48f, 304.8f, 2133.6f}, {1, 2, 3}}).ok());
        QVERIFY(wells().writeMarkers(key, {{"Top", 304.8f, Qt::red}, {"Base", 2133.6f, Qt::red}}).ok());
        QCOMPARE(storedLog().depths, (QVector<float>{100, 1000, 7000}));
        QCOMPARE(storedLog().values, (QVector<float>{1, 2, 3}));
        // A marker at the total depth lies on the track.
        QCOMPARE(markerNames(key), (QStringList{"Top", "Base"}));
        const QByteArray markers = files::read(markerPath("A"));
        QVERIFY(markers.contains("Depth-Unit: Feet\n"));
        QVERIFY(markers.contains("Depth along hole: 1000\n"));
        QVERIFY(markers.contains("Depth along hole: 7000\n"));
    }

    void depthsInFeetGoThereAndBack()
    {
        const QString key = addInFeet(20000);
        host::LogData log{"GR", "gAPI", {}, {}};
        for (int i = 0; i <= 40000; ++i) {
            log.depths.append(0.5f * static_cast<float>(i));
            log.values.append(1);
        }
        survey::SurveyStore &store = m_host->store();
        files::write(logPath(), survey::logFileBytes(log, "Feet", nullptr).value);
        const QByteArray before = files::read(logPath());
        store.reload(key);
        const host::LogData read = wells().log(key, 0).value;
        QCOMPARE(read.depths.at(14001), static_cast<float>(7000.5 * 0.3048));
        QVERIFY(wells().writeLog(key, read).ok());
        QVERIFY(storedLog().depths == log.depths);
        QVERIFY(wells().log(key, 0).value.depths == read.depths);
        QCOMPARE(files::read(logPath()).size(), before.size());
    }

    void aMarkerThatStaysKeepsItsDepthInFeet()
    {
        const QString key = addInFeet(9000);
        // Neighbouring floats of feet that are one float of metres.
        const float first = 7000.12353515625f;
        const float second = std::nextafter(first, 9000.0f);
        QVERIFY(host::feetToMetres(first) == host::feetToMetres(second)
                || host::feetToMetres(second) == host::feetToMetres(std::nextafter(second, 9000.0f)));
        files::write(
            markerPath("A"),
            survey::markerFileBytes({{"First", first, Qt::red}, {"Second", second, Qt::red}}, "Feet", {}, {0, 9000}));
        QVector<host::Marker> markers = wells().markers(key).value;
        markers.append({"New", 30.48f, Qt::red});
        QVERIFY(wells().writeMarkers(key, markers).ok());
        const auto stored = survey::parseMarkerFile(files::read(markerPath("A")), {0, 9000}).value;
        QCOMPARE(stored.size(), 3);
        QVERIFY(stored.at(0).depth == 100);
        QVERIFY(stored.at(1).depth == first);
        QVERIFY(stored.at(2).depth == second);
    }

    void theOverviewKeepsFeet()
    {
        addInFeet(7000);
        const auto summaries = survey::readWellSummaries(m_host->store(), survey::DepthUnit::Foot);
        QVERIFY(summaries.value.first().kbElevation == 100);
        QCOMPARE(summaries.value.first().totalDepth, 7000.0);
    }

    void aTimeSurveyInFeet_data()
    {
        QTest::addColumn<QByteArray>("xyInFeet");
        QTest::addColumn<QByteArray>("defaults");
        QTest::addColumn<bool>("isFeet");
        const QByteArray head = "dTect V6.6\nSurvey defaults\nFri 20 Nov 2026, 17:09:32\n!\n";
        QTest::newRow("metres") << QByteArray("No") << QByteArray() << false;
        QTest::newRow("map in feet") << QByteArray("Yes") << QByteArray() << true;
        QTest::newRow("defaults") << QByteArray("No") << head + "Show depth in feet: Yes\n!\n" << true;
        QTest::newRow("defaults in metres") << QByteArray("No") << head + "Show depth in feet: No\n!\n" << false;
        QTest::newRow("damaged defaults") << QByteArray("No") << QByteArray("Show depth in feet: Yes\n") << false;
    }

    void aTimeSurveyInFeet()
    {
        QFETCH(QByteArray, xyInFeet);
        QFETCH(QByteArray, defaults);
        const QString survey = host().surveyDirectory();
        QByteArray bytes = files::read(survey + "/.survey");
        bytes.replace("`F\n", "`T\n").replace("\nXY in feet: No\n", "\nXY in feet: " + xyInFeet + '\n');
        files::write(survey + "/.survey", bytes);
        if (!defaults.isEmpty())
            files::write(survey + "/.defs", defaults);
        QTEST(m_host->store().depthUnit() == survey::DepthUnit::Foot, "isFeet");
    }

private:
    QString addInFeet(double totalDepth)
    {
        survey::WellProperties well;
        well.name = "A";
        well.kbElevation = 100;
        well.groundElevation = 50;
        well.totalDepth = totalDepth;
        return m_host->store().addWell(well).value;
    }
    QString logPath() { return host().surveyDirectory() + "/WellInfo/A^1.wll"; }
    host::LogData storedLog()
    {
        survey::LogFileHeader header;
        return survey::readLogFile(logPath(), &header).value;
    }
};

LORVA_TEST_MAIN(tst_workbenchhostfeet)
#include "tst_workbenchhostfeet.moc"
