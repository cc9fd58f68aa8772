#include "templates/templatestore.h"

#include "base/atomicfile.h"
#include "base/folderremoval.h"
#include "base/safename.h"
#include "datastore/project.h"
#include "datastore/projectfile.h"

#include <QFileInfo>

#include <algorithm>
#include <optional>
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

// A template is called as its folder is; only what cannot name a folder is escaped ("a%20b" is a name like any
// other).
QString templateFolderName(const QString &templateName)
{
    const QByteArray bytes = templateName.toUtf8();
    const bool isFolderName = !bytes.isEmpty() && bytes != "." && bytes != ".." && !bytes.contains('/')
        && !bytes.contains('\0') && bytes.size() <= base::maximumFileNameBytes;
    return isFolderName ? templateName : base::fileNameFor(templateName);
}

QString trackName(const QString &fileName)
{
    return fileName.section(QLatin1Char('.'), 0, 0);
}

// The digits of "Track_<digits>" without leading zeros; nothing for any other name.
std::optional<QString> trackNumber(const QString &name)
{
    if (!name.startsWith(QLatin1String(trackPrefix)) || name.size() == trackPrefixLength)
        return std::nullopt;
    const QString digits = name.mid(trackPrefixLength);
    const auto isDigit = [](QChar c) { return c >= QLatin1Char('0') && c <= QLatin1Char('9'); };
    if (!std::all_of(digits.begin(), digits.end(), isDigit))
        return std::nullopt;
    int zeros = 0;
    while (zeros < digits.size() && digits.at(zeros) == QLatin1Char('0'))
        ++zeros;
    return digits.mid(zeros);
}

// Tracks by number, whatever its length, then everything else by name.
std::tuple<bool, int, QString, QString> trackOrder(const QString &fileName)
{
    const std::optional<QString> number = trackNumber(trackName(fileName));
    const QString digits = number.value_or(QString());
    return {!number, digits.size(), digits, fileName};
}

// In the order of the tracks.
QStringList trackPaths(const Project &project, const TemplateId &which)
{
    const QString folder = templateFolder(project, which);
    QStringList files = projectEntries(project.projectFolder, folder, QDir::Files, QDir::Unsorted);
    std::sort(files.begin(), files.end(),
              [](const QString &a, const QString &b) { return trackOrder(a) < trackOrder(b); });
    for (QString &file : files)
        file.prepend(folder + QLatin1Char('/'));
    return files;
}

} // namespace

QString templateFolder(const Project &project, const QString &templateName, const QString &wellName)
{
    return wellTemplatesFolder(project, wellName) + QLatin1Char('/') + templateFolderName(templateName);
}

QString globalTemplateFolder(const Project &project, const QString &templateName)
{
    return globalTemplatesFolder(project) + QLatin1Char('/') + templateFolderName(templateName);
}

QString templateFolder(const Project &project, const TemplateId &which)
{
    return which.isGlobal ? globalTemplateFolder(project, which.name)
                          : templateFolder(project, which.name, which.wellName);
}

QString wellTemplatesFolder(const Project &project, const QString &wellName)
{
    return templatesFolder(project) + wellFolderName(wellName);
}

QStringList wellTemplateNames(const Project &project, const QString &wellName)
{
    QStringList names = subFolderNames(project, wellTemplatesFolder(project, wellName));
    names.sort();
    return names;
}

bool hasTemplate(const Project &project, const QString &templateName, const QString &wellName)
{
    return project.globalTemplateNames.contains(templateName)
        || wellTemplateNames(project, wellName).contains(templateName);
}

TemplateId meantTemplate(const Project &project, const QString &templateName, const QString &wellName)
{
    const bool isGlobal = project.globalTemplateNames.contains(templateName);
    return isGlobal ? TemplateId::global(templateName) : TemplateId::ofWell(wellName, templateName);
}

QVector<TrackInfo> loadTemplate(const Project &project, const QString &templateName, const QString &wellName)
{
    return loadTemplate(project, meantTemplate(project, templateName, wellName));
}

QVector<TrackInfo> loadTemplate(const Project &project, const TemplateId &which)
{
    QVector<TrackInfo> tracks;
    for (const QString &path : trackPaths(project, which))
        tracks.append(readTrackFile(project, path));
    return tracks;
}

std::optional<QVector<QByteArray>> templateFiles(const Project &project, const TemplateId &which)
{
    QVector<QByteArray> files;
    for (const QString &path : trackPaths(project, which)) {
        const ProjectFile file = readProjectFile(project.projectFolder, path);
        if (file.state != ProjectFile::State::Read)
            return std::nullopt;
        files.append(file.bytes);
    }
    return files;
}

bool templateExists(const Project &project, const TemplateId &which)
{
    const QFileInfo folder(templateFolder(project, which));
    return folder.exists() || folder.isSymLink();
}

base::ReplaceResult saveTemplate(const Project &project, const TemplateId &which, const QVector<QByteArray> &tracks)
{
    QVector<base::FolderFile> files;
    files.reserve(tracks.size());
    for (const QByteArray &bytes : tracks)
        files.append({trackNameOf(files.size() + 1) + QStringLiteral(".txt"), bytes});
    const QFileInfo folder(templateFolder(project, which));
    return base::replaceFolder(folder.path(), folder.fileName(), files, project.projectFolder);
}

bool removeTemplate(const Project &project, const TemplateId &which)
{
    const QFileInfo folder(templateFolder(project, which));
    return !templateExists(project, which)
        || base::removeFolder(folder.path(), folder.fileName(), project.projectFolder);
}

QString trackNameOf(int number)
{
    return QLatin1String(trackPrefix) + QString::number(number);
}

TrackInfo readTrackFile(const Project &project, const QString &path)
{
    const ProjectFile file = readProjectFile(project.projectFolder, path);
    if (file.state != ProjectFile::State::Read)
        return {};
    return parseTrack(file.bytes, trackName(QFileInfo(path).fileName()));
}

bool writeTrack(const QString &folder, const QString &trackName, const QString &typeText,
                const QVector<TemplateCurveRow> &rows)
{
    const QString path = folder + QLatin1Char('/') + base::fileNameFor(trackName, 4) + QStringLiteral(".txt");
    return base::writeFileAtomically(path, trackBytes(typeText, rows)).ok();
}
