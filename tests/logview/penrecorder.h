#pragma once

#include <QGraphicsScene>
#include <QPaintDevice>
#include <QPaintEngine>
#include <QPainter>
#include <QPen>
#include <QVector>

/// A paint device that draws nothing and notes the pens with which lines and shapes are drawn, each once: caps and joins
/// of most shapes do not show in pixels.
class PenRecorder : public QPaintDevice
{
public:
    QPaintEngine *paintEngine() const override { return &m_engine; }

    /// The pens of a part of a scene.
    static QVector<QPen> recordScene(QGraphicsScene &scene, const QRectF &part)
    {
        PenRecorder recorder;
        QPainter painter(&recorder);
        scene.render(&painter, QRectF(QPointF(), part.size()), part);
        painter.end();
        return recorder.m_engine.pens;
    }

protected:
    int metric(PaintDeviceMetric metric) const override
    {
        switch (metric) {
        case PdmWidth:
        case PdmHeight:
            return 4000;
        case PdmDpiX:
        case PdmDpiY:
        case PdmPhysicalDpiX:
        case PdmPhysicalDpiY:
            return 96;
        case PdmWidthMM:
        case PdmHeightMM:
            return 1058;
        case PdmDepth:
            return 32;
        case PdmDevicePixelRatio:
            return 1;
        case PdmNumColors:
            return 1 << 24;
        default:
            return QPaintDevice::metric(metric);
        }
    }

private:
    class Engine : public QPaintEngine
    {
    public:
        Engine()
            : QPaintEngine(AllFeatures)
        {
        }
        bool begin(QPaintDevice *) override { return true; }
        bool end() override { return true; }
        void updateState(const QPaintEngineState &) override { }
        Type type() const override { return User; }
        void drawPixmap(const QRectF &, const QPixmap &, const QRectF &) override { }
        void drawTextItem(const QPointF &, const QTextItem &) override { }
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
    mutable Engine m_engine;
};
