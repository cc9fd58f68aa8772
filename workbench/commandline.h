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
    QStringList lasFiles; ///< from which new wells are to be proposed
    QStringList pluginFolders;
    QString demoFolder;
    bool showsTour = false; ///< with the first plug-in's window, a well and a correlation open
    QString error; ///< why the arguments are refused, as a sentence
};

/// Reads the arguments that follow the program's name. One that ends in ".las" is a LAS file, another one the survey.
/// "--option value" and "--option=value" are the same; a value that begins with "-" needs the second form, a folder like
/// that stands behind "--".
CommandLine parseCommandLine(const QStringList &arguments);

/// One line without a line feed.
QString usageLine();
QString helpText();
QString versionText();

} // namespace workbench
