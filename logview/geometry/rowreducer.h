#pragma once

#include "logview/geometry/curvepath.h"

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
                flush();
                m_sink.rowBegins(i);
            }
            row = number;
            add(point);
        }
        flush();
    }

private:
    struct Extreme
    {
        QPointF point;
        int index = 0;
    };

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
};

} // namespace logview
