#include "logview/geometry/linepixels.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace logview {

namespace {

constexpr qint64 nowhere = std::numeric_limits<qint64>::min();

// The painter counts in 64ths of a pixel.
qint64 steps(double pixels)
{
    const double exact = pixels * 64;
    const auto whole = static_cast<qint64>(exact);
    return whole - (exact < static_cast<double>(whole) ? 1 : 0);
}

/// A point in the painter's steps.
struct Point
{
    qint64 x = 0;
    qint64 y = 0;
};

/// The painter's line of one pixel. It fills the gaps between lines and leaves out pixels that two of them have, by
/// what it remembers of the line before.
class ThinPen
{
public:
    enum Cap { NoCap = 0, CapBegin = 1, CapEnd = 2 };

    explicit ThinPen(PixelRows &pixels)
        : m_pixels(pixels)
        , m_set(static_cast<size_t>(pixels.rows()), {0, -1})
    {
    }

    void lift() { m_lastX = nowhere; }
    /// The pixels of a row that are known to be set, from first to last; none when first is behind last.
    std::pair<qint64, qint64> setIn(qint64 row) const
    {
        return row >= 0 && row < m_pixels.rows() ? m_set[static_cast<size_t>(row)] : std::pair<qint64, qint64>(0, -1);
    }
    /// As after a line within a row, longer than a pixel, that is level but for a little.
    void afterLevelLine(qint64 fromX, qint64 toX, qint64 row)
    {
        const qint64 end = (toX + 32) >> 6;
        m_lastX = toX > fromX ? end - 1 : end;
        m_lastY = row;
        m_lastDirection = toX > fromX ? Along : -Along;
        m_isLastAligned = true;
    }
    void draw(const Point &from, const Point &to, int caps)
    {
        const qint64 dx = std::abs(to.x - from.x);
        const qint64 dy = std::abs(to.y - from.y);
        if (dx < dy)
            draw<true>(from.y, from.x, to.y, to.x, caps);
        else if (dx > 0)
            draw<false>(from.x, from.y, to.x, to.y, caps);
    }

private:
    enum Direction { None = 0, Along = 1, Down = 2 }; // the negative ones for the other way

    // A pixel for each step along one axis, u; v is the other one, a 1/1024 of a step fine.
    template<bool isSteep>
    void draw(qint64 u1, qint64 v1, qint64 u2, qint64 v2, int caps)
    {
        const bool isSwapped = u1 > u2;
        int direction = isSteep ? Down : Along;
        if (isSwapped) {
            std::swap(u1, u2);
            std::swap(v1, v2);
            caps = (caps & CapBegin) << 1 | (caps & CapEnd) >> 1;
            direction = -direction;
        }
        const qint64 length = u2 - u1;
        if (m_lastDirection == -direction)
            caps |= isSwapped ? CapEnd : CapBegin;
        if (caps & CapBegin)
            u1 -= 32;
        if (caps & CapEnd)
            u2 += 32;
        qint64 u = (u1 + 32) >> 6;
        qint64 end = (u2 + 32) >> 6;
        qint64 &lastU = isSteep ? m_lastY : m_lastX;
        qint64 &lastV = isSteep ? m_lastX : m_lastY;
        const bool isFollowing = m_lastX != nowhere;
        if ((caps & CapBegin) && isFollowing && lastU == u + 1)
            ++u;
        if (u == end)
            return;
        const qint64 slope = slopeOf(v2 - v1, length);
        qint64 v = v1 * 1024 - (caps & CapBegin ? slope >> 1 : 0);
        v += (u * 64 + (slope > 0 ? 32 : 0) - u1) * slope >> 6;

        qint64 firstU = u;
        qint64 firstV = v >> 16;
        qint64 finalU = end - 1;
        qint64 finalV = (v + (end - u - 1) * slope) >> 16;
        if (isSwapped) {
            std::swap(firstU, finalU);
            std::swap(firstV, finalV);
        }
        const bool isAligned = std::abs(slope) < 1 << 14;
        if (isFollowing) {
            const qint64 gapU = std::abs(lastU - firstU);
            const qint64 gapV = std::abs(lastV - firstV);
            if (gapU == 0 && gapV == 0) {
                // Both lines have the pixel.
                if (isSwapped) {
                    --end;
                } else {
                    ++u;
                    v += slope;
                }
            } else if (m_lastDirection != direction
                       && ((isAligned && m_isLastAligned && gapU != 0 && gapV != 0) || gapU > 1 || gapV > 1)) {
                // A pixel is missing between them.
                if (isSwapped) {
                    ++end;
                } else {
                    --u;
                    v -= slope;
                }
            } else if (m_lastDirection == direction && lagsBehind<isSteep>(gapU, gapV)) {
                v += slope >> 1;
                finalV = (isSwapped ? v : v + (end - u - 1) * slope) >> 16;
            }
        }
        m_lastDirection = direction;
        m_isLastAligned = isAligned;
        lastU = finalU;
        lastV = finalV;
        fill<isSteep>(u, std::max(end, u + 1), v, slope);
    }

