#pragma once

#include "logview/geometry/sampleplacer.h"
#include "logview/geometry/strokerows.h"

#include <QMap>

QT_BEGIN_NAMESPACE
class QPainter;
class QPen;
QT_END_NAMESPACE

namespace logview {

/// The line of one curve as it is painted: what a curve item keeps. A paint reads the samples of the rows that it
/// shows; what it keeps of them is thrown away when the key changes.
class CurveLine
{
public:
    /// Makes the line that of the samples under the key. Costs nothing but a comparison.
    void update(const CurveSamples &samples, const CurveKey &key);

    /// Paints what shows between \a topY and \a bottomY (track coordinates), or some rows more.
    ///
    /// On a raster device without antialiasing, with a transformation that only moves and enlarges, a solid round-capped
    /// pen gives the picture of a painter path of every sample: with 1 pixel of the device the same one, wider almost the
    /// same. Where the transformation moves by a part of a pixel it is moved by whole ones. Everywhere else the reduced
    /// path is stroked. Dashes stand at the same places whatever part is painted and wherever the view has been scrolled
    /// to.
    void paint(QPainter &painter, const QPen &pen, double topY, double bottomY) const;

private:
    void paintRows(QPainter &painter, const QPen &pen, int topRow, int bottomRow) const;
    void strokePath(QPainter &painter, const QPen &pen, double topY, double bottomY) const;
    double lengthBefore(int sample, double perPixel) const;

    CurveSamples m_samples;
    CurveKey m_key;
    mutable StrokeRows m_rows; ///< of the last pen width
    mutable QMap<int, double> m_lengths; ///< for dashes: of the line up to some samples, each the last of its row
    mutable double m_lengthsPerPixel = 0; ///< rows they are for
};

} // namespace logview
