#pragma once

#include "logview/geometry/curvepath.h"
#include "logview/geometry/valuescan.h"

namespace logview {

/// The points of one row of pixels: all while they are four or fewer, then first, smallest, largest and last. They go
/// to a Sink: point(QPointF) for each, in their order, and rowBegins(int) with the first sample of each row.
template<class Sink>
class RowReducer
{
public:
    explicit RowReducer(Sink &sink)
        : m_sink(sink)
    {
    }

    /// Reduces the samples [first, second). The sink's lineBreaks() is called where the line breaks.
    void reduce(const CurveSamples &samples, const SamplePlacer &placer, std::pair<int, int> range,
                double rowsPerPixel)
    {
        countReadSamples(range);
        const bool isInOrder = samples.order() != DepthOrder::Unsorted;
        qint64 row = -1;
        for (int i = range.first; i < range.second; ++i) {
            QPointF point;
            const SamplePlacer::Place place = placer.place(samples, i, point);
            if (place == SamplePlacer::Skipped)
                continue;
            if (place == SamplePlacer::Break) {
                flush();
                m_sink.lineBreaks();
                row = -1;
                continue;
            }
            const auto number = static_cast<qint64>(point.y() * rowsPerPixel);
            if (number != row || !isInOrder) {
                m_perRow = m_count;
                flush();
                m_sink.rowBegins(i);
                if (isInOrder && m_perRow >= many && takeRow(samples, placer, i, range.second, rowsPerPixel, point)) {
                    i += m_count - 1;
                    row = number;
                    continue;
                }
            }
            row = number;
            add(point);
        }
        flush();
    }

private:
    static constexpr int many = 12; // samples in a row, for which they are not placed one by one

    struct Extreme
    {
        QPointF point;
        int index = 0;
    };

    // Takes all samples of the row that begins with one. False, with nothing done, where they are few or the line breaks.
    bool takeRow(const CurveSamples &samples, const SamplePlacer &placer, int first, int end, double rowsPerPixel,
                 const QPointF &point)
    {
        const auto rowOf = [&](int i) { return static_cast<qint64>(placer.y(samples, i) * rowsPerPixel); };
        const qint64 row = rowOf(first);
        const int stop = firstAround(first, first + m_perRow, end, [&](int i) { return rowOf(i) == row; });
        if (stop - first < many || !placer.isLinear())
            return false;
        return samples.useValues([&](const auto *values) {
            using Value = std::decay_t<decltype(*values)>;
            const ValueExtremes<Value> extremes(values, first, stop, static_cast<Value>(samples.nullValue()));
            if (!extremes.areValid)
                return false;
            // The first that stands as far out. Beyond the limits of the scale all stand on the edge.
            const auto firstLike = [&](Value extreme) {
                const double x = placer.x(static_cast<double>(extreme));
                const bool isOnEdge = (x <= 0 || x >= placer.width());
                const auto isAsFarOut = [&](Value value) { return placer.x(static_cast<double>(value)) == x; };
                const Value *found = isOnEdge ? std::find_if(values + first, values + stop, isAsFarOut)
                                              : std::find(values + first, values + stop, extreme);
                const int i = static_cast<int>(found - values);
                return Extreme{QPointF(x, placer.y(samples, i)), i - first};
            };
            // On a scale that is mirrored these are the other way round, which does not matter.
            m_smallest = firstLike(extremes.smallest);
            m_largest = firstLike(extremes.largest);
            m_kept[0] = point;
            placer.place(samples, stop - 1, m_last);
            m_count = stop - first;
            return true;
        });
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

    void extend(const QPointF &point, int index)
    {
        if (index == 0 || point.x() < m_smallest.point.x())
            m_smallest = {point, index};
        if (index == 0 || point.x() > m_largest.point.x())
            m_largest = {point, index};
    }

    void flush()
    {
        if (m_count > 4) {
            const bool isSmallestFirst = m_smallest.index < m_largest.index;
            const Extreme &upper = isSmallestFirst ? m_smallest : m_largest;
            const Extreme &lower = isSmallestFirst ? m_largest : m_smallest;
            m_sink.point(m_kept[0]);
            if (upper.index != 0)
                m_sink.point(upper.point);
            if (lower.index != upper.index && lower.index != 0 && lower.index != m_count - 1)
                m_sink.point(lower.point);
            if (upper.index != m_count - 1)
                m_sink.point(m_last);
        } else {
            for (int i = 0; i < m_count; ++i)
                m_sink.point(m_kept[i]);
        }
        m_count = 0;
    }

    Sink &m_sink;
    QPointF m_kept[4];
    Extreme m_smallest;
    Extreme m_largest;
    QPointF m_last;
    int m_count = 0;
    int m_perRow = 0; // samples of the row before
};

} // namespace logview
