#include "logview/paper/dotdevice.h"

#include "logview/paper/dotlines.h"
#include "logview/paper/pdflines.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>

namespace logview {

namespace {

constexpr int longLine = 100; // corners from which it is worth to go past the writer

bool isVisible(const QBrush &brush)
{
    return brush.style() != Qt::NoBrush && (brush.style() != Qt::SolidPattern || brush.color().alpha() > 0);
}

bool isRect(const QPainterPath &path)
{
    QPainterPath rect;
    rect.addRect(path.boundingRect());
    return path == rect;
}

QPainterPath commonArea(const QPainterPath &a, const QPainterPath &b)
{
    if (!isRect(a) || !isRect(b))
        return a.intersected(b);
    QPainterPath area;
    area.addRect(a.boundingRect().intersected(b.boundingRect()));
    return area;
}

} // namespace

class DotDevice::Engine : public VectorEngine
{
public:
    Engine(QPainter *target, double dotsPerPixel, PdfLines *longLines)
        : m_target(target)
        , m_dotsPerPixel(dotsPerPixel)
        , m_longLines(longLines)
    {
    }

    void drawPath(const QPainterPath &path) override
    {
        if (!applyClip())
            return;
        const QRectF strokedIn = m_target->brush().style() == Qt::NoBrush ? strokedArea() : QRectF();
        if (m_longLines && strokedIn.isValid() && path.elementCount() >= longLine && drawLongLines(path, strokedIn))
            return;
        const QPainterPath shown = onDots(path, transform(), strokedIn);
        if (strokedIn.isValid() && shown.elementCount() >= longLine)
            drawFrom(originOf(shown.controlPointRect()), shown);
        else if (!shown.isEmpty())
            m_target->drawPath(shown);
    }
    using VectorEngine::drawPolygon;
    void drawPolygon(const QPointF *points, int count, PolygonDrawMode mode) override
    {
        QPainterPath path;
        path.setFillRule(mode == WindingMode ? Qt::WindingFill : Qt::OddEvenFill);
        path.addPolygon(QPolygonF(QVector<QPointF>(points, points + count)));
        if (mode != PolylineMode) {
            path.closeSubpath();
            drawPath(path);
            return;
        }
        const QBrush brush = m_target->brush();
        m_target->setBrush(Qt::NoBrush);
        drawPath(path);
        m_target->setBrush(brush);
    }
    void drawTextItem(const QPointF &place, const QTextItem &item) override
    {
        const QRectF letters(place.x(), place.y() - item.ascent(), item.width(), item.ascent() + item.descent());
        if (!needsNoClip(transform().mapRect(letters)) && !applyClip())
            return;
        m_target->setTransform(transform());
        m_target->setFont(item.font());
        const QBrush brush = m_target->brush();
        m_target->drawText(place, item.text());
        m_target->setBrush(brush);
        m_target->resetTransform();
    }
    void drawImage(const QRectF &target, const QImage &image, const QRectF &source,
                   Qt::ImageConversionFlags flags) override
    {
        if (!applyClip())
            return;
        m_target->drawImage(transform().mapRect(target), image, source, flags);
    }

protected:
    void take(const QPaintEngineState &now) override
    {
        const DirtyFlags changes = now.state();
        if (changes & (DirtyPen | DirtyTransform)) {
            QPen pen = now.pen();
            const double scale = pen.isCosmetic() ? m_dotsPerPixel : std::sqrt(std::abs(transform().determinant()));
            pen.setWidthF(std::max(pen.widthF(), 1.0) * scale);
            pen.setCosmetic(false);
            m_target->setPen(isVisible(pen.brush()) ? pen : QPen(Qt::NoPen));
        }
        if (changes & DirtyBrush)
            m_target->setBrush(isVisible(now.brush()) ? now.brush() : QBrush(Qt::NoBrush));
        if (changes & DirtyOpacity)
            m_target->setOpacity(now.opacity());
        if (changes & DirtyHints)
            m_target->setRenderHints(now.renderHints());
    }
    void clip(const QPainterPath &path, Qt::ClipOperation operation) override
    {
        const bool isWithin = operation == Qt::IntersectClip && m_isClipped;
        m_clip = isWithin ? commonArea(m_clip, path) : path;
        m_isClipped = true;
    }
    void setClipping(bool isOn) override { m_isClipped = isOn; }

private:
    // Hands on the clip to what is now painted; false where it hides all. Most clips are set and gone before anything is
    // painted, and the same come again: each would be written.
    bool applyClip()
    {
        if (m_isClipped && m_clip.boundingRect().isEmpty())
            return false;
        if (m_isClipped != m_target->hasClipping() || (m_isClipped && m_clip != m_appliedClip)) {
            if (m_isClipped)
                m_target->setClipPath(m_clip);
            else
                m_target->setClipping(false);
            m_appliedClip = m_clip;
        }
        return true;
    }

