#pragma once

#include "logview/geometry/depthaxis.h"

#include <QLineF>
#include <QPointer>
#include <QPolygonF>
#include <QString>
#include <QVector>

#include <utility>

QT_BEGIN_NAMESPACE
class QGraphicsLineItem;
class QGraphicsPolygonItem;
class QGraphicsScene;
class QWidget;
QT_END_NAMESPACE

class MarkerItem;

namespace logview {

/// Makes the feet of a display true as long as it lives: on the screen a foot is as long as a metre, and 1:N on paper has
/// to be 1:N to a ruler. Tracks, markers, and lines and polygons between wells get their places on paper, and afterwards
/// the old ones. The views of the scene show nothing of it. A display in metres stays as it is.
class TrueFeet
{
public:
    /// \a scene is one of tracks in \a unit, and outlives the object; its items stay meanwhile.
    TrueFeet(QGraphicsScene &scene, DepthUnit unit);
    ~TrueFeet();
    TrueFeet(const TrueFeet &) = delete;
    TrueFeet &operator=(const TrueFeet &) = delete;

private:
    /// How a marker stood on the screen.
    struct Place
    {
        MarkerItem *marker = nullptr;
        double y = 0;
        double nameShift = 0;
        bool isNameShown = true;
        QString toolTip;
    };

    void setTracksTrue(bool areTrue);
    void placeMarkers(double factor);
    void placeConnections(double factor);

    QGraphicsScene &m_scene;
    bool m_isOn;
    QVector<Place> m_places;
    QVector<std::pair<QGraphicsLineItem *, QLineF>> m_lines; ///< as on the screen
    QVector<std::pair<QGraphicsPolygonItem *, QPolygonF>> m_polygons;
    QVector<QPointer<QWidget>> m_silent; ///< viewports
};

} // namespace logview
