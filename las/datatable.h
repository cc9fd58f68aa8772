#pragma once

#include "las/lastext.h"

#include <QStringList>
#include <QVector>

#include <vector>

namespace las {

/// What stands between the values of a data line.
enum class Delimiter { Blank, Comma, Semicolon, Tab };

/// How the lines of a data section are to be read.
struct DataFormat
{
    int columns = 0;
    int depthColumn = 0;
    Delimiter delimiter = Delimiter::Blank;
    bool isDecimalComma = false; ///< "12,5" is a number
    bool isWrapped = false; ///< a row spans lines
    bool hasNull = false;
    double null = 0;
};

/// The values of one data line as texts, without quotes around them.
QStringList valuesOfLine(const QString &line, Delimiter delimiter);

/// The samples of a data section, read as what they are: rows that span lines are put together, values that are none
/// are undefined, and texts are told from numbers. What WellInfo makes of the same lines is the import's business.
///
/// Memory grows with the rows that are there.
class DataTable
{
public:
    DataTable(const DataFormat &format, Encoding encoding);

    struct Column
    {
        QVector<float> values; ///< one a row; host::undefinedValue where there is none
        int numbers = 0; ///< rows with a sample
        int texts = 0; ///< rows with something that is neither a number nor stands for none
    };

    /// Reads the line at \a begin and gives its end. A blank line and one that begins with "#" add nothing.
    const char *readLine(const char *begin, const char *end);
    /// To be called behind the last line.
    void finish();

    /// Depths in the file's unit. Rows without a depth are left out and counted only.
    const QVector<double> &depths() const { return m_depths; }
    QVector<Column> &columns() { return m_columns; }
    int rowsWithoutDepth() const { return m_rowsWithoutDepth; }
    /// Rows with more or fewer values than there are columns.
    int unevenRows() const { return m_unevenRows; }

private:
    enum class Kind : char { Number, Undefined, Text };
    struct Value
    {
        double number = 0;
        Kind kind = Kind::Undefined;
    };

    Value valueOf(const char *begin, const char *end) const;
    void readBlankSeparated(const char *begin, const char *end);
    void readDelimited(const char *begin, const char *end);
    void appendText(const char *begin, const char *end);
    void takeLine();
    void takeWrappedLine();
    void fillShortRow();
    void commit();
    void reserve(qint64 bytesLeft, qint64 lineLength);

    DataFormat m_format;
    Encoding m_encoding;
    QVector<double> m_depths;
    QVector<Column> m_columns;
    std::vector<Value> m_line; ///< of the line that is read
    QVector<QByteArray> m_texts; ///< of its values that are texts, in order
    std::vector<Value> m_row; ///< what there is of the row that is put together
    bool m_isDepthAlone = false; ///< in a wrapped file: the depth has a line of its own
    int m_lineCount = 0;
    int m_rowsWithoutDepth = 0;
    int m_unevenRows = 0;
};

} // namespace las
