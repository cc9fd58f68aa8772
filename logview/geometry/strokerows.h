#pragma once

#include "logview/geometry/curvepath.h"

#include <QRect>
#include <QVector>

#include <map>

namespace logview {

/// The pixels that the line of a curve covers, as runs of pixels per row. A reduced polyline can not take their
/// place: which pixels a line shorter than a pixel sets depends on where every single sample stands.
///
/// The painter itself finds them, stretch by stretch of the track when their rows are first asked for. The last
/// stretches are kept.
class StrokeRows
{
public:
    static constexpr int maximumPenWidth = 32;

    StrokeRows() = default;
    /// For a solid pen of 1 to maximumPenWidth pixels, round where it is wider than one.
    StrokeRows(const CurveSamples &samples, const CurvePath &path, int penWidth);

    int penWidth() const { return m_penWidth; } ///< 0 when nothing was built
    /// Whether the curve is to be painted by rows: where the reduced path is that of every sample and quickly
    /// stroked, and where rows are not those of the screen or depths not in order, it is to be stroked.
    bool isNeeded() const { return m_isNeeded; }
    /// The pixels of the rows \a topRow to \a bottomRow as rectangles; equal rows are joined.
    void appendPixels(int topRow, int bottomRow, QVector<QRect> &rectangles) const;

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

    const Stretch &stretchAt(int index) const;
    Stretch drawn(int index) const;
    QPainterPath linesAround(int index) const;

    CurveSamples m_samples;
    CurveKey m_key;
    mutable std::map<int, Stretch> m_stretches; ///< by their place in the track
    int m_penWidth = 0;
    bool m_isNeeded = false;
};

} // namespace logview
