#include "logview/geometry/samplelines.h"

namespace logview {

SampleLines::SampleLines(PixelRows &pixels, ThinPen &pen, const CurveSamples &samples, const CurveKey &key, int topY)
    : m_samples(samples)
    , m_placer(key)
    , m_value(key.scale)
    , m_topY(topY)
    , m_pixels(pixels)
    , m_pen(pen)
{
}

void SampleLines::draw(int from, int to)
{
    for (; from < to; from += together) {
        const int lines = std::min(to - from, together);
        if (place(from, lines)) {
            classify(lines);
            drawPlaced(lines);
        } else {
            for (int i = from; i < from + lines; ++i)
                m_pen.draw(pointOf(i), pointOf(i + 1), ThinPen::NoCap);
        }
    }
}

PenPoint SampleLines::pointOf(int sample) const
{
    return {painterSteps(m_value.toPixel(m_samples.value(sample))),
            painterSteps(m_placer.y(m_samples, sample) - m_topY)};
}

// False where they are too far away for 32 bits, or so far above the first row that rounding might be another one.
bool SampleLines::place(int first, int lines)
{
    constexpr double farthest = 1 << 23;
    const auto [top, bottom] = std::minmax({m_placer.y(m_samples, first), m_placer.y(m_samples, first + lines)});
    const int row = top >= m_topY ? m_topY : 0; // none of them stands above it
    if (2 * top < m_topY || bottom - row > farthest)
        return false;
    const auto placeAll = [lines](const auto *numbers, int *steps, const auto &toSteps) {
        int i = 0;
        int some[block];
        for (; i + block <= lines + 1; i += block) {
            toSteps(numbers + i, some);
            std::copy(some, some + block, steps + i);
        }
        for (; i <= lines; ++i) {
            int one[1];
            toSteps(numbers + i, one);
            steps[i] = one[0];
        }
    };
    m_samples.useValues([&](const auto *values) {
        placeAll(values + first, m_x, [this](const auto *some, auto &steps) { m_value.toSteps(some, steps); });
    });
    m_samples.useDepths([&, start = row](const auto *depthsM) {
        placeAll(depthsM + first, m_y, [&](const auto *some, auto &steps) { m_placer.toSteps(some, start, steps); });
    });
    for (int i = 0; row != m_topY && i <= lines; ++i)
        m_y[i] -= 64 * m_topY;
    return true;
}

// No branches, for vector instructions.
void SampleLines::classify(int lines)
{
    for (int at = 0; at <= lines; at += block)
        for (int k = 0; k < block; ++k)
            m_column[at + k] = (m_x[at + k] + 32) >> 6;
    for (int at = 0; at < lines; at += block) {
        const int *x = m_x + at;
        const int *y = m_y + at;
        const int *column = m_column + at;
        for (int k = 0; k < block; ++k) {
            const int right = x[k + 1] - x[k];
            const int along = right < 0 ? -right : right;
            const int down = y[k + 1] - y[k];
            const int goesRight = column[k + 1] > column[k] ? 1 : 0;
            const int goesLeft = column[k + 1] < column[k] ? 1 : 0;
            // In the first half of a pixel, which it sets.
            const int turnsLeft = (right < 0 ? 1 : 0) & (along >= down ? 1 : 0) & (x[k] >> 6 == column[k] ? 1 : 0);
            const int moves = goesRight | goesLeft;
            const int sets = moves | turnsLeft;
            const int leavesRow = y[k + 1] >> 6 != y[k] >> 6 ? 1 : 0;
            const int crossesMiddle = y[k + 1] >> 5 != y[k] >> 5 ? 1 : 0;
            // It may go on for half a pixel, to the left, and for a whole one after a turn, to the right. Steep ones do.
            const int room = 63 - (y[k + 1] & 63);
            const int sinks =
                static_cast<float>(along) * static_cast<float>(room) < 64 * static_cast<float>(down) ? 1 : 0;
            const int isSpecial =
                leavesRow | (down < 0 ? 1 : 0) | ((along < down ? 1 : 0) & crossesMiddle) | (sinks & sets);
            m_kind[at + k] = isSpecial * Special | moves * SetsAfterLeft | sets * SetsAfterRight
                | goesRight * IsRightAfterLeft | (1 - (goesLeft | turnsLeft)) * IsRightAfterRight;
            // A single pixel after a turn to the right is set with the next one.
            const int end = column[k + 1] + (column[k + 1] - column[k] == 1 ? 1 : 0);
            const int endOfTurn = column[k] + turnsLeft;
            m_end[0][at + k] = end > column[k] ? end : column[k];
            m_end[1][at + k] = endOfTurn > column[k + 1] ? endOfTurn : column[k + 1];
        }
    }
}

void SampleLines::drawPlaced(int lines)
{
    for (int line = 0; line < lines; ++line) {
        if (m_pen.isBehindLevel(m_x[line], m_y[line] >> 6)) {
            line = drawRun(line, lines);
        } else if (m_pen.isSilentOnSpot(m_x[line])) {
            while (line < lines && (m_kind[line] & (Special | SetsAfterRight)) == 0)
                ++line;
        }
        if (line < lines)
            m_pen.draw({m_x[line], m_y[line]}, {m_x[line + 1], m_y[line + 1]}, ThinPen::NoCap);
    }
}

// Draws lines up to the next special one, which it gives.
int SampleLines::drawRun(int line, int lines)
{
    const int row = m_y[line] >> 6;
    int left = m_column[line];
    int end = left;
    int last = -1; // that sets pixels
    int isRight = m_pen.goesRight() ? 1 : 0;
    for (; line < lines && (m_kind[line] & Special) == 0; ++line) {
        left = std::min(left, m_column[line + 1]);
        end = std::max(end, m_end[isRight][line]);
        const int kind = m_kind[line] >> isRight;
        last = (kind & SetsAfterLeft) != 0 ? line : last;
        isRight = (kind & IsRightAfterLeft) != 0 ? 1 : 0;
    }
    if (last >= 0) {
        m_pixels.set(row, left, end - 1);
        m_pen.standBehind({m_x[last], m_y[last]}, {m_x[last + 1], m_y[last + 1]}, row);
    }
    return line;
}

} // namespace logview
