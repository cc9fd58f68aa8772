#include "logview/paper/vectordevice.h"

#include "logview/paper/sheet.h"

#include <QPainterPath>
#include <QPixmap>
#include <QVector>

#include <cmath>
#include <limits>

namespace logview {

VectorDevice::VectorDevice(const QSizeF &sizePx, double dotsPerInch)
    : m_sizePx(sizePx)
    , m_dotsPerPixel(dotsPerInch / pixelsPerInch)
{
}

int VectorDevice::metric(PaintDeviceMetric metric) const
{
    switch (metric) {
    case PdmWidth:
        return static_cast<int>(std::ceil(sizeDots().width()));
    case PdmHeight:
        return static_cast<int>(std::ceil(sizeDots().height()));
    case PdmWidthMM:
        return static_cast<int>(m_sizePx.width() / pixelsPerMm);
    case PdmHeightMM:
        return static_cast<int>(m_sizePx.height() / pixelsPerMm);
    case PdmNumColors:
        return std::numeric_limits<int>::max();
    case PdmDepth:
        return 32;
    case PdmDpiX:
    case PdmDpiY:
    case PdmPhysicalDpiX:
    case PdmPhysicalDpiY:
        return static_cast<int>(pixelsPerInch);
    case PdmDevicePixelRatio:
        return 1;
    case PdmDevicePixelRatioScaled:
        return static_cast<int>(devicePixelRatioFScale());
    }
    return 0;
}

VectorEngine::VectorEngine()
    : QPaintEngine(AllFeatures)
{
}

void VectorEngine::updateState(const QPaintEngineState &now)
{
    const DirtyFlags changes = now.state();
    if (changes & DirtyTransform)
        m_transform = now.transform();
    take(now);
    if (changes & DirtyClipPath)
        changeClip(m_transform.map(now.clipPath()), now.clipOperation());
    if (changes & DirtyClipRegion) {
        QPainterPath path;
        for (const QRect &rect : now.clipRegion())
            path.addRect(rect);
        changeClip(m_transform.map(path), now.clipOperation());
    }
    // A painter without a clip calls it enabled.
    if (changes & DirtyClipEnabled)
        setClipping(m_hasClip && now.isClipEnabled());
}

void VectorEngine::changeClip(const QPainterPath &path, Qt::ClipOperation operation)
{
    m_hasClip = operation != Qt::NoClip;
    if (m_hasClip)
        clip(path, operation);
    else
        setClipping(false);
}

void VectorEngine::drawPolygon(const QPoint *points, int count, PolygonDrawMode mode)
{
    QVector<QPointF> corners;
    corners.reserve(count);
    for (int i = 0; i < count; ++i)
        corners.append(points[i]);
    drawPolygon(corners.constData(), count, mode);
}

void VectorEngine::drawPixmap(const QRectF &target, const QPixmap &pixmap, const QRectF &source)
{
    drawImage(target, pixmap.toImage(), source, Qt::AutoColor);
}

} // namespace logview
