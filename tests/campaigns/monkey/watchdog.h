#pragma once

#include <QString>

/// Sees to it that a program that crashes or hangs tells what was done before.
namespace watchdog {

/// From now on: a crash, and a minute and a half without touch(), print where the calling thread is and what was remembered,
/// and end the program.
void start();
void stop();
void touch();
/// One line about what is done next; the last ones are kept.
void remember(const QString &line);
/// Prints \a why and what was remembered, and ends the program at once.
[[noreturn]] void giveUp(const QString &why);

} // namespace watchdog
