#pragma once

#include "logview/geometry/depthaxis.h"

#include <QLine>
#include <QLineF>
#include <QPen>
#include <QPoint>
#include <QString>
#include <QVector>

/// Grid lines, ticks and depth labels of tracks, as numbers. What is asked for a visible pixel interval costs no more
/// than that interval is high, whatever the depth range.
namespace logview {

enum class GridPen { GraySolid, LightGraySolid, LightGrayDotted, BlackDotted };
/// The pen of a kind: 1 pixel, square cap, bevel join.
QPen gridPen(GridPen kind);

struct GridLine
{
    QLine line;
    GridPen pen = GridPen::GraySolid;
};
bool operator==(const GridLine &a, const GridLine &b);

/// The horizontal lines of linear and logarithmic tracks with y between \a topY and \a bottomY (both included), in
/// the order in which they are drawn: ascending depth. Where more lines fall on one pixel row than can be told apart,
/// those that the last ones cover are left out. \a verticalOffset is taken off every y.
QVector<GridLine> horizontalGrid(const DepthAxis &axis, float scale, float width, int topY, int bottomY,
                                 float verticalOffset = 0);

/// The eleven vertical lines of a linear track, left to right, over the whole height.
QVector<GridLine> linearGrid(float width, float height);
/// The vertical lines of a logarithmic track, which spans 0.1 to 2000 whatever its curves' limits. Values add up
/// through the decades, so decades begin at 0.1, 1.1, 11.1 and 111.1.
QVector<GridLine> logarithmicGrid(float width, float height);

/// A vertical line cut to the visible rows, to be drawn in place of one millions of pixels long.
QLine cutVertical(const QLine &line, int topY, int bottomY);
/// The same for a line of the grid: one of dots begins with its first visible dot. The painter starts the pattern
/// anew where a line enters the device, so that dots would crawl when the view scrolls.
QLine cutVertical(const GridLine &line, int topY, int bottomY);
/// The same for a horizontal line and the visible columns.
QLine cutHorizontal(const GridLine &line, int leftX, int rightX);

/// Step of the depth labels at the scale 1:\a scale.
int labelStep(float scale);

struct DepthTick
{
    double y = 0;
    qint64 depth = 0;
};
/// The ticks of a depth track in the visible rows, every ten depth units, at most one a pixel row.
QVector<DepthTick> depthTicks(const DepthAxis &axis, int topY, int bottomY);
/// The two lines of a tick: left and right side of the track.
QLineF leftTick(const DepthTick &tick);
QLineF rightTick(const DepthTick &tick, float width);

/// The labels of a depth track whose ticks stand in the rows \a topY to \a bottomY, at most one a pixel row. Ask for
/// some rows more than are visible: a label is half a font height higher and lower than its tick.
QVector<DepthTick> depthLabels(const DepthAxis &axis, float scale, int topY, int bottomY);
/// What a label reads.
QString labelText(const DepthTick &label);
/// Where its baseline starts, for the text's width and the height of the font.
QPoint labelPosition(const DepthTick &label, float trackWidth, int textWidth, int fontHeight);

} // namespace logview
