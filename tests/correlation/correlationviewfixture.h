#pragma once

#include "correlation/correlationdisplaywidget.h"
#include "correlation/correlationview.h"
#include "correlation/correlationviewproperty.h"
#include "correlationfixture.h"
#include "logview/markeritem.h"

#include <QApplication>
#include <QDockWidget>
#include <QGraphicsLineItem>
#include <QGraphicsPolygonItem>
#include <QGraphicsView>
#include <QLineEdit>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>
#include <memory>

inline constexpr double depthTrackWidth = 48;

// Tracks are as wide on the screen as the file says, in inches.
inline double trackWidth()
{
    return 1.2 * QWidget().logicalDpiX();
}

inline double wellWidth()
{
    return trackWidth() + depthTrackWidth;
}

// y of a depth that is \a depth below the top, at 1:1000.
inline double y(double depth)
{
    return depth / 1000 * 100 * 96 / 2.54;
}

inline bool isNear(double a, double b)
{
    return std::abs(a - b) < 0.1;
}

/// A correlation in its display widget, without the tabs.
struct ViewFixture : CorrelationFixture
{
    CorrelationView *show(const QString &name = QStringLiteral("North"))
    {
        openAt96Dots();
        display = std::make_unique<CorrelationDisplayWidget>(*launch, name, &dock);
        display->resize(900, 700);
        display->show();
        return display->view();
    }
    CorrelationView *view() const { return display->view(); }
    CorrelationViewProperty *panel() const { return view()->panel(); }

    template<class Item>
    QVector<Item *> itemsOf(QGraphicsScene *scene) const
    {
        QVector<Item *> found;
        for (QGraphicsItem *item : scene->items(Qt::AscendingOrder))
            if (!item->parentItem())
                if (auto *one = dynamic_cast<Item *>(item))
                    found.append(one);
        std::sort(found.begin(), found.end(), [](const Item *a, const Item *b) { return a->x() < b->x(); });
        return found;
    }
    QVector<MarkerItem *> markers() const { return itemsOf<MarkerItem>(view()->scene()); }
    QVector<QGraphicsLineItem *> lines() const
    {
        QVector<QGraphicsLineItem *> found;
        for (QGraphicsLineItem *item : itemsOf<QGraphicsLineItem>(view()->scene()))
            if (!dynamic_cast<MarkerItem *>(item))
                found.append(item);
        return found;
    }
    QVector<QGraphicsPolygonItem *> zones() const { return itemsOf<QGraphicsPolygonItem>(view()->scene()); }
    QGraphicsScene *headers() const { return display->headerView()->scene(); }

    void type(const char *field, const QString &text) const
    {
        auto *edit = find<QLineEdit>(panel(), field);
        edit->setText(text);
        emit edit->editingFinished();
    }
    QString text(const char *field) const { return find<QLineEdit>(panel(), field)->text(); }
    void choose(const char *field, const QString &text) const
    {
        find<QComboBox>(panel(), field)->setCurrentText(text);
    }
    QString status() const { return find<QLabel>(display.get(), "statusLine")->text(); }

    void wheel(int turn, Qt::KeyboardModifiers modifiers = Qt::ControlModifier, int sideways = 0) const
    {
        QWheelEvent event(QPointF(50, 50), view()->viewport()->mapToGlobal(QPoint(50, 50)), {},
                          QPoint(sideways, turn), Qt::NoButton, modifiers, Qt::NoScrollPhase, false);
        QApplication::sendEvent(view()->viewport(), &event);
    }

    QDockWidget dock;
    std::unique_ptr<CorrelationDisplayWidget> display;
};
