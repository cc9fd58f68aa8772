#include "base/vectorregisters.h"
#include "logview/geometry/samplelines.h"

#include <utility>

namespace logview {

namespace {

/// Draws the line of samples in order with a thin pen, piece by piece between its breaks. Lines that leave the device are cut.
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
        , m_uncut(m_placer.range(samples, {device.top, device.bottom - 1}))
        , m_pen(pixels)
        , m_lines(pixels, m_pen, samples, key, topY)
    {
        const auto isUncut = [&](int i) {
            const double y = m_placer.y(samples, i);
            return y >= device.top && y <= device.bottom - 1;
        };
        while (m_uncut.first < m_uncut.second && !isUncut(m_uncut.first))
            ++m_uncut.first;
        while (m_uncut.first < m_uncut.second && !isUncut(m_uncut.second - 1))
            --m_uncut.second;
    }

    void draw(std::pair<int, int> range)
    {
        for (int first = range.first; first < range.second; ++first) {
            const int end = m_lines.firstBreak(first, range.second);
            drawPiece(first, end);
            m_pen.lift();
            first = end;
        }
    }

private:
    // Its first and its last line have caps. As a path leaves out points that are where the one before is, these are not always
    // the lines between the first and the last two samples.
    void drawPiece(int first, int end)
    {
        int last = end - 1;
        while (first < last && positionOf(first) == positionOf(first + 1))
            ++first;
        while (first < last && positionOf(last) == positionOf(last - 1))
            --last;
        for (int i = first; i < last; ++i) {
            const int together = std::min(m_uncut.second, last) - 1;
            if (i > first && i >= m_uncut.first && i < together) {
                m_lines.draw(i, together);
                i = together;
            }
            stroke(positionOf(i), positionOf(i + 1),
                   (i == first ? ThinPen::CapBegin : ThinPen::NoCap)
                       | (i + 1 == last ? ThinPen::CapEnd : ThinPen::NoCap));
        }
    }

    QPointF positionOf(int i) const { return {m_placer.x(m_samples.value(i)), m_placer.y(m_samples, i)}; }
    bool isInside(const QPointF &position) const { return position.y() >= m_cutTop && position.y() <= m_cutBottom; }
    // In the row above its device the painter rounds down, elsewhere up.
    qint64 stepsOf(double y) const
    {
        const double below = y - m_topY;
        return y < m_deviceTop ? -painterSteps(-below) : painterSteps(below);
    }
    // The end of a line, cut where it is off the device.
    QPointF cut(const QPointF &end, const QPointF &other) const
    {
        const double y = std::clamp(end.y(), m_cutTop, m_cutBottom);
        return {end.x() + (other.x() - end.x()) / (other.y() - end.y()) * (y - end.y()), y};
    }
    // A line that is cut joins no other there.
    void stroke(QPointF from, QPointF to, int caps)
    {
        if (from == to)
            return; // a path leaves it out
        if (std::max(from.y(), to.y()) < m_cutTop || std::min(from.y(), to.y()) > m_cutBottom)
            return;
        if (!isInside(from))
            from = cut(from, to);
        if (!isInside(to)) {
            m_pen.lift();
            to = cut(to, from);
        }
        m_pen.draw(painterSteps(from.x()), stepsOf(from.y()), painterSteps(to.x()), stepsOf(to.y()), caps);
    }

    const CurveSamples &m_samples;
    SamplePlacer m_placer;
    int m_topY;
    double m_deviceTop;
    double m_cutTop; // what lies above or below is cut off
    double m_cutBottom;
    std::pair<int, int> m_uncut; // samples on the device, with all that lines between them may set
    ThinPen m_pen;
    SampleLines m_lines;
};

} // namespace

void drawThinLine(PixelRows &pixels, const CurveSamples &samples, const CurveKey &key, const ShownRows &rows,
                  int topY, const ShownRows &device)
{
    base::freeVectorRegisters();
    // Of what is cut off the device some samples tell that the line comes from there.
    constexpr int spare = 2;
    const SamplePlacer placer(key);
    const auto [first, end] = placer.range(samples, rows);
    const auto [shownFirst, shownEnd] = placer.range(samples, {device.top - 1, device.bottom + 2});
    const std::pair<int, int> range(std::max(first, shownFirst - spare), std::min(end, shownEnd + spare));
    countReadSamples(range);
    ThinLine(pixels, samples, key, topY, device).draw(range);
}

} // namespace logview
