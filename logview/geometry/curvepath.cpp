#include "logview/geometry/curvepath.h"

#include <algorithm>
#include <atomic>
#include <cmath>

namespace logview {

namespace {

std::atomic<int> builds{0};

// Rows that a slice has more than are asked for: lines are drawn exactly only when the painter knows the ones before.
constexpr double sliceMargin = 8;

} // namespace

CurveKey curveKey(const CurveSamples &samples, const DepthAxis &axis, const DepthReference &reference,
                  const ValueScale &scale, double rowsPerPixel)
{
    return {axis, reference, scale, samples.revision(), rowsPerPixel};
}

bool operator==(const CurveKey &a, const CurveKey &b)
{
    return a.axis == b.axis && a.reference == b.reference && a.scale == b.scale && a.revision == b.revision
        && a.rowsPerPixel == b.rowsPerPixel;
}

SamplePlacer::SamplePlacer(const CurveKey &key)
    : m_key(key)
    , m_start(static_cast<double>(key.axis.start))
    , m_extent(static_cast<double>(key.axis.end) - m_start)
    , m_height(static_cast<double>(key.axis.height))
    , m_isDrawable(key.axis.isDrawable() && std::isfinite(key.scale.width) && key.scale.width >= 0)
    , m_value(key.scale)
{
}

std::pair<int, int> SamplePlacer::range(const CurveSamples &samples) const
{
    const int size = samples.size();
    if (!m_isDrawable)
        return {0, 0};
    if (samples.order() == DepthOrder::Unsorted)
        return {0, size};
    const bool isAscending = samples.order() == DepthOrder::Ascending;
    const double *begin = samples.depthsM();
    const auto isBefore = [&](double depthM) {
        const float depth = m_key.reference.toDisplay(depthM);
        return isAscending ? depth < m_key.axis.start : depth > m_key.axis.end;
    };
    const auto isNotAfter = [&](double depthM) {
        const float depth = m_key.reference.toDisplay(depthM);
        return isAscending ? depth <= m_key.axis.end : depth >= m_key.axis.start;
    };
    const double *first = std::partition_point(begin, begin + size, isBefore);
    const double *last = std::partition_point(first, begin + size, isNotAfter);
    return {static_cast<int>(first - begin), static_cast<int>(last - begin)};
}

std::pair<int, int> SamplePlacer::range(const CurveSamples &samples, double topY, double bottomY) const
{
    const std::pair<int, int> whole = range(samples);
    if (samples.order() == DepthOrder::Unsorted)
        return whole;
    const bool isAscending = samples.order() == DepthOrder::Ascending;
    const double *begin = samples.depthsM();
    const auto isBefore = [&](double depthM) {
        const double y = yOf(m_key.reference.toDisplay(depthM));
        return isAscending ? y < topY : y > bottomY;
    };
    const auto isNotAfter = [&](double depthM) {
        const double y = yOf(m_key.reference.toDisplay(depthM));
        return isAscending ? y <= bottomY : y >= topY;
    };
    const double *first = std::partition_point(begin + whole.first, begin + whole.second, isBefore);
    const double *last = std::partition_point(first, begin + whole.second, isNotAfter);
    return {std::max(static_cast<int>(first - begin) - 1, whole.first),
            std::min(static_cast<int>(last - begin) + 1, whole.second)};
}

QPainterPath samplePath(const CurveSamples &samples, const CurveKey &key, double topY, double bottomY)
{
    const SamplePlacer placer(key);
    const auto [begin, end] = placer.range(samples, topY, bottomY);
    QPainterPath path;
    bool isOpen = false;
    for (int i = begin; i < end; ++i) {
        QPointF point;
        const SamplePlacer::Place place = placer.place(samples, i, point);
        if (place == SamplePlacer::Drawn) {
            if (isOpen)
                path.lineTo(point);
            else
                path.moveTo(point);
            isOpen = true;
        } else if (place == SamplePlacer::Break) {
            isOpen = false;
        }
    }
    return path;
}

namespace {

// The points of one row of pixels: all while they are four or fewer, then first, smallest, largest and last.
class RowReducer
{
public:
    explicit RowReducer(QVector<QPointF> &points)
        : m_points(points)
    {
    }

    void add(const QPointF &point)
    {
        if (m_count < 4) {
            m_kept[m_count] = point;
        } else {
            if (m_count == 4)
                for (int i = 0; i < 4; ++i)
                    extend(m_kept[i], i);
            extend(point, m_count);
            m_last = point;
        }
        ++m_count;
    }

