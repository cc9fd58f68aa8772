#pragma once

#include "logview/geometry/sampleplacer.h"

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
    int columns() const;
    int margin() const;
    std::pair<double, double> crossing(double y) const;
    QVector<QRect> drawn(int topRow, int bottomRow, const ShownRows &device = {}) const;
    void provide(int topRow, int bottomRow) const;

    CurveSamples m_samples;
    CurveKey m_key;
    mutable QVector<QRect> m_kept; ///< pixels of the rows [m_keptTop, m_keptEnd), from top to bottom
    mutable int m_keptTop = 0;
    mutable int m_keptEnd = 0;
    double m_penWidth = 0;
    bool m_isNeeded = false;
};

} // namespace logview
