#include "correlation/correlationproperties.h"
#include "datastore/calibrationfile.h"
#include "datastore/curvegrouptable.h"
#include "datastore/perforationfile.h"
#include "datastore/project.h"
#include "datastore/wellscatalogue.h"
#include "datastore/defaultlogs.h"
#include "demo/democorrelation.h"
#include "demo/demofield.h"
#include "demo/demosurvey.h"
#include "support/failingtarget.h"
#include "support/files.h"
#include "support/scriptedasker.h"
#include "survey/surveyfolder.h"
#include "survey/surveystore.h"
#include "templates/templatestore.h"

#include <QDir>
#include <QImage>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>

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

    // Displays take KB and ground level off a marker's depth: here that leaves the depth along hole, where the break of
    // the logs is.
    void displayedMarkersStandOnTheirBreaks()
    {
        survey::SurveyStore store(m_survey);
        ScriptedAsker asker;
        WellsCatalogue catalogue(store, asker, [](const QString &) {});
        catalogue.build();
        for (const demo::Well &well : demo::makeField().wells) {
            const QVector<WellMarker> markers = catalogue.markers(well.name);
            QCOMPARE(markers.size(), well.tops.size());
            for (int i = 0; i < markers.size(); ++i) {
                QCOMPARE(markers.at(i).name, well.tops.at(i).name);
                QVERIFY(qAbs(markers.at(i).subseaDepth - well.tops.at(i).mdM) < 0.001);
                if (markers.at(i).name != QLatin1String("Dunvar Limestone"))
                    continue;
                const double above = meanGamma(well, markers.at(i).subseaDepth - 8, markers.at(i).subseaDepth - 1);
                const double below = meanGamma(well, markers.at(i).subseaDepth + 1, markers.at(i).subseaDepth + 8);
                QVERIFY(above > 2 * below);
            }
        }
    }

    void firstLaunchKnowsTheSeededTemplatesAndTheDemos()
    {
        Project project;
        openProjectFolder(m_survey, &project);
        project.globalTemplateNames.sort(); // they come as the folder is read
        QCOMPARE(
            project.globalTemplateNames,
            (QStringList{QStringLiteral("Default"), QStringLiteral("Density-Neutron"), QStringLiteral("Petrophysics"),
                         QStringLiteral("Saturation"), QStringLiteral("Simple"), QStringLiteral("Triple Combo")}));
    }

    // A picture taken without a window, before any launch, has curves; the first launch finds nothing to do.
    void defaultLogsAreThoseOfAFirstLaunch()
    {
        const QDir folder(m_survey + QStringLiteral("/WLC/DefaultLogs"));
        QCOMPARE(folder.entryList(QDir::Files).size(), demo::makeField().wells.size());
        const DefaultLogs logs = readDefaultLogs(m_survey + QStringLiteral("/WLC"), QStringLiteral("Aldra-1"));
        const auto logOf = [&logs](const char *group) {
            return logs.logs.value(logs.groups.indexOf(QString::fromLatin1(group)));
        };
        QCOMPARE(logOf("Gamma"), QStringLiteral("GR"));
        QCOMPARE(logOf("Density"), QStringLiteral("RHOB"));
        QCOMPARE(logOf("Caliper"), QStringLiteral("CALI"));
        QCOMPARE(logOf("Resistivity"), QStringLiteral("LLD"));
    }

    void theDemosTemplateShowsWhatTheWellsHave()
    {
        const QVector<TrackInfo> tracks = tracksOf("Petrophysics");
        QCOMPARE(tracks.size(), 5);
        QCOMPARE(tracks.at(1).type, static_cast<int>(DepthTrack));
        const QVector<TemplateCurveInfo> &hole = tracks.at(0).curves;
        QCOMPARE(hole.size(), 3);
        QCOMPARE(hole.at(0).leftFillIndex, 10);
        QCOMPARE(hole.at(2).curve, QStringLiteral("BS"));
        QCOMPARE(hole.at(2).minimum, hole.at(1).minimum);
        QCOMPARE(hole.at(2).maximum, hole.at(1).maximum);
        QCOMPARE(tracks.at(2).type, static_cast<int>(LogarithmicTrack));
        for (const TemplateCurveInfo &resistivity : tracks.at(2).curves) {
            QCOMPARE(resistivity.minimum, 0.1); // the range of the grid
            QCOMPARE(resistivity.maximum, 2000.0);
        }
        for (const TemplateCurveInfo &cored : tracks.at(3).curves) {
            QVERIFY(cored.isCalibrationShown);
            QVERIFY(cored.pointSize > 2);
            QVERIFY(cored.pointColor != cored.color);
        }
    }

    // Sand is yellow and shale brown in the gamma ray's bar.
    void sandIsYellowAndShaleBrown()
    {
        const TemplateCurveInfo gamma = tracksOf("Petrophysics").at(0).curves.first();
        const QImage bar(QStringLiteral(LORVA_SOURCE_DIR "/icons/ColorBars/cb_%1.png").arg(gamma.leftFillIndex));
        QVERIFY(!bar.isNull());
        const auto colorOf = [&](double gapi) {
            const double share = (gapi - gamma.minimum) / (gamma.maximum - gamma.minimum);
            return bar.pixelColor(static_cast<int>(share * (bar.width() - 1)), 0).toHsv();
        };
        for (const double clean : {22.0, 30.0, 45.0}) {
            QVERIFY(colorOf(clean).hue() >= 45 && colorOf(clean).hue() <= 62);
            QVERIFY(colorOf(clean).value() > 230);
        }
        for (const double shale : {98.0, 112.0, 120.0}) {
            QVERIFY(colorOf(shale).hue() >= 28 && colorOf(shale).hue() <= 42);
            QVERIFY(colorOf(shale).value() < 215);
        }
    }

    // Hydrocarbons fill the side that is no water; gas the span where the density stands left of the neutron porosity.
    void fluidsAreFilledOnTheirSide()
    {
        for (const char *name : {"Petrophysics", "Saturation"}) {
            const TemplateCurveInfo water = tracksOf(name).last().curves.first();
            QCOMPARE(water.group, QStringLiteral("Water Saturation"));
            QVERIFY(water.minimum > water.maximum); // all water is the left edge
            QCOMPARE(water.leftUpTo, QStringLiteral("Left Boundary"));
            QCOMPARE(water.rightUpTo, QStringLiteral("None"));
            QVERIFY(water.leftFillColor.green() > water.leftFillColor.red()
                    && water.leftFillColor.green() > water.leftFillColor.blue());
        }
        for (const char *name : {"Petrophysics", "Triple Combo", "Density-Neutron"}) {
            int found = 0;
            for (const TrackInfo &track : tracksOf(name)) {
                for (const TemplateCurveInfo &density : track.curves) {
                    if (density.group != QLatin1String("Density") || density.curve != QLatin1String("Default"))
                        continue;
                    ++found;
                    QCOMPARE(density.leftUpTo, QStringLiteral("None"));
                    QCOMPARE(density.rightUpTo, QStringLiteral("Curve_2"));
                    QCOMPARE(track.curves.at(1).group, QStringLiteral("Porosity"));
                }
            }
            QCOMPARE(found, 1);
        }
    }

    // Whatever a template names, the wells of the demo have.
    void theLogsOfTheTemplatesAreThere()
    {
        const demo::Well crest = demo::makeField().wells.first();
        CurveGroupTable table;
        table.read(m_survey + QStringLiteral("/WLC"));
        for (const char *name : {"Petrophysics", "Triple Combo", "Density-Neutron", "Saturation"}) {
            for (const TrackInfo &track : tracksOf(name)) {
                for (const TemplateCurveInfo &line : track.curves) {
                    if (track.type == DepthTrack)
                        continue;
                    const bool isThere =
                        std::any_of(crest.curves.begin(), crest.curves.end(), [&](const demo::Curve &curve) {
                            return line.curve == curve.mnemonic
                                || (line.curve == QLatin1String("Default")
                                    && table.group(curve.mnemonic) == line.group);
                        });
                    QVERIFY2(isThere, qPrintable(line.group + line.curve));
                }
            }
        }
    }

    // A newcomer opens it with a double click and sees the reservoir at once.
    void aCorrelationOfAllWellsIsReady()
    {
        survey::SurveyStore store(m_survey);
        ScriptedAsker asker;
        WellsCatalogue catalogue(store, asker, [](const QString &) {});
        catalogue.build();
        Project project;
        openProjectFolder(m_survey, &project);
        const QString path =
            m_survey + QStringLiteral("/WLC/Correlations/%1/properties.txt").arg(demo::demoCorrelationName());
        const QByteArray bytes = files::read(path);
        bool isWhole = false;
        const CorrelationProperties properties = correlation::parseProperties(bytes, {}, &isWhole);
        QVERIFY(isWhole);
        QCOMPARE(correlation::propertiesBytes(properties), bytes);
        QCOMPARE(properties.name, demo::demoCorrelationName());
        QStringList wells;
        for (const CorrelationWell &well : properties.wells) {
            wells.append(well.wellName);
            QVERIFY2(project.globalTemplateNames.contains(well.templateName), qPrintable(well.templateName));
        }
        QCOMPARE(wells.size(), 6);
        wells.sort();
        QStringList known = catalogue.wellNames();
        known.sort();
        QCOMPARE(wells, known);
        // Each marker and each end of a zone is there in at least two neighbours, or it would show nothing.
        QCOMPARE(properties.zones.size(), 3);
        QVERIFY(properties.showsPerforations);
        QStringList used = properties.markers;
        for (const CorrelationZone &zone : properties.zones) {
            QVERIFY(zone.isVisible && !zone.isStartUserDepth && !zone.isEndUserDepth);
            used += {zone.start, zone.end};
        }
        for (const QString &marker : used) {
            int wellsWithIt = 0;
            for (const CorrelationWell &well : properties.wells)
                wellsWithIt += catalogue.markerNames(catalogue.indexOf(well.wellName)).contains(marker);
            QVERIFY2(wellsWithIt >= 2, qPrintable(marker));
        }
        for (const CorrelationZone &zone : properties.zones)
            QVERIFY(properties.markers.contains(zone.start) && properties.markers.contains(zone.end));
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

    void aSectionIsASurveyOfManyWells()
    {
        const QTemporaryDir root;
        const QString folder = root.filePath("Section");
        QCOMPARE(demo::makeSectionSurvey(folder, 4), QString());
        const demo::Field field = demo::makeSection(4);
        QCOMPARE(field.wells.size(), 4);
        QStringList lines;
        for (const demo::Well &well : field.wells) {
            QVERIFY(well.tops.size() > 5);
            lines.append(well.name + ":Section");
        }
        QCOMPARE(lines.join(' '),
                 QString("Vellorn-01:Section Vellorn-02:Section Vellorn-03:Section Vellorn-04:Section"));
        // The crest lies in the middle: its reservoir is the shallowest.
        const auto reservoir = [&field](int well) {
            for (const demo::FormationTop &top : field.wells.at(well).tops)
                if (top.name == QLatin1String("Kestrane Upper Sst"))
                    return demo::depthBelowDatum(field.wells.at(well), top.mdM);
            return 0.0;
        };
        QVERIFY(reservoir(0) > reservoir(1) && reservoir(3) > reservoir(2));
        const QString correlation = QString::fromUtf8(
            files::read(folder + "/WLC/Correlations/" + demo::demoCorrelationName() + "/properties.txt"));
        QVERIFY2(correlation.contains(lines.join('\n')), qPrintable(correlation));
        QVERIFY(QFileInfo::exists(folder + "/WLC/Templates/Global/Section/Track_2.txt"));
        QVERIFY(!QFileInfo::exists(m_survey + "/WLC/Templates/Global/Section"));
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
    QVector<TrackInfo> tracksOf(const char *templateName) const
    {
        Project project;
        openProjectFolder(m_survey, &project);
        return loadTemplate(project, QString::fromLatin1(templateName), {});
    }
    static double meanGamma(const demo::Well &well, double topM, double bottomM)
    {
        const QVector<double> &values = demo::findCurve(well, QStringLiteral("GR"))->values;
        double sum = 0;
        int count = 0;
        for (int i = 0; i < values.size(); ++i) {
            if (well.depthsM.at(i) < topM || well.depthsM.at(i) > bottomM)
                continue;
            sum += values.at(i);
            ++count;
        }
        return sum / count;
    }

    QTemporaryDir m_folder;
    QString m_survey;
};

QTEST_GUILESS_MAIN(tst_demosurvey)
#include "tst_demosurvey.moc"