    static qint64 slopeOf(qint64 dv, qint64 du)
    {
        if (dv == 0)
            return 0;
        if (std::abs(dv) <= 0x7fff && du <= 0x7fff)
            return static_cast<int>(dv) * (1 << 16) / static_cast<int>(du);
        return dv * (1 << 16) / du;
    }

    template<bool isSteep>
    static bool lagsBehind(qint64 gapU, qint64 gapV)
    {
        return isSteep ? gapV <= 1 && gapU > 1 : gapU <= 1 && gapV > 1;
    }

    template<bool isSteep>
    void fill(qint64 u, qint64 end, qint64 v, qint64 slope)
    {
        if (isSteep) {
            const qint64 hidden = std::max<qint64>(-u, 0);
            end = std::min<qint64>(end, m_pixels.rows());
            v += hidden * slope;
            for (u += hidden; u < end; ++u, v += slope)
                m_pixels.set(u, v >> 16, v >> 16);
            return;
        }
        while (u < end) {
            const qint64 row = v >> 16;
            const qint64 first = u;
            if ((v + (end - u - 1) * slope) >> 16 == row)
                u = end;
            for (; u < end && v >> 16 == row; ++u)
                v += slope;
            m_pixels.set(row, first, u - 1);
            if (row >= 0 && row < m_pixels.rows())
                extend(m_set[static_cast<size_t>(row)], first, u - 1);
        }
    }

    static void extend(std::pair<qint64, qint64> &set, qint64 first, qint64 last)
    {
        if (first <= set.second + 1 && last >= set.first - 1)
            set = {std::min(set.first, first), std::max(set.second, last)};
        else if (last - first > set.second - set.first)
            set = {first, last};
    }

    PixelRows &m_pixels;
    std::vector<std::pair<qint64, qint64>> m_set; // of each row, what setIn() gives
    qint64 m_lastX = nowhere; // last pixel of the line before
    qint64 m_lastY = 0;
    int m_lastDirection = None;
    bool m_isLastAligned = false;
};

/// Draws the line of the samples with a thin pen.
class ThinLine
{
public:
    ThinLine(PixelRows &pixels, const CurveSamples &samples, const CurveKey &key, int topY, const ShownRows &device)
        : m_samples(samples)
        , m_placer(key)
        , m_topY(topY)
        , m_deviceTop(device.top)
        , m_cutTop(device.top - 1)
        , m_cutBottom(device.bottom + 2)
        , m_pen(pixels)
        , m_scale(key.scale)
    {
        // How far a sample may stand below the one before. Depths are placed in single precision.
        const DepthAxis &axis = key.axis;
        const double stepM = samples.largestStepM() * (key.reference.unit == Feet ? feetPerMetre : 1);
        const double roundingError = 1e-6 * static_cast<double>(std::max(std::abs(axis.start), std::abs(axis.end)));
        const double farthest = 64 * static_cast<double>(axis.height) * (stepM + roundingError)
                / (static_cast<double>(axis.end) - static_cast<double>(axis.start))
            + 1;
        constexpr double mostSteps = 8;
        if (samples.order() != DepthOrder::Unsorted && !key.scale.isLogarithmic && farthest <= mostSteps)
            m_margin = static_cast<qint64>(std::ceil(2 * farthest)) + 1; // and its line rises or sinks twice as far
    }

    void draw(std::pair<int, int> range)
    {
        for (int i = range.first; i < range.second; ++i) {
            QPointF position;
            const SamplePlacer::Place place = m_placer.place(m_samples, i, position);
            if (place == SamplePlacer::Drawn) {
                stroke(ThinPen::NoCap);
                m_from = m_to;
                m_to = pointOf(position);
                m_fromPosition = m_toPosition;
                m_toPosition = position;
                ++m_count;
                if (m_margin > 0 && m_count > 2)
                    i = skipped(i, range.second);
            } else if (place == SamplePlacer::Break) {
                stroke(ThinPen::CapEnd);
                m_pen.lift();
                m_count = 0;
            }
        }
        stroke(ThinPen::CapEnd);
    }

private:
    // Of the line that was met last: only the next sample tells how it ends.
    void stroke(int end)
    {
        const int caps = (m_count == 2 ? ThinPen::CapBegin : ThinPen::NoCap) | end;
        if (m_count > 1 && !m_isDrawn && isInside(m_fromPosition) && isInside(m_toPosition))
            m_pen.draw(m_from, m_to, caps);
        else if (m_count > 1 && !m_isDrawn)
            strokeCut(m_fromPosition, m_toPosition, caps);
        m_isDrawn = false;
    }

