#pragma once

#include <QString>
#include <QStringList>

namespace host {
class Host;
}

/// The plug-in's project in the current survey: where its files lie and the lists that are the same for a whole
/// launch. Every file name of the plug-in is projectFolder followed by a fragment that begins with "/".
struct Project
{
    QString surveyName;
    QString projectFolder; ///< "…/WLC", no separator at its end
    QString setupDataFolder; ///< the host's; holds "icons.Default" and "ColorBars"
    QString iconFolder; ///< setupDataFolder + "/icons.Default/"
    QStringList globalTemplateNames; ///< in the order in which the folder is read
    QStringList groupNames;
    QStringList zoneTypes;
    double halfDotsPerInch = 0; ///< half the screen's logical horizontal dots per inch
    double doubleDotsPerInch = 0; ///< twice the same, a whole number
};

/// Fills the paths of \a project for the host's current survey and lists the global templates. A missing project
/// folder is made with its sub-folders and seed files, whole or not at all; its templates are listed from the next
/// call on. In an existing one, taken as it is otherwise, a swap of folders that a dead process left half done is
/// finished, and what its writes left is removed. Says nothing when a folder cannot be made.
void openProject(const host::Host &host, Project *project);

/// The part of openProject() that works on the survey's folder alone.
void openProjectFolder(const QString &surveyDirectory, Project *project);

/// The folders directly inside \a folder, those with a dot in front too, our own hidden ones and links out of
/// the survey not; in the order in which it is read. None when such a link leads to the folder.
QStringList subFolderNames(const Project &project, const QString &folder);

/// The links in the project that lead out of the survey or nowhere: nothing is read, written or removed there.
QStringList linksOutOfSurvey(const Project &project);

/// The folder of the templates that every well may use.
QString globalTemplatesFolder(const Project &project);
/// The global templates on disk as they are now, in the order in which the folder is read.
QStringList globalTemplateNames(const Project &project);
