// A survey that the host's own library wrote, and what that library reads back from it.

#include "support/testmain.h"
#include "survey/surveyfolder.h"
#include "surveyfixture.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cmath>

using survey::SurveyStore;

namespace {

// Decimal texts of floats: nine digits name one float exactly.
bool isFloat(float value, const QJsonValue &expected)
{
    return expected.isNull() ? host::isUndefined(value) : value == static_cast<float>(expected.toDouble());
}

bool isNear(double value, const QJsonValue &expected)
{
    return std::fabs(value - expected.toDouble()) < 1e-5;
}

} // namespace

class TestRealSurvey : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void listsTheWells();
    void readsHeaders();
    void readsTracks();
    void readsMarkers();
    void readsEverySampleOfEveryLog();
    void readingChangesNoByte();
    void writingBackWhatWasReadKeepsTheSamples();
    void keepsEverythingElseWhenAWellChanges();

private:
    QString m_survey;
    QJsonArray m_wells;
};

void TestRealSurvey::initTestCase()
{
    m_survey = files::sharedFolder(QStringLiteral("od-survey"));
    const QString expected = files::sharedFolder(QStringLiteral("od-survey.expected.json"));
    if (m_survey.isEmpty() || expected.isEmpty())
        QSKIP("the survey that the host itself wrote is not here");
    m_wells = QJsonDocument::fromJson(files::read(expected)).object().value(QStringLiteral("wells")).toArray();
    QCOMPARE(m_wells.size(), 2);
}

void TestRealSurvey::listsTheWells()
{
    SurveyStore store(m_survey);
    const host::Outcome<QVector<host::WellEntry>> wells = store.list();
    QVERIFY(wells.ok());
    QCOMPARE(wells.value.size(), m_wells.size());
    for (int i = 0; i < m_wells.size(); ++i) {
        const QJsonObject expected = m_wells.at(i).toObject();
        QCOMPARE(wells.value.at(i).key, expected.value(QStringLiteral("id")).toString());
        QCOMPARE(wells.value.at(i).name, expected.value(QStringLiteral("name")).toString());
    }
}

void TestRealSurvey::readsHeaders()
{
    SurveyStore store(m_survey);
    for (const QJsonValue &well : qAsConst(m_wells)) {
        const host::WellHeader header = store.header(well[QStringLiteral("id")].toString()).value;
        QCOMPARE(header.name, well[QStringLiteral("name")].toString());
        QVERIFY(header.x == well[QStringLiteral("x")].toDouble());
        QVERIFY(header.y == well[QStringLiteral("y")].toDouble());
        QVERIFY(isFloat(header.kbElevation, well[QStringLiteral("kbElevation")]));
        QVERIFY(isFloat(header.groundElevation, well[QStringLiteral("groundElevation")]));
        QVERIFY(header.totalDepth == well[QStringLiteral("totalDepth")].toDouble());
        QCOMPARE(header.typeCode, int(host::NoWellType));
    }
    QVERIFY(store.takeProblems().isEmpty());
}

void TestRealSurvey::readsTracks()
{
    const QHash<QString, QString> stems{{QStringLiteral("100050.2"), QStringLiteral("Probe-1")},
                                        {QStringLiteral("100050.3"), QStringLiteral("Probe_2_A")}};
    for (const QJsonValue &well : qAsConst(m_wells)) {
        const QString path = m_survey + QStringLiteral("/WellInfo/")
            + stems.value(well[QStringLiteral("id")].toString()) + QStringLiteral(".well");
        const host::Outcome<survey::WellFile> file = survey::parseWellFile(files::read(path));
        QVERIFY(file.ok() && !file.value.isTrackCut);
        QCOMPARE(file.value.keys.text("Unique Well ID"), well[QStringLiteral("uwi")].toString());
        QCOMPARE(file.value.keys.text("Operator"), well[QStringLiteral("operator")].toString());
        QCOMPARE(file.value.keys.text("State"), well[QStringLiteral("state")].toString());
        QCOMPARE(file.value.keys.text("County"), well[QStringLiteral("county")].toString());
        const QJsonArray track = well[QStringLiteral("track")].toArray();
        QCOMPARE(file.value.track.size(), track.size());
        for (int i = 0; i < track.size(); ++i) {
            const survey::TrackPoint &point = file.value.track.at(i);
            QVERIFY(isNear(point.md, track.at(i)[0]) && isNear(point.x, track.at(i)[1]));
            QVERIFY(isNear(point.y, track.at(i)[2]) && isNear(point.z, track.at(i)[3]));
        }
    }
}

void TestRealSurvey::readsMarkers()
{
    SurveyStore store(m_survey);
    for (const QJsonValue &well : qAsConst(m_wells)) {
        const QVector<host::Marker> markers = store.markers(well[QStringLiteral("id")].toString()).value;
        const QJsonArray expected = well[QStringLiteral("markers")].toArray();
        QVERIFY(!expected.isEmpty());
        QCOMPARE(markers.size(), expected.size());
        for (int i = 0; i < markers.size(); ++i) {
            QCOMPARE(markers.at(i).name, expected.at(i)[QStringLiteral("name")].toString());
            QVERIFY(isFloat(markers.at(i).depth, expected.at(i)[QStringLiteral("md")]));
            const QJsonValue rgb = expected.at(i)[QStringLiteral("rgb")];
            QCOMPARE(markers.at(i).color, QColor(rgb[0].toInt(), rgb[1].toInt(), rgb[2].toInt()));
        }
    }
    QVERIFY(store.takeProblems().isEmpty());
}

