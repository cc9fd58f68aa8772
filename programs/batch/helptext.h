#pragma once

#include <QString>
#include <QVector>

namespace batch {

struct Command;
struct Option;

/// The texts that are made from the tables of the commands; each ends with a line end.

/// "wells [--survey DIR] [--json]" without the program's name and without a line end. A blank between an option and its value is
/// one at which no line ends (QChar::Nbsp).
QString usageOf(const Command &command);
/// What --help shows of a command.
QString helpOf(const Command &command);
/// What --help shows without a command, or behind the first word of several: \a family.
QString helpOfAll(const QVector<Command> &commands, const QString &family = {});
/// The manual page in troff.
QString manualPage(const QVector<Command> &commands);
/// The completion for bash.
QString bashCompletion(const QVector<Command> &commands);

/// "--map MNEMONIC=GROUP", as lists of options show it.
QString shownOption(const Option &option);
/// What lists of options say of one: its help, and what a number or count may be.
QString toldHelp(const Option &option);
/// The text in lines of at most 100 characters, each behind \a indent blanks. Empty lines stay.
QString wrapped(const QString &text, int indent);

QString programVersion();

} // namespace batch
