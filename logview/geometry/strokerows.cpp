#include "logview/geometry/strokerows.h"

#include "logview/geometry/linepixels.h"

#include <algorithm>
#include <cmath>

namespace logview {

namespace {

// Rows that are kept beside those that were asked for last.
constexpr int spareRows = 2048;
// What stands in these rows beside others decides how their first and last ones are painted.
constexpr int marginRows = 3;
// Runs are kept in 16 bits; a curve on a wider track is stroked.
constexpr float maximumTrackWidth = 8192;
// The painter is quick with wide lines as long as they are few: one in so many rows.
constexpr int widePenRowsPerSample = 8;

} // namespace

StrokeRows::StrokeRows(const CurveSamples &samples, const CurveKey &key, double penWidth)
    : m_samples(samples)
    , m_key(key)
    , m_penWidth(penWidth)
{
    if (samples.order() == DepthOrder::Unsorted || penWidth < 1 || penWidth > maximumPenWidth
        || key.scale.width > maximumTrackWidth)
        return;
    const auto [begin, end] = SamplePlacer(key).range(samples);
    m_isNeeded = penWidth == 1 || static_cast<float>(end - begin) > key.axis.height / widePenRowsPerSample;
}

// How far a line reaches beside the track, and beyond the rows of its samples.
int StrokeRows::margin() const
{
    return m_penWidth == 1 ? marginRows : toInt(std::ceil(m_penWidth / 2)) + 1;
}

int StrokeRows::columns() const
{
    return toInt(std::ceil(static_cast<double>(m_key.scale.width))) + 2 * margin() + 1;
}

void StrokeRows::Block::append(const Block &other, int first, int last)
{
    const int from = other.rowStarts.at(first - other.top);
    const int shift = runs.size() - from;
    for (int row = first; row <= last; ++row)
        rowStarts.append(other.rowStarts.at(row + 1 - other.top) + shift);
    for (int run = from; run < rowStarts.last() - shift; ++run)
        runs.append(other.runs.at(run));
}

StrokeRows::Block StrokeRows::drawn(int topRow, int bottomRow, const ShownRows &device) const
{
    const ShownRows rows{static_cast<double>(topRow - margin()), static_cast<double>(bottomRow + margin())};
    PixelRows pixels(-margin(), columns(), bottomRow - topRow + 1);
    if (m_penWidth == 1)
        drawThinLine(pixels, m_samples, m_key, rows, topRow, device);
    else
        drawWideLine(pixels, m_samples, m_key, rows, topRow, m_penWidth);

    Block block;
    block.top = topRow;
    block.rowStarts.reserve(pixels.rows() + 1);
    for (int row = 0; row < pixels.rows(); ++row) {
        pixels.forRuns(row, [&block](int first, int last) {
            block.runs.append({static_cast<qint16>(first), static_cast<qint16>(last)});
        });
        block.rowStarts.append(block.runs.size());
    }
    return block;
}

// Rows that are there are not drawn again where new ones join them.
void StrokeRows::provide(int topRow, int bottomRow) const
{
    if (topRow > m_kept.end() || bottomRow + 1 < m_kept.top) {
        m_kept = drawn(topRow, bottomRow);
        return;
    }
    if (topRow < m_kept.top) {
        Block above = drawn(topRow, m_kept.top - 1);
        above.append(m_kept, m_kept.top, m_kept.end() - 1);
        m_kept = above;
    }
    if (bottomRow >= m_kept.end())
        m_kept.append(drawn(m_kept.end(), bottomRow), m_kept.end(), bottomRow);
    const int spare = std::max(spareRows, bottomRow - topRow);
    if (m_kept.end() - m_kept.top > 2 * spare) {
        Block part;
        part.top = std::max(m_kept.top, bottomRow - spare);
        part.append(m_kept, part.top, std::min(m_kept.end() - 1, topRow + spare));
        m_kept = part;
    }
}

void StrokeRows::appendRows(const Block &block, int topRow, int bottomRow, QVector<QRect> &rectangles)
{
    const int *starts = block.rowStarts.constData() - block.top;
    const Run *runs = block.runs.constData();
    const Run *above = nullptr; // the only one of the row before, which is the last rectangle
    for (int row = topRow; row <= bottomRow; ++row) {
        const Run *begin = runs + starts[row];
        const Run *end = runs + starts[row + 1];
        const bool isOnlyOne = end - begin == 1;
        if (isOnlyOne && above && above->left == begin->left && above->right == begin->right) {
            rectangles.last().setBottom(row);
            continue;
        }
        for (const Run *run = begin; run != end; ++run)
            rectangles.append(QRect(QPoint(run->left, row), QPoint(run->right, row)));
        above = isOnlyOne ? begin : nullptr;
    }
}

// Top and bottom of the line that crosses a pixel position; both 0 when none does.
std::pair<double, double> StrokeRows::crossing(double y) const
{
    const SamplePlacer placer(m_key);
    const auto [begin, end] = placer.range(m_samples, {y, y});
    QPointF before;
    QPointF after;
    if (end - begin < 2 || placer.place(m_samples, begin, before) != SamplePlacer::Drawn
        || placer.place(m_samples, begin + 1, after) != SamplePlacer::Drawn)
        return {0, 0};
    const bool isBefore = m_samples.order() == DepthOrder::Ascending ? before.y() < y : before.y() > y;
    return isBefore ? std::minmax({before.y(), after.y()}) : std::pair(0.0, 0.0);
}

QVector<QRect> StrokeRows::rectangles(int topRow, int bottomRow, int deviceTop, int deviceBottom) const
{
    QVector<QRect> rectangles; // of hundreds of curves none keeps them
    int top = std::max(topRow, deviceTop);
    int bottom = std::min(bottomRow, deviceBottom);
    if (!m_isNeeded || top > bottom)
        return rectangles;
    rectangles.reserve(4 * (bottom - top + 1));
    if (m_penWidth == 1) {
        // The painter cuts the lines that leave its device before it looks for their pixels, which moves some.
        const ShownRows device{static_cast<double>(deviceTop), static_cast<double>(deviceBottom)};
        const auto [upper, lower] = crossing(deviceTop - 1);
        const int upperEnd = std::min(std::max(deviceTop + 1, toInt(std::ceil(lower))), bottom);
        if (upper < lower && top <= upperEnd) {
            appendRows(drawn(top, upperEnd, device), top, upperEnd, rectangles);
            top = upperEnd + 1;
        }
        const auto [above, below] = crossing(deviceBottom + 2);
        const int lowerStart = std::max(top, std::min(deviceBottom - 1, toInt(std::floor(above)) - 1));
        // A short one at the end of what is drawn sets no pixel of the device.
        const bool isBeyond = m_samples.order() == DepthOrder::Ascending && above >= deviceBottom + 1.5;
        if (above < below && !isBeyond && lowerStart <= bottom) {
            appendRows(drawn(lowerStart, bottom, device), lowerStart, bottom, rectangles);
            bottom = lowerStart - 1;
        }
    }
    if (top <= bottom) {
        provide(top, bottom);
        appendRows(m_kept, top, bottom, rectangles);
    }
    return rectangles;
}

} // namespace logview
