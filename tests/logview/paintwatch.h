#pragma once

#include <QEvent>
#include <QObject>
#include <QPaintEvent>
#include <QRegion>
#include <QWidget>

/// Notes which rows of the viewport are painted.
class PaintWatch : public QObject
{
public:
    explicit PaintWatch(QWidget *viewport) { viewport->installEventFilter(this); }
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Paint)
            painted += static_cast<QPaintEvent *>(event)->region();
        return false;
    }
    int rows() const
    {
        int count = 0;
        for (const QRect &rect : painted)
            count += rect.height();
        return count;
    }

    QRegion painted;
};
