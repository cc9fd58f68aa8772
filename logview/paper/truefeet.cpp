#include "logview/paper/truefeet.h"

#include "logview/markeritem.h"
#include "logview/markernames.h"
#include "logview/trackitem.h"

#include <QGraphicsPolygonItem>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QHash>

namespace logview {

TrueFeet::TrueFeet(QGraphicsScene &scene, DepthUnit unit)
    : m_scene(scene)
    , m_isOn(unit == Feet)
{
    if (!m_isOn)
        return;
    for (const QGraphicsView *view : scene.views()) {
        if (!view->viewport()->updatesEnabled())
            continue;
        view->viewport()->setUpdatesEnabled(false);
        m_silent.append(view->viewport());
    }
    constexpr double factor = 1 / feetPerMetre; // everything begins at the top of the scene
    setTracksTrue(true);
    placeMarkers(factor);
    placeConnections(factor);
}

TrueFeet::~TrueFeet()
{
    if (!m_isOn)
        return;
    setTracksTrue(false);
    for (const auto &line : qAsConst(m_lines))
        line.first->setLine(line.second);
    for (const auto &polygon : qAsConst(m_polygons))
        polygon.first->setPolygon(polygon.second);
    for (const Place &place : qAsConst(m_places)) {
        place.marker->setY(place.y);
        place.marker->setNameShift(place.nameShift);
        place.marker->setNameShown(place.isNameShown);
        place.marker->setToolTip(place.toolTip);
    }
    for (const QPointer<QWidget> &viewport : qAsConst(m_silent))
        if (viewport)
            viewport->setUpdatesEnabled(true);
}

void TrueFeet::setTracksTrue(bool areTrue)
{
    for (QGraphicsItem *item : m_scene.items())
        if (auto *track = qgraphicsitem_cast<TrackItem *>(item))
            track->setFeetTrue(areTrue);
}

void TrueFeet::placeConnections(double factor)
{
    const QTransform lengths = QTransform::fromScale(1, factor);
    for (QGraphicsItem *item : m_scene.items()) {
        if (auto *line = qgraphicsitem_cast<QGraphicsLineItem *>(item)) {
            m_lines.append({line, line->line()});
            line->setLine(lengths.map(line->line()));
        } else if (auto *zone = qgraphicsitem_cast<QGraphicsPolygonItem *>(item)) {
            m_polygons.append({zone, zone->polygon()});
            zone->setPolygon(lengths.map(zone->polygon()));
        }
    }
}

// Names are as high as before: where lines come close they have to move apart.
void TrueFeet::placeMarkers(double factor)
{
    QHash<double, QVector<MarkerItem *>> wells; // by their left side
    for (QGraphicsItem *item : m_scene.items(Qt::AscendingOrder)) {
        auto *marker = qgraphicsitem_cast<MarkerItem *>(item);
        if (!marker)
            continue;
        m_places.append({marker, marker->y(), marker->nameShift(), marker->isNameShown(), marker->toolTip()});
        marker->setY(marker->y() * factor);
        wells[marker->x()].append(marker);
    }
    MarkerNames names;
    for (const QVector<MarkerItem *> &markers : qAsConst(wells))
        names.place(markers, m_scene.font());
}

} // namespace logview
