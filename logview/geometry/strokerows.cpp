#include "logview/geometry/strokerows.h"

#include "logview/geometry/linepixels.h"

#include <algorithm>
#include <cmath>

namespace logview {

namespace {

// Rows of one stretch; stretches divide the track from its top. Scrolling to a new one must not be felt.
constexpr int stretchRows = 64;
// Some screens of them.
constexpr size_t maximumStretches = 64;
// What stands in these rows beside a stretch decides how its first and last rows are painted.
constexpr int marginRows = 3;
// Runs are kept in 16 bits; a curve on a wider track is stroked.
constexpr float maximumTrackWidth = 8192;
// The painter is quick with wide lines as long as they are few: one in so many rows.
constexpr int widePenRowsPerSample = 8;

int stretchIndex(int row)
{
    return row >= 0 ? row / stretchRows : -1 - (-1 - row) / stretchRows;
}

} // namespace

StrokeRows::StrokeRows(const CurveSamples &samples, const CurveKey &key, int penWidth)
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

int StrokeRows::columns() const
{
    return toInt(std::ceil(static_cast<double>(m_key.scale.width))) + 2 * m_penWidth + 3;
}

void StrokeRows::appendCutPixels(int topRow, int bottomRow, const ShownRows &device, QVector<QRect> &rectangles) const
{
    if (topRow > bottomRow)
        return;
    PixelRows pixels(-m_penWidth - 1, columns(), bottomRow - topRow + 1);
    const ShownRows rows{static_cast<double>(topRow - marginRows), static_cast<double>(bottomRow + marginRows)};
    drawThinLine(pixels, m_samples, m_key, rows, topRow, device);
    for (int row = 0; row < pixels.rows(); ++row)
        pixels.forRuns(row, [&rectangles, y = topRow + row](int first, int last) {
            rectangles.append(QRect(QPoint(first, y), QPoint(last, y)));
        });
}

StrokeRows::Stretch StrokeRows::drawn(int index) const
{
    const int topRow = index * stretchRows;
    const double margin = marginRows + m_penWidth;
    const ShownRows rows{topRow - margin, topRow + stretchRows + margin};
    PixelRows pixels(-m_penWidth - 1, columns(), stretchRows);
    if (m_penWidth == 1)
        drawThinLine(pixels, m_samples, m_key, rows, topRow);
    else
        drawWideLine(pixels, m_samples, m_key, rows, topRow, m_penWidth);

    Stretch stretch;
    stretch.rowStarts.reserve(stretchRows + 1);
    for (int row = 0; row < stretchRows; ++row) {
        stretch.rowStarts.append(stretch.runs.size());
        pixels.forRuns(row, [&stretch](int first, int last) {
            stretch.runs.append({static_cast<qint16>(first), static_cast<qint16>(last)});
        });
    }
    stretch.rowStarts.append(stretch.runs.size());
    stretch.runs.squeeze();
    return stretch;
}

const StrokeRows::Stretch &StrokeRows::stretchAt(int index) const
{
    const auto found = m_stretches.find(index);
    if (found != m_stretches.end())
        return found->second;
    if (m_stretches.size() >= maximumStretches) {
        const auto farthest = index - m_stretches.begin()->first > m_stretches.rbegin()->first - index
            ? m_stretches.begin()
            : std::prev(m_stretches.end());
        m_stretches.erase(farthest);
    }
    return m_stretches.emplace(index, drawn(index)).first->second;
}

void StrokeRows::appendPixels(int topRow, int bottomRow, QVector<QRect> &rectangles) const
{
    int joinable = -1; // rectangle that is the only one of the row before
    for (int index = stretchIndex(topRow); m_isNeeded && index <= stretchIndex(bottomRow); ++index) {
        const Stretch &stretch = stretchAt(index);
        const int stretchTop = index * stretchRows;
        const int stop = std::min(bottomRow, stretchTop + stretchRows - 1);
        for (int row = std::max(topRow, stretchTop); row <= stop; ++row) {
            const int begin = stretch.rowStarts.at(row - stretchTop);
            const int end = stretch.rowStarts.at(row - stretchTop + 1);
            if (end - begin == 1 && joinable >= 0 && rectangles.at(joinable).left() == stretch.runs.at(begin).left
                && rectangles.at(joinable).right() == stretch.runs.at(begin).right) {
                rectangles[joinable].setBottom(row);
                continue;
            }
            for (int run = begin; run < end; ++run)
                rectangles.append(
                    QRect(QPoint(stretch.runs.at(run).left, row), QPoint(stretch.runs.at(run).right, row)));
            joinable = end - begin == 1 ? rectangles.size() - 1 : -1;
        }
    }
}

} // namespace logview