    // Whether what is painted there shows whole in the clip, and in the one in force, which then may stay. Texts have clips of
    // their own, over which the lines of their fonts stand out a little, without ink.
    bool needsNoClip(const QRectF &shown) const
    {
        const double reach = 2 * m_dotsPerPixel;
        const auto holds = [](const QPainterPath &clip, const QRectF &area) {
            return isRect(clip) && clip.boundingRect().contains(area);
        };
        return (!m_isClipped || holds(m_clip, shown.adjusted(0, reach, 0, -reach)))
            && (!m_target->hasClipping() || holds(m_appliedClip, shown));
    }

    // Where strokes show, as far as their corners may stand from the clip; none where what is outside matters too: dashes
    // count from a line's beginning.
    QRectF strokedArea() const
    {
        const QPen pen = m_target->pen();
        if (!m_target->hasClipping() || pen.style() != Qt::SolidLine)
            return {};
        const bool hasTips = pen.joinStyle() == Qt::MiterJoin || pen.joinStyle() == Qt::SvgMiterJoin;
        const double reach = pen.widthF() * (hasTips ? std::max(pen.miterLimit(), 1.0) : M_SQRT1_2); // square ends
        return m_target->clipBoundingRect().adjusted(-reach, -reach, reach, reach);
    }

    // Corners counted from the middle of their line have fewer digits, and the file is a tenth smaller.
    static QPointF originOf(const QRectF &corners) { return {std::round(corners.center().x()), corners.top()}; }
    void drawFrom(const QPointF &origin, const QPainterPath &path)
    {
        m_target->translate(origin);
        m_target->drawPath(path.translated(-origin));
        m_target->resetTransform();
    }

    // Past the writer of the file. False for what is none such.
    bool drawLongLines(const QPainterPath &path, const QRectF &strokedIn)
    {
        const DotLines lines = linesOnDots(path, transform(), strokedIn);
        if (lines.hasCurves || !PdfLines::canHold(lines))
            return false;
        if (lines.corners.empty())
            return true; // none shows
        if (lines.corners.size() < longLine)
            return false;
        const QPointF origin = originOf(boundsOf(lines));
        const QPainterPath mark = m_longLines->markFor(lines, origin);
        m_target->translate(origin);
        m_target->drawPath(mark);
        m_target->resetTransform();
        return true;
    }

    QPainter *m_target;
    double m_dotsPerPixel;
    PdfLines *m_longLines;
    QPainterPath m_clip; // in force while m_isClipped
    QPainterPath m_appliedClip;
    bool m_isClipped = false;
};

DotDevice::DotDevice(QPainter *target, double dotsPerInch, const QSizeF &sizePx, PdfLines *longLines)
    : VectorDevice(sizePx, dotsPerInch)
    , m_engine(std::make_unique<Engine>(target, dotsPerPixel(), longLines))
{
}

DotDevice::~DotDevice() = default;

QPaintEngine *DotDevice::paintEngine() const
{
    return m_engine.get();
}

} // namespace logview
