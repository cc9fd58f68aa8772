#include "templates/templatestore.h"

#include "base/atomicfile.h"
#include "base/numbers.h"
#include "base/safename.h"
#include "datastore/project.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <limits>
#include <tuple>

namespace {

constexpr char trackPrefix[] = "Track_";
constexpr int trackPrefixLength = static_cast<int>(sizeof trackPrefix) - 1;

QString templatesFolder(const Project &project)
{
    return project.projectFolder + QStringLiteral("/Templates/");
}

// A well called "Global" must not share the folder of the global templates.
QString wellFolderName(const QString &wellName)
{
    return wellName == QLatin1String("Global") ? QStringLiteral("%47lobal") : base::fileNameFor(wellName);
}

// A template is called as its folder is; only what cannot name a folder is escaped ("a%20b" is a name like any other).
QString templateFolderName(const QString &templateName)
{
    const QByteArray bytes = templateName.toUtf8();
    const bool isFolderName = !bytes.isEmpty() && bytes != "." && bytes != ".." && !bytes.contains('/')
        && !bytes.contains('\0') && bytes.size() <= base::maximumFileNameBytes;
    return isFolderName ? templateName : base::fileNameFor(templateName);
}

QStringList folders(const QString &path)
{
    return QDir(path).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
}

QString trackName(const QString &fileName)
{
    return fileName.section(QLatin1Char('.'), 0, 0);
}

// Tracks by number, then everything else by name.
std::tuple<int, QString> trackOrder(const QString &fileName)
{
    const QString name = trackName(fileName);
    int number = std::numeric_limits<int>::max();
    if (name.startsWith(QLatin1String(trackPrefix)))
        number = base::parseInteger(name.mid(trackPrefixLength).toUtf8()).value_or(number);
    return {number, fileName};
}

} // namespace

QString templateFolder(const Project &project, const QString &templateName, const QString &wellName)
{
    const QString owner = wellName.isNull() ? QStringLiteral("Global") : wellFolderName(wellName);
    return templatesFolder(project) + owner + QLatin1Char('/') + templateFolderName(templateName);
}

QString wellTemplatesFolder(const Project &project, const QString &wellName)
{
    return templatesFolder(project) + wellFolderName(wellName);
}

QStringList wellTemplateNames(const Project &project, const QString &wellName)
{
    return folders(wellTemplatesFolder(project, wellName));
}

QVector<TrackInfo> loadTemplate(const Project &project, const QString &templateName, const QString &wellName)
{
    const bool isGlobal = project.globalTemplateNames.contains(templateName);
    const QString folder = templateFolder(project, templateName, isGlobal ? QString() : wellName);
    QStringList files = QDir(folder).entryList(QDir::Files, QDir::NoSort);
    std::sort(files.begin(), files.end(),
              [](const QString &a, const QString &b) { return trackOrder(a) < trackOrder(b); });
    QVector<TrackInfo> tracks;
    tracks.reserve(files.size());
    for (const QString &file : qAsConst(files))
        tracks.append(readTrackFile(folder + QLatin1Char('/') + file));
    return tracks;
}

TrackInfo readTrackFile(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return parseTrack(file.readAll(), trackName(QFileInfo(path).fileName()));
}

bool writeTrack(const Project &project, const QString &templateName, const QString &wellName,
                const QString &trackName, const QString &typeText, const QVector<TemplateCurveRow> &rows)
{
    const QString path = templateFolder(project, templateName, wellName) + QLatin1Char('/')
        + base::fileNameFor(trackName, 4) + QStringLiteral(".txt");
    return base::writeFileAtomically(path, trackBytes(typeText, rows)).ok();
}