    // In the row above its device the painter rounds down, elsewhere up.
    Point pointOf(const QPointF &position) const
    {
        const double y = position.y() - m_topY;
        return {steps(position.x()), position.y() < m_deviceTop ? -steps(-y) : steps(y)};
    }
    bool isInside(const QPointF &position) const { return position.y() >= m_cutTop && position.y() <= m_cutBottom; }
    // Of a line with an end off the device, what is on it. A line that is cut joins no other there.
    void strokeCut(QPointF from, QPointF to, int caps)
    {
        if (std::max(from.y(), to.y()) <= m_cutTop || std::min(from.y(), to.y()) >= m_cutBottom) {
            m_pen.lift();
            return;
        }
        if (!isInside(from)) {
            const double y = std::clamp(from.y(), m_cutTop, m_cutBottom);
            from = {from.x() + (to.x() - from.x()) / (to.y() - from.y()) * (y - from.y()), y};
        }
        if (!isInside(to)) {
            m_pen.lift();
            const double y = std::clamp(to.y(), m_cutTop, m_cutBottom);
            to = {to.x() + (to.x() - from.x()) / (to.y() - from.y()) * (y - to.y()), y};
        }
        m_pen.draw(pointOf(from), pointOf(to), caps);
    }

    // Where a row has very many samples, most of their lines set pixels that are set already. A line that is longer
    // than a pixel, hardly sinks, and lies between two set pixels of the row, some pixels off both and off the rows
    // beside, is such a one: it needs no drawing, and what the pen remembers of it follows from its ends. Gives the
    // last sample whose lines were passed over; there the pen goes on.
    int skipped(int i, int end)
    {
        const qint64 row = m_to.y >> 6;
        if ((m_to.y & 63) < m_margin || (m_to.y & 63) > 63 - m_margin)
            return i;
        if (row != m_row) {
            m_row = row;
            m_rowEnd = lastWithin(i, end, row);
        }
        constexpr int fewest = 4; // samples for which it is worth while
        if (m_rowEnd - i < fewest)
            return i;
        const auto [firstSet, lastSet] = m_pen.setIn(row);
        constexpr double reach = 2; // pixels that a line may have beyond its ends
        const double left = static_cast<double>(firstSet) + reach;
        const double right = static_cast<double>(lastSet) - reach;
        const double low = static_cast<double>(m_scale.minimum);
        const double perUnit = static_cast<double>(m_scale.width) / (static_cast<double>(m_scale.maximum) - low);
        const double *values = m_samples.values();
        constexpr double longer = 1.05; // than a pixel
        double before = static_cast<double>(m_to.x) / 64;
        if (!(before > left && before < right))
            return i;
        int next = i + 1;
        for (; next <= m_rowEnd; ++next) {
            const double value = values[next];
            const double x = (value - low) * perUnit;
            if (!(x > left && x < right) || std::abs(x - before) < longer || value == m_samples.nullValue())
                break;
            before = x;
        }
        const int last = next - 1;
        if (last <= i)
            return i;
        stroke(ThinPen::NoCap);
        QPointF from;
        QPointF to;
        m_placer.place(m_samples, last - 1, from);
        m_placer.place(m_samples, last, to);
        m_from = pointOf(from);
        m_to = pointOf(to);
        m_fromPosition = from;
        m_toPosition = to;
        m_pen.afterLevelLine(m_from.x, m_to.x, row);
        m_isDrawn = true;
        return last;
    }

    // The last sample that stands in a row, off the rows beside.
    int lastWithin(int i, int end, qint64 row) const
    {
        const auto isWithin = [&](int sample) {
            const qint64 y = steps(m_placer.y(m_samples, sample) - m_topY) - row * 64;
            return y >= m_margin && y <= 63 - m_margin;
        };
        int step = 1;
        while (i + step < end && isWithin(i + step))
            step *= 2;
        int first = i + step / 2; // within, or the one that was asked for
        int last = std::min(i + step, end);
        while (first + 1 < last) {
            const int middle = first + (last - first) / 2;
            (isWithin(middle) ? first : last) = middle;
        }
        return first;
    }

    const CurveSamples &m_samples;
    SamplePlacer m_placer;
    int m_topY;
    double m_deviceTop;
    double m_cutTop; // what lies above or below is cut off
    double m_cutBottom;
    ThinPen m_pen;
    ValueScale m_scale;
    qint64 m_margin = 0; // steps from the rows beside; 0 where nothing may be passed over
    Point m_from;
    Point m_to;
    QPointF m_fromPosition; // the same in the track
    QPointF m_toPosition;
    int m_count = 0; // points of the line so far; the last two are m_from and m_to
    bool m_isDrawn = false; // the line between these
    qint64 m_row = -1; // the last row that was looked at
    int m_rowEnd = 0;
};

} // namespace

void drawThinLine(PixelRows &pixels, const CurveSamples &samples, const CurveKey &key, const ShownRows &rows,
                  int topY, const ShownRows &device)
{
    const std::pair<int, int> range = SamplePlacer(key).range(samples, rows);
    countReadSamples(range);
    ThinLine(pixels, samples, key, topY, device).draw(range);
}

} // namespace logview
