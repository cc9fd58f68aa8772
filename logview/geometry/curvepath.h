#pragma once

#include "logview/geometry/curvesamples.h"
#include "logview/geometry/depthaxis.h"
#include "logview/geometry/valuescale.h"

#include <QPainterPath>
#include <QPointF>
#include <QRectF>
#include <QVector>

#include <algorithm>
#include <cmath>
#include <utility>

namespace logview {

/// Everything the geometry of a curve depends on. Caches hold it and are valid as long as it compares equal.
struct CurveKey
{
    DepthAxis axis;
    DepthReference reference;
    ValueScale scale;
    quint64 revision = 0; ///< of the samples
    /// Rows of the device in one pixel of the display: 1 on the screen, a printer's resolution / 96 on paper.
    double rowsPerPixel = 1;
};
CurveKey curveKey(const CurveSamples &samples, const DepthAxis &axis, const DepthReference &reference,
                  const ValueScale &scale, double rowsPerPixel = 1);
bool operator==(const CurveKey &a, const CurveKey &b);
inline bool operator!=(const CurveKey &a, const CurveKey &b)
{
    return !(a == b);
}

/// Places samples in their track; the rules of every curve and fill.
class SamplePlacer
{
public:
    explicit SamplePlacer(const CurveKey &key);

    enum Place { Drawn, Skipped, Break };
    /// Skipped: outside the depth range (or a depth that is no number); the path goes on past it. Break: a null
    /// value, no number, or outside a logarithmic track.
    Place place(const CurveSamples &samples, int i, QPointF &point) const
    {
        const float depth = m_key.reference.toDisplay(samples.depthsM()[i]);
        if (!m_isDrawable || !(depth >= m_key.axis.start) || !(depth <= m_key.axis.end))
            return Skipped;
        const double value = samples.values()[i];
        if (value == samples.nullValue())
            return Break;
        const double x = m_value.toPixel(value);
        if (std::isnan(x))
            return Break;
        // A depth of the range is in the track; rounding must not put one at its end below it.
        point = QPointF(x, std::clamp(yOf(depth), 0.0, m_height));
        return Drawn;
    }
    /// The samples that may be Drawn: [first, second). By binary search for depths in order, else all.
    std::pair<int, int> range(const CurveSamples &samples) const;
    /// Of these, the samples between two pixel positions and one more on both sides; all of them where depths are not
    /// in order.
    std::pair<int, int> range(const CurveSamples &samples, double topY, double bottomY) const;

private:
    double yOf(float depth) const { return (static_cast<double>(depth) - m_start) * m_height / m_extent; }

    CurveKey m_key;
    double m_start = 0;
    double m_extent = 1;
    double m_height = 0;
    bool m_isDrawable = false;
    ValuePlacer m_value;
};

/// The path of every sample between two pixel positions, and of one more on both sides: not reduced. Of the whole
/// depth range where depths are not in order.
QPainterPath samplePath(const CurveSamples &samples, const CurveKey &key, double topY, double bottomY);

/// The reduced drawing of a curve over its whole depth range: of the samples that follow one another in one pixel row
/// the first, the smallest, the largest and the last in x, in their order; where there are four or fewer all of them.
/// Breaks are kept. Depths that are not in order are not reduced.
class CurvePath
{
public:
    /// Points that are joined: [first, first + count) of points(). One point alone is a sub-path too.
    struct SubPath
    {
        int first = 0;
        int count = 0;
        double top = 0; ///< smallest and largest y
        double bottom = 0;
    };
    struct Slice
    {
        int first = 0;
        int count = 0;
    };

    CurvePath() = default;
    CurvePath(const CurveSamples &samples, const CurveKey &key);
    /// Only what is needed for what shows between two pixel positions; all of it where depths are not in order. It
    /// counts as no build.
    static CurvePath part(const CurveSamples &samples, const CurveKey &key, double topY, double bottomY);

    const CurveKey &key() const { return m_key; }
    const QVector<QPointF> &points() const { return m_points; }
    const QVector<SubPath> &subPaths() const { return m_subPaths; }
    QRectF bounds() const { return m_bounds; }
    bool isEmpty() const { return m_points.isEmpty(); }
    DepthOrder order() const { return m_order; }

    /// The points that are needed for what shows between \a topY and \a bottomY, some more on both sides: a slice for
    /// every sub-path that shows there. Costs what it gives plus a binary search.
    QVector<Slice> slices(double topY, double bottomY) const;
    /// The first point of the sub-path that a point belongs to.
    int subPathStart(int point) const;
    /// Top and bottom of the line that crosses a pixel position; both 0 when none does. Depths must be in order.
    std::pair<double, double> crossing(double y) const;
    /// A slice list as a path of moves and lines.
    QPainterPath path(const QVector<Slice> &slices) const;
    /// The whole curve: the shape of its item.
    QPainterPath path() const;

    /// Whether the curve comes into \a area, in the time of a binary search and what lies between its top and bottom:
    /// picking. Widen the area by what the pointer may miss.
    bool intersects(const QRectF &area) const;

    /// Whether a row has more than four samples, so that some were left out. Never where depths are not in order.
    bool hasDenseRows() const { return m_hasDenseRows; }

    /// How many curve paths the process has built so far: for tests of "hovering builds none".
    static int buildCount();

private:
    void append(const CurveSamples &samples, std::pair<int, int> range);
    void closeSubPath();
    void appendTo(QPainterPath &path, const Slice &slice) const;

    CurveKey m_key;
    QVector<QPointF> m_points;
    QVector<SubPath> m_subPaths;
    QRectF m_bounds;
    DepthOrder m_order = DepthOrder::Ascending;
    bool m_hasDenseRows = false;
    int m_open = 0; ///< first point of the sub-path that is being built
};

} // namespace logview
