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
// Most of a wider one would be empty: its curves are stroked.
constexpr float maximumTrackWidth = 8192;
// The painter is quick with wide lines as long as they are few: one in so many rows.
constexpr int widePenRowsPerSample = 8;

// Appends what rectangles, from top to bottom, have of some rows.
void appendRows(const QVector<QRect> &rectangles, int topRow, int bottomRow, QVector<QRect> &rows)
{
    auto each = std::partition_point(rectangles.begin(), rectangles.end(),
                                     [topRow](const QRect &rectangle) { return rectangle.bottom() < topRow; });
    for (; each != rectangles.end() && each->top() <= bottomRow; ++each)
        rows.append(QRect(QPoint(each->left(), std::max(each->top(), topRow)),
                          QPoint(each->right(), std::min(each->bottom(), bottomRow))));
}

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

// Equal rows that have one run are one rectangle.
QVector<QRect> StrokeRows::drawn(int topRow, int bottomRow, const ShownRows &device) const
{
    const ShownRows rows{static_cast<double>(topRow - margin()), static_cast<double>(bottomRow + margin())};
    PixelRows pixels(-margin(), columns(), bottomRow - topRow + 1);
    if (m_penWidth == 1)
        drawThinLine(pixels, m_samples, m_key, rows, topRow, device);
    else
        drawWideLine(pixels, m_samples, m_key, rows, topRow, m_penWidth);

    QVector<QRect> rectangles;
    rectangles.reserve(2 * pixels.rows());
    int runsAbove = 0; // of the row before
    for (int row = topRow; row <= bottomRow; ++row) {
        const int before = rectangles.size();
        pixels.forRuns(row - topRow, [&rectangles, row](int first, int last) {
            rectangles.append(QRect(QPoint(first, row), QPoint(last, row)));
        });
        const int runs = rectangles.size() - before;
        if (runs == 1 && runsAbove == 1) {
            QRect &above = rectangles[before - 1];
            if (above.left() == rectangles.last().left() && above.right() == rectangles.last().right()) {
                above.setBottom(row);
                rectangles.removeLast();
            }
        }
        runsAbove = runs;
    }
    return rectangles;
}

// Rows that are there are not drawn again where new ones join them.
void StrokeRows::provide(int topRow, int bottomRow) const
{
    if (topRow > m_keptEnd || bottomRow + 1 < m_keptTop) {
        m_kept.clear();
        m_keptTop = topRow;
        m_keptEnd = topRow;
    }
    if (topRow < m_keptTop) {
        m_kept = drawn(topRow, m_keptTop - 1) + m_kept;
        m_keptTop = topRow;
    }
    if (bottomRow >= m_keptEnd) {
        m_kept += drawn(m_keptEnd, bottomRow);
        m_keptEnd = bottomRow + 1;
    }
    const int spare = std::max(spareRows, bottomRow - topRow);
    if (m_keptEnd - m_keptTop > 2 * spare) {
        m_keptTop = std::max(m_keptTop, bottomRow - spare);
        m_keptEnd = std::min(m_keptEnd, topRow + spare + 1);
        QVector<QRect> part;
        appendRows(m_kept, m_keptTop, m_keptEnd - 1, part);
        m_kept = part;
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
            rectangles += drawn(top, upperEnd, device);
            top = upperEnd + 1;
        }
        const auto [above, below] = crossing(deviceBottom + 2);
        const int lowerStart = std::max(top, std::min(deviceBottom - 1, toInt(std::floor(above)) - 1));
        // A short one at the end of what is drawn sets no pixel of the device.
        const bool isBeyond = m_samples.order() == DepthOrder::Ascending && above >= deviceBottom + 1.5;
        if (above < below && !isBeyond && lowerStart <= bottom) {
            rectangles += drawn(lowerStart, bottom, device);
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
