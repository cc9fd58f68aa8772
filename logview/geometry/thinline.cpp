#include "base/vectorregisters.h"
#include "logview/geometry/samplelines.h"
#include "logview/geometry/valuescan.h"

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
        , m_pen(pixels)
        , m_lines(pixels, m_pen, samples, key, topY)
    {
    }

    void draw(std::pair<int, int> range)
    {
        const std::pair<int, int> uncut = uncutRange(range);
        int end = range.first; // of the samples that do not break the line
        for (int i = range.first; i < range.second; ++i) {
            QPointF position;
            const SamplePlacer::Place place = m_placer.place(m_samples, i, position);
            if (place == SamplePlacer::Drawn) {
                if (m_count > 0 && position == m_toPosition)
                    continue; // as a path leaves it out: the end of a line is that before
                stroke(ThinPen::NoCap);
                if (m_count > 1 && i > uncut.first && i + 1 < uncut.second) {
                    end = i < end ? end : m_lines.firstBreak(i, range.second);
                    int last = std::min(end, uncut.second) - 2; // the end of a line is drawn by itself
                    while (last > i && positionOf(last) == positionOf(last + 1))
                        --last;
                    if (last > i) {
                        m_lines.draw(i - 1, last);
                        i = last;
                        goOn(positionOf(i - 1));
                        m_placer.place(m_samples, i, position);
                        m_isDrawn = true;
                    }
                }
                goOn(position);
            } else if (place == SamplePlacer::Break) {
                stroke(ThinPen::CapEnd);
                m_pen.lift();
                m_count = 0;
            }
        }
        stroke(ThinPen::CapEnd);
    }

private:
    void goOn(const QPointF &position)
    {
        m_from = m_to;
        m_to = pointOf(position);
        m_fromPosition = m_toPosition;
        m_toPosition = position;
        ++m_count;
    }
    QPointF positionOf(int i) const
    {
        QPointF position;
        m_placer.place(m_samples, i, position);
        return position;
    }
    // Of some samples those that stand on the device, with all that lines between them may set.
    std::pair<int, int> uncutRange(std::pair<int, int> range) const
    {
        if (m_samples.order() == DepthOrder::Unsorted)
            return {range.first, range.first};
        const bool isAscending = m_samples.order() == DepthOrder::Ascending;
        const auto first = [&](int from, double y, bool isIncluded) {
            return firstAround(from - 1, range.second, range.second, [&](int i) {
                const double at = m_placer.y(m_samples, i);
                return isAscending ? at < y || (isIncluded && at == y) : at > y || (isIncluded && at == y);
            });
        };
        const double lowest = m_cutBottom - 3;
        const int begin = first(range.first, isAscending ? m_deviceTop : lowest, false);
        return {begin, first(begin, isAscending ? lowest : m_deviceTop, true)};
    }

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

    const CurveSamples &m_samples;
    SamplePlacer m_placer;
    int m_topY;
    double m_deviceTop;
    double m_cutTop; // what lies above or below is cut off
    double m_cutBottom;
    ThinPen m_pen;
    SampleLines m_lines;
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
    base::freeVectorRegisters();
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
