#pragma once

#include <QByteArray>
#include <QString>

namespace batch {

/// Writes all bytes to the standard output. False where they did not get there; the standard error tells why, but not of a
/// reader that went away.
bool printOutput(const QByteArray &bytes);

/// Writes bytes to the standard error as they are.
void printError(const QByteArray &bytes);

/// One message on the standard error, behind the program's name, with a line end.
void printMessage(const QString &text);

/// Sees to it that the three standard streams are open: else the first file that is opened would take the place of one, and
/// what is printed would land in it. A closed pipe gives an error from now on, and ends nothing.
void prepareStreams();

} // namespace batch
