#include "datastore/project.h"

#include "base/filesystemcalls.h"
#include "base/folderlinks.h"
#include "base/folderswap.h"
#include "base/leftovers.h"
#include "base/safename.h"
#include "datastore/projectfile.h"
#include "datastore/projectseeds.h"
#include "host/host.h"

#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

namespace {

bool makeProjectFolders(const QString &folder)
{
    const auto make = [&folder](const char *name) { return base::makeFolder(folder + QLatin1String(name)); };
    return make("") && make("/Correlations") && make("/CurveGroups") && make("/Templates") && make("/DefaultLogs")
        && make("/Templates/Global");
}

// An existing project folder is trusted as it is: one that came into being with a part missing would stay so for ever.
void makeProject(const QString &surveyDirectory, const QString &folder)
{
    const base::HiddenFolder aside(surveyDirectory);
    const QString built = aside.filePath(QStringLiteral("WLC"));
    if (aside.isValid() && makeProjectFolders(built) && seedProject(built))
        base::fileSystemCalls().rename(QFile::encodeName(built).constData(), QFile::encodeName(folder).constData());
}

} // namespace

void openProjectFolder(const QString &surveyDirectory, Project *project)
{
    project->projectFolder = surveyDirectory + QStringLiteral("/WLC");
    project->globalTemplateNames.clear();
    if (!base::isThere(project->projectFolder)) {
        makeProject(surveyDirectory, project->projectFolder);
        return;
    }
    if (!isLinkedAway(project->projectFolder, project->projectFolder))
        base::finishFolderSwaps(project->projectFolder);
    for (const char *place : {"", "/Correlations", "/CurveGroups", "/Templates", "/Templates/Global", "/DefaultLogs"})
        if (!isLinkedAway(project->projectFolder, project->projectFolder + QLatin1String(place)))
            base::removeLeftovers(project->projectFolder + QLatin1String(place));
    for (const char *place : {"/Correlations", "/Wells"}) {
        const QString folder = project->projectFolder + QLatin1String(place);
        for (const QString &name : subFolderNames(*project, folder))
            base::removeLeftovers(folder + QLatin1Char('/') + name);
    }
    project->globalTemplateNames = globalTemplateNames(*project);
}

QStringList subFolderNames(const Project &project, const QString &folder)
{
    QStringList names;
    if (isLinkedAway(project.projectFolder, folder))
        return names;
    QDirIterator folders(folder, QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot);
    while (folders.hasNext()) {
        folders.next();
        const bool isAway = folders.fileInfo().isSymLink() && isLinkedAway(project.projectFolder, folders.filePath());
        if (!base::isReservedName(folders.fileName()) && !isAway)
            names.append(folders.fileName());
    }
    return names;
}

QString globalTemplatesFolder(const Project &project)
{
    return project.projectFolder + QStringLiteral("/Templates/Global");
}

QStringList globalTemplateNames(const Project &project)
{
    return subFolderNames(project, globalTemplatesFolder(project));
}

QStringList linksOutOfSurvey(const Project &project)
{
    return base::forbiddenLinks(QFileInfo(project.projectFolder).path(), project.projectFolder);
}

void openProject(const host::Host &host, Project *project)
{
    project->surveyName = host.surveyName();
    project->setupDataFolder = host.setupDataFolder();
    project->iconFolder = project->setupDataFolder + QStringLiteral("/icons.Default/");
    openProjectFolder(host.surveyDirectory(), project);
}
