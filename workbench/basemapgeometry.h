#pragma once

#include "host/hostrecords.h"

#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <QString>
#include <QVector>

#include <functional>

/// The geometry of a base map: plain numbers in, plain numbers out. Map coordinates are metres with north up, pixels
/// are logical pixels with y down.
namespace workbench {

enum class MapSymbol { Oil, Gas, OilAndGas, Dry, Other };

MapSymbol mapSymbolOf(int wellTypeCode);

struct MapWell
{
    QString name;
    double x = 0;
    double y = 0;
    int typeCode = host::NoWellType;
};

/// Whether both coordinates are.
bool isFinite(const QPointF &point);

/// Whether the well can be drawn: finite coordinates of a sensible size that are not 0,0, which stands for "none".
bool hasPosition(const MapWell &well);

/// The transform between the map and a rectangle of pixels, with one scale on both axes.
class MapFrame
{
public:
    /// Wells closer together than this still get a frame of this size.
    static constexpr double smallestSpanM = 200;

    MapFrame() = default;
    /// All wells with a position inside \a area with \a marginPx around them. Without such a well the frame stands
    /// around the origin.
    MapFrame(const QVector<MapWell> &wells, const QRectF &area, double marginPx);

    QPointF toPixel(double x, double y) const;
    QPointF toMap(const QPointF &pixel) const;
    double metresPerPixel() const { return m_metresPerPixel; }
    QRectF area() const { return m_area; }

private:
    QRectF m_area;
    double m_centreX = 0;
    double m_centreY = 0;
    double m_metresPerPixel = 1;
};

struct MapTick
{
    double pixel = 0;
    QString text; ///< metres
};

/// The next number of the series 1, 2, 5, 10, … that is not smaller.
double niceNumberAbove(double value);
/// The next number of the same series that is not larger.
double niceNumberBelow(double value);

/// Ticks at multiples of a nice step of whole metres, at least \a spacingPx apart and inside the frame's area.
QVector<MapTick> eastingTicks(const MapFrame &frame, double spacingPx);
QVector<MapTick> northingTicks(const MapFrame &frame, double spacingPx);

struct ScaleBar
{
    double lengthM = 0;
    double lengthPx = 0;
    QString text; ///< "500 m", "2 km"
};

/// The longest bar of a nice length that is not longer than \a longestPx.
ScaleBar scaleBar(const MapFrame &frame, double longestPx);

struct MapLabel
{
    int well = 0;
    QRectF rect;
};

/// What labels keep clear of.
struct LabelSpace
{
    QRectF area; ///< labels lie inside
    QVector<QRectF> reserved; ///< and outside these
    double symbolRadiusPx = 0; ///< and touch no symbol
};

/// Places beside each point the first label that is free: right of it, left, above, below, at a corner; labels
/// without a free place are left out. The well \a first comes first and gets its label in any case. Points outside
/// the area or not finite have no label.
QVector<MapLabel> placeLabels(const QVector<QPointF> &points, const std::function<QSizeF(int)> &labelSize,
                              const LabelSpace &space, int first = -1);

/// The well nearest to a pixel within \a radiusPx, or -1. Of wells at one and the same place it is the one after
/// \a current, so that repeated clicks reach all of them.
int wellAt(const QVector<QPointF> &points, const QPointF &pixel, double radiusPx, int current = -1);

} // namespace workbench
