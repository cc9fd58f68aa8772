#include "datastore/projectfile.h"

#include "base/folderlinks.h"
#include "base/regularfile.h"

#include <QFileInfo>

#include <algorithm>
#include <cerrno>

namespace {

QString surveyOf(const QString &projectFolder)
{
    return QFileInfo(projectFolder).path();
}

} // namespace

ProjectFile readProjectFile(const QString &projectFolder, const QString &path)
{
    const base::RegularFile file = base::readRegularFile(path, surveyOf(projectFolder));
    if (file.ok())
        return {ProjectFile::State::Read, file.bytes};
    const bool isMissing = file.errorCode == ENOENT || file.errorCode == ENOTDIR;
    return {isMissing ? ProjectFile::State::Missing : ProjectFile::State::Unreadable, {}};
}

base::WriteResult checkProjectPath(const QString &projectFolder, const QString &path)
{
    const int problem = base::linkProblem(surveyOf(projectFolder), path);
    return {problem != 0 ? base::systemErrorText(problem) : QString()};
}

base::WriteResult writeProjectFile(const QString &projectFolder, const QString &path, const QByteArray &bytes,
                                   base::Flush flush)
{
    const base::WriteResult check = checkProjectPath(projectFolder, path);
    return check.ok() ? base::writeFileAtomically(path, bytes, flush) : check;
}

bool isLinkedAway(const QString &projectFolder, const QString &path)
{
    return base::linkProblem(surveyOf(projectFolder), path) != 0;
}

QStringList projectEntries(const QString &projectFolder, const QString &path, QDir::Filters filters,
                           QDir::SortFlags sort)
{
    if (isLinkedAway(projectFolder, path))
        return {};
    QStringList names = QDir(path).entryList(filters, sort);
    const auto isAway = [&](const QString &name) {
        const QString entry = path + QLatin1Char('/') + name;
        return QFileInfo(entry).isSymLink() && isLinkedAway(projectFolder, entry);
    };
    names.erase(std::remove_if(names.begin(), names.end(), isAway), names.end());
    return names;
}
