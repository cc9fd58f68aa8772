#include "programs/wellrenaming.h"

#include "base/filesystemcalls.h"
#include "correlation/correlationstore.h"
#include "datastore/calibrationfile.h"
#include "datastore/curvegroups.h"
#include "datastore/defaultlogs.h"
#include "datastore/perforationfile.h"
#include "datastore/project.h"
#include "datastore/projectfile.h"
#include "templates/templatestore.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cerrno>

namespace programs {

namespace {

class RenamedWell
{
public:
    RenamedWell(const Project &project, const QString &oldName, const QString &newName, const QStringList &otherWells)
        : m_project(project)
        , m_oldName(oldName)
        , m_newName(newName)
        , m_otherWells(otherWells)
    {
    }

    void followFiles();
    void followTemplates();
    void followCorrelations();
    const QStringList &problems() const { return m_problems; }

private:
    template<class Bytes>
    void follow(const QString &from, const QString &to, const Bytes &renamed);
    void tell(const QString &path, const QString &why);

    const Project &m_project;
    QString m_oldName;
    QString m_newName;
    QStringList m_otherWells;
    QStringList m_problems;
};

void RenamedWell::tell(const QString &path, const QString &why)
{
    m_problems.append(QStringLiteral("%1 keeps the name \"%2\": %3.").arg(path, m_oldName, why));
}

// Written before the old one goes: a program that dies between leaves both.
template<class Bytes>
void RenamedWell::follow(const QString &from, const QString &to, const Bytes &renamed)
{
    const ProjectFile file = readProjectFile(m_project.projectFolder, from);
    if (file.state == ProjectFile::State::Missing || from == to)
        return;
    if (file.state == ProjectFile::State::Unreadable)
        return tell(from, QStringLiteral("it cannot be read"));
    if (readProjectFile(m_project.projectFolder, to).state != ProjectFile::State::Missing)
        return tell(from, QStringLiteral("%1 exists already").arg(QFileInfo(to).fileName()));
    const base::WriteResult written = writeProjectFile(m_project.projectFolder, to, renamed(file.bytes));
    if (!written.ok())
        tell(from, written.error);
    else if (base::fileSystemCalls().unlink(QFile::encodeName(from).constData()) != 0)
        tell(from, qt_error_string(errno));
}

void RenamedWell::followFiles()
{
    const QString &folder = m_project.projectFolder;
    follow(defaultLogsPath(folder, m_oldName), defaultLogsPath(folder, m_newName),
           [this](const QByteArray &bytes) { return defaultLogsBytes(m_newName, parseDefaultLogs(bytes)); });
    follow(perforationPath(folder, m_oldName), perforationPath(folder, m_newName),
           [](const QByteArray &bytes) { return bytes; });
    for (const QString &group : curveGroupNames())
        follow(calibrationPath(folder, m_oldName, group), calibrationPath(folder, m_newName, group),
               [&](const QByteArray &bytes) {
                   CalibrationRecord record = parseCalibration(bytes, m_oldName, group).record;
                   record.wellName = m_newName;
                   return calibrationBytes(record);
               });
}

void RenamedWell::followTemplates()
{
    const QString from = wellTemplatesFolder(m_project, m_oldName);
    const QString to = wellTemplatesFolder(m_project, m_newName);
    if (from == to || !QFileInfo(from).isDir())
        return;
    if (isLinkedAway(m_project.projectFolder, from))
        return tell(from, QStringLiteral("a link leads out of the survey"));
    if (QFileInfo::exists(to) && !QDir().rmdir(to)) // an empty one is in nobody's way
        return tell(from, QStringLiteral("%1 exists already").arg(QFileInfo(to).fileName()));
    if (base::fileSystemCalls().renameToNew(QFile::encodeName(from).constData(), QFile::encodeName(to).constData())
        != 0)
        tell(from, qt_error_string(errno));
}

void RenamedWell::followCorrelations()
{
    const correlation::KnownNames known{
        [this](const QString &well) { return well == m_oldName || m_otherWells.contains(well); },
        [](const QString &, const QString &) { return true; }};
    const QString folder = correlation::correlationsFolder(m_project);
    for (const QString &name : subFolderNames(m_project, folder)) {
        QString error;
        std::optional<CorrelationProperties> found = correlation::load(m_project, name, known, &error);
        if (!error.isEmpty())
            tell(error, QStringLiteral("it cannot be read"));
        if (!found)
            continue;
        bool isNamed = false;
        for (CorrelationWell &well : found->wells)
            if (well.wellName == m_oldName) {
                well.wellName = m_newName;
                isNamed = true;
            }
        const base::WriteResult written = isNamed ? correlation::write(m_project, *found) : base::WriteResult();
        if (!written.ok())
            tell(folder + QLatin1Char('/') + name, written.error);
    }
}

} // namespace

QStringList followRenamedWell(const QString &surveyDirectory, const QString &oldName, const QString &newName,
                              const QStringList &otherWells)
{
    if (oldName == newName || otherWells.contains(oldName)
        || !QFileInfo(surveyDirectory + QStringLiteral("/WLC")).isDir())
        return {};
    Project project;
    openProjectFolder(surveyDirectory, &project);
    RenamedWell well(project, oldName, newName, otherWells);
    well.followFiles();
    well.followTemplates();
    well.followCorrelations();
    return well.problems();
}

} // namespace programs
