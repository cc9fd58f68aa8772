#pragma once

#include "logview/geometry/curvepath.h"
#include "logview/geometry/strokerows.h"

#include <QRect>

QT_BEGIN_NAMESPACE
class QPainter;
class QPen;
QT_END_NAMESPACE

namespace logview {

/// The line of one curve, ready to be painted: what a curve item keeps. Built again only when its key changes;
/// colour, style, scrolling and hovering build nothing, a new pen width only the rows of pixels that it covers.
class CurveLine
{
public:
    /// Makes the line that of the samples under the key. False, at no cost, when it already is.
    bool update(const CurveSamples &samples, const CurveKey &key);
    void clear();

    const CurvePath &path() const { return m_path; }
    const CurveSamples &samples() const { return m_samples; }

    /// Paints what shows between \a topY and \a bottomY (track coordinates), or some rows more.
    ///
    /// On a raster device without antialiasing, with a transformation that only moves and by whole pixels, a solid
    /// round-capped pen of whole width gives the picture of a painter path of every sample: with 1 pixel the same
    /// one, wider almost the same. Everywhere else the reduced path is stroked. Dashes stand at the same places
    /// whatever part is painted and wherever the view has been scrolled to.
    void paint(QPainter &painter, const QPen &pen, double topY, double bottomY) const;

    /// The whole curve as a path, for QGraphicsItem::shape(); made at every call. For picking path().intersects() is
    /// quicker.
    QPainterPath shape() const { return m_path.path(); }

private:
    void paintRows(QPainter &painter, const QPen &pen, int topRow, int bottomRow) const;
    bool strokeSamples(QPainter &painter, const QPen &pen, int topRow, int bottomRow) const;
    void strokePath(QPainter &painter, const QPen &pen, double topY, double bottomY) const;
    QPainterPath dashes(const QPen &pen, const QVector<CurvePath::Slice> &slices, double topY, double bottomY) const;
    double lengthBefore(int point) const;

    CurveSamples m_samples;
    CurvePath m_path;
    mutable StrokeRows m_rows; ///< of the last pen width
    mutable QVector<QRect> m_rectangles; ///< of the last paint: its memory is used again
    mutable QVector<double> m_lengths; ///< of the line before every 64th point, from the start of its sub-path
};

} // namespace logview
