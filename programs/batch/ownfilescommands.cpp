#include "programs/batch/commands.h"
#include "programs/batch/helptext.h"
#include "programs/batch/session.h"
#include "programs/batch/tables.h"

namespace batch {

namespace {

/// Commands for the build and the shell, not for people.
Command hiddenCommand(const char *name, const char *summary)
{
    Command command;
    command.name = QString::fromLatin1(name);
    command.summary = QString::fromLatin1(summary);
    command.description = command.summary + QLatin1Char('.');
    command.example = command.name;
    command.usesSurvey = false;
    command.isHidden = true;
    return command;
}

Result printed(const QString &text)
{
    Result result;
    result.text = text;
    return result;
}

} // namespace

Command manualPageCommand()
{
    Command command = hiddenCommand("_manual-page", "Print the manual page");
    command.run = [](Session &, const Arguments &) { return printed(manualPage(commands())); };
    return command;
}

Command completionCommand()
{
    Command command = hiddenCommand("_bash-completion", "Print the completion for bash");
    command.run = [](Session &, const Arguments &) { return printed(bashCompletion(commands())); };
    return command;
}

Command wellNamesCommand()
{
    Command command = hiddenCommand("_well-names", "Print the names of the wells, a line each");
    command.usesSurvey = true;
    command.run = [](Session &session, const Arguments &) {
        QString names;
        for (const host::WellEntry &well : session.store().list().value)
            names += well.name + QLatin1Char('\n');
        return printed(names);
    };
    return command;
}

} // namespace batch
