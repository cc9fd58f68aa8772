#pragma once

#include "datastore/logcurvedata.h"
#include "las/lastext.h"

#include <QVector>

#include <vector>

namespace las {

/// The columns of the data sections while a file is read; column i belongs to curve i. Memory grows with the
/// tokens that are there, whatever the header claims.
class DataColumns
{
public:
    /// A further column; rows read before have no value in it.
    void addColumn() { m_columns.emplace_back(); }

    /// Reads the line at \a begin and returns its end (its line end character or \a end). A line that is
    /// blank or begins with "#" adds nothing. Every other line adds its tokens to as many columns; surplus
    /// tokens are left out, columns without a token get nothing. A token that is no number counts as 0.
    const char *readLine(const char *begin, const char *end, Encoding encoding, double nullValue);

    /// How many columns, from the first on, have a value on a line whose depth token is no number.
    int columnsWithUnreadableDepth() const { return static_cast<int>(m_unreadableDepthTokens); }

    /// Moves values, depths, minimum and maximum into the first curves, one a column, and leaves this empty.
    /// Curves with a value on the same rows share one depth list, which for all full columns is the value
    /// list of the first.
    void moveTo(QVector<LogCurveData> &curves);

private:
    struct Column
    {
        QVector<double> values;
        double minimum = 0;
        double maximum = 0;

        void append(double value, double nullValue);
    };

    void appendUnusualToken(const char *begin, const char *end, Encoding encoding, double nullValue, size_t &token);
    void reserveRows(qint64 bytesLeft, qint64 lineLength, size_t tokens);

    std::vector<Column> m_columns;
    std::vector<int> m_tokenCounts; ///< of each row; column i has a value on exactly the rows with more than i
    size_t m_unreadableDepthTokens = 0; ///< most tokens of a row whose first one is no number
    bool m_isDepthUnreadable = false; ///< of the row that is being read
};

} // namespace las
