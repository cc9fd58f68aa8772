#pragma once

#include "logview/geometry/sampleplacer.h"
#include "logview/geometry/valuescan.h"

#include <QPainterPath>
#include <QRectF>

#include <vector>

/// The line of a log, reduced to what rows of the device show: of the samples that follow one another in one row the first, the
/// smallest, the largest and the last in x, in their order; where there are four or fewer all of them. Breaks are kept. Depths that
/// are not in order are not reduced.
namespace logview {

/// Of points of one row leaves those that show. One of them may be there twice.
void keepShown(std::vector<QPointF> &row);
/// Finds the points that show of the samples [first, end) of one row without placing each. False, and none, where the line breaks.
bool findShown(std::vector<QPointF> &row, const CurveSamples &samples, const SamplePlacer &placer, int first,
               int end);

/// Calls use(point, isFirst) for each point of the reduced line of the samples [first, second); isFirst where an unbroken piece
/// begins; a point may come twice. Where the first and the last sample are the last ones of their rows it is a part of the line of
/// all samples.
template<class Use>
void forReducedLine(const CurveSamples &samples, const SamplePlacer &placer, std::pair<int, int> range,
                    double rowsPerPixel, const Use &use)
{
    constexpr int many = 12; // samples in a row, for which they are not placed one by one
    constexpr qint64 none = -1;
    countReadSamples(range);
    const bool isInOrder = samples.order() != DepthOrder::Unsorted;
    const auto rowOf = [&](double y) { return static_cast<qint64>(y * rowsPerPixel); };
    std::vector<QPointF> row; // what may show of the row that is looked at
    qint64 number = none; // of that row
    int begin = range.first; // the first of its samples
    int perRow = 0; // samples of the row before
    bool isFirst = true;
    const auto finishRow = [&] {
        keepShown(row);
        for (const QPointF &point : row) {
            use(point, isFirst);
            isFirst = false;
        }
        row.clear();
    };
    for (int i = range.first; i < range.second; ++i) {
        QPointF point;
        const SamplePlacer::Place place = placer.place(samples, i, point);
        if (place == SamplePlacer::Skipped)
            continue;
        const qint64 next = place == SamplePlacer::Break ? none : rowOf(point.y());
        if (next != number || !isInOrder) {
            finishRow();
            perRow = i - begin;
            begin = i;
        }
        number = next;
        if (place == SamplePlacer::Break) {
            isFirst = true;
            continue;
        }
        if (i == begin && isInOrder && perRow >= many) {
            const int end =
                firstAround(i, i + perRow, range.second, [&](int k) { return rowOf(placer.y(samples, k)) == next; });
            if (end - i >= many && findShown(row, samples, placer, i, end)) {
                i = end - 1;
                continue;
            }
        }
        row.push_back(point);
    }
    finishRow();
}

/// The reduced line of the samples of some rows, and of one more on both sides, as a path. Of depths that are not in order that of the
/// whole depth range.
QPainterPath reducedPath(const CurveSamples &samples, const CurveKey &key, const ShownRows &rows = {});

/// Whether the line of the samples comes into \a area, from the samples between its top and bottom: picking. Widen the
/// area by what the pointer may miss.
bool passes(const CurveSamples &samples, const CurveKey &key, const QRectF &area);

} // namespace logview
