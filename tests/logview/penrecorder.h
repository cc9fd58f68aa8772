#pragma once

#include "paintrecorder.h"

#include <QPen>
#include <QVector>

/// Notes the pens with which lines and shapes are drawn, each once: caps and joins of most shapes do not show in pixels.
class PenEngine : public PaintRecorderEngine
{
public:
    void drawPolygon(const QPointF *, int, PolygonDrawMode) override { note(); }
    void drawPolygon(const QPoint *, int, PolygonDrawMode) override { note(); }
    void drawPath(const QPainterPath &) override { note(); }

    QVector<QPen> pens;

private:
    void note()
    {
        const QPen pen = painter()->pen();
        if (pen.style() != Qt::NoPen && !pens.contains(pen))
            pens.append(pen);
    }
};

/// The pens of a part of a scene.
inline QVector<QPen> pensOfScene(QGraphicsScene &scene, const QRectF &part)
{
    PaintRecorder<PenEngine> recorder;
    recorder.drawScene(scene, part);
    return recorder.engine().pens;
}
