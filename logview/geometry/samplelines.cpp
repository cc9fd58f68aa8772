#include "logview/geometry/samplelines.h"

#include "logview/geometry/valuescan.h"

#include <QtAlgorithms>
#include <QtEndian>

#include <algorithm>

namespace logview {

SampleLines::SampleLines(PixelRows &pixels, ThinPen &pen, const CurveSamples &samples, const CurveKey &key, int topY)
    : m_samples(samples)
    , m_placer(key)
    , m_value(key.scale)
    , m_topY(topY)
    , m_pixels(pixels)
    , m_pen(pen)
{
    constexpr double rounding = 1.0000001 * static_cast<double>(std::numeric_limits<float>::epsilon());
    const auto [low, high] = m_value.unbroken();
    m_aboveBreaks = static_cast<float>(low + rounding * std::abs(low));
    m_belowBreaks = static_cast<float>(high - rounding * std::abs(high));
}

int SampleLines::firstBreak(int from, int end) const
{
    const auto isBreak = [&](int i) {
        return m_samples.isNull(i) || std::isnan(m_value.toPixel(m_samples.value(i)));
    };
    while ((from = firstBeyond(m_samples.values(), from, end, m_aboveBreaks, m_belowBreaks)) < end && !isBreak(from))
        ++from;
    return from;
}

void SampleLines::draw(int from, int to)
{
    constexpr int many = 128; // samples in a step
    const bool isCrowded = to - from > many * std::abs(yOf(to) - yOf(from));
    int step = from; // where the next one begins
    int perStep = 0;
    m_passed = -1;
    while (from < to) {
        int end = std::min(from + most, to);
        if (isCrowded) {
            if (from == step) {
                const qint64 y = yOf(from);
                step = firstAround(from, from + perStep, to + 1, [&](int i) { return yOf(i) == y; });
                perStep = step - from;
            }
            end = std::min(from + most, step - 1);
            if (end - from >= few && pass(from, end)) {
                from = end;
                continue;
            }
            if (end - from < few)
                end = std::min(step, to);
        }
        comeBack(from);
        drawSome(from, end - from);
        from = end;
    }
    comeBack(to);
}

// Passes over lines between samples that stand in one step, when they set no pixel that is not set.
bool SampleLines::pass(int from, int to)
{
    m_row = yOf(from) >> 6;
    if (m_passed < 0 && !m_pen.isBehindLine(xOf(from), m_row))
        return false;
    const auto [smallest, largest] = extremesOf(m_samples.values(), from, to);
    if (!m_value.isMonotonous(static_cast<double>(smallest)))
        return false;
    const auto stepsOf = [this](float value) { return painterSteps(m_value.toPixel(static_cast<double>(value))); };
    const auto [leftX, rightX] = std::minmax({stepsOf(smallest), stepsOf(largest)});
    // They have to go over the middle of a column, for the pen to be brought behind them.
    if (columnFrom(leftX) == columnFrom(rightX) || !isSet(columnFrom(leftX - 1), columnFrom(rightX + 1)))
        return false;
    m_passed = from;
    return true;
}

// Brings the pen to a sample, behind lines that were passed over.
void SampleLines::comeBack(int sample)
{
    if (m_passed < 0)
        return;
    m_known = 0;
    std::fill_n(m_y, sample - m_passed + 1, static_cast<int>(yOf(sample)));
    m_row = m_y[0] >> 6;
    for (int first = std::max(m_passed, sample - few);; first = m_passed) {
        placeValuesOf(first, sample - first + 1);
        mark(sample - first);
        if (first == m_passed || lastCrossing(sample - first) > 0) {
            standAt(sample - first);
            break;
        }
    }
    m_passed = -1;
}

void SampleLines::drawSome(int from, int lines)
{
    placeSome(from, lines);
    for (int line = 0; line < lines;) {
        line = drawUntilInRow(line);
        if (line == lines)
            return;
        const int special = next(line, Special);
        drawLevel(line, special);
        line = special;
        if (line < lines)
            drawLine(line++);
    }
}

void SampleLines::placeSome(int from, int lines)
{
    const auto [top, bottom] = std::minmax({yOf(from), yOf(from + lines)});
    placeValuesOf(from, lines + 1);
    if (top >= 0 && top != bottom)
        m_placer.toSteps(m_samples, from, lines + 1, m_topY, m_y);
    for (int i = 0; (top < 0 || top == bottom) && i <= lines; ++i)
        m_y[i] = static_cast<int>(top == bottom ? top : yOf(from + i));
    mark(lines);
}

// Draws one line after the other until the pen is in the row of the point that is reached.
int SampleLines::drawUntilInRow(int line)
{
    while (line < m_lines) {
        m_row = m_y[line] >> 6;
        if (m_pen.isBehindLine(m_x[line], m_row))
            break;
        if (m_pen.isSilentOnSpot(m_x[line]))
            line = next(line, Special | Crosses | Turns);
        if (line < m_lines)
            drawLine(line++);
    }
    return line;
}

void SampleLines::mark(int lines)
{
    markLines(m_x, m_y, lines, m_marks + together);
    std::fill_n(m_marks + together + lines, together, static_cast<unsigned char>(Special));
    m_lines = lines;
}

// The first of the lines from one on that has one of some marks, or the number of all.
int SampleLines::next(int line, int marks) const
{
    const quint64 wanted = 0x0101010101010101 * static_cast<quint64>(marks);
    for (; line < m_lines; line += together) {
        const quint64 found = qFromLittleEndian<quint64>(m_marks + together + line) & wanted;
        if (found != 0)
            return std::min(line + static_cast<int>(qCountTrailingZeroBits(found)) / 8, m_lines);
    }
    return m_lines;
}

// Draws lines of a row, none of them special. The pen is in the row.
void SampleLines::drawLevel(int from, int to)
{
    if (from == to)
        return;
    m_known = from;
    const auto [smallest, largest] = extremesOf(m_x, from, to);
    const qint64 left = columnFrom(smallest);
    const qint64 right = columnFrom(largest);
    if (left < right) {
        m_pixels.set(m_row, left, right - 1);
        // Where it turns in the first half of a pixel, the line back sets that, too.
        if (largest >> 6 == right && columnFrom(m_x[from]) < right && columnFrom(m_x[to]) < right)
            m_pixels.set(m_row, right, right);
        else if (!isSet(right, right))
            settleRight(static_cast<int>(right), from, to);
    }
    standAt(to);
}

// Draws what may set the last column: lines to it and in it.
void SampleLines::settleRight(int column, int from, int to)
{
    const int edge = column * 64 - 32;
    for (int line = from; line < to && !isSet(column, column);) {
        if (m_x[line] < edge) {
            line = firstFrom(m_x, line + 1, to + 1, edge) - 1;
            if (line == to)
                return;
            standAt(line);
        }
        do {
            drawLine(line);
            line = std::min(next(line + 1, Crosses | Turns), to);
        } while (line < to && m_x[line] >= edge && !isSet(column, column));
        m_known = line;
    }
}

bool SampleLines::isSet(qint64 left, qint64 right) const
{
    const auto [first, last] = m_pixels.runIn(m_row);
    return left >= first && right <= last;
}

// The last point up to one to which a line goes over the middle of a column; where there is none, that where the pen stands.
int SampleLines::lastCrossing(int point) const
{
    constexpr quint64 wanted = 0x0101010101010101 * static_cast<quint64>(Crosses);
    for (; point > m_known; point -= together) {
        const quint64 found = qFromLittleEndian<quint64>(m_marks + point) & wanted; // of the lines before
        if (found != 0)
            return std::max(point - static_cast<int>(qCountLeadingZeroBits(found)) / 8, m_known);
    }
    return m_known;
}

// Brings the pen to a point, behind lines of the row. Those without a pixel leave it as it is; a line to the left may set the
// one in which it turns.
void SampleLines::standAt(int point)
{
    int known = lastCrossing(point);
    if (known > m_known)
        m_pen.standBehind(m_x[known - 1], m_y[known - 1], m_x[known], m_y[known], m_row);
    for (; m_pen.goesRight() && (known = next(known, Crosses | Turns)) < point; ++known)
        drawLine(known);
    m_known = point;
}

void SampleLines::drawLine(int line)
{
    m_pen.draw(m_x[line], m_y[line], m_x[line + 1], m_y[line + 1], ThinPen::NoCap);
}

} // namespace logview
