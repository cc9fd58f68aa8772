#include "programs/batch/commands.h"

#include "programs/batch/tables.h"

namespace batch {

QVector<Option> options(const Command &command)
{
    QVector<Option> all = command.options;
    if (command.replaces)
        all.append(switchOption("--force", "Replace what is there, and answer \"Yes\" where a window would ask"));
    if (command.writes)
        all.append(switchOption("--dry-run", "Say what would be done and write nothing"));
    if (command.usesCores)
        all.append(valueOption("--jobs", "N",
                               "Work with so many processes at once; as many as there are cores without it",
                               countRule(1, 1024)));
    if (command.usesSurvey)
        all.append(valueOption("--survey", "DIR",
                               "The folder of the survey; without it the current folder, if that is a survey",
                               {WordKind::Folder}));
    if (!command.form.key.isEmpty())
        all.append(switchOption("--json", "Print one JSON object for programs"));
    all.append(switchOption("--help", "Show what the command does, and its options"));
    return all;
}

const QVector<Command> &commands()
{
    static const QVector<Command> all{
        wellsCommand(),        logsCommand(),           infoCommand(),         importCommand(),
        exportCommand(),       markersCommand(),        topsCommand(),         zonesCommand(),
        pointsCommand(),       defaultLogsCommand(),    templateListCommand(), templateShowCommand(),
        templateCopyCommand(), templateDeleteCommand(), renderCommand(),       correlateCommand(),
        reportLogsCommand(),   reportMarkersCommand(),  checkCommand(),        lasCommand(),
        lasUnwrapCommand(),    manualPageCommand(),     completionCommand(),   namesCommand(),
    };
    return all;
}

} // namespace batch
