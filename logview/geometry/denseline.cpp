#include "logview/geometry/denseline.h"

#include <tuple>

namespace logview {

namespace {

// A line to the left may go on beyond its end for half a pixel and one to the right, where it turns, for a whole pixel, as
// steep as it is. A line that goes a step down stays in its row from these lengths on: in the upper half of the row, above
// its edge, and anywhere.
constexpr qint64 edgeSteps = 8;
constexpr LineLengths inUpperHalf{1, 2};
constexpr LineLengths aboveEdge{32 / edgeSteps, 64 / edgeSteps};
constexpr LineLengths anywhere{32, 64};
constexpr double mostRise = 0.25; // steps from sample to sample; logs with fewer in a row are quicker drawn otherwise
constexpr int nearlyLevel = 4; // times as far along as down: for longer lines the painter takes them as level
constexpr int together = scannedTogether;
constexpr int maximumPatience = 64;
constexpr qint64 farthest = 1 << 30; // steps

} // namespace

DenseLine::DenseLine(PixelRows &pixels, ThinPen &pen, const CurveSamples &samples, const CurveKey &key, int topY)
    : m_samples(samples)
    , m_placer(key)
    , m_value(key.scale)
    , m_topY(topY)
    , m_pixels(pixels)
    , m_pen(pen)
    , m_lines(pixels, pen, samples, key, topY)
{
    const DepthAxis &axis = key.axis;
    const double unit = key.reference.unit == Feet ? feetPerMetre : 1;
    const double farthestDepth = samples.isEmpty() ? 0
                                                   : unit
            * (std::max(std::abs(samples.depthM(0)), std::abs(samples.depthM(samples.size() - 1)))
               + std::abs(key.reference.kbElevationM));
    constexpr double precision = 4e-7; // depths are placed in single precision
    const double perUnit =
        64 * static_cast<double>(axis.height) / (static_cast<double>(axis.end) - static_cast<double>(axis.start));
    const double rise = perUnit * (unit * samples.largestStepM() + precision * farthestDepth);
    constexpr double most = 1 << 20;
    m_farthestDown = static_cast<qint64>(std::ceil(std::min(rise, most)));
    m_isDense = samples.order() == DepthOrder::Ascending && rise < mostRise;
    const auto right = static_cast<qint64>(m_placer.width() * 64);
    m_isEdgeInMiddle = columnFrom(right) != columnFrom(right - aboveEdge.right);
}

int DenseLine::firstBreak(int from, int end) const
{
    const auto find = [this](int first, int stop) {
        for (; first < stop; ++first) {
            const double value = m_samples.value(first);
            if (value == m_samples.nullValue() || std::isnan(m_value.toPixel(value)))
                break;
        }
        return first;
    };
    ValueWindow drawn;
    std::tie(drawn.low, drawn.high) = m_value.valuesBetween(-1, m_placer.width() + 1);
    return m_samples.useValues([&](const auto *values) {
        const auto null = static_cast<std::decay_t<decltype(*values)>>(m_samples.nullValue());
        const auto isOutside = drawn.outside(values);
        return firstThat(
            values, from, end, [=](const auto *value) { return isOutside(value) | (*value == null ? 1 : 0); }, find);
    });
}

void DenseLine::draw(int from, int to)
{
    m_last = to;
    m_sample = from;
    m_known = from;
    m_x = xOf(from);
    if (m_isDense)
        drawRows();
    else
        m_lines.draw(from, to);
}

// A line that stays in its row sets pixels in it only, when the pixel before is in it. The first ones in a row may set
// some in the row above as well.
void DenseLine::drawRows()
{
    const qint64 y = yOf(m_sample);
    m_row = rowFrom(m_sample, y >> 6, y & 63);
    if (m_pen.isBehindLine(m_x, m_row.number, m_row.number))
        setCertain(m_row, m_sample);
    while (m_sample < m_last) {
        sweepRow(m_row);
        const Row next = rowFrom(m_row.end, m_row.number + 1, 0);
        const bool isCertain = isPassing() || m_pen.isBehindLine(m_x, m_row.number, next.number);
        if (isCertain)
            setCertain(next, next.begin);
        const Rule twoRows{m_row.number, next.number, anywhere, anywhere, 0};
        sweep(next.begin, twoRows);
        if (!passSetting(next, twoRows))
            catchUp(); // the last pixel may be in either row
        m_row = next;
        if (!isCertain && m_pen.isBehindLine(m_x, m_row.number, m_row.number))
            setCertain(m_row, m_sample);
    }
    catchUp();
}

// Draws the lines up to the last sample of a row.
void DenseLine::sweepRow(const Row &row)
{
    Rule rule{row.number, row.number, aboveEdge, inUpperHalf, row.middle};
    if (row.isCrowded) {
        // Lines between the samples of a step stay in the row.
        rule.least = rule.leastAbove = {};
        while (m_sample + 1 < row.end && m_sample < m_last) {
            const int end = std::min(firstAt(yOf(m_sample) + 1, m_sample, m_perStep), row.end);
            sweep(end - 1, rule);
            if (end < row.end && m_sample < m_last)
                drawNext();
        }
        return;
    }
    // Straight down over the middle of the row a line sets a pixel.
    if (row.middle > m_sample && row.middle <= m_last && isVertical(row.middle)) {
        sweep(row.middle - 1, rule);
        drawNext();
    }
    sweep(row.edge - 1, rule);
    sweep(row.end - 1, {row.number, row.number, anywhere, anywhere, 0});
}

// Passes over the first line of a row if it sets a pixel: then the last pixel is in the row.
bool DenseLine::passSetting(const Row &row, const Rule &rule)
{
    if (!isPassing() || m_sample != row.begin || m_sample + 1 >= row.middle || m_sample == m_last)
        return false;
    const qint64 x = xOf(m_sample + 1);
    const auto [left, right] = setAround(rule);
    if (columnFrom(x) == columnFrom(m_x) || std::abs(x - m_x) < aboveEdge.right || x < left || x >= right)
        return false;
    ++m_sample;
    m_x = x;
    return true;
}

// Goes on to a sample: passes over lines and draws those that are special.
void DenseLine::sweep(int to, const Rule &rule)
{
    to = std::min(to, m_last);
    while (m_sample < to) {
        const std::pair<qint64, qint64> set = setAround(rule);
        if (m_x < set.first || m_x >= set.second) {
            walk(to, rule);
            continue;
        }
        const int special = firstSpecial(m_sample + 1, to + 1, set, rule);
        if (special > m_sample + 1) {
            m_sample = special - 1;
            m_x = xOf(m_sample);
        }
        if (special <= to)
            drawNext();
    }
}

// Goes on line by line until others may be passed over.
void DenseLine::walk(int to, const Rule &rule)
{
    catchUp();
    for (int most = 1; m_sample < to; most = std::min(2 * most, together)) {
        if (m_silent >= m_patience)
            passSilent(to);
        qint64 x[together];
        const int count = std::min(to - m_sample, most);
        for (int k = 0; k < count; ++k)
            x[k] = xOf(m_sample + 1 + k);
        for (int k = 0; k < count; ++k) {
            if (x[k] == m_x ? m_sample + 1 != m_row.middle : m_pen.isSilent(m_x, x[k])) {
                ++m_silent;
                m_known = ++m_sample;
                m_x = x[k];
                continue;
            }
            drawNext();
            const auto [left, right] = setAround(rule);
            if (m_x >= left && m_x < right)
                return;
        }
    }
}

// Passes over lines that set no pixel.
void DenseLine::passSilent(int to)
{
    const std::pair<qint64, qint64> silent = m_pen.silentAround(m_x);
    const int before = m_sample;
    if (m_x >= silent.first && m_x < silent.second) {
        m_sample = firstSpecial(m_sample + 1, to + 1, silent, {}) - 1;
        m_known = m_sample;
        m_x = xOf(m_sample);
    }
    m_patience = m_sample - before >= together ? together : std::min(2 * m_patience, maximumPatience);
    m_silent = 0;
}

void DenseLine::drawNext()
{
    catchUp();
    const PenPoint from{m_x, keptY(m_sample)};
    m_known = ++m_sample;
    m_x = xOf(m_sample);
    m_pen.draw(from, {m_x, keptY(m_sample)}, ThinPen::NoCap);
}

// Brings the pen behind the line to the sample that is reached.
void DenseLine::catchUp()
{
    if (!isPassing())
        return;
    // From the last line on that leaves the pen as it is whatever was before. A line that does not go over the middle of a
    // column may set a pixel only when it turns to the left.
    int known = m_sample;
    int lastToDraw = m_known;
    qint64 x = m_x;
    for (; known > m_known; --known) {
        const qint64 before = xOf(known - 1);
        if (columnFrom(before) != columnFrom(x)) {
            if (standBehind(known, before, x))
                break;
            lastToDraw = std::max(lastToDraw, known);
        }
        x = before;
    }
    for (; known < m_sample && (known < lastToDraw || m_pen.goesRight()); ++known) {
        const qint64 next = xOf(known + 1);
        if (!m_pen.isSilent(x, next))
            m_pen.draw({x, yOf(known)}, {next, yOf(known + 1)}, ThinPen::NoCap);
        x = next;
    }
    m_known = m_sample;
}

bool DenseLine::standBehind(int sample, qint64 from, qint64 to)
{
    if (std::abs(to - from) <= nearlyLevel || sample <= m_row.begin || sample >= m_row.end)
        return m_pen.standBehind({from, yOf(sample - 1)}, {to, yOf(sample)});
    m_pen.standBehindLevel(from, to, m_row.number);
    return true;
}

// The pixels of a row that the lines from one of its samples on set in any case, when the pixel before is in the row or in
// the one above.
void DenseLine::setCertain(const Row &row, int first)
{
    int end = std::min(row.isCrowded ? row.middle : row.edge, m_last + 1);
    if (first + 1 >= end || row.number < 0 || row.number >= m_pixels.rows())
        return;
    // The last pixel of a short line to the left may be in the next row.
    if (!row.isCrowded)
        end = firstSpecial(std::max(row.middle, first + 1), end, {-farthest, farthest},
                           {0, 0, {aboveEdge.left, 0}, {}, 0});
    const auto [smallest, largest] = m_samples.useValues([&, last = end](const auto *values) {
        using Value = std::decay_t<decltype(*values)>;
        const ValueExtremes<Value> extremes(values, first, last, static_cast<Value>(m_samples.nullValue()));
        return std::pair(static_cast<double>(extremes.smallest), static_cast<double>(extremes.largest));
    });
    const auto stepsOf = [this](double value) { return static_cast<qint64>(m_value.toPixel(value) * 64); };
    const auto [leftX, rightX] = std::minmax({stepsOf(smallest), stepsOf(largest)});
    qint64 right = columnFrom(rightX) - 1;
    // A line that came from the left and turns in the first half of a pixel sets it, too, when none went down in between.
    const bool goesDown = row.middle > first && row.middle < end && isVertical(row.middle);
    if (rightX >> 6 > right && columnFrom(xOf(first)) <= right && columnFrom(xOf(end - 1)) <= right && !goesDown)
        ++right;
    if (columnFrom(leftX) <= right)
        m_pixels.set(row.number, columnFrom(leftX), right);
}

// The x, the second one excluded, between which lines set no other pixels than are set; none where the pen may be
// elsewhere. Where the line before may have ended in another row, the pen may set one pixel more on both sides.
std::pair<qint64, qint64> DenseLine::setAround(const Rule &rule) const
{
    if (!isPassing() && !m_pen.isBehindLine(m_x, rule.topRow, rule.bottomRow))
        return {0, 0};
    const auto [first, last] = m_pixels.runIn(rule.topRow);
    if (rule.topRow == rule.bottomRow)
        return {first * 64 - 32, last * 64 + 32};
    const auto [lowerFirst, lowerLast] = m_pixels.runIn(rule.bottomRow);
    return {std::max(first, lowerFirst) * 64 + 32, std::min(last, lowerLast) * 64 - 32};
}

// The first of the samples [from, end) the line to which is special: it leaves those between two x, or it is short, sets a
// pixel and may set it below its row.
int DenseLine::firstSpecial(int from, int end, std::pair<qint64, qint64> set, const Rule &rule)
{
    const auto stepsOf = [](qint64 x) { return static_cast<int>(std::clamp<qint64>(x, -farthest, farthest)); };
    const int left = stepsOf(set.first);
    const int right = stepsOf(set.second);
    // No branches, for vector instructions.
    const auto lookAt = [&](const int *x, const LineLengths &least, int *mayBeSpecial) {
        int found = 0;
        for (int k = 0; k < together; ++k) {
            const int along = x[k + 1] - x[k];
            const int isOutside = (x[k + 1] < left ? 1 : 0) | (x[k + 1] >= right ? 1 : 0);
            const int isShort = (along > -least.left ? 1 : 0) & (along < least.right ? 1 : 0) & (along != 0 ? 1 : 0);
            const int column = (x[k] + 32) >> 6;
            const int isTurning = (along < 0 ? 1 : 0) & (column == x[k] >> 6 ? 1 : 0);
            mayBeSpecial[k] = isOutside | (isShort & (isTurning | ((x[k + 1] + 32) >> 6 != column ? 1 : 0)));
            found |= mayBeSpecial[k];
        }
        return found != 0;
    };
    const ValueWindow window = windowOf(set, rule.least);
    return m_samples.useValues([&](const auto *values) {
        const auto find = [&](int first, int stop) {
            int x[together + 1];
            int mayBeSpecial[together];
            if (stop - first == together)
                m_value.toSteps(values + first - 1, x);
            else
                for (int k = 0; k <= together; ++k)
                    x[k] = static_cast<int>(xOf(std::min(first + k, stop) - 1));
            if (!lookAt(x, stop <= rule.middle ? rule.leastAbove : rule.least, mayBeSpecial))
                return stop;
            for (int k = 0; k < stop - first; ++k) {
                const bool isOutside = x[k + 1] < left || x[k + 1] >= right;
                if (mayBeSpecial[k] != 0 && (isOutside || goesBelow(first + k, x[k + 1] - x[k])))
                    return first + k;
            }
            return stop;
        };
        return firstThat(values, from, end, window.outsideOrNear(values), find);
    });
}

// Whether a line that goes so far along may set pixels below its row.
bool DenseLine::goesBelow(int sample, qint64 along) const
{
    const qint64 y = yOf(sample);
    const qint64 down = y - yOf(sample - 1);
    const qint64 room = 64 - (y & 63);
    return down > 0 && std::abs(along) * room <= down * (along < 0 ? 32 : 64);
}

// The values that stand between two x, or hardly not, and not near to the one before.
ValueWindow DenseLine::windowOf(std::pair<qint64, qint64> x, const LineLengths &least)
{
    // A short line over the middle of a column may come from a value far beyond the limits of the scale.
    const bool isLimited = m_isEdgeInMiddle || least.right > 32;
    if (m_windowX != x || m_isWindowLimited != isLimited) {
        m_windowX = x;
        m_isWindowLimited = isLimited;
        const double left = static_cast<double>(x.first) / 64;
        const double right = static_cast<double>(x.second) / 64;
        std::tie(m_window.low, m_window.high) = isLimited
            ? m_value.valuesBetween(std::max(left, 0.0), std::min(right, m_placer.width()))
            : m_value.valuesBetween(left, right);
    }
    const auto leastStep = [this](int length) {
        constexpr double rounding = 0.02;
        return length > 0 ? m_value.leastStep((length + rounding) / 64, m_window.low, m_window.high) : 0;
    };
    m_window.leastDown = leastStep(least.left);
    m_window.leastUp = leastStep(least.right);
    if (m_value.isMirrored())
        std::swap(m_window.leastDown, m_window.leastUp);
    if (!m_placer.isLinear()) // it may be mirrored in parts
        m_window.leastDown = m_window.leastUp = std::max(m_window.leastDown, m_window.leastUp);
    return m_window;
}

// The row whose samples begin with one, which stands some steps below its top or, where that is 0, hardly below.
DenseLine::Row DenseLine::rowFrom(int sample, qint64 number, qint64 steps)
{
    constexpr double many = 32; // samples in a step
    Row row;
    row.number = number;
    row.begin = sample;
    const auto firstBelow = [&](int from, qint64 at, qint64 y) {
        return y <= at ? from : firstAt(number * 64 + y, from - 1, static_cast<double>(y - at) * m_perStep + 1);
    };
    row.end = firstBelow(sample, steps, 64);
    if (row.end <= m_last)
        m_perStep = static_cast<double>(row.end - sample) / static_cast<double>(64 - steps);
    row.isCrowded = m_perStep > many;
    row.middle = std::min(firstBelow(sample, steps, 32), row.end);
    row.edge = row.end;
    if (!row.isCrowded && row.middle < row.end)
        row.edge = std::min(firstBelow(row.middle, std::max<qint64>(steps, 32), 64 - edgeSteps), row.end);
    return row;
}

// The first sample behind one that stands at a y or below it, or the one behind the last. Samples stand at even distances
// in most logs, so it is looked for some ahead.
int DenseLine::firstAt(qint64 y, int before, double ahead) const
{
    const int guess = static_cast<int>(std::min(before + ahead, static_cast<double>(m_last + 1)));
    return firstAround(before, guess, m_last + 1, [&](int i) { return yOf(i) < y; });
}

qint64 DenseLine::keptY(int sample)
{
    if (m_keptY.first != sample)
        m_keptY = {sample, yOf(sample)};
    return m_keptY.second;
}

} // namespace logview
