#pragma once

#include "logview/geometry/sampleplacer.h"

#include <QtAlgorithms>

#include <algorithm>
#include <utility>
#include <vector>

namespace logview {

/// Some rows of pixels, each set or not.
class PixelRows
{
public:
    /// Columns [\a left, \a left + \a columns) of the rows [0, \a rows).
    PixelRows(int left, int columns, int rows)
        : m_left(left)
        , m_columns(columns)
        , m_rows(rows)
        , m_words((columns + wordBits - 1) / wordBits)
        , m_bits(static_cast<size_t>(m_words) * static_cast<size_t>(rows))
        , m_runs(static_cast<size_t>(rows), {0, -1})
    {
    }

    int rows() const { return m_rows; }
    /// Sets the pixels \a first to \a last (included) of a row; what lies outside is left out.
    void set(qint64 row, qint64 first, qint64 last)
    {
        if (row < 0 || row >= m_rows)
            return;
        extend(m_runs[static_cast<size_t>(row)], first, last);
        first = std::max<qint64>(first - m_left, 0);
        last = std::min<qint64>(last - m_left, m_columns - 1);
        if (first > last)
            return;
        quint64 *word = m_bits.data() + row * m_words + first / wordBits;
        const quint64 *end = m_bits.data() + row * m_words + last / wordBits;
        quint64 mask = ~quint64(0) << (first % wordBits);
        for (; word != end; ++word) {
            *word |= mask;
            mask = ~quint64(0);
        }
        *word |= mask & (~quint64(0) >> (wordBits - 1 - last % wordBits));
    }
    /// Pixels of a row that need not be set any more, from first to last, also outside of the columns: a long run of set
    /// ones, or all of a row that is none of these. None when first is behind last.
    std::pair<qint64, qint64> runIn(qint64 row) const
    {
        constexpr qint64 far = qint64(1) << 40;
        return row >= 0 && row < m_rows ? m_runs[static_cast<size_t>(row)] : std::pair<qint64, qint64>(-far, far);
    }
    /// Calls use(first, last) for each run of set pixels of a row, from left to right.
    template<class Use>
    void forRuns(int row, const Use &use) const
    {
        for (int column = next(row, 0, true); column < m_columns;) {
            const int end = next(row, column, false);
            use(column + m_left, end - 1 + m_left);
            column = next(row, end, true);
        }
    }

private:
    static constexpr int wordBits = 64;

    static void extend(std::pair<qint64, qint64> &run, qint64 first, qint64 last)
    {
        if (first <= run.second + 1 && last >= run.first - 1)
            run = {std::min(run.first, first), std::max(run.second, last)};
        else if (last - first > run.second - run.first)
            run = {first, last};
    }

    // The first column from there on that is set, or not.
    int next(int row, int column, bool isSet) const
    {
        while (column < m_columns) {
            quint64 word = m_bits[static_cast<size_t>(row * m_words + column / wordBits)];
            word = (isSet ? word : ~word) >> (column % wordBits);
            if (word != 0)
                return std::min(column + static_cast<int>(qCountTrailingZeroBits(word)), m_columns);
            column += wordBits - column % wordBits;
        }
        return m_columns;
    }

    int m_left;
    int m_columns;
    int m_rows;
    int m_words;
    std::vector<quint64> m_bits;
    std::vector<std::pair<qint64, qint64>> m_runs; // of each row, what runIn() gives
};

/// Sets the pixels that the raster painter sets for the line of the samples with a solid round pen of one pixel, without
/// antialiasing: the same ones. \a rows are those of the samples that count, \a topY is the track's row that is row 0.
/// The painter cuts lines that leave its device before it looks for their pixels, which moves some: \a device are the
/// rows of one, of the track.
void drawThinLine(PixelRows &pixels, const CurveSamples &samples, const CurveKey &key, const ShownRows &rows,
                  int topY, const ShownRows &device = {});

/// Those that have their middle within half of the width of a wider pen of the line, which is reduced to parts of rows that
/// do not show: almost the same ones.
void drawWideLine(PixelRows &pixels, const CurveSamples &samples, const CurveKey &key, const ShownRows &rows,
                  int topY, double penWidth);

} // namespace logview
