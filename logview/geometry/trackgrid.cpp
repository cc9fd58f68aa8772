#include "logview/geometry/trackgrid.h"

#include <algorithm>
#include <cmath>

namespace logview {

namespace {

// Depths are counted as whole numbers; beyond this a double has no whole numbers next to one another.
constexpr double maximumDepth = 1e15;

qint64 wholeDepth(double depth)
{
    return static_cast<qint64>(std::clamp(std::isnan(depth) ? 0.0 : depth, -maximumDepth, maximumDepth));
}

// The last multiple of the step that is not above a depth, divided by the step.
qint64 floorOf(qint64 depth, qint64 step)
{
    return depth / step - (depth % step < 0 ? 1 : 0);
}

// Calls use(depth) for the multiples of \a step in [first, last] whose row, rowOf(depth), is in the visible ones,
// ascending; of those that share a row only the last \a perRow ones. Rows ascend with depths.
template<class RowOf, class Use>
void forVisibleMultiples(const DepthAxis &axis, qint64 first, qint64 last, qint64 step, int topY, int bottomY,
                         double offset, int perRow, RowOf rowOf, Use use)
{
    // A row more on both sides: rows are truncated, and the exact ones are picked below.
    const DepthRange visible = visibleRange(axis, std::max(topY + offset - 2, 0.0),
                                            std::min(bottomY + offset + 2, static_cast<double>(axis.height)));
    if (visible.top > visible.bottom)
        return;
    const qint64 end = floorOf(std::min(last, wholeDepth(visible.bottom) + step), step) + 1;
    qint64 multiple = floorOf(std::max(first, wholeDepth(visible.top) - step) - 1, step) + 1;
    while (multiple < end) {
        const int row = rowOf(multiple * step);
        if (row > bottomY)
            return;
        // The first multiple of the next row: there may be billions in this one.
        qint64 next = multiple + 1;
        for (qint64 stop = end; next < stop;) {
            const qint64 middle = next + (stop - next) / 2;
            if (rowOf(middle * step) == row)
                next = middle + 1;
            else
                stop = middle;
        }
        if (row >= topY)
            for (qint64 i = std::max(multiple, next - perRow); i < next; ++i)
                use(i * step);
        multiple = next;
    }
}

bool isDotted(GridPen pen)
{
    return pen == GridPen::LightGrayDotted || pen == GridPen::BlackDotted;
}

} // namespace

QPen gridPen(GridPen kind)
{
    QColor color = QColor(Qt::lightGray);
    if (kind == GridPen::GraySolid)
        color = QColor(Qt::gray);
    if (kind == GridPen::BlackDotted)
        color = QColor(Qt::black);
    return QPen(color, 1, isDotted(kind) ? Qt::DotLine : Qt::SolidLine, Qt::SquareCap, Qt::BevelJoin);
}

bool operator==(const GridLine &a, const GridLine &b)
{
    return a.line == b.line && a.pen == b.pen;
}

QVector<GridLine> horizontalGrid(const DepthAxis &axis, float scale, float width, int topY, int bottomY,
                                 float verticalOffset)
{
    QVector<GridLine> lines;
    if (!axis.isDrawable() || !std::isfinite(verticalOffset))
        return lines;
    const double offset = static_cast<double>(verticalOffset);
    const bool isCoarse = !(scale < 5000.0F);
    const int right = toInt(static_cast<double>(width));
    const auto rowOf = [&](qint64 depth) {
        return toInt(static_cast<double>(toInt(axis.toPixel(static_cast<double>(depth)))) - offset);
    };
    // Five multiples of ten, or two of fifty, hold a solid line that covers what was drawn in the row before.
    forVisibleMultiples(axis, wholeDepth(static_cast<double>(axis.start)),
                        wholeDepth(std::floor(static_cast<double>(axis.end))), isCoarse ? 50 : 10, topY, bottomY,
                        offset, isCoarse ? 2 : 5, rowOf, [&](qint64 depth) {
                            GridPen pen = GridPen::LightGrayDotted;
                            if (depth % 100 == 0)
                                pen = GridPen::GraySolid;
                            else if (depth % 50 == 0 && !isCoarse)
                                pen = GridPen::LightGraySolid;
                            const int y = rowOf(depth);
                            lines.append({QLine(0, y, right, y), pen});
                        });
    return lines;
}

QVector<GridLine> linearGrid(float width, float height)
{
    QVector<GridLine> lines;
    lines.reserve(11);
    const int bottom = toInt(static_cast<double>(height));
    for (int k = 0; k <= 10; ++k) {
        const int x = toInt(static_cast<double>(static_cast<float>(k) * width / 10.0F));
        GridPen pen = GridPen::LightGrayDotted;
        if (k == 0 || k == 10)
            pen = GridPen::BlackDotted;
        else if (k == 5)
            pen = GridPen::LightGraySolid;
        lines.append({QLine(x, 0, x, bottom), pen});
    }
    return lines;
}

QVector<GridLine> logarithmicGrid(float width, float height)
{
    QVector<GridLine> lines;
    const double logStart = std::log10(0.1);
    const double span = std::abs(std::log10(2000.0) - logStart);
    const int bottom = toInt(static_cast<double>(height) - 1);
    float value = 0.1F;
    float step = 0.1F;
    while (value < 2000.0F) {
        for (int k = 0; k < 10; ++k) {
            const double x = (std::log10(static_cast<double>(value)) - logStart) * static_cast<double>(width) / span;
            value += step;
            if (value > 2000.0F)
                break;
            const int column = toInt(x);
            lines.append(
                {QLine(column, 1, column, bottom), k == 0 ? GridPen::LightGraySolid : GridPen::LightGrayDotted});
        }
        step *= 10.0F;
    }
    return lines;
}

namespace {

// A pixel and a gap of two.
qint64 dotStep(GridPen pen)
{
    return isDotted(pen) ? 3 : 1;
}

QLine cutToRows(const QLine &line, qint64 dotStep, int topY, int bottomY)
{
    const qint64 hidden = std::max<qint64>(0, static_cast<qint64>(topY) - line.y1());
    const qint64 top = line.y1() + (hidden + dotStep - 1) / dotStep * dotStep;
    const qint64 bottom = std::min<qint64>(line.y2(), static_cast<qint64>(bottomY) + 1);
    if (top > bottom)
        return {};
    return {line.x1(), static_cast<int>(top), line.x2(), static_cast<int>(bottom)};
}

} // namespace

QLine cutVertical(const QLine &line, int topY, int bottomY)
{
    return cutToRows(line, 1, topY, bottomY);
}

QLine cutVertical(const GridLine &line, int topY, int bottomY)
{
    return cutToRows(line.line, dotStep(line.pen), topY, bottomY);
}

QLine cutHorizontal(const GridLine &line, int leftX, int rightX)
{
    const QLine &whole = line.line;
    const QLine cut = cutToRows({whole.y1(), whole.x1(), whole.y2(), whole.x2()}, dotStep(line.pen), leftX, rightX);
    return cut.isNull() ? QLine() : QLine(cut.y1(), cut.x1(), cut.y2(), cut.x2());
}

int labelStep(float scale)
{
    if (scale <= 100.0F)
        return 5;
    if (scale <= 500.0F)
        return 10;
    if (scale < 5000.0F)
        return 50;
    return scale < 10000.0F ? 100 : 500;
}

namespace {

QVector<DepthTick> ticksEvery(qint64 step, const DepthAxis &axis, int topY, int bottomY)
{
    QVector<DepthTick> ticks;
    if (!axis.isDrawable())
        return ticks;
    const auto rowOf = [&](qint64 depth) { return toInt(axis.toPixel(static_cast<double>(depth))); };
    const double end = static_cast<double>(axis.end);
    const qint64 last = wholeDepth(std::ceil(end)) - 1;
    forVisibleMultiples(axis, wholeDepth(static_cast<double>(axis.start + 1.0F)), last, step, topY, bottomY, 0, 1,
                        rowOf, [&](qint64 depth) {
                            ticks.append({axis.toPixel(static_cast<double>(depth)), depth});
                        });
    return ticks;
}

} // namespace

QVector<DepthTick> depthTicks(const DepthAxis &axis, int topY, int bottomY)
{
    return ticksEvery(10, axis, topY, bottomY);
}

QLineF leftTick(const DepthTick &tick)
{
    return {0, tick.y, 3, tick.y};
}

QLineF rightTick(const DepthTick &tick, float width)
{
    const double right = static_cast<double>(width);
    return {right - 4, tick.y, right - 1, tick.y};
}

QVector<DepthTick> depthLabels(const DepthAxis &axis, float scale, int topY, int bottomY)
{
    // Labels stand at multiples of 50 that are multiples of the label step too.
    return ticksEvery(std::max(labelStep(scale), 50), axis, topY, bottomY);
}

QString labelText(const DepthTick &label)
{
    return QString::number(label.depth);
}

QPoint labelPosition(const DepthTick &label, float trackWidth, int textWidth, int fontHeight)
{
    return {toInt(static_cast<double>(trackWidth) / 2 - textWidth / 2.0), toInt(fontHeight / 2.0 + label.y - 1)};
}

} // namespace logview
