#pragma once

#include "programs/batch/command.h"

/// The names that the shell offers while a command is typed.
namespace batch {

/// What the shell calls a kind of names; empty where it is no kind of names.
QString shellWordOf(WordKind kind);
/// All of them.
QStringList shellWords();
/// What the shell offers for a word of the kind: \a current is what of the word is there, \a operands those of the command,
/// \a well that of --well.
QStringList namesToOffer(Session &session, const QString &shellWord, const QString &current,
                         const QStringList &operands, const QString &well);

} // namespace batch