    // Whether the row that ends here had more than four.
    bool flush()
    {
        const bool isReduced = m_count > 4;
        if (isReduced) {
            const bool isSmallestFirst = m_smallest.index < m_largest.index;
            const Extreme &upper = isSmallestFirst ? m_smallest : m_largest;
            const Extreme &lower = isSmallestFirst ? m_largest : m_smallest;
            m_points.append(m_kept[0]);
            if (upper.index != 0)
                m_points.append(upper.point);
            if (lower.index != upper.index && lower.index != 0 && lower.index != m_count - 1)
                m_points.append(lower.point);
            if (upper.index != m_count - 1)
                m_points.append(m_last);
        } else {
            for (int i = 0; i < m_count; ++i)
                m_points.append(m_kept[i]);
        }
        m_count = 0;
        return isReduced;
    }

private:
    struct Extreme
    {
        QPointF point;
        int index = 0;
    };

    void extend(const QPointF &point, int index)
    {
        if (index == 0 || point.x() < m_smallest.point.x())
            m_smallest = {point, index};
        if (index == 0 || point.x() > m_largest.point.x())
            m_largest = {point, index};
    }

    QVector<QPointF> &m_points;
    QPointF m_kept[4];
    Extreme m_smallest;
    Extreme m_largest;
    QPointF m_last;
    int m_count = 0;
};

} // namespace

CurvePath::CurvePath(const CurveSamples &samples, const CurveKey &key)
    : m_key(key)
    , m_order(samples.order())
{
    ++builds;
    append(samples, SamplePlacer(key).range(samples));
}

CurvePath CurvePath::part(const CurveSamples &samples, const CurveKey &key, double topY, double bottomY)
{
    CurvePath path;
    path.m_key = key;
    path.m_order = samples.order();
    path.append(samples, SamplePlacer(key).range(samples, topY, bottomY));
    return path;
}

void CurvePath::append(const CurveSamples &samples, std::pair<int, int> range)
{
    const SamplePlacer placer(m_key);
    const auto [begin, end] = range;
    const double rows = static_cast<double>(m_key.axis.height) * m_key.rowsPerPixel + 2;
    m_points.reserve(static_cast<int>(std::min(4 * rows, static_cast<double>(end - begin))));

    RowReducer row(m_points);
    qint64 rowNumber = -1;
    const auto closeRow = [&] { m_hasDenseRows = row.flush() || m_hasDenseRows; };
    for (int i = begin; i < end; ++i) {
        QPointF point;
        const SamplePlacer::Place place = placer.place(samples, i, point);
        if (place == SamplePlacer::Skipped)
            continue;
        if (place == SamplePlacer::Break) {
            closeRow();
            closeSubPath();
            rowNumber = -1;
            continue;
        }
        const auto number = static_cast<qint64>(point.y() * m_key.rowsPerPixel);
        if (number != rowNumber || m_order == DepthOrder::Unsorted)
            closeRow();
        rowNumber = number;
        row.add(point);
    }
    closeRow();
    closeSubPath();
    m_points.squeeze();
    m_subPaths.squeeze();
}

void CurvePath::closeSubPath()
{
    const int count = m_points.size() - m_open;
    if (count == 0)
        return;
    SubPath subPath{m_open, count, m_points.at(m_open).y(), m_points.at(m_open).y()};
    double left = m_points.at(m_open).x();
    double right = left;
    for (int i = m_open; i < m_points.size(); ++i) {
        const QPointF &point = m_points.at(i);
        subPath.top = std::min(subPath.top, point.y());
        subPath.bottom = std::max(subPath.bottom, point.y());
        left = std::min(left, point.x());
        right = std::max(right, point.x());
    }
    // Not QRectF::united(): a rectangle without width or height counts as empty there.
    if (m_subPaths.isEmpty())
        m_bounds = QRectF(QPointF(left, subPath.top), QPointF(right, subPath.bottom));
    else
        m_bounds.setCoords(std::min(m_bounds.left(), left), std::min(m_bounds.top(), subPath.top),
                           std::max(m_bounds.right(), right), std::max(m_bounds.bottom(), subPath.bottom));
    m_subPaths.append(subPath);
    m_open = m_points.size();
}

QVector<CurvePath::Slice> CurvePath::slices(double topY, double bottomY) const
{
    QVector<Slice> slices;
    const double top = topY - sliceMargin;
    const double bottom = bottomY + sliceMargin;
    if (m_order == DepthOrder::Unsorted) {
        for (const SubPath &subPath : m_subPaths)
            if (subPath.bottom >= top && subPath.top <= bottom)
                slices.append({subPath.first, subPath.count});
        return slices;
    }
    const bool isAscending = m_order == DepthOrder::Ascending;
    const auto isBefore = [&](double upper, double lower) { return isAscending ? lower < top : upper > bottom; };
    const auto isAfter = [&](double upper, double lower) { return isAscending ? upper > bottom : lower < top; };
    auto subPath = std::partition_point(m_subPaths.begin(), m_subPaths.end(),
                                        [&](const SubPath &each) { return isBefore(each.top, each.bottom); });
    for (; subPath != m_subPaths.end() && !isAfter(subPath->top, subPath->bottom); ++subPath) {
        const auto begin = m_points.begin() + subPath->first;
        const auto end = begin + subPath->count;
        auto first = std::partition_point(begin, end, [&](const QPointF &p) { return isBefore(p.y(), p.y()); });
        auto last = std::partition_point(first, end, [&](const QPointF &p) { return !isAfter(p.y(), p.y()); });
        // One more on both sides, for the lines that come in and go out.
        first -= first != begin ? 1 : 0;
        last += last != end ? 1 : 0;
        if (last - first > 0)
            slices.append({static_cast<int>(first - m_points.begin()), static_cast<int>(last - first)});
    }
    return slices;
}

int CurvePath::subPathStart(int point) const
{
    const auto next = std::partition_point(m_subPaths.begin(), m_subPaths.end(),
                                           [point](const SubPath &each) { return each.first <= point; });
    return next == m_subPaths.begin() ? 0 : (next - 1)->first;
}

std::pair<double, double> CurvePath::crossing(double y) const
{
    const bool isAscending = m_order == DepthOrder::Ascending;
    const auto after = std::partition_point(m_points.begin(), m_points.end(), [&](const QPointF &point) {
        return isAscending ? point.y() < y : point.y() > y;
    });
    if (after == m_points.begin() || after == m_points.end()
        || subPathStart(static_cast<int>(after - m_points.begin())) == after - m_points.begin())
        return {0, 0};
    return std::minmax((after - 1)->y(), after->y());
}

void CurvePath::appendTo(QPainterPath &path, const Slice &slice) const
{
    path.moveTo(m_points.at(slice.first));
    for (int i = slice.first + 1; i < slice.first + slice.count; ++i)
        path.lineTo(m_points.at(i));
}

QPainterPath CurvePath::path(const QVector<Slice> &slices) const
{
    int count = 0;
    for (const Slice &slice : slices)
        count += slice.count;
    QPainterPath path;
    path.reserve(count);
    for (const Slice &slice : slices)
        appendTo(path, slice);
    return path;
}

QPainterPath CurvePath::path() const
{
    QPainterPath path;
    path.reserve(m_points.size());
    for (const SubPath &subPath : m_subPaths)
        appendTo(path, {subPath.first, subPath.count});
    return path;
}

bool CurvePath::intersects(const QRectF &area) const
{
    const QRectF wanted = area.normalized();
    for (const Slice &slice : slices(wanted.top(), wanted.bottom())) {
        QPointF from = m_points.at(slice.first);
        for (int i = slice.first; i < slice.first + slice.count; ++i) {
            // The stretch of the line within the area's top and bottom, by its smallest and largest x.
            QPointF upper = from;
            QPointF lower = m_points.at(i);
            from = lower;
            if (upper.y() > lower.y())
                std::swap(upper, lower);
            if (lower.y() < wanted.top() || upper.y() > wanted.bottom())
                continue;
            const double slope = lower.y() > upper.y() ? (lower.x() - upper.x()) / (lower.y() - upper.y()) : 0;
            double x1 = upper.x();
            double x2 = lower.x();
            if (upper.y() < wanted.top())
                x1 += (wanted.top() - upper.y()) * slope;
            if (lower.y() > wanted.bottom())
                x2 -= (lower.y() - wanted.bottom()) * slope;
            if (std::min(x1, x2) <= wanted.right() && std::max(x1, x2) >= wanted.left())
                return true;
        }
    }
    return false;
}

int CurvePath::buildCount()
{
    return builds;
}

} // namespace logview
