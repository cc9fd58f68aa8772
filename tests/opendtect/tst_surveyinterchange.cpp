// What the workbench writes the host's library reads, and the other way round: every number to the last bit.

#include "odprogram.h"
#include "support/files.h"
#include "survey/surveyfolder.h"
#include "survey/surveystore.h"
#include "survey/wellnames.h"
#include "surveycontents.h"

using survey::SurveyStore;

namespace {

QString wellPath(const QString &survey, const QString &wellName)
{
    return survey + QStringLiteral("/WellInfo/") + survey::cleanedStem(wellName) + QStringLiteral(".well");
}

survey::WellProperties propertiesOf(const host::WellHeader &header)
{
    survey::WellProperties properties;
    properties.name = header.name;
    properties.x = header.x;
    properties.y = header.y;
    properties.kbElevation = static_cast<double>(header.kbElevation);
    properties.groundElevation = static_cast<double>(header.groundElevation);
    properties.totalDepth = header.totalDepth;
    return properties;
}

// The workbench makes vertical wells; a bent track is given to it as a file that it writes itself.
void bendTrack(const QString &path, const QVector<survey::TrackPoint> &track)
{
    survey::WellFile file = survey::parseWellFile(files::read(path)).value;
    file.track = track;
    files::write(path, survey::wellFileBytes(file));
}

void writeWithWorkbench(const QString &survey, const QVector<odsurvey::Well> &wells)
{
    SurveyStore store(survey);
    for (const odsurvey::Well &well : wells) {
        const host::Outcome<QString> key = store.addWell(propertiesOf(well.header));
        QVERIFY2(key.ok(), qPrintable(key.error));
        if (well.track.size() > 2)
            bendTrack(wellPath(survey, well.header.name), well.track);
        for (const host::LogData &log : well.logs)
            QCOMPARE(store.writeLog(key.value, log).error, QString());
        QCOMPARE(store.writeMarkers(key.value, well.markers).error, QString());
    }
}

QVector<odsurvey::Well> readWithWorkbench(const QString &survey)
{
    SurveyStore store(survey);
    QVector<odsurvey::Well> wells;
    for (const host::WellEntry &entry : store.list().value) {
        odsurvey::Well well;
        well.header = store.header(entry.key).value;
        const int logs = store.logs(entry.key).value.size();
        for (int i = 0; i < logs; ++i)
            well.logs.append(store.log(entry.key, i).value);
        well.markers = store.markers(entry.key).value;
        wells.append(well);
    }
    if (!store.problems().isEmpty())
        qWarning("%s", qPrintable(store.problems().join('\n')));
    return wells;
}

// The workbench gives out no track; its file is what it reads.
void addTracks(const QString &survey, QVector<odsurvey::Well> *wells)
{
    const QDir folder(survey + QStringLiteral("/WellInfo"));
    const QStringList names = folder.entryList({QStringLiteral("*.well")}, QDir::Files, QDir::Name);
    for (odsurvey::Well &well : *wells)
        for (const QString &name : names) {
            const survey::WellFile file = survey::parseWellFile(files::read(folder.filePath(name))).value;
            if (file.track.first().x == well.header.x)
                well.track = file.track;
        }
}

} // namespace

class TestSurveyInterchange : public QObject
{
    Q_OBJECT

private slots:
    void theHostReadsWhatTheWorkbenchWrote()
    {
        const QString survey = odsurvey::open("FromWorkbench");
        writeWithWorkbench(survey, surveycontents::wells());
        odsurvey::makeCurrent("Start");
        odsurvey::makeCurrent("FromWorkbench");
        QCOMPARE(surveycontents::difference(surveycontents::wells(), odsurvey::readAll()), QString());
    }

    void theHostReadsTheNamesOfTheSurvey()
    {
        const QString survey = odsurvey::open("Ærø 2");
        QCOMPARE(survey::readSurveyInfo(survey).value.folderName, QString("Ærø 2"));
        writeWithWorkbench(survey, {surveycontents::wells().last()});
        QCOMPARE(odsurvey::readAll().size(), 1);
    }

    void theWorkbenchReadsWhatTheHostWrote()
    {
        const QString survey = odsurvey::open("FromHost");
        for (const odsurvey::Well &well : surveycontents::wells())
            odsurvey::add(well);
        QVector<odsurvey::Well> wells = readWithWorkbench(survey);
        addTracks(survey, &wells);
        QCOMPARE(surveycontents::difference(surveycontents::wells(), wells), QString());
    }

    void bothWriteIntoOneSurvey()
    {
        const QString survey = odsurvey::open("Both");
        QVector<odsurvey::Well> wells = surveycontents::wells();
        odsurvey::add(wells.first());
        writeWithWorkbench(survey, {wells.at(1)});
        odsurvey::makeCurrent("Start");
        odsurvey::makeCurrent("Both");
        odsurvey::add(wells.at(2));
        QCOMPARE(surveycontents::difference(wells, odsurvey::readAll()), QString());

        // A log and the markers of a well of the other's.
        SurveyStore store(survey);
        const QString key = store.list().value.first().key;
        wells.first().logs[1].values[0] = 1.5f;
        wells.first().markers.removeFirst();
        QCOMPARE(store.writeLog(key, wells.first().logs.at(1)).error, QString());
        QCOMPARE(store.writeMarkers(key, wells.first().markers).error, QString());
        QCOMPARE(surveycontents::difference(wells, odsurvey::readAll()), QString());
    }

    void readingInTheHostChangesNoFileOfTheWorkbench()
    {
        const QString survey = odsurvey::open("Untouched");
        writeWithWorkbench(survey, surveycontents::wells());
        const auto before = files::snapshot(survey + "/WellInfo");
        odsurvey::readAll();
        QCOMPARE(files::snapshot(survey + "/WellInfo"), before);
    }
};

OD_TEST_MAIN(TestSurveyInterchange)
#include "tst_surveyinterchange.moc"
