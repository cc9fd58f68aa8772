#pragma once

#include <QGraphicsScene>
#include <QPaintDevice>
#include <QPaintEngine>
#include <QPainter>

/// A paint device of 96 dots an inch that draws nothing. What an Engine, derived from PaintRecorderEngine, notes of it
/// is compared with what a test expects.
template<class Engine>
class PaintRecorder : public QPaintDevice
{
public:
    QPaintEngine *paintEngine() const override { return &m_engine; }
    const Engine &engine() const { return m_engine; }

    void drawScene(QGraphicsScene &scene, const QRectF &part)
    {
        QPainter painter(this);
        scene.render(&painter, QRectF(QPointF(), part.size()), part);
    }

protected:
    int metric(PaintDeviceMetric metric) const override
    {
        switch (metric) {
        case PdmWidth:
        case PdmHeight:
            return pixels;
        case PdmWidthMM:
        case PdmHeightMM:
            return qRound(pixels * 25.4 / 96);
        case PdmDpiX:
        case PdmDpiY:
        case PdmPhysicalDpiX:
        case PdmPhysicalDpiY:
            return 96;
        case PdmDevicePixelRatio:
            return 1;
        case PdmDevicePixelRatioScaled:
            return static_cast<int>(devicePixelRatioFScale());
        case PdmDepth:
            return 32;
        case PdmNumColors:
            return 1 << 24;
        default:
            return 0;
        }
    }

private:
    static constexpr int pixels = 4000;
    mutable Engine m_engine;
};

/// Notes nothing.
class PaintRecorderEngine : public QPaintEngine
{
public:
    PaintRecorderEngine()
        : QPaintEngine(AllFeatures)
    {
    }
    bool begin(QPaintDevice *) override { return true; }
    bool end() override { return true; }
    void updateState(const QPaintEngineState &) override { }
    Type type() const override { return User; }
    void drawPixmap(const QRectF &, const QPixmap &, const QRectF &) override { }
    void drawTextItem(const QPointF &, const QTextItem &) override { }
    void drawPolygon(const QPointF *, int, PolygonDrawMode) override { }
    void drawPolygon(const QPoint *, int, PolygonDrawMode) override { }
    void drawPath(const QPainterPath &) override { }
};
