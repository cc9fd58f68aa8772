#pragma once

#include <QPaintDevice>
#include <QPaintEngine>
#include <QSizeF>

namespace logview {

/// A page of dots whose fonts have the sizes of the display: those of 96 dots an inch.
class VectorDevice : public QPaintDevice
{
public:
    /// \a sizePx in pixels of the display, 96 an inch.
    VectorDevice(const QSizeF &sizePx, double dotsPerInch);

    double dotsPerPixel() const { return m_dotsPerPixel; }
    const QSizeF &sizePx() const { return m_sizePx; }
    QSizeF sizeDots() const { return m_sizePx * m_dotsPerPixel; }

protected:
    int metric(PaintDeviceMetric metric) const override;

private:
    QSizeF m_sizePx;
    double m_dotsPerPixel;
};

/// What engines of such devices have in common: all comes down to paths, images and texts.
class VectorEngine : public QPaintEngine
{
public:
    VectorEngine();

    bool begin(QPaintDevice *) override { return true; }
    bool end() override { return true; }
    Type type() const override { return User; }
    void updateState(const QPaintEngineState &now) final;
    using QPaintEngine::drawPolygon;
    void drawPolygon(const QPoint *points, int count, PolygonDrawMode mode) final;
    void drawPixmap(const QRectF &target, const QPixmap &pixmap, const QRectF &source) final;

protected:
    const QTransform &transform() const { return m_transform; }
    /// Pen, brush, opacity, hints; the transformation stands already.
    virtual void take(const QPaintEngineState &now) = 0;
    /// \a path is in units of the device, \a operation ReplaceClip or IntersectClip.
    virtual void clip(const QPainterPath &path, Qt::ClipOperation operation) = 0;
    virtual void setClipping(bool isOn) = 0;

private:
    void changeClip(const QPainterPath &path, Qt::ClipOperation operation);

    QTransform m_transform;
    bool m_hasClip = false;
};

} // namespace logview
