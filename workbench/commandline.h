#pragma once

#include <QString>
#include <QStringList>

namespace workbench {

/// What the program was asked to do.
struct CommandLine
{
    enum class Action { Run, MakeDemo, ShowHelp, ShowVersion, Refuse };

    Action action = Action::Run;
    QString surveyFolder; ///< empty when none is given
    QStringList pluginFolders;
    QString demoFolder;
    QString error; ///< why the arguments are refused, as a sentence
};

/// Reads the arguments that follow the program's name. "--option value" and "--option=value" are the same; a
/// value that begins with "-" needs the second form, a folder like that stands behind "--".
CommandLine parseCommandLine(const QStringList &arguments);

/// One line without a line feed.
QString usageLine();
QString helpText();
QString versionText();

} // namespace workbench
