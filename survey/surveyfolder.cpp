#include "survey/surveyfolder.h"

#include "base/atomicfile.h"
#include "base/filesystemcalls.h"
#include "base/folderlinks.h"
#include "base/leftovers.h"
#include "base/numbers.h"
#include "survey/objectlist.h"
#include "survey/surveyplace.h"

#include <QDir>
#include <QFileInfo>

#include <cerrno>
#include <cmath>

namespace survey {

namespace {

constexpr char surveyFileType[] = "Survey Info";
constexpr char defaultsFileType[] = "Survey defaults";
constexpr double binSize = 25; // metres between lines and traces of the grid

struct ObjectFolder
{
    int number;
    const char *folder;
    const char *entryName;
    const char *group;
    const char *ownName;
};

// The host's object folders with the entries that it gives them.
constexpr ObjectFolder objectFolders[] = {
    {100010, "Seismics", "Seismics", "Seismic directory", "Seismics"},
    {100020, "Surfaces", "Surfaces", "Surfaces directory", "Surfaces directory"},
    {100030, "Locations", "Locations", "Locations directory", "Locations"},
    {100040, "Features", "Analysis features", "Features directory", "Features"},
    {100050, "WellInfo", "WellInfo", "Well Info directory", "WellInfo"},
    {100060, "NLAs", "Non-Linear Analyses", "NLA directory", "NLAs"},
    {100070, "Misc", "Misc", "Miscellaneous directory", "Misc"},
    {100080, "Attribs", "Attribs", "Atribute Definitions", "Attribs"},
    {100090, "Models", "Models", "Earth Models directory", "Models"},
    {100100, "Geometry", "Geometry", "Survey Geometry Directory", "Geometry"},
};

QByteArray number(double value)
{
    return base::formatPlain(value);
}

// Whole numbers for the host's integers: a large one must not become "1e+06".
QByteArray lineRange(int first, int last)
{
    return QByteArray::number(first) + '`' + QByteArray::number(last) + "`1";
}

QByteArray triple(double a, double b, double c)
{
    return number(a) + '`' + number(b) + '`' + number(c);
}

QByteArray setPoint(int inl, int crl, double x, double y)
{
    return QByteArray::number(inl) + '/' + QByteArray::number(crl) + "`(" + number(x) + ',' + number(y) + ')';
}

QByteArray surveyFileBytes(const NewSurvey &survey)
{
    constexpr int firstLine = 100;
    const int lastInline =
        firstLine + qMax(1, static_cast<int>(std::ceil((survey.xMaximum - survey.xMinimum) / binSize)));
    const int lastCrossline =
        firstLine + qMax(1, static_cast<int>(std::ceil((survey.yMaximum - survey.yMinimum) / binSize)));
    const double xEnd = survey.xMinimum + (lastInline - firstLine) * binSize;
    const double yEnd = survey.yMinimum + (lastCrossline - firstLine) * binSize;

    KeyValues keys;
    keys.set("Name", survey.name);
    keys.set("Survey Data Type", QByteArray("Both 2D and 3D"));
    keys.set("In-line range", lineRange(firstLine, lastInline));
    keys.set("Cross-line range", lineRange(firstLine, lastCrossline));
    keys.set("Z range", triple(0, survey.maximumDepth, 5) + (survey.depthUnit == DepthUnit::Foot ? "`F" : "`D"));
    keys.set("Coord-X-BinID", triple(survey.xMinimum - firstLine * binSize, binSize, 0));
    keys.set("Coord-Y-BinID", triple(survey.yMinimum - firstLine * binSize, 0, binSize));
    keys.set("Set Point.1", setPoint(firstLine, firstLine, survey.xMinimum, survey.yMinimum));
    keys.set("Set Point.2", setPoint(lastInline, lastCrossline, xEnd, yEnd));
    keys.set("Set Point.3", setPoint(firstLine, lastCrossline, survey.xMinimum, yEnd));
    keys.set("Coordinate System.System name", QByteArray("Unlocated XY"));
    keys.set("Coordinate System.XY in Feet", QByteArray("No"));
    keys.set("XY in feet", QByteArray("No"));
    keys.set("Seismic Reference Datum", QByteArray("0"));
    QByteArray bytes = odFileHeader(surveyFileType) + keys.toBytes() + "!\n";
    if (!survey.comment.isEmpty())
        bytes += survey.comment.toUtf8() + '\n';
    return bytes;
}

QByteArray surveyListBytes()
{
    ObjectList list = ObjectList::forFolder("0", "Survey root", "Survey Info", ".survey");
    for (const ObjectFolder &folder : objectFolders)
        list.appendFolder(folder.number, folder.folder);
    return list.toBytes();
}

QString write(const QString &path, const QByteArray &bytes)
{
    const base::WriteResult result = base::writeFileAtomically(path, bytes);
    return result.ok() ? QString() : QStringLiteral("Cannot write the file %1: %2.").arg(path, result.error);
}

QString makeFolder(const QString &path)
{
    if (base::makeFolder(path))
        return {};
    return QStringLiteral("Cannot make the folder %1: %2.").arg(path, base::systemErrorText(errno));
}

QString makeObjectFolder(const QString &survey, const ObjectFolder &object)
{
    const QString path = survey + QLatin1Char('/') + QLatin1String(object.folder);
    const ObjectList list =
        ObjectList::forFolder(QByteArray::number(object.number), object.entryName, object.group, object.ownName);
    const QString problem = makeFolder(path);
    return problem.isEmpty() ? write(path + QStringLiteral("/.omf"), list.toBytes()) : problem;
}

// Up to what fails first.
QString makeSurvey(const QString &folder, const NewSurvey &survey)
{
    QString problem = makeFolder(folder);
    for (const ObjectFolder &object : objectFolders)
        if (problem.isEmpty())
            problem = makeObjectFolder(folder, object);
    if (problem.isEmpty())
        problem = makeFolder(folder + QStringLiteral("/Proc"));
    if (problem.isEmpty())
        problem = write(folder + QStringLiteral("/.survey"), surveyFileBytes(survey));
    return problem.isEmpty() ? write(folder + QStringLiteral("/.omf"), surveyListBytes()) : problem;
}

bool isYes(const QByteArray &value)
{
    return value.startsWith('Y') || value.startsWith('y');
}

bool showsDepthsInFeet(const QString &survey)
{
    const FileRead defaults = readFile(surveyDefaultsPath(survey));
    const host::Outcome<OdFile> parsed = parseOdFile(defaults.bytes, defaultsFileType);
    return parsed.ok() && isYes(parsed.value.keys.value("Show depth in feet"));
}

// The unit letter is the last part: "0`3`0.004`T". A time survey keeps its depths in feet where its map is in feet, or
// where the host's defaults say so.
DepthUnit depthUnitOf(const KeyValues &keys, const QString &survey)
{
    const QByteArray letter = keys.value("Z range").split('`').last().trimmed();
    const bool isFoot = letter.startsWith('T') ? isYes(keys.value("XY in feet")) || showsDepthsInFeet(survey)
                                               : letter.startsWith('F');
    return isFoot ? DepthUnit::Foot : DepthUnit::Metre;
}

bool hasUsableExtent(const NewSurvey &survey)
{
    constexpr double largest = 1e9;
    for (double value : {survey.xMinimum, survey.yMinimum, survey.xMaximum, survey.yMaximum, survey.maximumDepth})
        if (!(std::fabs(value) <= largest)) // written so that NaN fails too
            return false;
    return survey.xMaximum > survey.xMinimum && survey.yMaximum > survey.yMinimum && survey.maximumDepth > 0;
}

} // namespace

QString surveyFolderProblem(const QString &path)
{
    const QFileInfo info(path);
    if (!info.exists())
        return QStringLiteral("The folder %1 does not exist.").arg(path);
    if (!info.isDir())
        return QStringLiteral("%1 is not a folder.").arg(path);
    for (const char *file : {".omf", ".survey"})
        if (!QFileInfo(path + QLatin1Char('/') + QLatin1String(file)).isFile())
            return QStringLiteral("The folder %1 is no survey: it holds no file \"%2\".")
                .arg(path, QLatin1String(file));
    return {};
}

bool isSurveyFolder(const QString &path)
{
    return surveyFolderProblem(path).isEmpty();
}

bool isReadOnly(const QString &path)
{
    for (const char *folder : {"", "/WellInfo", "/WLC"})
        if (const QFileInfo info(path + QLatin1String(folder)); info.exists() && !info.isWritable())
            return true;
    return false;
}

QString surveyFilePath(const QString &survey)
{
    return survey + QStringLiteral("/.survey");
}

QString surveyDefaultsPath(const QString &survey)
{
    return survey + QStringLiteral("/.defs");
}

host::Outcome<SurveyInfo> readSurveyInfo(const QString &path)
{
    SurveyInfo info;
    info.folderName = QFileInfo(QDir::cleanPath(path)).fileName();
    info.name = info.folderName;
    const QString file = surveyFilePath(path);
    const host::Outcome<QByteArray> bytes = readFileBytes(file);
    if (!bytes.ok())
        return {info, bytes.error};
    const host::Outcome<OdFile> parsed = parseOdFile(bytes.value, surveyFileType);
    if (!parsed.ok())
        return {info, QStringLiteral("Cannot read the file %1: %2.").arg(file, parsed.error)};
    const QString name = parsed.value.keys.text("Name");
    if (!name.isEmpty())
        info.name = name;
    info.depthUnit = depthUnitOf(parsed.value.keys, path);
    info.comment = QString::fromUtf8(bytes.value.mid(parsed.value.bodyOffset)).trimmed();
    return {info, {}};
}

host::Status createSurvey(const QString &path, const NewSurvey &survey)
{
    if (!hasUsableExtent(survey))
        return {QStringLiteral("The extent of the survey \"%1\" is no usable range of coordinates and depths.")
                    .arg(survey.name)};
    SurveyPlace place(path);
    if (!place.error().isEmpty())
        return {place.error()};
    const QString problem = makeSurvey(place.buildFolder(), survey);
    return problem.isEmpty() ? place.putInPlace() : host::Status{problem};
}

void removeSurveyLeftovers(const QString &path)
{
    const QString wells = path + QStringLiteral("/WellInfo");
    removeUnfinishedSurveys(QFileInfo(QDir::cleanPath(path)).path());
    base::removeLeftovers(path);
    if (base::linkProblem(path, wells) == 0)
        base::removeLeftovers(wells);
}

QByteArray dataRootMark()
{
    return odFileHeader("Object Management file") + "ID: -1\n!\nAppl dir: 1\nAppl: dGB`Stream\n$Name: appl\n!\n";
}

} // namespace survey
