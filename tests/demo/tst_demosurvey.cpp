#include "datastore/calibrationfile.h"
#include "datastore/curvegrouptable.h"
#include "datastore/perforationfile.h"
#include "datastore/project.h"
#include "demo/demofield.h"
#include "demo/demosurvey.h"
#include "support/failingtarget.h"
#include "support/files.h"
#include "support/scriptedasker.h"
#include "survey/surveyfolder.h"
#include "survey/surveystore.h"
#include "templates/templatestore.h"

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

class tst_demosurvey : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QVERIFY(m_folder.isValid());
        m_survey = m_folder.filePath(QStringLiteral("root/Demo"));
        QCOMPARE(demo::makeDemoSurvey(m_survey), QString());
    }

    void isASurveyInAMarkedDataRoot()
    {
        QVERIFY(survey::isSurveyFolder(m_survey));
        QVERIFY(QFileInfo::exists(m_folder.filePath(QStringLiteral("root/.omf"))));
        QCOMPARE(QDir(m_folder.filePath(QStringLiteral("root")))
                     .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
                 (QStringList{QStringLiteral(".omf"), QStringLiteral("Demo")}));
    }

    void wellsLogsAndMarkersAreThoseOfTheField()
    {
        const demo::Field field = demo::makeField();
        survey::SurveyStore store(m_survey);
        const auto list = store.list();
        QVERIFY(list.ok());
        QCOMPARE(list.value.size(), field.wells.size());
        for (const demo::Well &well : field.wells) {
            QString key;
            for (const host::WellEntry &entry : list.value)
                if (entry.name == well.name)
                    key = entry.key;
            QVERIFY2(!key.isEmpty(), qPrintable(well.name));
            const auto header = store.header(key);
            QCOMPARE(header.value.x, well.xM);
            QCOMPARE(header.value.y, well.yM);
            QCOMPARE(header.value.kbElevation, static_cast<float>(well.kbM));
            QCOMPARE(header.value.groundElevation, static_cast<float>(well.groundM));
            QCOMPARE(header.value.totalDepth, well.totalDepthM);
            const auto logs = store.logs(key);
            QCOMPARE(logs.value.size(), well.curves.size());
            QCOMPARE(logs.value.first().name, well.curves.first().mnemonic);
            QCOMPARE(logs.value.first().unit, well.curves.first().unit);
            const auto markers = store.markers(key);
            QCOMPARE(markers.value.size(), well.tops.size());
            QCOMPARE(markers.value.first().name, well.tops.first().name);
            QCOMPARE(markers.value.first().color,
                     QColor(well.tops.first().red, well.tops.first().green, well.tops.first().blue));
        }
        QVERIFY2(store.takeProblems().isEmpty(), "the demo opens without a complaint");
    }

    void logValuesComeThroughTheLasFile()
    {
        const demo::Well well = demo::makeField().wells.first();
        survey::SurveyStore store(m_survey);
        QString key;
        for (const host::WellEntry &entry : store.list().value)
            if (entry.name == well.name)
                key = entry.key;
        const host::LogData gamma = store.log(key, 0).value;
        const demo::Curve &curve = well.curves.first();
        int first = 0;
        while (curve.values.at(first) == demo::nullValue)
            ++first;
        QVERIFY(gamma.values.size() > 10000);
        for (int i = 0; i < gamma.values.size(); ++i) {
            const double expected = curve.values.at(first + i);
            if (expected == demo::nullValue)
                QVERIFY(host::isUndefined(gamma.values.at(i)));
            else
                QCOMPARE(gamma.values.at(i), static_cast<float>(expected));
        }
    }

    void sideFilesHoldPerforationsAndCorePoints()
    {
        const QString project = m_survey + QStringLiteral("/WLC");
        ScriptedAsker asker;
        int calibrations = 0;
        for (const demo::Well &well : demo::makeField().wells) {
            QCOMPARE(readPerforation(project, well.name).zoneCount, well.perforations.size());
            for (const demo::CalibrationSet &set : well.calibrations) {
                QCOMPARE(readCalibration(project, well.name, set.group, asker).depths.size(), set.points.size());
                ++calibrations;
            }
        }
        QVERIFY(calibrations >= 2);
        QVERIFY(asker.boxes.isEmpty());
    }

    void firstLaunchKnowsTheSeededTemplatesAndTheDemos()
    {
        Project project;
        openProjectFolder(m_survey, &project);
        project.globalTemplateNames.sort(); // they come as the folder is read
        QCOMPARE(project.globalTemplateNames,
                 (QStringList{QStringLiteral("Default"), QStringLiteral("Petrophysics"), QStringLiteral("Simple")}));
    }

    void theDemosTemplateShowsWhatTheWellsHave()
    {
        Project project;
        openProjectFolder(m_survey, &project);
        const QVector<TrackInfo> tracks = loadTemplate(project, QStringLiteral("Petrophysics"), {});
        QCOMPARE(tracks.size(), 5);
        QCOMPARE(tracks.at(1).type, static_cast<int>(DepthTrack));
        QCOMPARE(tracks.at(2).type, static_cast<int>(LogarithmicTrack));
        QCOMPARE(tracks.at(0).curves.first().leftFillIndex, 2);
        QCOMPARE(tracks.at(3).curves.first().leftUpTo, QStringLiteral("Curve_2"));
        QVERIFY(tracks.at(3).curves.first().isCalibrationShown);
    }

    void importAssignsCurveGroups()
    {
        CurveGroupTable table;
        table.read(m_survey + QStringLiteral("/WLC"));
        QCOMPARE(table.group(QStringLiteral("NPHI")), QStringLiteral("Porosity"));
        QCOMPARE(table.group(QStringLiteral("GR")), QStringLiteral("Gamma"));
        QCOMPARE(table.group(QStringLiteral("WS_log")), QStringLiteral("Water Saturation"));
    }

    void theFileInFeetIsThereAndNotImported()
    {
        const QStringList feet =
            QDir(m_survey + QStringLiteral("/Import")).entryList({QStringLiteral("*_feet.las")}, QDir::Files);
        QCOMPARE(feet.size(), 1);
        QVERIFY(files::read(m_survey + QStringLiteral("/Import/") + feet.first()).contains("STRT.F"));
    }

    void isTheSameEveryTime()
    {
        const QString again = m_folder.filePath(QStringLiteral("root/Again"));
        QCOMPARE(demo::makeDemoSurvey(again), QString());
        const auto withoutDates = [](const QString &folder) {
            QMap<QString, QByteArray> content = files::snapshot(folder);
            for (QByteArray &bytes : content) {
                if (!bytes.startsWith("dTect"))
                    continue;
                const int date = bytes.indexOf('\n', bytes.indexOf('\n') + 1) + 1;
                bytes.remove(date, bytes.indexOf('\n', date) - date);
                int created = 0;
                while ((created = bytes.indexOf("#Created.At:")) >= 0)
                    bytes.remove(created, bytes.indexOf('\n', created) - created);
            }
            return content;
        };
        QVERIFY(withoutDates(m_survey) == withoutDates(again));
    }

    void aFolderWithContentIsRefusedAndKept()
    {
        const QString busy = m_folder.filePath(QStringLiteral("busy"));
        files::write(busy + QStringLiteral("/mine.txt"), "mine");
        const auto before = files::snapshot(busy);
        QVERIFY(demo::makeDemoSurvey(busy).contains(busy));
        QVERIFY(files::snapshot(busy) == before);
    }

    void aDemoThatCannotBePutInPlaceLeavesNothing_data()
    {
        QTest::addColumn<QByteArray>("target");
        QTest::newRow("the survey") << QByteArray("/parent/root/Demo");
        QTest::newRow("the mark of the data root") << QByteArray("/parent/root/.omf");
    }

    void aDemoThatCannotBePutInPlaceLeavesNothing()
    {
        QFETCH(QByteArray, target);
        const QTemporaryDir folder;
        FailingTarget disk(target);
        const base::ScopedFileSystemCalls scope(disk);
        const QString error = demo::makeDemoSurvey(folder.filePath(QStringLiteral("parent/root/Demo")));
        QVERIFY2(error.contains(QString::fromLatin1(target)), qPrintable(error));
        QVERIFY(files::snapshot(folder.path()).isEmpty());
    }

private:
    QTemporaryDir m_folder;
    QString m_survey;
};

QTEST_GUILESS_MAIN(tst_demosurvey)
#include "tst_demosurvey.moc"
