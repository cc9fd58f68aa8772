#include "correlation/correlationview.h"

#include "logview/markeritem.h"
#include "logview/trackheaders.h"
#include "logview/trackitem.h"
#include "logview/welldisplaydata.h"
#include "logview/wellnameitem.h"

#include <QGraphicsLineItem>
#include <QGraphicsPolygonItem>
#include <QGraphicsScene>

#include <optional>

// What a correlation draws: the items of a well, and what joins it to the next.

namespace {

constexpr double zonesZ = 1;
constexpr double linesZ = 2;
constexpr double markersZ = 10;
constexpr double lineWidth = 2;

QPen connectorPen(const QColor &color)
{
    QPen pen(QBrush(color), lineWidth, Qt::SolidLine, Qt::SquareCap, Qt::BevelJoin);
    pen.setCosmetic(true);
    return pen;
}

} // namespace

void CorrelationView::makeWell(int index)
{
    Drawing &drawing = m_drawings[index];
    const correlation::WellColumn &column = m_columns.at(index);
    drawing.isMade = true;
    makeTracks(drawing, column);
    const QStringList &unread = m_wells.well(drawing.wellName)->data->unreadLogs();
    if (!unread.isEmpty()) {
        addNote(
            QStringLiteral("%1 of \"%2\" cannot be read").arg(unread.join(QStringLiteral(", ")), drawing.wellName));
        if (!m_isPlacing)
            emit statusChanged(m_notes);
    }
    if (column.right > column.left) {
        auto *banner = new WellNameItem(drawing.wellName, static_cast<float>(column.right - column.left), nullptr);
        banner->setPos(column.left, 0);
        m_headerScene->addItem(banner);
    }
    drawMarkers(drawing.wellName, column);
}

void CorrelationView::makeTracks(const Drawing &drawing, const correlation::WellColumn &column)
{
    const float end = column.axis.height > 0 ? column.axis.end : column.axis.start;
    const CorrelationWells::Well &well = *m_wells.well(drawing.wellName);
    double left = column.left;
    int number = 0;
    for (const TrackInfo &definition : drawing.tracks) {
        auto *track = new TrackItem(definition, well.data, well.data->totalDepthM());
        track->setTrackNumber(number++);
        track->setDepthType(logview::DepthType(m_depthType));
        track->setDepthUnit(m_depthUnit);
        track->setScale(m_scale);
        track->setDepthRange(column.axis.start, end);
        if (definition.type != DepthTrack)
            track->setWidthInches(trackWidthInches());
        track->setPerforationsShown(m_properties.showsPerforations);
        track->setPos(left, 0);
        m_scene->addItem(track);
        m_headers->add(track);
        m_headers->place(track);
        connect(track, &TrackItem::hovered, this, &CorrelationView::setStatusLabel);
        m_tracks.append(track);
        left += static_cast<double>(track->width());
    }
}

void CorrelationView::drawMarkers(const QString &wellName, const correlation::WellColumn &column)
{
    QVector<MarkerItem *> drawn;
    for (const QString &name : qAsConst(m_properties.markers)) {
        const auto marker = column.markers.constFind(name);
        const std::optional<double> y = marker == column.markers.cend() ? std::nullopt : column.toY(marker->depthM);
        if (!y)
            continue;
        auto *item = new MarkerItem;
        item->setWellName(wellName);
        item->setMarkerName(name);
        item->setDepth(static_cast<float>(marker->depthM));
        item->setLineColor(marker->color);
        item->setWidth(static_cast<float>(column.right - column.left));
        item->setPos(column.left, *y);
        item->setZValue(markersZ);
        item->setNameOnPaper(true); // zones and lines end there
        m_scene->addItem(item);
        drawn.append(item);
    }
    m_names.place(drawn, font());
}

// Between neighbours of which both are made and that are not connected yet.
void CorrelationView::drawConnections(int first, int last)
{
    for (int begin = first; begin < last; ++begin) {
        int end = begin; // of neighbours that all are to be connected
        while (end < last && !m_drawings.at(end).isConnected)
            m_drawings[end++].isConnected = true;
        if (end == begin)
            continue;
        const QVector<correlation::WellColumn> columns = m_columns.mid(begin, end - begin + 1);
        begin = end - 1;
        for (const correlation::ConnectorLine &connector :
             correlation::connectorLines(columns, m_properties.markers)) {
            QGraphicsLineItem *line = m_scene->addLine(connector.line, connectorPen(connector.color));
            line->setZValue(linesZ);
        }
        if (!m_properties.showsPerforations)
            continue;
        for (const correlation::ZonePolygon &zone : correlation::zonePolygons(columns, m_properties.zones)) {
            QGraphicsPolygonItem *polygon = m_scene->addPolygon(zone.polygon, QPen(Qt::NoPen), zone.color);
            polygon->setZValue(zonesZ);
        }
    }
}