void TestRealSurvey::readsEverySampleOfEveryLog()
{
    SurveyStore store(m_survey);
    int samples = 0;
    int undefined = 0;
    for (const QJsonValue &well : qAsConst(m_wells)) {
        const QString key = well[QStringLiteral("id")].toString();
        const QJsonArray expected = well[QStringLiteral("logs")].toArray();
        const QVector<host::LogInfo> logs = store.logs(key).value;
        QCOMPARE(logs.size(), expected.size());
        for (int i = 0; i < logs.size(); ++i) {
            const host::LogData log = store.log(key, i).value;
            QCOMPARE(logs.at(i).name, expected.at(i)[QStringLiteral("name")].toString());
            QCOMPARE(logs.at(i).unit, expected.at(i)[QStringLiteral("unit")].toString());
            QCOMPARE(log.name, logs.at(i).name);
            QCOMPARE(log.unit, logs.at(i).unit);
            const QJsonArray wanted = expected.at(i)[QStringLiteral("samples")].toArray();
            QCOMPARE(log.depths.size(), wanted.size());
            QCOMPARE(log.values.size(), wanted.size());
            for (int s = 0; s < wanted.size(); ++s) {
                QVERIFY(isFloat(log.depths.at(s), wanted.at(s)[0]));
                QVERIFY(isFloat(log.values.at(s), wanted.at(s)[1]));
                undefined += wanted.at(s)[1].isNull() ? 1 : 0;
            }
            samples += wanted.size();
        }
    }
    QVERIFY(samples > 200 && undefined > 0);
    QVERIFY(store.takeProblems().isEmpty());
}

void TestRealSurvey::readingChangesNoByte()
{
    QTemporaryDir folder;
    const QString copy = folder.filePath(QStringLiteral("survey"));
    files::copyFolder(m_survey, copy);
    const auto before = files::snapshot(copy);
    const auto original = files::snapshot(m_survey);
    QVERIFY(before.size() > 30);
    for (const QString &path : {copy, m_survey}) {
        SurveyStore store(path);
        QVERIFY(survey::readSurveyInfo(path).ok());
        const host::Outcome<QVector<host::WellEntry>> wells = store.list();
        for (const host::WellEntry &well : wells.value) {
            QVERIFY(store.properties(well.key).ok());
            QVERIFY(store.markers(well.key).ok());
            const int count = store.logs(well.key).value.size();
            for (int i = 0; i < count; ++i)
                QVERIFY(store.log(well.key, i).ok());
        }
    }
    QCOMPARE(files::snapshot(copy), before);
    QCOMPARE(files::snapshot(m_survey), original);
}

void TestRealSurvey::writingBackWhatWasReadKeepsTheSamples()
{
    QTemporaryDir folder;
    files::copyFolder(m_survey, folder.path());
    const auto before = files::snapshot(folder.path());
    SurveyStore store(folder.path());
    for (const QString &key : {QStringLiteral("100050.2"), QStringLiteral("100050.3")}) {
        QVERIFY(store.writeMarkers(key, store.markers(key).value).ok());
        const int count = store.logs(key).value.size();
        for (int i = 0; i < count; ++i)
            QVERIFY(store.writeLog(key, store.log(key, i).value).ok());
    }
    const auto after = files::snapshot(folder.path());
    QCOMPARE(after.keys(), before.keys());
    for (auto file = after.begin(); file != after.end(); ++file) {
        const QByteArray old = before.value(file.key());
        if (file.key().endsWith(QLatin1String(".wlm"))) {
            QCOMPARE(survey_fixture::withoutDate(file.value()), survey_fixture::withoutDate(old));
        } else if (file.key().endsWith(QLatin1String(".wll"))) {
            // The ranges are those of what is stored; the host spans what it was given.
            const auto samplesOf = [](const QByteArray &bytes) {
                return bytes.mid(bytes.indexOf("\n!\n", bytes.indexOf("Log range")) + 3);
            };
            QCOMPARE(samplesOf(file.value()), samplesOf(old));
            QCOMPARE(survey_fixture::withoutDate(file.value().left(file.value().indexOf("Dah range"))),
                     survey_fixture::withoutDate(old.left(old.indexOf("Dah range"))));
        } else {
            QCOMPARE(file.value(), old);
        }
    }
}

void TestRealSurvey::keepsEverythingElseWhenAWellChanges()
{
    QTemporaryDir folder;
    files::copyFolder(m_survey, folder.path());
    const auto before = files::snapshot(folder.path());
    SurveyStore store(folder.path());
    const QString key = QStringLiteral("100050.3");
    QVERIFY(store.renameWell(key, QStringLiteral("Renamed")).ok());
    QVERIFY(store.renameWell(key, QStringLiteral("Probe 2/A")).ok());
    QVERIFY(store.changeWell(key, store.properties(key).value).ok());
    const host::Outcome<QString> added = store.addWell(survey_fixture::properties("Probe 2"));
    QVERIFY(added.ok());
    QCOMPARE(added.value, QStringLiteral("100050.4"));
    QVERIFY(store.removeWell(added.value).ok());
    auto after = files::snapshot(folder.path());
    QCOMPARE(after.keys(), before.keys());
    for (auto file = after.begin(); file != after.end(); ++file) {
        const bool isRewritten =
            file.key() == QLatin1String("WellInfo/.omf") || file.key() == QLatin1String("WellInfo/Probe_2_A.well");
        QByteArray expected = before.value(file.key());
        if (file.key() == QLatin1String("WellInfo/.omf"))
            expected.replace("ID: 100050`3", "ID: 100050`4");
        QCOMPARE(isRewritten ? survey_fixture::withoutDate(file.value()) : file.value(),
                 isRewritten ? survey_fixture::withoutDate(expected) : expected);
    }
}

LORVA_TEST_MAIN(TestRealSurvey)
#include "tst_realsurvey.moc"
