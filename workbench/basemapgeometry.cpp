#include "workbench/basemapgeometry.h"

#include "base/numbers.h"

#include <QHash>

#include <algorithm>
#include <array>
#include <cmath>

namespace workbench {

namespace {

constexpr double farthestCoordinate = 1e9;
constexpr double samePlacePx = 0.5;

/// Rectangles that are taken, found again by the squares of a coarse grid that they touch.
class TakenSpace
{
public:
    void add(const QRectF &rect)
    {
        const int index = m_rects.size();
        m_rects.append(rect);
        forEachCell(rect, [this, index](quint64 cell) {
            m_cells[cell].append(index);
            return true;
        });
    }

    bool isFree(const QRectF &rect) const
    {
        return forEachCell(rect, [this, &rect](quint64 cell) {
            for (int index : m_cells.value(cell))
                if (m_rects.at(index).intersects(rect))
                    return false;
            return true;
        });
    }

private:
    template<class Visit>
    static bool forEachCell(const QRectF &rect, Visit visit)
    {
        constexpr double cellPx = 32;
        const auto cellOf = [](double pixel) { return static_cast<qint32>(std::floor(pixel / cellPx)); };
        for (qint32 row = cellOf(rect.top()); row <= cellOf(rect.bottom()); ++row)
            for (qint32 column = cellOf(rect.left()); column <= cellOf(rect.right()); ++column)
                if (!visit(static_cast<quint64>(static_cast<quint32>(row)) << 32 | static_cast<quint32>(column)))
                    return false;
        return true;
    }

