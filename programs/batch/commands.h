#pragma once

#include "programs/batch/command.h"

/// The commands, one function each; commands.cpp puts them into order.
namespace batch {

Command wellsCommand();

} // namespace batch
