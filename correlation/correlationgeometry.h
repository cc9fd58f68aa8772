#pragma once

#include "correlation/correlationproperties.h"
#include "logview/geometry/depthaxis.h"

#include <QColor>
#include <QHash>
#include <QLineF>
#include <QPolygonF>
#include <QVector>

#include <optional>

struct WellMarker;

/// Where a correlation draws its wells, and what it draws between them: plain functions on numbers.
namespace correlation {

/// Pixels between the last track of a well and the first of the next.
constexpr double gapBetweenWells = 80;
/// How far above the flattening marker a well begins, in metres.
constexpr double flatteningLeadM = 1000;
/// Width of tracks that are no Depth tracks, in pixels: \a trackWidth inches at \a dotsPerInch. A width or resolution
/// that is no positive number counts as the default.
double trackWidthPx(double trackWidth, int dotsPerInch);

/// What decides the depths that a well's tracks span.
struct WellExtent
{
    double totalDepthM = 0; ///< measured depth
    double kbElevationM = 0;
    std::optional<double> flatDepthM; ///< depth of the flattening marker, where the well has it
};

/// The depths of a well's tracks in the display's unit, and their height at the paper scale 1:\a scale. Measured depth
/// and TVDKB begin at 0, TVDSS at the kelly bushing; with a flattening marker the tracks begin flatteningLeadM above it.
/// 0 high at scale 0, and where the range is upside down or not finite.
logview::DepthAxis axisOf(const WellExtent &well, logview::DepthType type, logview::DepthUnit unit, float scale);

/// A marker as the correlation places it: depth in metres as the markers operation gives it.
struct PlacedMarker
{
    double depthM = 0;
    QColor color;
};

/// The markers of a well by trimmed name; of several of one name the first. Those without a finite depth are left out.
QHash<QString, PlacedMarker> markersByName(const QVector<WellMarker> &markers);

/// One well as it stands in the panel.
struct WellColumn
{
    double left = 0; ///< x where its first track begins
    double right = 0; ///< x where its last track ends
    logview::DepthAxis axis;
    logview::DepthReference reference; ///< of measured depths
    QHash<QString, PlacedMarker> markers;
    /// y of a depth in metres in the whole panel; also above and below the tracks. Nothing where nothing can be mapped.
    std::optional<double> toY(double depthM) const;
};

/// x where the well behind one that ends at \a right begins.
double nextLeft(double right);

/// A line between equal markers of neighbouring wells.
struct ConnectorLine
{
    QLineF line;
    QColor color; ///< of the right well's marker, black when that is white
};
/// The lines of \a markers, by marker and then from left to right. A well without the marker ends the line there.
QVector<ConnectorLine> connectorLines(const QVector<WellColumn> &wells, const QStringList &markers);

/// A zone shaded between two neighbouring wells.
struct ZonePolygon
{
    QPolygonF polygon; ///< left start, right start, right end, left end
    QColor color; ///< with the alpha of shaded zones
};
/// The visible zones, by zone and then from left to right. A zone is left out between wells of which one has no depth
/// for its start or end, or a negative one.
QVector<ZonePolygon> zonePolygons(const QVector<WellColumn> &wells, const QVector<CorrelationZone> &zones);

/// Height of the scene over wells of these axes: the highest, at least 100, and sceneMarginBelow.
double sceneHeight(const QVector<WellColumn> &wells);

} // namespace correlation
