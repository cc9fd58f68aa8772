#pragma once

#include "displayfixture.h"
#include "logview/markeritempropertywidget.h"
#include "logview/trackheaderitem.h"
#include "logview/trackitempropertywidget.h"

#include <QMenu>

inline const QByteArray linearTrack =
    "Linear\nGamma | GR | 0 | 150 | #0e6f21|0,#ffffff|0,#ffffff|None | None | 0 | 0\n";
inline const QByteArray depthTrack = "Depth\nDepth | MD | 0 | 0 | 0,0,0 | 0,0,0 | 0,0,0 | 0 | 0 | 0 | 0\n";

struct WidgetFixture : DisplayFixture
{
    WidgetFixture()
    {
        addLog(QStringLiteral("GR"), {0, 500, 1000, 1500}, {75, 75, 75, 75});
        addTrack(1, linearTrack);
        addTrack(2, depthTrack);
        addTrack(3, linearTrack);
        addMarker(QStringLiteral("Top"), 100);
    }
    // Shows the menu for a place of the scene and chooses an entry; the texts it offered.
    QStringList menu(const QPointF &place, const char *choice = nullptr)
    {
        WellLogsView *view = display->logView();
        view->centerOn(place);
        const std::unique_ptr<QMenu> menu(view->createContextMenu(view->mapFromScene(place)));
        QStringList texts;
        QAction *chosen = nullptr;
        for (QAction *action : menu->actions()) {
            texts.append(action->text());
            if (choice && action->text() == QLatin1String(choice))
                chosen = action;
        }
        if (choice && !chosen)
            qFatal("no entry %s", choice);
        if (chosen)
            chosen->trigger();
        return texts;
    }
    // To the window: Qt moves the desktop's pointer over a widget, which another event of it may follow.
    void moveTo(const QPointF &place) const
    {
        const WellLogsView *view = display->logView();
        QTest::mouseMove(view->window()->windowHandle(),
                         view->viewport()->mapTo(view->window(), view->mapFromScene(place)));
    }
    void click(const QPointF &place, Qt::MouseButton button = Qt::LeftButton) const
    {
        QTest::mouseClick(display->logView()->viewport(), button, {}, display->logView()->mapFromScene(place));
    }
};
