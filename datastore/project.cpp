#include "datastore/project.h"

#include "host/host.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>

namespace {

void makeProjectFolders(const QString &surveyDirectory)
{
    QDir(surveyDirectory).mkdir(QStringLiteral("WLC"));
    const QDir project(surveyDirectory + QStringLiteral("/WLC"));
    for (const char *folder : {"Correlations", "CurveGroups", "Templates", "DefaultLogs"})
        project.mkdir(QString::fromLatin1(folder));
    QDir(project.filePath(QStringLiteral("Templates"))).mkdir(QStringLiteral("Global"));
}

} // namespace

void openProjectFolder(const QString &surveyDirectory, Project *project)
{
    const QString folder = surveyDirectory + QStringLiteral("/WLC");
    if (!QFileInfo::exists(folder))
        makeProjectFolders(surveyDirectory);
    project->projectFolder = folder;
    project->globalTemplateNames = globalTemplateNames(*project);
}

QStringList globalTemplateNames(const Project &project)
{
    QStringList names;
    QDirIterator folders(project.projectFolder + QStringLiteral("/Templates/Global/"),
                         QDir::Dirs | QDir::NoDotAndDotDot);
    while (folders.hasNext()) {
        folders.next();
        names.append(folders.fileName());
    }
    return names;
}

void openProject(const host::Host &host, Project *project)
{
    project->surveyName = host.surveyName();
    project->setupDataFolder = host.setupDataFolder();
    project->iconFolder = project->setupDataFolder + QStringLiteral("/icons.Default/");
    openProjectFolder(host.surveyDirectory(), project);
}
