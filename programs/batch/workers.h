#pragma once

#include "programs/batch/result.h"

#include <QVector>

#include <functional>

namespace batch {

/// Does the piece of work with a number; runs in a child process, so that nothing but its result and what it writes comes
/// back.
using Piece = std::function<Result(int number)>;

/// Does independent pieces of work, each once, by up to \a processes child processes, and gives their results in the order
/// of their numbers. A piece whose process died or had no memory gives a failure that begins with names.at(number). A signal
/// that ends the program ends the children first, each behind what it is writing. \a what is for the line of progress.
Result runPieces(const QString &what, const QStringList &names, int processes, const Piece &piece);

/// The result on its way between processes.
QByteArray bytesOf(const Result &result);
Result resultOf(const QByteArray &bytes);

} // namespace batch
