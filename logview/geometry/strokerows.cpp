#include "logview/geometry/strokerows.h"

#include <QImage>
#include <QPainter>

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
// A line that leaves the picture it is painted in is cut, which moves some of its pixels: so the picture grows to
// here.
constexpr int maximumSpareRows = 4096;
// Runs are kept in 16 bits; a curve on a wider track is stroked.
constexpr float maximumTrackWidth = 8192;
// Wide pens are slow on many short lines: a curve with more points than one in so many rows is painted by rows.
constexpr int widePenRowsPerPoint = 8;

int stretchIndex(int row)
{
    return row >= 0 ? row / stretchRows : -1 - (-1 - row) / stretchRows;
}

} // namespace

StrokeRows::StrokeRows(const CurveSamples &samples, const CurvePath &path, int penWidth)
    : m_samples(samples)
    , m_key(path.key())
    , m_penWidth(penWidth)
{
    const bool isSlow =
        penWidth > 1 && static_cast<float>(path.points().size()) > m_key.axis.height / widePenRowsPerPoint;
    m_isNeeded = (path.hasDenseRows() || isSlow) && path.order() != DepthOrder::Unsorted && m_key.rowsPerPixel == 1
        && penWidth >= 1 && penWidth <= maximumPenWidth && m_key.scale.width <= maximumTrackWidth;
}

QPainterPath StrokeRows::linesAround(int index) const
{
    const double margin = marginRows + m_penWidth;
    const double top = static_cast<double>(index) * stretchRows - margin;
    const double bottom = top + stretchRows + 2 * margin;
    if (m_penWidth == 1)
        return samplePath(m_samples, m_key, top, bottom);
    // A wide pen shows no more than half rows, and is slow on many lines.
    CurveKey key = m_key;
    key.rowsPerPixel = 2;
    return CurvePath::part(m_samples, key, top, bottom).path();
}

StrokeRows::Stretch StrokeRows::drawn(int index) const
{
    const QPainterPath lines = linesAround(index);
    const int topRow = index * stretchRows;
    const QRectF bounds = lines.controlPointRect();
    const int above = std::clamp(topRow - toInt(bounds.top()) + m_penWidth, 0, maximumSpareRows);
    const int below = std::clamp(toInt(bounds.bottom()) - topRow - stretchRows + m_penWidth, 0, maximumSpareRows);
    const int left = -m_penWidth - 1;
    const int columns = toInt(std::ceil(static_cast<double>(m_key.scale.width))) + 2 * m_penWidth + 3;
    QImage image(columns, above + stretchRows + below, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.translate(-left, above - topRow);
    painter.setPen(QPen(Qt::black, m_penWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPath(lines);
    painter.end();

    Stretch stretch;
    stretch.rowStarts.reserve(stretchRows + 1);
    for (int row = 0; row < stretchRows; ++row) {
        stretch.rowStarts.append(stretch.runs.size());
        const QRgb *pixels = reinterpret_cast<const QRgb *>(image.constScanLine(above + row));
        const QRgb *end = pixels + columns;
        const auto columnOf = [&](const QRgb *pixel) { return static_cast<qint16>(pixel - pixels + left); };
        const auto isSet = [](QRgb pixel) { return pixel != 0; };
        for (const QRgb *run = std::find_if(pixels, end, isSet); run != end;) {
            const QRgb *runEnd = std::find(run, end, 0U);
            stretch.runs.append({columnOf(run), columnOf(runEnd - 1)});
            run = std::find_if(runEnd, end, isSet);
        }
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
