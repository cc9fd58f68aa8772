#pragma once

#include "programs/batch/command.h"

/// The commands, one function each; commands.cpp puts them into order.
namespace batch {

Command wellsCommand();
Command logsCommand();
Command infoCommand();
Command importCommand();
Command exportCommand();
Command reportLogsCommand();
Command reportMarkersCommand();
Command lasCommand();
Command lasUnwrapCommand();
Command checkCommand();
Command markersCommand();
Command topsCommand();
Command zonesCommand();
Command pointsCommand();
Command defaultLogsCommand();
Command templateListCommand();
Command templateShowCommand();
Command templateCopyCommand();
Command templateDeleteCommand();
Command renderCommand();
Command correlateCommand();

// Hidden ones.
Command manualPageCommand();
Command completionCommand();
Command namesCommand();

} // namespace batch
