#pragma once

#include "displayfixture.h"
#include "logview/markeritempropertywidget.h"
#include "logview/trackheaderitem.h"
#include "logview/trackitempropertywidget.h"
#include "logview/wellnameitem.h"

inline const QByteArray linearTrack =
    "Linear\nGamma | GR | 0 | 150 | #0e6f21|0,#ffffff|0,#ffffff|None | None | 0 | 0\n";
inline const QByteArray depthTrack = "Depth\nDepth | MD | 0 | 0 | 0,0,0 | 0,0,0 | 0,0,0 | 0 | 0 | 0 | 0\n";

struct SceneFixture : DisplayFixture
{
    SceneFixture()
    {
        addLog(QStringLiteral("GR"), {0, 500, 1000, 1500}, {0, 50, 100, 150});
        addTrack(1, linearTrack);
        addTrack(2, depthTrack);
        addTrack(3, linearTrack);
    }
    void press(Qt::MouseButton button, const QPointF &position)
    {
        QGraphicsView *view = display->logView();
        view->centerOn(position);
        QTest::mouseClick(view->viewport(), button, {}, view->mapFromScene(position));
    }
};
