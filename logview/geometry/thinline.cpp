#include "logview/geometry/thinpen.h"

#include <tuple>

namespace logview {

namespace {

/// Values between two, both excluded, each some way from the one before.
struct ValueWindow
{
    double low = 0;
    double high = 0;
    double leastStep = 0;
    double nullValue = 0; ///< is never in it

    /// The first of the values [from, end) that is not in the window, or one before it that is as good as not in it.
    template<class Value>
    int firstOutside(const Value *values, int from, int end) const
    {
        // In the precision of the values, rounded inwards; compared without branches, eight at a time.
        constexpr Value infinite = std::numeric_limits<Value>::infinity();
        const Value above = std::nextafter(static_cast<Value>(low), infinite);
        const Value below = std::nextafter(static_cast<Value>(high), -infinite);
        const auto step = static_cast<Value>(leastStep * 1.000001);
        const auto null = static_cast<Value>(nullValue);
        const auto isOutside = [=](Value value, Value before) {
            return (value > above ? 0 : 1) | (value < below ? 0 : 1) | (std::abs(value - before) >= step ? 0 : 1)
                | (value == null ? 1 : 0);
        };
        constexpr int block = 8;
        for (; from + block <= end; from += block) {
            int outside = 0;
            for (int k = from; k < from + block; ++k)
                outside |= isOutside(values[k], values[k - 1]);
            if (outside != 0)
                break;
        }
        while (from < end && isOutside(values[from], values[from - 1]) == 0)
            ++from;
        return from;
    }
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
        , m_value(key.scale)
    {
        // How far a sample may stand below the one before. Depths are placed in single precision.
        const DepthAxis &axis = key.axis;
        const bool isFeet = key.reference.unit == Feet;
        const double unit = isFeet ? feetPerMetre : 1;
        const double farthestDepth = static_cast<double>(std::max(std::abs(axis.start), std::abs(axis.end)))
            + unit * std::abs(key.reference.kbElevationM);
        constexpr double precision = 4e-7;
        const double perUnit =
            64 * static_cast<double>(axis.height) / (static_cast<double>(axis.end) - static_cast<double>(axis.start));
        const double rise = perUnit * (unit * samples.largestStepM() + precision * farthestDepth);
        constexpr double mostSteps = 8;
        if (samples.order() == DepthOrder::Ascending && rise < mostSteps)
            m_mostRise = static_cast<qint64>(rise) + 1;
    }

