#pragma once

#include "base/regularfile.h"
#include "datastore/textfields.h"

#include <vector>

/// Text files of columns between tabs, as the imports of well data read them.
namespace welldata {

/// What is wanted of a file.
struct ColumnRequest
{
    int headerLines = 0; ///< lines to pass over; 0 or less for none
    std::vector<int> columns; ///< numbers of the wanted columns, from 1, in the wanted order
    int fieldsAtLeast = 2; ///< a line needs as many
};

/// The wanted fields of all lines, or why there are none.
struct ColumnFile
{
    QByteArray text; ///< UTF-8; the fields refer to it
    int columns = 0; ///< as many as were wanted
    std::vector<textfields::Field> fields; ///< trimmed, line by line; empty where there is a problem
    QString problem; ///< the first one, as a sentence; empty when there is none
    int problemLine = 0; ///< its line in the file, from 1; 0 where it is none of a line

    bool ok() const { return problem.isEmpty(); }
    int rowCount() const { return columns > 0 ? static_cast<int>(fields.size()) / columns : 0; }
    textfields::Field field(int row, int column) const
    {
        return fields[static_cast<size_t>(row) * static_cast<size_t>(columns) + static_cast<size_t>(column)];
    }
};

/// The bytes of a file that a user names; it may lie anywhere and be reached by any link. A failure for one of more than
/// 512 MiB, and for none.
base::RegularFile readImportFile(const QString &path);

/// Reads the bytes of a file: passes over its header lines, trims each further line, splits it at tabs and drops empty
/// fields. A line with too few fields, a blank one too, is a problem, and so is a column number below 1 or one that a
/// line has not.
ColumnFile readColumns(const QByteArray &bytes, const ColumnRequest &request);

/// The fields of one line as readColumns() counts them.
std::vector<textfields::Field> fieldsOfLine(textfields::Field line);

} // namespace welldata
