#include "correlation/correlationgeometry.h"

#include "base/numbers.h"
#include "datastore/textfields.h"
#include "datastore/wellscatalogue.h"

#include <cmath>

namespace correlation {

namespace {

constexpr int zoneAlpha = 80;
constexpr double smallestSceneHeight = 100;

bool isPositive(double value)
{
    return std::isfinite(value) && value > 0;
}

double toDisplayUnit(double depthM, logview::DepthUnit unit)
{
    return unit == logview::Feet ? depthM * logview::feetPerMetre : depthM;
}

// A depth that was typed, or that of the well's marker, whose name stands in the file as fields do.
std::optional<double> zoneDepthM(const WellColumn &well, const QString &text, bool isUserDepth)
{
    if (isUserDepth)
        return base::parseNumber(text);
    const auto marker = well.markers.constFind(text.trimmed());
    if (marker != well.markers.cend())
        return marker->depthM;
    if (!text.contains(QString::fromUtf8(textfields::brokenBar)))
        return std::nullopt;
    const QStringList names = well.markers.keys();
    const int index = textfields::indexOfField(names, text);
    return index < 0 ? std::nullopt : std::optional<double>(well.markers.value(names.at(index)).depthM);
}

std::optional<double> zoneY(const WellColumn &well, const QString &text, bool isUserDepth)
{
    const std::optional<double> depthM = zoneDepthM(well, text, isUserDepth);
    if (!depthM || *depthM < 0)
        return std::nullopt;
    return well.toY(*depthM);
}

} // namespace

double trackWidthPx(double trackWidth, int dotsPerInch)
{
    constexpr int screenDotsPerInch = 96;
    return (isPositive(trackWidth) ? trackWidth : CorrelationProperties().trackWidth)
        * (dotsPerInch > 0 ? dotsPerInch : screenDotsPerInch);
}

logview::DepthAxis axisOf(const WellExtent &well, logview::DepthType type, logview::DepthUnit unit, float scale)
{
    const double elevationM = type == logview::TvdSubsea ? well.kbElevationM : 0.0;
    double topM = -elevationM;
    const double bottomM = well.totalDepthM - elevationM;
    if (well.flatDepthM)
        topM = *well.flatDepthM - elevationM - flatteningLeadM;

    logview::DepthAxis axis;
    axis.start = static_cast<float>(toDisplayUnit(topM, unit));
    axis.end = static_cast<float>(toDisplayUnit(bottomM, unit));
    const bool isRange = std::isfinite(axis.start) && std::isfinite(axis.end) && axis.end > axis.start;
    axis.height = isRange && scale > 0 ? logview::trackHeight(axis.start, axis.end, scale) : 0;
    return axis;
}

QHash<QString, PlacedMarker> markersByName(const QVector<WellMarker> &markers)
{
    QHash<QString, PlacedMarker> byName;
    byName.reserve(markers.size());
    for (const WellMarker &marker : markers) {
        const QString name = marker.name.trimmed();
        if (std::isfinite(marker.subseaDepth) && !byName.contains(name))
            byName.insert(name, {marker.subseaDepth, marker.color});
    }
    return byName;
}

std::optional<double> WellColumn::toY(double depthM) const
{
    const double extent = double(axis.end) - double(axis.start);
    if (!std::isfinite(depthM) || !(extent > 0))
        return std::nullopt;
    const double y = (double(reference.toDisplay(depthM)) - double(axis.start)) * double(axis.height) / extent;
    return std::isfinite(y) ? std::optional<double>(y) : std::nullopt;
}

double nextLeft(double right)
{
    return std::trunc(right + gapBetweenWells);
}

QVector<ConnectorLine> connectorLines(const QVector<WellColumn> &wells, const QStringList &markers)
{
    QVector<ConnectorLine> lines;
    for (const QString &name : markers) {
        std::optional<double> previousY;
        for (int i = 0; i < wells.size(); ++i) {
            const WellColumn &well = wells.at(i);
            const auto marker = well.markers.constFind(name.trimmed());
            const std::optional<double> y = marker == well.markers.cend() ? std::nullopt : well.toY(marker->depthM);
            if (previousY && y) {
                const bool isWhite = marker->color == QColor(Qt::white);
                lines.append({QLineF(wells.at(i - 1).right, *previousY, well.left, *y),
                              isWhite ? QColor(Qt::black) : marker->color});
            }
            previousY = y;
        }
    }
    return lines;
}

QVector<ZonePolygon> zonePolygons(const QVector<WellColumn> &wells, const QVector<CorrelationZone> &zones)
{
    QVector<ZonePolygon> polygons;
    for (const CorrelationZone &zone : zones) {
        if (!zone.isVisible)
            continue;
        QColor color(zone.color);
        if (!color.isValid())
            color = QColor(QLatin1String(zoneWithoutColor));
        color.setAlpha(zoneAlpha);
        std::optional<double> leftStart;
        std::optional<double> leftEnd;
        for (int i = 0; i < wells.size(); ++i) {
            const WellColumn &well = wells.at(i);
            const std::optional<double> start = zoneY(well, zone.start, zone.isStartUserDepth);
            const std::optional<double> end = zoneY(well, zone.end, zone.isEndUserDepth);
            if (leftStart && leftEnd && start && end) {
                const double left = wells.at(i - 1).right;
                polygons.append({QPolygonF({QPointF(left, *leftStart), QPointF(well.left, *start),
                                            QPointF(well.left, *end), QPointF(left, *leftEnd)}),
                                 color});
            }
            leftStart = start;
            leftEnd = end;
        }
    }
    return polygons;
}

double sceneHeight(const QVector<WellColumn> &wells)
{
    double highest = smallestSceneHeight;
    for (const WellColumn &well : wells)
        highest = qMax(highest, double(well.axis.height));
    return highest + logview::sceneMarginBelow;
}

} // namespace correlation
