#pragma once

#include "base/atomicfile.h"
#include "las/lasheader.h"
#include "las/logreader.h"

#include <functional>

/// Writing logs as they were read from one LAS file into another that every reader understands.
namespace las {

/// One file to write: logs of common depths, and the header that they come with.
struct LasCopy
{
    Header header; ///< its items of the sections W and P go along, but for those that the depths decide
    LogSet set;
};

/// The names that the logs get in the file, in their order: without what ends a mnemonic, and each once.
QStringList copiedNames(const LogSet &set);

/// Writes a LAS 2.0 file: not wrapped, columns between blanks, every sample with all its digits, -999.25 for what is
/// undefined. Depths stay in metres or feet; those in another unit become metres. Whole or not at all; \a goOn ends the
/// writing without a trace when it gives false.
base::WriteResult writeLasCopy(const QString &path, const LasCopy &copy, const std::function<bool(int rows)> &goOn);

/// The sets of a file, those that have the same depths put together.
QVector<LogSet> joinedSets(const QVector<LogSet> &sets);

} // namespace las
