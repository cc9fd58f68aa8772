#pragma once

#include "logview/geometry/curvepath.h"

#include <QRect>
#include <QVector>

namespace logview {

/// The pixels that the line of a curve covers, as runs of pixels per row. A reduced polyline can not take their
/// place: which pixels a line shorter than a pixel sets depends on where every single sample stands.
///
/// Rows are drawn when they are first asked for, and only these. They are kept as long as what is asked for next joins
/// them, as in a view that scrolls; of very many those that are asked for.
class StrokeRows
{
public:
    static constexpr double maximumPenWidth = 32;

    StrokeRows() = default;
    /// For a solid round pen of 1 to maximumPenWidth pixels. The key tells the pixels: on a screen that scales them its
    /// height and width are multiplied.
    StrokeRows(const CurveSamples &samples, const CurveKey &key, double penWidth);

    double penWidth() const { return m_penWidth; } ///< 0 when nothing was built
    const CurveKey &key() const { return m_key; }
    /// Whether the curve is to be painted by rows. Where depths are not in order, or a wide pen has few lines to
    /// draw, it is to be stroked.
    bool isNeeded() const { return m_isNeeded; }
    /// The pixels of the rows \a topRow to \a bottomRow as rectangles, as they are painted on a device that ends with two
    /// rows of the track; equal rows are joined.
    QVector<QRect> rectangles(int topRow, int bottomRow, int deviceTop, int deviceBottom) const;

private:
    struct Run
    {
        qint16 left = 0;
        qint16 right = 0; ///< included
    };
    /// Rows one below the other.
    struct Block
    {
        int top = 0;
        QVector<int> rowStarts{0}; ///< position in runs where each row begins, and the end
        QVector<Run> runs;

        int end() const { return top + rowStarts.size() - 1; } ///< the row behind the last
        void append(const Block &other, int first, int last);
    };

    int columns() const;
    int margin() const;
    std::pair<double, double> crossing(double y) const;
    Block drawn(int topRow, int bottomRow, const ShownRows &device = {}) const;
    void provide(int topRow, int bottomRow) const;
    static void appendRows(const Block &block, int topRow, int bottomRow, QVector<QRect> &rectangles);

    CurveSamples m_samples;
    CurveKey m_key;
    mutable Block m_kept;
    double m_penWidth = 0;
    bool m_isNeeded = false;
};

} // namespace logview
