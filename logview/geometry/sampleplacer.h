#pragma once

#include "logview/geometry/curvesamples.h"
#include "logview/geometry/depthaxis.h"
#include "logview/geometry/valuescale.h"

#include <QPointF>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

QT_BEGIN_NAMESPACE
class QPainter;
QT_END_NAMESPACE

namespace logview {

/// Everything the geometry of a curve depends on. Caches hold it and are valid as long as it compares equal.
struct CurveKey
{
    DepthAxis axis;
    DepthReference reference;
    ValueScale scale;
    quint64 revision = 0; ///< of the samples
};
CurveKey curveKey(const CurveSamples &samples, const DepthAxis &axis, const DepthReference &reference,
                  const ValueScale &scale);
bool operator==(const CurveKey &a, const CurveKey &b);
inline bool operator!=(const CurveKey &a, const CurveKey &b)
{
    return !(a == b);
}

/// The part of a track that a paint shows, in pixels of the display; all of it unless said otherwise.
struct ShownRows
{
    double top = -std::numeric_limits<double>::infinity();
    double bottom = std::numeric_limits<double>::infinity();
    /// Rows of the device in one pixel of the display: 1 on the screen, a printer's resolution / 96 on paper.
    double perPixel = 1;

    /// From a row's top to a row's bottom.
    ShownRows wholeRows() const;
};
/// How many rows of the painter's device a pixel of the display takes; at least 1.
double rowsPerPixel(const QPainter &painter);

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
        const float depth = m_key.reference.toDisplay(samples.depthM(i));
        if (!m_isDrawable || !(depth >= m_key.axis.start) || !(depth <= m_key.axis.end))
            return Skipped;
        const double value = samples.value(i);
        if (value == nullSampleValue)
            return Break;
        const double x = m_value.toPixel(value);
        if (std::isnan(x))
            return Break;
        // A depth of the range is in the track; rounding must not put one at its end below it.
        point = QPointF(x, clampedY(depth));
        return Drawn;
    }
    /// y of a sample that is Drawn or breaks the line.
    double y(const CurveSamples &samples, int i) const
    {
        return clampedY(m_key.reference.toDisplay(samples.depthM(i)));
    }
    /// How far below a row some samples stand which it draws, in 64ths of a pixel, rounded down; none stands above.
    void toSteps(const CurveSamples &samples, int first, int count, int row, int *steps) const;
    /// x of a value; NaN where the line breaks.
    double x(double value) const { return m_value.toPixel(value); }
    /// Whether x grows, or falls, with the value.
    bool isLinear() const { return !m_key.scale.isLogarithmic; }
    double width() const { return static_cast<double>(m_key.scale.width); }
    /// The samples that may be Drawn: [first, second). By binary search for depths in order, else all.
    std::pair<int, int> range(const CurveSamples &samples) const;
    /// Of these, the samples between two pixel positions and one more on both sides; all of them where depths are not
    /// in order.
    std::pair<int, int> range(const CurveSamples &samples, const ShownRows &rows) const;

private:
    int likelyAt(const CurveSamples &samples, double y) const;
    double clampedY(float depth) const
    {
        const double y = yOf(depth);
        const double above = y < m_height ? y : m_height;
        return above > 0 ? above : 0;
    }
    double yOf(float depth) const { return (static_cast<double>(depth) - m_start) * m_height / m_extent; }

    CurveKey m_key;
    double m_start = 0;
    double m_extent = 1;
    double m_height = 0;
    bool m_isDrawable = false;
    ValuePlacer m_value;
};

/// How many samples the process has read so far for drawing and picking: for tests that only what shows costs.
qint64 readSampleCount();
void countReadSamples(std::pair<int, int> range);

} // namespace logview
