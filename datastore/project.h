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

/// Fills the paths of \a project for the host's current survey, makes the project folder with its sub-folders when
/// it is missing (an existing one is taken as it is) and lists the global templates. Says nothing when a folder
/// cannot be made.
void openProject(const host::Host &host, Project *project);

/// The part of openProject() that works on the survey's folder alone.
void openProjectFolder(const QString &surveyDirectory, Project *project);

/// The global templates on disk as they are now, in the order in which the folder is read.
QStringList globalTemplateNames(const Project &project);
