#include "programs/batch/commands.h"
#include "programs/batch/helptext.h"
#include "programs/batch/offerednames.h"
#include "programs/batch/session.h"
#include "programs/batch/tables.h"

namespace batch {

namespace {

/// Commands for the build and the shell, not for people.
Command hiddenCommand(const char *name, const char *summary)
{
    Command command = makeCommand(name, summary, "Not for people.", name);
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

Command namesCommand()
{
    Command command = hiddenCommand("_names", "Print the names that the shell offers for a word, a line each");
    command.usesSurvey = true;
    command.operands = {operand("KIND", "what is named", choiceOf(shellWords())),
                        repeatable(optional(operand("WORD", "an operand of the command that is being typed")))};
    command.options = {valueOption("--current", "WORD", "What of the word is there"),
                       valueOption("--well", "WELL", "What --well names")};
    command.example = QStringLiteral("_names wells --survey Demo");
    command.run = [](Session &session, const Arguments &arguments) {
        const QStringList names =
            namesToOffer(session, arguments.operand(0), arguments.value(QStringLiteral("--current")),
                         arguments.operands().mid(1), arguments.value(QStringLiteral("--well")));
        return printed(names.isEmpty() ? QString() : names.join(QLatin1Char('\n')) + QLatin1Char('\n'));
    };
    return command;
}

} // namespace batch
