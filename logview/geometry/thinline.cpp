#include "logview/geometry/thinpen.h"
#include "logview/geometry/valuescan.h"

#include <tuple>
#include <utility>

namespace logview {

namespace {

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
        , m_pixels(pixels)
        , m_pen(pixels)
        , m_value(key.scale)
    {
        // How far a sample may stand below the one before. Depths are placed in single precision.
        const DepthAxis &axis = key.axis;
        const bool isFeet = key.reference.unit == Feet;
        const double unit = isFeet ? feetPerMetre : 1;
        const double farthestDepth = samples.isEmpty() ? 0
                                                       : unit
                * (std::max(std::abs(samples.depthM(0)), std::abs(samples.depthM(samples.size() - 1)))
                   + std::abs(key.reference.kbElevationM));
        constexpr double precision = 4e-7;
        const double perUnit =
            64 * static_cast<double>(axis.height) / (static_cast<double>(axis.end) - static_cast<double>(axis.start));
        const double rise = perUnit * (unit * samples.largestStepM() + precision * farthestDepth);
        m_isClose = samples.order() == DepthOrder::Ascending && rise < 1;
    }

    void draw(std::pair<int, int> range)
    {
        for (int i = range.first; i < range.second; ++i) {
            QPointF position;
            const SamplePlacer::Place place = m_placer.place(m_samples, i, position);
            if (place == SamplePlacer::Drawn) {
                stroke(ThinPen::NoCap);
                const PenPoint point = pointOf(position);
                if (m_isClose && m_count > 1 && goAhead(i, range.second, point))
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

    // Goes on to a later sample in less time than line by line, where that can be done. The lines up to the one before
    // that sample are drawn then.
    bool goAhead(int &i, int end, const PenPoint &point)
    {
        if (m_toPosition.y() < m_deviceTop || static_cast<double>((m_to.y >> 6) + 2 + m_topY) > m_cutBottom)
            return false;
        return walkInRow(i, end, point) || passSilent(i, end, point);
    }

    // Lines that set no pixel, between the middles of two rows.
    bool passSilent(int &i, int end, const PenPoint &point)
    {
        const auto [left, right] = m_pen.silentAround(m_to.x);
        const qint64 middle = (m_to.y + 32) >> 6;
        if (m_to.x >= right || point.x < left || point.x >= right || (point.y + 32) >> 6 != middle)
            return false;
        const int stop = firstFrom(m_silentStop, i, end, point.y, middle * 64 + 32);
        int next = firstOutside(i + 1, stop, left, right, 0);
        if (next == end || isBreak(next))
            --next; // the end of a line is drawn
        if (next == i)
            return false;
        i = next - 1;
        m_toPosition = positionOf(i);
        m_to = pointOf(m_toPosition);
        m_isDrawn = true;
        return true;
    }

    static constexpr int worthWhile = 8; // samples, to be passed over

    /// Samples that stand in one half of a row, or in one of the painter's steps, so that their lines cross no middle of
    /// a row. Those of a length from edge on have all pixels in the row, with the ones that the pen may set before and
    /// behind them.
    struct Zone
    {
        qint64 row = 0;
        qint64 level = 0; ///< that length
        int begin = -1; ///< the first sample, where the one before is in the zone above
        int end = 0; ///< the sample behind the last one
        qint64 firstLevel = 0; ///< the same for the line from there
    };

    // The lines of a zone, of which hardly more than the x counts.
    bool walkInRow(int &i, int end, const PenPoint &point)
    {
        struct Part
        {
            qint64 end; // excluded, in steps below the row's top
            qint64 level; // of lines that rise a step
        };
        // Pixels before a line's ends are up to half a pixel off, those behind a whole one: on steeper lines these are
        // farther above and below. The middle of the row is between two parts.
        constexpr Part parts[] = {{3, 0}, {8, 32}, {32, 5}, {49, 5}, {61, 32}};
        constexpr double many = 32; // samples in a step
        constexpr int few = 4;
        const qint64 depth = m_to.y & 63;
        const Part *part =
            std::find_if(std::begin(parts), std::end(parts), [depth](const Part &each) { return depth < each.end; });
        Zone zone;
        zone.row = m_to.y >> 6;
        qint64 bottom = m_to.y + 1;
        const bool isDense = m_perStep > many;
        if (!isDense) {
            if (part == std::end(parts) || part->level == 0)
                return false;
            bottom = zone.row * 64 + part->end;
            zone.level = part->level;
        }
        if (point.y >= bottom)
            return false;
        zone.end = firstFrom(m_zoneEnd, i, end, point.y, bottom);
        if (zone.end < i + few)
            return false;
        const int first = i;
        std::optional<LevelPen> pen = m_pen.levelAt(m_to.x, zone.row);
        Step at = walk(zone, {i, m_to.x, point.x}, pen);
        while (at.sample + 1 == zone.end && !isDense && ++part != std::end(parts)) {
            const qint64 y = std::exchange(bottom, zone.row * 64 + part->end);
            zone.begin = zone.end;
            zone.end = firstFrom(m_zoneEnd, at.sample, end, y, bottom);
            zone.firstLevel = std::max(zone.level, part->level);
            zone.level = part->level;
            at = walk(zone, at, pen);
        }
        if (pen)
            m_pen.goOn(*pen, zone.row);
        i = at.sample;
        if (i == first)
            return false;
        m_fromPosition = positionOf(i - 1);
        m_from = pointOf(m_fromPosition);
        m_toPosition = positionOf(i);
        m_to = pointOf(m_toPosition);
        m_count += 2;
        return true;
    }

    /// Where a walk is: at the line to a sample, with the x of its ends.
    struct Step
    {
        int sample = 0;
        qint64 from = 0;
        qint64 to = 0;
    };

    // Draws the lines up to the last but one sample of a zone, or to the one before which the line breaks.
    Step walk(const Zone &zone, Step at, std::optional<LevelPen> &keptPen)
    {
        bool isLevel = keptPen.has_value();
        LevelPen pen = keptPen.value_or(LevelPen());
        int idle = worthWhile; // lines that set no new pixel; passing over is tried after some
        for (qint64 next = 0; at.sample + 1 < zone.end && placeX(at.sample + 1, next); ++at.sample) {
            const bool isWithin = at.sample > zone.begin;
            if (isLevel && isWithin && idle >= worthWhile) {
                const int last = passSet(pen, zone, at);
                idle = last < at.sample + worthWhile ? 0 : worthWhile - 2;
                if (last > at.sample) {
                    at.sample = last - 1;
                    placeX(at.sample, at.from);
                    placeX(last, at.to);
                    continue;
                }
            }
            const qint64 set = pen.last - pen.first;
            if (isLevel && (isWithin || std::abs(at.to - at.from) >= zone.firstLevel)
                && pen.draw(at.from, at.to, zone.level)) {
                idle = pen.last - pen.first == set ? idle + 1 : std::min(idle, worthWhile - 2);
            } else {
                if (isLevel)
                    m_pen.goOn(pen, zone.row);
                m_pen.draw({at.from, stepsOf(at.sample - 1)}, {at.to, stepsOf(at.sample)}, ThinPen::NoCap);
                const std::optional<LevelPen> other = m_pen.levelAt(at.to, zone.row);
                isLevel = other.has_value();
                pen = other.value_or(LevelPen());
            }
            at.from = at.to;
            at.to = next;
        }
        keptPen = isLevel ? std::optional(pen) : std::nullopt;
        return at;
    }

    // The last sample from one on up to which all lines lie between pixels that are set; the one before when there is
    // none. The pen is brought to the sample before it.
    int passSet(LevelPen &pen, const Zone &zone, const Step &at) const
    {
        const int i = at.sample;
        const auto [left, right] = pen.withinSet();
        if (std::min(at.from, at.to) < left || std::max(at.from, at.to) >= right
            || std::abs(at.to - at.from) < zone.level)
            return i - 1;
        const int last = firstOutside(i + 1, zone.end, left, right, zone.level) - 1;
        // From the last line on that leaves the pen as it is whatever was before.
        int known = last - 1;
        qint64 x = 0;
        placeX(known, x);
        for (; known >= i; --known) {
            qint64 before = 0;
            placeX(known - 1, before);
            if (pen.standBehind(before, x))
                break;
            x = before;
        }
        while (++known < last) {
            qint64 next = 0;
            placeX(known, next);
            pen.draw(x, next, 0);
            x = next;
        }
        return last;
    }

    qint64 stepsOf(int i) const { return painterSteps(m_placer.y(m_samples, i) - m_topY); }
    QPointF positionOf(int i) const
    {
        QPointF position;
        m_placer.place(m_samples, i, position);
        return position;
    }

    bool placeX(int i, qint64 &x) const
    {
        const double value = m_samples.value(i);
        const double position = m_value.toPixel(value);
        x = static_cast<qint64>(position * 64);
        return value != m_samples.nullValue() && !std::isnan(position);
    }

    bool isBreak(int i) const
    {
        const double value = m_samples.value(i);
        return value == m_samples.nullValue() || std::isnan(m_value.toPixel(value));
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
        const int guess = static_cast<int>(std::min(i + ahead, static_cast<double>(end)));
        const int last = firstAround(i, guess, end, isAbove);
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
    const PixelRows &m_pixels;
    ThinPen m_pen;
    ValuePlacer m_value;
    double m_perStep = 0; // samples, where they were looked for last
    Stop m_silentStop;
    Stop m_zoneEnd;
    // Whether samples stand no more than a step of the painter below the one before. Where a row has fewer, drawing each
    // line takes no longer.
    bool m_isClose = false;
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
    const SamplePlacer placer(key);
    std::pair<int, int> range = placer.range(samples, rows);
    if (samples.order() != DepthOrder::Unsorted) {
        // Of what is cut off the device some samples tell that the line comes from there.
        constexpr int spare = 2;
        const std::pair<int, int> shown = placer.range(samples, {device.top - 1, device.bottom + 2});
        range = {std::max(range.first, shown.first - spare), std::min(range.second, shown.second + spare)};
    }
    countReadSamples(range);
    ThinLine(pixels, samples, key, topY, device).draw(range);
}

} // namespace logview