    void draw(std::pair<int, int> range)
    {
        for (int i = range.first; i < range.second; ++i) {
            QPointF position;
            const SamplePlacer::Place place = m_placer.place(m_samples, i, position);
            if (place == SamplePlacer::Drawn) {
                stroke(ThinPen::NoCap);
                const PenPoint point = pointOf(position);
                if (m_mostRise > 0 && m_count > 1 && passOver(i, range.second, point))
                    continue;
                m_from = m_to;
                m_to = point;
                m_fromPosition = m_toPosition;
                m_toPosition = position;
                ++m_count;
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
    PenPoint pointOf(const QPointF &position) const
    {
        const double y = position.y() - m_topY;
        return {painterSteps(position.x()), position.y() < m_deviceTop ? -painterSteps(-y) : painterSteps(y)};
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

    // Passes over samples from one on whose lines set no pixel, or only those that are set already, and leaves the pen
    // as it is behind the last of them.
    bool passOver(int &i, int end, const PenPoint &point)
    {
        const qint64 row = m_to.y >> 6;
        if (m_toPosition.y() < m_deviceTop || static_cast<double>(row + 2 + m_topY) > m_cutBottom)
            return false;
        const auto [left, right] = m_pen.silentAround(m_to.x);
        if (m_to.x < right && point.x >= left && point.x < right)
            return passSilent(i, end, point, left, right);
        return passSet(i, end, point);
    }

    // Lines that set no pixel.
    bool passSilent(int &i, int end, const PenPoint &point, qint64 left, qint64 right)
    {
        const qint64 middle = (m_to.y + 32) >> 6;
        if ((point.y + 32) >> 6 != middle)
            return false;
        const int stop = firstFrom(m_silentStop, i, end, point.y, middle * 64 + 32);
        int next = firstOutside(i + 1, stop, left, right, 0);
        if (next == end || isBreak(next))
            --next; // the end of a line is drawn
        if (next == i)
            return false;
        i = next - 1;
        standAt(i);
        return true;
    }

    // Lines between pixels that are set in their row. Such a line may set pixels of the rows beside, if it is short: of the
    // one above when those are set, too, and of the one below never, if it is as long as the zone asks for.
    bool passSet(int &i, int end, const PenPoint &point)
    {
        struct Zone
        {
            qint64 bottom; // excluded, in steps below the row's top
            qint64 leastLength; // of a line, for each step that it rises
        };
        constexpr Zone upper{46, 4};
        constexpr Zone lower{58, 16};
        const qint64 row = m_to.y >> 6;
        const bool isUpper = (m_to.y & 63) < upper.bottom;
        const qint64 bottom = row * 64 + (isUpper ? upper : lower).bottom;
        const qint64 least = (isUpper ? upper : lower).leastLength * m_mostRise;
        if (point.y >= bottom || std::abs(point.x - m_to.x) < least)
            return false;
        const auto [firstSet, lastSet] = m_pen.setIn(row);
        qint64 left = (firstSet + 1) * 64;
        qint64 right = lastSet * 64;
        if (isUpper) {
            const auto [firstAbove, lastAbove] = m_pen.setIn(row - 1);
            left = std::max(left, (firstAbove + 1) * 64);
            right = std::min(right, lastAbove * 64);
        }
        if (m_to.x < left || m_to.x >= right || point.x < left || point.x >= right || !m_pen.isBeside(m_to.x, row))
            return false;
        const int stop = firstFrom(m_setStop, i, end, point.y, bottom);
        const int next = firstOutside(i + 1, stop, left, right, least);
        if (next == i + 1)
            return false;
        goOn(i - 1, next - 1);
        i = next - 1;
        return true;
    }

    // Brings the pen from one sample to another, which stand in a row: from the last line that says all.
    void goOn(int first, int last)
    {
        qint64 x = xOf(last);
        int known = last;
        while (known > first) {
            const qint64 before = xOf(known - 1);
            if (std::abs(x - before) >= 16 * m_mostRise && ThinPen::isDrawn(before, x)) {
                m_pen.afterLevelLine(before, x, m_to.y >> 6);
                break;
            }
            --known;
            x = before;
        }
        if (known > first)
            standAt(known);
        while (known < last) {
            const PenPoint from = m_to;
            standAt(++known);
            m_pen.draw(from, m_to, ThinPen::NoCap);
        }
    }

    qint64 xOf(int i) const { return painterSteps(m_value.toPixel(m_samples.value(i))); }

    bool isBreak(int i) const
    {
        const double value = m_samples.value(i);
        return value == m_samples.nullValue() || std::isnan(m_value.toPixel(value));
    }

    void standAt(int i)
    {
        QPointF position;
        m_placer.place(m_samples, i, position);
        m_to = pointOf(position);
        m_toPosition = position;
        m_isDrawn = true;
    }

    // The first of the samples [from, end) that does not stand between two x, or hardly, or less than some steps beside
    // the one before.
    int firstOutside(int from, int end, qint64 left, qint64 right, qint64 leastSteps) const
    {
        ValueWindow window;
        std::tie(window.low, window.high) =
            m_value.valuesBetween(static_cast<double>(left) / 64, static_cast<double>(right) / 64);
        if (leastSteps > 0) // rounding may take one
            window.leastStep = m_value.leastStep(static_cast<double>(leastSteps + 1) / 64, window.low, window.high);
        window.nullValue = m_samples.nullValue();
        return m_samples.useValues([=](const auto *values) { return window.firstOutside(values, from, end); });
    }

    /// A sample that was looked for: the first at a y or below it.
    struct Stop
    {
        qint64 y = std::numeric_limits<qint64>::min();
        int sample = 0;
    };
    // The first sample behind one, whose y is given, that stands at another y or below it; or the end.
    int firstFrom(Stop &stop, int i, int end, qint64 y, qint64 stopY)
    {
        if (stop.y == stopY)
            return stop.sample;
        const auto isAbove = [&](int sample) { return painterSteps(m_placer.y(m_samples, sample) - m_topY) < stopY; };
        // Samples stand at even distances in most logs.
        const double ahead = static_cast<double>(stopY - y) * m_perStep;
        int first = i; // above
        int last = end; // not
        int guess = static_cast<int>(std::min(i + ahead, static_cast<double>(end - 1)));
        for (int step = 1; guess > first && guess < last; step *= 2) {
            const bool isLow = isAbove(guess);
            (isLow ? first : last) = guess;
            guess += isLow ? step : -step;
        }
        while (first + 1 < last) {
            const int half = first + (last - first) / 2;
            (isAbove(half) ? first : last) = half;
        }
        m_perStep = static_cast<double>(last - i) / static_cast<double>(stopY - y);
        stop = {stopY, last};
        return last;
    }

    const CurveSamples &m_samples;
    SamplePlacer m_placer;
    int m_topY;
    double m_deviceTop;
    double m_cutTop; // what lies above or below is cut off
    double m_cutBottom;
    ThinPen m_pen;
    ValuePlacer m_value;
    double m_perStep = 0; // samples, where they were looked for last
    Stop m_silentStop;
    Stop m_setStop;
    qint64 m_mostRise = 0; // steps that a sample stands below the one before; 0 where nothing may be passed over
    PenPoint m_from;
    PenPoint m_to;
    QPointF m_fromPosition; // the same in the track
    QPointF m_toPosition;
    int m_count = 0; // points of the line so far; the last two are m_from and m_to
    bool m_isDrawn = false; // the line between these
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
