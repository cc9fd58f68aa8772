#pragma once

#include <QString>
#include <QVector>

namespace survey {

/// A file in the wells' folder that no well shows.
struct OrphanedFile
{
    enum class Kind {
        NoWell, ///< it is named like a file of a well, and no well of the list has it
        HiddenLog, ///< a log behind a gap in the numbers of its well's logs
        Unfinished, ///< what a write left that died, or that is going on
    };

    QString path;
    Kind kind = Kind::NoWell;
    QString missing = {}; ///< the file that is the gap in front of a hidden log: the first one
};

/// The orphans of a survey, by name. Files of other kinds than those of wells are nobody's business and passed over. None
/// where the list of wells cannot be read.
QVector<OrphanedFile> orphanedWellFiles(const QString &surveyDirectory);

} // namespace survey
