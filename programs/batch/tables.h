#pragma once

#include "programs/batch/command.h"

/// Short words for the tables of the commands.
namespace batch {

/// A command with its texts; \a example without the program's name.
Command makeCommand(const char *name, const char *summary, const char *description, const char *example);

Field textField(const char *key, const char *heading, const char *help);
/// \a decimals: for people; -1 for as many as there are.
Field numberField(const char *key, const char *heading, const char *help, int decimals = -1);
Field countField(const char *key, const char *heading, const char *help);
Field flagField(const char *key, const char *heading, const char *help);
Field textsField(const char *key, const char *heading, const char *help);
/// "isWritten", which every command that writes has in its records: run() fills it in. Without a heading a sentence in front of
/// the records tells it to people.
Field isWrittenField(const char *heading = "Written");
Field recordsField(const char *key, const char *heading, const char *help, const QVector<Field> &fields);

/// An option with a value.
Option valueOption(const char *name, const char *value, const char *help, const WordRule &rule = {});
/// An option whose value is several names between commas.
Option listOption(const char *name, const char *value, const char *help, const WordRule &rule = {});
/// An option without a value.
Option switchOption(const char *name, const char *help);

Option required(Option option);
/// An option that may be given several times.
Option repeatable(Option option);

Operand operand(const char *name, const char *help, const WordRule &rule = {});
/// An operand of which there may be several.
Operand repeatable(Operand operand);
Operand optional(Operand operand);
/// The operand WELL.
Operand wellOperand();

WordRule choiceOf(const QStringList &words);
WordRule countRule(int lowest, int highest);
WordRule numberRule(double lowest, double highest);

} // namespace batch
