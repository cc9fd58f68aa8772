#pragma once

#include <QString>
#include <QVector>

class WellInfo;

namespace las {

/// Something about a data line that the import passes over in silence.
struct RowFinding
{
    enum class Kind {
        Text, ///< a value that is no number; it is read as 0
        NoDepth, ///< a depth that is no number
        RepeatedDepth, ///< the depth of the line before
        TurningDepth, ///< depths rise where they fell before, or fall where they rose
        OddStep, ///< another step than that of the first two lines
        OtherCount, ///< more or fewer values than the section has columns
    };

    Kind kind = Kind::Text;
    int line = 0; ///< in the file, from 1
    QString text; ///< what stands there, shortened
};

/// All of one kind: how many lines, and the first of them.
struct RowFindings
{
    static constexpr int mostListed = 10; ///< of a kind

    QVector<RowFinding> first; ///< in the order of lines
    QVector<int> counts = QVector<int>(6, 0); ///< lines by kind

    int count(RowFinding::Kind kind) const { return counts.at(static_cast<int>(kind)); }
};

/// Looks at the data lines of a loaded file as its reader takes them: columns between blanks, a line a depth step. Of a wrapped
/// file, whose lines are no depth steps, nothing is told.
RowFindings checkRows(const WellInfo &file);

} // namespace las
