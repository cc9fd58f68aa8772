#include "logview/displaymarkers.h"

#include "logview/markeritem.h"

#include <QGraphicsScene>

#include <cmath>

DisplayMarkers::DisplayMarkers(QGraphicsScene *scene, QObject *parent)
    : QObject(parent)
    , m_scene(scene)
{
}

MarkerItem *DisplayMarkers::find(const QString &markerName) const
{
    return first(markerName, false);
}

MarkerItem *DisplayMarkers::findStored(const QString &markerName) const
{
    return first(markerName, true);
}

MarkerItem *DisplayMarkers::first(const QString &markerName, bool isStored) const
{
    MarkerItem *found = nullptr;
    const QVector<MarkerItem *> named = m_markersByName.value(markerName);
    for (MarkerItem *marker : named) {
        if (isStored && m_unsaved.contains(marker))
            continue;
        if (!found || m_markers.indexOf(marker) < m_markers.indexOf(found))
            found = marker;
    }
    return found;
}

// Also for a marker that was given another name; false when it has the one that is known.
bool DisplayMarkers::takeName(MarkerItem *marker)
{
    const QString name = marker->markerName();
    const auto known = m_names.constFind(marker);
    if (known != m_names.constEnd() && *known == name)
        return false;
    dropName(marker);
    m_names.insert(marker, name);
    m_markersByName[name].append(marker);
    return true;
}

void DisplayMarkers::dropName(MarkerItem *marker)
{
    const auto named = m_markersByName.find(m_names.take(marker));
    if (named == m_markersByName.end())
        return;
    named->removeOne(marker);
    if (named->isEmpty())
        m_markersByName.erase(named);
}

MarkerItem *DisplayMarkers::nearest(double y, double reachPx) const
{
    MarkerItem *nearest = nullptr;
    for (MarkerItem *marker : m_markers) {
        const double distance = std::abs(marker->y() - y);
        if (distance > reachPx)
            continue;
        nearest = marker;
        reachPx = distance;
    }
    return nearest;
}

void DisplayMarkers::add(MarkerItem *marker)
{
    m_scene->addItem(marker);
    m_markers.append(marker);
    takeName(marker);
    connect(marker, &MarkerItem::changed, this, [this, marker] {
        if (takeName(marker))
            placeNames();
    });
    m_last = marker;
    marker->setWidth(m_width);
    connect(marker, &MarkerItem::depthEdited, this, [this, marker] { emit depthEdited(marker); });
    connect(marker, &MarkerItem::nameEdited, this, [this, marker] {
        if (!m_unsaved.contains(marker))
            emit storedNameEdited();
    });
    placeNames();
}

void DisplayMarkers::place(MarkerItem *marker, double y)
{
    marker->setPos(0, y);
    placeNames();
}

void DisplayMarkers::placeNames()
{
    if (m_changes == 0)
        m_namePlaces.place(m_markers, m_scene->font());
}

void DisplayMarkers::endChanges()
{
    --m_changes;
    placeNames();
}

MarkerItem *DisplayMarkers::pick(const QString &wellName)
{
    auto *marker = new MarkerItem;
    marker->setWellName(wellName);
    marker->setMarkerName(QStringLiteral("New_%1").arg(m_newCount++));
    add(marker);
    m_unsaved.append(marker);
    return marker;
}

void DisplayMarkers::destroy(MarkerItem *marker)
{
    emit leaving(marker);
    m_markers.removeOne(marker);
    dropName(marker);
    m_unsaved.removeOne(marker);
    if (m_last == marker)
        m_last = nullptr;
    delete marker;
    placeNames();
    m_scene->update();
}

void DisplayMarkers::forgetAll()
{
    m_markers.clear();
    m_markersByName.clear();
    m_names.clear();
    m_unsaved.clear();
    m_last = nullptr;
}

void DisplayMarkers::setWidth(float widthPx)
{
    m_width = widthPx;
    for (MarkerItem *marker : qAsConst(m_markers))
        marker->setWidth(widthPx);
}

QStringList DisplayMarkers::placeOrDrop(const logview::DepthAxis &axis, const DepthOf &depthOf)
{
    beginChanges();
    placeInside(axis, depthOf);
    QStringList dropped;
    const QVector<MarkerItem *> markers = m_markers;
    for (MarkerItem *marker : markers) {
        if (axis.contains(depthOf(*marker)))
            continue;
        if (!m_unsaved.contains(marker))
            dropped.append(marker->markerName());
        destroy(marker);
    }
    endChanges();
    return dropped;
}

void DisplayMarkers::placeInside(const logview::DepthAxis &axis, const DepthOf &depthOf)
{
    for (MarkerItem *marker : qAsConst(m_markers)) {
        const double depth = depthOf(*marker);
        if (axis.contains(depth))
            marker->setPos(0, axis.toScenePixel(depth));
    }
    placeNames();
}
