#pragma once

#include <QStringList>

namespace survey {

/// What a user hands over, as LAS files.
struct FoundFiles
{
    QStringList files; ///< paths, each once; those of a folder in the order of their names
    QStringList others; ///< files of folders that are no LAS files by their names
};

/// The files themselves, whatever they are called, and of each folder with all folders below it those whose names end in
/// ".las". Hidden ones and links to folders are passed over. More than 100,000 files are not listed.
FoundFiles findLasFiles(const QStringList &paths);

} // namespace survey
