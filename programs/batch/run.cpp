#include "programs/batch/run.h"

#include "programs/batch/command.h"
#include "programs/batch/helptext.h"
#include "programs/batch/output.h"
#include "programs/batch/printer.h"
#include "programs/batch/session.h"
#include "programs/batch/tables.h"
#include "survey/surveyfolder.h"

#include <QDir>

#include <new>

namespace batch {

namespace {

int refuse(const CommandLine &line, const QString &error)
{
    printMessage(error);
    const QString command = line.command ? line.command->name + QLatin1Char(' ')
        : line.family.isEmpty()          ? QString()
                                         : line.family + QLatin1Char(' ');
    printMessage(QStringLiteral("Try \"lorva-batch %1--help\".").arg(command));
    return usageExitCode;
}

QString help(const CommandLine &line)
{
    return line.command ? helpOf(*line.command) : helpOfAll(commands(), line.family);
}

Result resultOf(Session &session, const CommandLine &line)
{
    Result result;
    try {
        result = line.command->run(session, line.arguments);
    } catch (const std::bad_alloc &) {
        result.failures.append(
            QStringLiteral("There is not enough memory for the command \"%1\".").arg(line.command->name));
    }
    result.failures += session.takeFailures();
    for (const QString &problem : session.takeProblems())
        if (result.failures.filter(problem).isEmpty())
            result.notices.append(problem);
    // What tells a dry run from another is the same in every command that writes.
    for (Record &record : result.records)
        if (line.command->writes)
            record.insert(isWrittenField().key, !session.isDryRun());
    return result;
}

int print(const CommandLine &line, const QString &surveyDirectory, const Result &result)
{
    const bool isJson = line.arguments.has(QStringLiteral("--json"));
    const bool isPrinted =
        printOutput(isJson ? jsonOf(*line.command, surveyDirectory, result) : textOf(line.command->form, result));
    for (const QString &notice : result.notices)
        printMessage(notice);
    for (const QString &failure : result.failures)
        printMessage(failure);
    return isPrinted && result.failures.isEmpty() ? successExitCode : failureExitCode;
}

int runInSurvey(const CommandLine &line)
{
    const QString given = line.arguments.value(QStringLiteral("--survey"));
    const QString folder =
        QDir::cleanPath(given.isEmpty() ? QDir::currentPath() : QDir::current().absoluteFilePath(given));
    const QString problem = survey::surveyFolderProblem(folder);
    if (!problem.isEmpty() && given.isEmpty())
        return refuse(line, QStringLiteral("The current folder is no survey; the option --survey names one."));
    if (!problem.isEmpty()) {
        const Result failed = Result::failed(problem);
        return print(line, folder, failed);
    }
    Session session(folder, line.arguments);
    return print(line, folder, resultOf(session, line));
}

} // namespace

int run(const CommandLine &line)
{
    switch (line.action) {
    case CommandLine::Action::ShowHelp:
        return printOutput(help(line).toUtf8()) ? successExitCode : failureExitCode;
    case CommandLine::Action::ShowVersion:
        return printOutput(programVersion().toUtf8()) ? successExitCode : failureExitCode;
    case CommandLine::Action::Refuse:
        return refuse(line, line.error);
    case CommandLine::Action::Run:
        break;
    }
    if (line.command->usesSurvey)
        return runInSurvey(line);
    Session session(QString(), line.arguments);
    return print(line, QString(), resultOf(session, line));
}

} // namespace batch
