#pragma once

#include <QStringList>

namespace batch {

struct CommandLine;

constexpr int successExitCode = 0;
constexpr int failureExitCode = 1;
constexpr int usageExitCode = 2;

/// Runs what the line asks for and prints what it came to: records on the standard output, failures and notices on the
/// standard error. Gives the program's exit code.
int run(const CommandLine &line);

} // namespace batch
