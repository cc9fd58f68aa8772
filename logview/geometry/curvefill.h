#pragma once

#include "logview/geometry/sampleplacer.h"

#include <QColor>
#include <QPolygonF>
#include <QVector>

QT_BEGIN_NAMESPACE
class QPainter;
QT_END_NAMESPACE

namespace logview {

/// Which side of the curve is filled: up to a limit on its left, or on its right.
enum class FillSide { Left, Right };
enum class FillLimit { LeftBoundary, RightBoundary, Curve };

/// What a curve line's "up to" text asks for.
struct FillTarget
{
    bool isOn = false; ///< not for "None", and not for what names nothing
    FillLimit limit = FillLimit::LeftBoundary;
    int curveNumber = 0; ///< k of "Curve_k", from 1, among all curve lines of the track
};
/// Reads "None", "Left Boundary", "Right Boundary" and "Curve_" with a number from 1 to \a curveLineCount; anything
/// else is off.
FillTarget fillTarget(const QString &upTo, int curveLineCount);

/// What to fill. Caches compare it together with the curve's key.
struct FillSettings
{
    FillSide side = FillSide::Left;
    FillLimit limit = FillLimit::LeftBoundary;
    CurveSamples other; ///< the limit's samples, for FillLimit::Curve
    ValueScale otherScale;
    QVector<QRgb> barColors; ///< of the colour bar; empty fills with the solid colour
};
bool operator==(const FillSettings &a, const FillSettings &b);
inline bool operator!=(const FillSettings &a, const FillSettings &b)
{
    return !(a == b);
}

/// The fill of a curve up to its limit, reduced to what the rows of pixels show: filled without antialiasing it is
/// the same picture as the fill of every sample.
class CurveFill
{
public:
    /// A point of the curve with the limit at the same depth.
    struct Edge
    {
        double y = 0;
        double x = 0;
        double limitX = 0;
    };
    /// Edges [first, first + count) that are filled with one colour.
    struct Run
    {
        int first = 0;
        int count = 0;
        int color = -1; ///< index of the bar's colour; -1 for the solid colour
        double top = 0;
        double bottom = 0;
    };

    CurveFill() = default;
    /// Of some rows.
    CurveFill(const CurveSamples &samples, const CurveKey &key, const FillSettings &settings,
              const ShownRows &rows = {});

    /// Makes the fill that of these, and of these rows at least; false, at no cost, when it already is.
    bool update(const CurveSamples &samples, const CurveKey &key, const FillSettings &settings,
                const ShownRows &rows = {});

    /// Paints what shows of these between two rows. What is made for that is kept, but for a strip as of a view that
    /// scrolls: there what was made for the whole view stays.
    void show(QPainter &painter, const CurveSamples &samples, const CurveKey &key, const FillSettings &settings,
              const QColor &solid, const ShownRows &rows);

    bool isEmpty() const { return m_runs.isEmpty(); }
    const QVector<Edge> &edges() const { return m_edges; }
    const QVector<Run> &runs() const { return m_runs; }
    /// The closed polygon of a run: down the curve and back along the limit.
    QPolygonF polygon(const Run &run) const;
    QColor color(const Run &run, const QColor &solid) const;

    /// Fills what shows between \a topY and \a bottomY (track coordinates), without antialiasing and without outline.
    /// Changing the solid colour builds nothing. On paper each run reaches under the one that is painted next: whoever
    /// shows the file smooths the edges of fills, and the paper would shine through between two that only meet.
    void paint(QPainter &painter, const QColor &solid, double topY, double bottomY) const;

private:
    class Builder;

    QVector<Edge> lapUnderNext(const Run &run) const;
    QPolygonF visiblePolygon(const Run &run, double topY, double bottomY, bool isLapped) const;

    CurveKey m_key;
    FillSettings m_settings;
    ShownRows m_rows;
    QVector<Edge> m_edges;
    QVector<Run> m_runs;
    DepthOrder m_order = DepthOrder::Ascending;
    bool m_isBuilt = false;
};

} // namespace logview