    QVector<QRectF> m_rects;
    QHash<quint64, QVector<int>> m_cells;
};

// The rectangles in which a label may stand, the best first.
std::array<QRectF, 8> labelPlaces(const QPointF &point, const QSizeF &size, double radius)
{
    const double gap = radius + 2;
    const double middleX = point.x() - size.width() / 2;
    const double middleY = point.y() - size.height() / 2;
    const double left = point.x() - gap - size.width();
    const double right = point.x() + gap;
    const double above = point.y() - gap - size.height();
    const double below = point.y() + gap;
    return {QRectF(QPointF(right, middleY), size), QRectF(QPointF(left, middleY), size),
            QRectF(QPointF(middleX, above), size), QRectF(QPointF(middleX, below), size),
            QRectF(QPointF(right, above), size),   QRectF(QPointF(right, below), size),
            QRectF(QPointF(left, above), size),    QRectF(QPointF(left, below), size)};
}

// Exactly one of the 1-2-5 series, without the noise of repeated multiplication.
double seriesNumber(int step, int exponent)
{
    return step * std::pow(10.0, exponent);
}

QVector<MapTick> ticks(double from, double to, double metresPerPixel, double spacingPx,
                       const std::function<double(double)> &toPixel)
{
    QVector<MapTick> result;
    const double step = std::max(1.0, niceNumberAbove(spacingPx * metresPerPixel));
    for (double index = std::ceil(from / step); index * step <= to; ++index)
        result.append(
            {toPixel(index * step), QString::fromLatin1(base::formatFixed(index == 0 ? 0 : index * step, 0))});
    return result;
}

} // namespace

MapSymbol mapSymbolOf(int wellTypeCode)
{
    switch (wellTypeCode) {
    case host::OilWell:
        return MapSymbol::Oil;
    case host::GasWell:
        return MapSymbol::Gas;
    case host::OilGasWell:
        return MapSymbol::OilAndGas;
    case host::DryWell:
        return MapSymbol::Dry;
    default:
        return MapSymbol::Other;
    }
}

bool isFinite(const QPointF &point)
{
    return std::isfinite(point.x()) && std::isfinite(point.y());
}

bool hasPosition(const MapWell &well)
{
    return std::fabs(well.x) <= farthestCoordinate && std::fabs(well.y) <= farthestCoordinate
        && (well.x != 0 || well.y != 0);
}

MapFrame::MapFrame(const QVector<MapWell> &wells, const QRectF &area, double marginPx)
    : m_area(area)
{
    double left = 0;
    double right = 0;
    double bottom = 0;
    double top = 0;
    bool isFirst = true;
    for (const MapWell &well : wells) {
        if (!hasPosition(well))
            continue;
        left = isFirst ? well.x : std::min(left, well.x);
        right = isFirst ? well.x : std::max(right, well.x);
        bottom = isFirst ? well.y : std::min(bottom, well.y);
        top = isFirst ? well.y : std::max(top, well.y);
        isFirst = false;
    }
    m_centreX = (left + right) / 2;
    m_centreY = (bottom + top) / 2;
    const double width = std::max(1.0, area.width() - 2 * marginPx);
    const double height = std::max(1.0, area.height() - 2 * marginPx);
    m_metresPerPixel =
        std::max({(right - left) / width, (top - bottom) / height, smallestSpanM / std::min(width, height)});
}

QPointF MapFrame::toPixel(double x, double y) const
{
    return {m_area.center().x() + (x - m_centreX) / m_metresPerPixel,
            m_area.center().y() - (y - m_centreY) / m_metresPerPixel};
}

QPointF MapFrame::toMap(const QPointF &pixel) const
{
    return {m_centreX + (pixel.x() - m_area.center().x()) * m_metresPerPixel,
            m_centreY - (pixel.y() - m_area.center().y()) * m_metresPerPixel};
}

double niceNumberAbove(double value)
{
    if (!(value > 0) || !std::isfinite(value))
        return 1;
    const int exponent = static_cast<int>(std::floor(std::log10(value))) - 1;
    for (int i = exponent;; ++i)
        for (int step : {1, 2, 5})
            if (seriesNumber(step, i) >= value * (1 - 1e-9))
                return seriesNumber(step, i);
}

double niceNumberBelow(double value)
{
    if (!(value > 0) || !std::isfinite(value))
        return 1;
    const int exponent = static_cast<int>(std::floor(std::log10(value))) + 1;
    for (int i = exponent;; --i)
        for (int step : {5, 2, 1})
            if (seriesNumber(step, i) <= value * (1 + 1e-9))
                return seriesNumber(step, i);
}

QVector<MapTick> eastingTicks(const MapFrame &frame, double spacingPx)
{
    return ticks(frame.toMap(frame.area().topLeft()).x(), frame.toMap(frame.area().bottomRight()).x(),
                 frame.metresPerPixel(), spacingPx, [&frame](double x) { return frame.toPixel(x, 0).x(); });
}

QVector<MapTick> northingTicks(const MapFrame &frame, double spacingPx)
{
    return ticks(frame.toMap(frame.area().bottomRight()).y(), frame.toMap(frame.area().topLeft()).y(),
                 frame.metresPerPixel(), spacingPx, [&frame](double y) { return frame.toPixel(0, y).y(); });
}

ScaleBar scaleBar(const MapFrame &frame, double longestPx)
{
    ScaleBar bar;
    bar.lengthM = niceNumberBelow(longestPx * frame.metresPerPixel());
    bar.lengthPx = bar.lengthM / frame.metresPerPixel();
    const bool isLong = bar.lengthM >= 1000;
    bar.text = QString::fromLatin1(base::formatWritten(isLong ? bar.lengthM / 1000 : bar.lengthM))
        + (isLong ? QStringLiteral(" km") : QStringLiteral(" m"));
    return bar;
}

QVector<MapLabel> placeLabels(const QVector<QPointF> &points, const std::function<QSizeF(int)> &labelSize,
                              const LabelSpace &space, int first)
{
    TakenSpace taken;
    for (const QRectF &rect : space.reserved)
        taken.add(rect);
    const double radius = space.symbolRadiusPx;
    const QRectF shown = space.area.adjusted(-radius, -radius, radius, radius);
    const auto isShown = [&shown](const QPointF &point) { return isFinite(point) && shown.contains(point); };
    for (const QPointF &point : points)
        if (isShown(point))
            taken.add(QRectF(point.x() - radius, point.y() - radius, 2 * radius, 2 * radius));

    QVector<MapLabel> labels;
    const auto place = [&](int well, bool isForced) {
        const std::array<QRectF, 8> places = labelPlaces(points.at(well), labelSize(well), radius);
        const auto free = std::find_if(places.begin(), places.end(), [&](const QRectF &rect) {
            return space.area.contains(rect) && taken.isFree(rect);
        });
        if (free == places.end() && !isForced)
            return;
        // A label that must be shown takes the first place that lies inside, else the first of all.
        const auto inside = std::find_if(places.begin(), places.end(),
                                         [&space](const QRectF &rect) { return space.area.contains(rect); });
        const QRectF rect = free != places.end() ? *free : inside != places.end() ? *inside : places.front();
        taken.add(rect);
        labels.append({well, rect});
    };
    const bool hasFirst = first >= 0 && first < points.size() && isShown(points.at(first));
    if (hasFirst)
        place(first, true);
    for (int well = 0; well < points.size(); ++well)
        if (isShown(points.at(well)) && !(hasFirst && well == first))
            place(well, false);
    return labels;
}

int wellAt(const QVector<QPointF> &points, const QPointF &pixel, double radiusPx, int current)
{
    const auto distance = [&pixel](const QPointF &point) {
        return std::hypot(point.x() - pixel.x(), point.y() - pixel.y());
    };
    int nearest = -1;
    for (int i = 0; i < points.size(); ++i) {
        if (!isFinite(points.at(i)) || distance(points.at(i)) > radiusPx)
            continue;
        if (nearest < 0 || distance(points.at(i)) < distance(points.at(nearest)))
            nearest = i;
    }
    if (nearest < 0)
        return -1;
    QVector<int> together;
    for (int i = 0; i < points.size(); ++i)
        if (isFinite(points.at(i))
            && std::hypot(points.at(i).x() - points.at(nearest).x(), points.at(i).y() - points.at(nearest).y())
                <= samePlacePx)
            together.append(i);
    const int position = together.indexOf(current);
    return position < 0 ? nearest : together.at((position + 1) % together.size());
}

} // namespace workbench
