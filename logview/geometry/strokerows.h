#pragma once

#include "logview/geometry/curvepath.h"

#include <QRect>
#include <QVector>

#include <map>

namespace logview {

/// The pixels that the line of a curve covers, as runs of pixels per row. A reduced polyline can not take their
/// place: which pixels a line shorter than a pixel sets depends on where every single sample stands.
///
/// They are found stretch by stretch of the track when their rows are first asked for. The last stretches are kept.
class StrokeRows
{
public:
    static constexpr int maximumPenWidth = 32;

    StrokeRows() = default;
    /// For a solid round pen of 1 to maximumPenWidth pixels.
    StrokeRows(const CurveSamples &samples, const CurveKey &key, int penWidth);

    int penWidth() const { return m_penWidth; } ///< 0 when nothing was built
    /// Whether the curve is to be painted by rows. Where depths are not in order, or a wide pen has few lines to
    /// draw, it is to be stroked.
    bool isNeeded() const { return m_isNeeded; }
    /// The pixels of the rows \a topRow to \a bottomRow as rectangles; equal rows are joined.
    void appendPixels(int topRow, int bottomRow, QVector<QRect> &rectangles) const;
    /// The same for a pen of one pixel on a device of some rows of the track, near an edge of it: nothing is kept.
    void appendCutPixels(int topRow, int bottomRow, const ShownRows &device, QVector<QRect> &rectangles) const;

private:
    struct Run
    {
        qint16 left = 0;
        qint16 right = 0; ///< included
    };
    struct Stretch
    {
        QVector<int> rowStarts; ///< position in runs where each row begins, and the end
        QVector<Run> runs;
    };

    int columns() const;
    const Stretch &stretchAt(int index) const;
    Stretch drawn(int index) const;

    CurveSamples m_samples;
    CurveKey m_key;
    mutable std::map<int, Stretch> m_stretches; ///< by their place in the track
    int m_penWidth = 0;
    bool m_isNeeded = false;
};

} // namespace logview
