#include "survey/wellfiles.h"

#include "base/folderlinks.h"
#include "survey/wellnames.h"

#include <QDir>
#include <QRegularExpression>
#include <QSet>

#include <algorithm>
#include <cerrno>

namespace survey {

namespace {

constexpr const char *wellFileEndings[] = {".well", ".track", ".wlm", ".wlt", ".csmdl", ".disp"};

} // namespace

QByteArray unitOf(const WellFile &file, DepthUnit surveyUnit)
{
    const QByteArray unit = file.keys.value("Depth-Unit");
    return unit.isEmpty() ? storedName(surveyUnit) : unit;
}

host::Outcome<WellFile> WellFiles::read(const QString &stem, const Report &report, bool *hasTrackFile) const
{
    *hasTrackFile = false;
    const QString path = stem + QStringLiteral(".well");
    const host::Outcome<QByteArray> bytes = readFileBytes(path);
    if (!bytes.ok())
        return {{}, bytes.error};
    host::Outcome<WellFile> file = parseWellFile(bytes.value);
    QString cutPath = file.value.isTrackCut ? path : QString();
    const QString trackPath = stem + QStringLiteral(".track");
    const FileRead trackFile = readFile(trackPath);
    bool isCut = false;
    const QVector<TrackPoint> track = parseTrackFile(trackFile.bytes, &isCut);
    const bool isWellFile = file.ok() || file.value.keys.size() > 0;
    if (trackFile.errorCode != 0 && trackFile.errorCode != ENOENT) {
        report(trackPath, unreadableText(trackFile.errorCode));
    } else if (trackFile.errorCode == 0 && track.isEmpty()) {
        report(trackPath, QStringLiteral("it holds no valid well track"));
    } else if (!track.isEmpty() && isWellFile) {
        file.value.track = track;
        file.value.isTrackCut = isCut;
        file.error.clear();
        cutPath = isCut ? trackPath : QString();
        *hasTrackFile = true;
    }
    if (!file.ok())
        return {{}, QStringLiteral("Cannot read the file %1: %2.").arg(path, file.error)};
    if (!cutPath.isEmpty())
        report(cutPath,
               QStringLiteral("its track ends after %1 points in a line that is none").arg(file.value.track.size()));
    return file;
}

host::Outcome<WellFile> WellFiles::read(const QString &stem, const Report &report) const
{
    bool hasTrackFile = false;
    return read(stem, report, &hasTrackFile);
}

host::Outcome<WellFile> WellFiles::readToChange(const QString &stem, const Report &report)
{
    const FileState state = fileState(stem + QStringLiteral(".well"));
    const host::Outcome<WellFile> file = read(stem, report);
    if (file.ok())
        m_given.insert(stem, state);
    return file;
}

host::Status WellFiles::write(const QString &stem, const WellFile &file, base::Flush flush) const
{
    const QString path = stem + QStringLiteral(".well");
    const base::WriteResult result = base::writeFileAtomically(path, wellFileBytes(file), flush);
    return {result.ok() ? QString() : writeErrorText(path, result.error)};
}

host::Status WellFiles::change(const QString &stem, const WellProperties &properties, const Report &report)
{
    const QString wellPath = stem + QStringLiteral(".well");
    const auto given = m_given.constFind(stem);
    if (given != m_given.constEnd() && !given->hasSameStamp(fileState(wellPath))) {
        m_given.erase(given);
        return {
            QStringLiteral("Another program changed the file %1 meanwhile. It was not written over.").arg(wellPath)};
    }
    m_given.remove(stem); // it is about to change
    bool hasTrackFile = false;
    host::Outcome<WellFile> file = read(stem, report, &hasTrackFile);
    if (!file.ok())
        return {file.error};
    if (file.value.isTrackCut)
        return {QStringLiteral("The track of the well %1 is damaged: changing the well would lose what follows the "
                               "damaged line. Nothing was changed.")
                    .arg(stem)};
    if (hasTrackFile) {
        // A separate track file hides the track in the main file. First both get the same track, then one goes: at
        // every moment the well is what it was.
        const host::Status status = write(stem, file.value);
        if (!status.ok())
            return status;
        const QString trackPath = stem + QStringLiteral(".track");
        if (!removeFile(trackPath))
            return {QStringLiteral("Cannot replace the file %1. The well is unchanged.").arg(trackPath)};
    }
    applyProperties(&file.value, properties);
    return write(stem, file.value);
}

QString newStem(const QString &folder, const QString &name, const ObjectList &list)
{
    QSet<QString> taken;
    for (const ObjectEntry &entry : list.entries())
        taken.insert(stemOf(entry.fileName()).toLower());
    const auto hasFiles = [&folder](const QString &stem) {
        const QString path = folder + QLatin1Char('/') + stem;
        const auto exists = [&path](const char *ending) { return base::isThere(path + QLatin1String(ending)); };
        return std::any_of(std::begin(wellFileEndings), std::end(wellFileEndings), exists)
            || base::isThere(LogFiles::path(path, 1));
    };
    const QString cleaned = cleanedStem(name);
    QString stem = cleaned;
    for (int n = 2; taken.contains(stem.toLower()) || hasFiles(stem); ++n)
        stem = cleaned + QLatin1Char('_') + QString::number(n);
    return stem;
}

QStringList removeWellFiles(const QString &folder, const QString &stem)
{
    const QRegularExpression ownFile(QLatin1Char('^') + QRegularExpression::escape(stem)
                                     + QStringLiteral("(\\.(well|track|wlm|wlt|csmdl|disp)|\\^[0-9]+\\.wll)$"));
    QStringList kept;
    for (const QString &file : QDir(folder).entryList(QDir::Files | QDir::Hidden))
        if (ownFile.match(file).hasMatch() && !removeFile(folder + QLatin1Char('/') + file))
            kept.append(file);
    return kept;
}

} // namespace survey
