#pragma once

#include "datastore/logcurvedata.h"
#include "las/lastext.h"

#include <QVector>

#include <vector>

namespace las {

/// The columns of one data section while it is read. Memory grows with the tokens that are there, whatever the header
/// claims.
class DataColumns
{
public:
    explicit DataColumns(int columns, double nullValue = 0)
        : m_columns(static_cast<size_t>(columns))
        , m_nullValue(nullValue)
    {
    }

    /// Reads the line at \a begin and returns its end (its line end character or \a end). A line that is
    /// blank or begins with "#" adds nothing. Every other line adds its tokens to as many columns; surplus
    /// tokens are left out, columns without a token get nothing. A token that is no number counts as 0.
    const char *readLine(const char *begin, const char *end, Encoding encoding);

    int rowCount() const { return static_cast<int>(m_tokenCounts.size()); }
    /// The rows with more or fewer tokens than there are columns.
    int unevenRowCount() const { return m_unevenRows; }
    /// How many columns, from the first on, have a value on a line whose depth token is no number.
    int columnsWithUnreadableDepth() const { return static_cast<int>(m_unreadableDepthTokens); }

    /// Moves values, depths, minimum and maximum into the curves from \a firstCurve on, one a column, and leaves this
    /// without columns and rows. Curves with a value on the same rows share one depth list, which for all full columns is the value
    /// list of the first.
    void moveTo(QVector<LogCurveData> &curves, int firstCurve);

private:
    struct Column
    {
        QVector<double> values;
        double minimum = 0;
        double maximum = 0;

        /// \a count values, each \a stride behind the one before.
        void append(const double *values, int count, size_t stride, double nullValue);
    };

    void appendUnusualToken(const char *begin, const char *end, Encoding encoding, size_t &token);
    void moveRowsToColumns();
    void reserveRows(qint64 bytesLeft, qint64 lineLength, size_t tokens);

    std::vector<Column> m_columns;
    double m_nullValue;
    /// The last rows' tokens, row by row: forty columns that grow in turn are forty places of memory for each line.
    std::vector<double> m_lastRows;
    size_t m_rowsInColumns = 0; ///< those before m_lastRows
    std::vector<int> m_tokenCounts; ///< of each row; column i has a value on exactly the rows with more than i
    size_t m_unreadableDepthTokens = 0; ///< most tokens of a row whose first one is no number
    int m_unevenRows = 0;
    bool m_isDepthUnreadable = false; ///< of the row that is being read
    bool m_hasSurplus = false; ///< the same
};

} // namespace las
