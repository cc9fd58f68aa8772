#include "nameuses.h"

#include "base/safename.h"
#include "correlation/correlationstore.h"
#include "datastore/calibrationfile.h"
#include "datastore/curvegroupassignment.h"
#include "datastore/defaultlogs.h"
#include "datastore/groupfiles.h"
#include "datastore/hostwriter.h"
#include "datastore/perforationfile.h"
#include "datastore/projectfile.h"
#include "datastore/textfields.h"
#include "las/curvetextwriter.h"
#include "las/laswriter.h"
#include "operations.h"
#include "support/files.h"
#include "survey/odfile.h"
#include "survey/surveyfolder.h"
#include "survey/surveyinput.h"
#include "templates/templatestore.h"
#include "tests/survey/surveyfixture.h"

#include <QDir>

namespace campaign {

// A null would end the name for the host.
QString logForm(const QString &name)
{
    return textfields::trimmedLine(name).replace(QChar(0), QLatin1Char(' '));
}

int indexOfLog(Place &place, const QString &wellKey, const QString &name)
{
    const QVector<host::LogInfo> logs = place.wells().logs(wellKey).value;
    for (int i = 0; i < logs.size(); ++i)
        if (logs.at(i).name == logForm(name))
            return i;
    return -1;
}

namespace {

constexpr char wellsFolder[] = "survey/WellInfo/";

QString text(const char *bytes)
{
    return QString::fromUtf8(bytes);
}

QString wellForm(const QString &name)
{
    return name.trimmed();
}

QString refusalUnless(bool isDone, const QString &reason)
{
    return isDone ? QString() : reason.isEmpty() ? text("refused") : reason;
}

QString keyOf(Place &place, const QString &name)
{
    for (const host::WellEntry &well : place.wells().list().value)
        if (well.name == wellForm(name))
            return well.key;
    return {};
}

// The number of a well is its total depth.
QString storeWell(Place &place, const QString &name, int number)
{
    survey::WellProperties well = survey_fixture::properties("");
    well.name = name;
    well.totalDepth = 1000 + number;
    const QString key = keyOf(place, name);
    return key.isEmpty() ? place.wells().addWell(well).error : place.wells().changeWell(key, well).error;
}

int findWell(Place &place, const QString &name)
{
    const QString key = keyOf(place, name);
    return key.isEmpty() ? -1 : static_cast<int>(place.wells().header(key).value.totalDepth) - 1000;
}

bool removeWell(Place &place, const QString &name)
{
    return place.wells().removeWell(keyOf(place, name)).ok();
}

QString renameWell(Place &place, const QString &name, int)
{
    return place.wells().renameWell(Place::firstWell, name).error;
}

int findRenamedWell(Place &place, const QString &name)
{
    for (const host::WellEntry &well : place.wells().list().value)
        if (well.key == QLatin1String(Place::firstWell))
            return well.name == wellForm(name) ? 0 : -1;
    return -1;
}

LogCurveData curveOf(const QString &name, int number)
{
    LogCurveData curve;
    curve.wellName = text("A");
    curve.logName = name;
    curve.depths = {100, 101};
    curve.values = {1, static_cast<double>(number)};
    return curve;
}

QString storeLog(Place &place, const QString &name, int number)
{
    HostWriter writer(place.host.wells(), place.data.catalogue, place.asker, [](const QString &) {});
    const bool isDone = writer.writeLog(place.data.catalogue.indexOf(text("A")), curveOf(name, number), false);
    return refusalUnless(isDone, place.asker.texts.join(QLatin1Char(' ')));
}

int findLog(Place &place, const QString &name)
{
    const int index = indexOfLog(place, Place::firstWell, name);
    return index < 0 ? -1 : static_cast<int>(place.wells().log(Place::firstWell, index).value.values.value(1));
}

bool removeLog(Place &place, const QString &name)
{
    return place.wells().removeLog(Place::firstWell, indexOfLog(place, Place::firstWell, name)).ok();
}

QString storeMarker(Place &place, const QString &name, int number)
{
    QVector<host::Marker> markers = place.wells().markers(Place::firstWell).value;
    markers.append({name, static_cast<float>(10 + number), Qt::red});
    const QString error = place.wells().writeMarkers(Place::firstWell, markers).error;
    const bool isThere = place.wells().markers(Place::firstWell).value.size() == markers.size();
    return isThere ? error : text("a marker needs a name of its own");
}

int findMarker(Place &place, const QString &name)
{
    for (const host::Marker &marker : place.wells().markers(Place::firstWell).value)
        if (marker.name == survey::storedText(name))
            return static_cast<int>(marker.depth) - 10;
    return -1;
}

QVector<QByteArray> trackOf(int number)
{
    TemplateCurveRow row;
    row.group = text("Gamma");
    row.curve = text("GR");
    row.minimum = text("0");
    row.maximum = QString::number(number);
    return {trackBytes(text("Linear"), {row})};
}

int numberOf(const QVector<TrackInfo> &tracks)
{
    return tracks.size() == 1 && tracks.first().curves.size() == 1
        ? static_cast<int>(tracks.first().curves.first().maximum)
        : -1;
}

NameUse templateUse(const char *name, const QStringList &allowed,
                    const std::function<TemplateId(const QString &name)> &id)
{
    NameUse use;
    use.name = name;
    use.allowed = allowed;
    use.store = [id](Place &place, const QString &given, int number) {
        // Two names that no folder can have would be one; who asks for a name refuses them.
        const QString problem = base::typedNameProblem(id(given).name);
        return problem.isEmpty() ? saveTemplate(place.data.project, id(given), trackOf(number)).error : problem;
    };
    use.find = [id](Place &place, const QString &given) {
        return numberOf(loadTemplate(place.data.project, id(given)));
    };
    use.remove = [id](Place &place, const QString &given) { return removeTemplate(place.data.project, id(given)); };
    return use;
}

QString storeCorrelation(Place &place, const QString &name, int number)
{
    CorrelationProperties properties;
    properties.name = name;
    properties.scale = 100 + number;
    return correlation::write(place.data.project, properties).error;
}

int findCorrelation(Place &place, const QString &name)
{
    const auto never = [](auto &&...) { return false; };
    const auto read = correlation::load(place.data.project, name, {never, never});
    return read ? static_cast<int>(read->scale) - 100 : -1;
}

QString storeSideFile(Place &place, const QString &name, const QString &group, int number)
{
    const float depth = static_cast<float>(number);
    const bool isDone = writeCalibration(place.project(), {name, group, {depth}, {1}}, place.asker);
    return refusalUnless(isDone, {});
}

int findSideFile(Place &place, const QString &name, const QString &group)
{
    const CalibrationRecord record = readCalibration(place.project(), name, group, place.asker);
    return record.depths.size() == 1 ? static_cast<int>(record.depths.first()) : -1;
}

QString storePerforation(Place &place, const QString &name, int number)
{
    const float top = static_cast<float>(number);
    return refusalUnless(writePerforation(place.project(), {name, 1, {name}, {top}, {top}, {name}}, place.asker), {});
}

int findPerforation(Place &place, const QString &name)
{
    const PerforationRecord record = readPerforation(place.project(), name);
    const bool isWhole = record.names == QStringList(textfields::fieldName(name)) && record.zoneTypes == record.names
        && record.tops.size() == 1;
    return isWhole ? static_cast<int>(record.tops.first()) : -1;
}

QString storeDefaultLogs(Place &place, const QString &name, int number)
{
    const DefaultLogs logs{{text("Gamma")}, {QString::number(number)}};
    return writeProjectFile(place.project(), defaultLogsPath(place.project(), name), defaultLogsBytes(name, logs))
        .error;
}

int findDefaultLogs(Place &place, const QString &name)
{
    return readDefaultLogs(place.project(), name).logs.value(0, text("-1")).toInt();
}

QString storeGroup(Place &place, const QString &name, int)
{
    assignCurveGroup(place.project(), text("GR"), name);
    return refusalUnless(!name.isEmpty() && name != QLatin1String("None"), text("the group has no file"));
}

int findGroup(Place &place, const QString &name)
{
    return readGroupFile(place.project(), name).contains(text("GR")) ? 0 : -1;
}

QString storeLogOfGroup(Place &place, const QString &name, int)
{
    assignCurveGroup(place.project(), name, text("Gamma"));
    return {};
}

int findLogOfGroup(Place &place, const QString &name)
{
    return findCurveGroup(place.project(), name) == QLatin1String("Gamma") ? 0 : -1;
}

int lastNumberIn(const QString &folder, const QByteArray &firstLine)
{
    for (const QByteArray &bytes : files::snapshot(folder))
        if (bytes.startsWith(firstLine + "\nDepth"))
            return static_cast<int>(bytes.mid(bytes.lastIndexOf('\t') + 1).toDouble());
    return -1;
}

NameUse curveTextUse(const char *name, bool isOfWell)
{
    NameUse use;
    use.name = name;
    use.allowed = QStringList{text("survey/WLC/Wells/")};
    use.store = [isOfWell](Place &place, const QString &given, int number) {
        const QString well = isOfWell ? given : text("A");
        return las::writeCurveText(place.project(), well, curveOf(isOfWell ? text("GR") : given, number)).error;
    };
    use.find = [isOfWell](Place &place, const QString &given) {
        const QByteArray line = isOfWell ? given.toUtf8() + "\tGR" : "A\t" + given.toUtf8();
        return lastNumberIn(place.project() + text("/Wells"), line);
    };
    return use;
}

QString storeLasFile(Place &place, const QString &name, int number)
{
    las::ExportFile file;
    file.well.wellName = name;
    file.interval = 1;
    file.logs.append({curveOf(text("GR"), number), false});
    file.range.add(file.logs.first().data);
    bool isCreated = false;
    return las::writeLas(
               place.file("") + las::lasFileName(name), file, [] { return true; }, &isCreated)
        .error;
}

int findLasFile(Place &place, const QString &name)
{
    const QString path = place.file("") + las::lasFileName(name);
    if (!QFileInfo::exists(path))
        return -1;
    const QByteArray bytes = files::read(path).trimmed();
    return static_cast<int>(bytes.mid(bytes.lastIndexOf(' ') + 1).toDouble());
}

QString surveyRoot(Place &place)
{
    return place.file("surveys");
}

QString storeSurvey(Place &place, const QString &name, int number)
{
    const QString folder = survey::surveyFolderName(name);
    if (folder.isEmpty())
        return text("a survey needs a name");
    survey::NewSurvey survey;
    survey.name = name;
    survey.comment = QString::number(number);
    return survey::createSurvey(surveyRoot(place) + QLatin1Char('/') + folder, survey).error;
}

int findSurvey(Place &place, const QString &name)
{
    const auto info = survey::readSurveyInfo(surveyRoot(place) + QLatin1Char('/') + survey::surveyFolderName(name));
    return info.ok() && info.value.name == survey::storedText(name) ? info.value.comment.toInt() : -1;
}

// Names that give one folder are one; the first stays, and the others are refused.
QString surveyForm(const QString &name)
{
    return survey::surveyFolderName(name);
}

// A list of wells that gives a well files of this name: it is read, written and deleted.
QString storeFileName(Place &place, const QString &name, int)
{
    const QString list = place.survey() + text("/WellInfo/.omf");
    files::write(
        list,
        survey_fixture::wellList(
            {{"A", "a.well"}, {"B", "b.well"}, {"Hostile", name.toUtf8() + ".well"}, {"Named", name.toUtf8()}}));
    for (const char *key : {"100050.4", "100050.5"}) {
        (void)place.wells().header(key);
        (void)place.wells().logs(key);
        (void)place.wells().markers(key);
        (void)place.wells().writeLog(key, logOfState("GR", 1));
        (void)place.wells().writeMarkers(key, {{text("M"), 1, Qt::red}});
        (void)place.wells().changeWell(key, survey_fixture::properties("Hostile"));
        (void)place.wells().removeWell(key);
    }
    return {};
}

// The wells that were there are as they were.
int findFileName(Place &place, const QString &)
{
    const bool isWhole = place.wells().logs(Place::firstWell).value.size() == 2
        && place.wells().header(Place::firstWell).ok() && place.wells().header(Place::secondWell).ok()
        && place.wells().markers(Place::secondWell).value.size() == 1;
    return isWhole ? 0 : -1;
}

} // namespace

std::vector<NameUse> nameUses()
{
    const QStringList wells{text(wellsFolder)};
    const QStringList project{text("survey/WLC/")};
    const QStringList groups{text("survey/WLC/CurveGroups/")};
    const QStringList out{text("out/")};
    const auto sideFile = [project](const char *name, const auto &store, const auto &find) {
        return NameUse{name, project, store, find, {}, {}};
    };
    return {
        {"well", wells, storeWell, findWell, removeWell, wellForm},
        {"well renamed", wells, renameWell, findRenamedWell, {}, [](const QString &) { return text("A"); }},
        {"log", wells, storeLog, findLog, removeLog, logForm},
        {"marker", wells, storeMarker, findMarker, {}, survey::storedText},
        templateUse("template", {text("survey/WLC/Templates/Global/")}, TemplateId::global),
        templateUse("template of a well", {text("survey/WLC/Templates/A/")},
                    [](const QString &name) { return TemplateId::ofWell(text("A"), name); }),
        templateUse("well with a template", {text("survey/WLC/Templates/")},
                    [](const QString &name) { return TemplateId::ofWell(name, text("T")); }),
        {"correlation",
         {text("survey/WLC/Correlations/")},
         storeCorrelation,
         findCorrelation,
         [](Place &place, const QString &name) { return correlation::remove(place.data.project, name); },
         {}},
        sideFile(
            "well with points",
            [](Place &place, const QString &name, int n) { return storeSideFile(place, name, text("Gamma"), n); },
            [](Place &place, const QString &name) { return findSideFile(place, name, text("Gamma")); }),
        sideFile(
            "group with points",
            [](Place &place, const QString &name, int n) { return storeSideFile(place, text("A"), name, n); },
            [](Place &place, const QString &name) { return findSideFile(place, text("A"), name); }),
        sideFile("well, zone and type with zones", storePerforation, findPerforation),
        {"well with default logs", {text("survey/WLC/DefaultLogs/")}, storeDefaultLogs, findDefaultLogs, {}, {}},
        {"group", groups, storeGroup, findGroup, {}, textfields::fieldName},
        {"log in a group", groups, storeLogOfGroup, findLogOfGroup, {}, textfields::fieldName},
        curveTextUse("log as text", false),
        curveTextUse("well with a log as text", true),
        {"LAS file", out, storeLasFile, findLasFile, {}, {}},
        {"survey", out, storeSurvey, findSurvey, {}, surveyForm},
        {"file name in the list of wells",
         wells,
         storeFileName,
         findFileName,
         {},
         [](const QString &) { return text("A"); }},
    };
}

} // namespace campaign
