#include "logview/paper/dotdevice.h"

#include "logview/paper/pdflines.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>

namespace logview {

namespace {

constexpr int longLine = 100; // corners from which it is worth an origin of its own

// As std::round(), which is a call on many machines.
double onDot(double value)
{
    constexpr double most = 1e15; // beyond it all are whole
    return std::abs(value) < most ? static_cast<double>(qRound64(value)) : value;
}

QPointF onDot(const QPointF &point)
{
    return {onDot(point.x()), onDot(point.y())};
}

bool isVisible(const QBrush &brush)
{
    return brush.style() != Qt::NoBrush && (brush.style() != Qt::SolidPattern || brush.color().alpha() > 0);
}

/// The directions from a corner in which a line passes all corners behind it within half a dot.
class Sector
{
public:
    void begin(const QPointF &from)
    {
        m_from = from;
        m_isOpen = true;
        m_farthest = 0;
    }

    // Whether a line to this point passes all since begin(), and leads on.
    bool take(const QPointF &to)
    {
        constexpr double reach = 0.5;
        const QPointF step = to - m_from;
        const double distance = QPointF::dotProduct(step, step); // squared
        if (distance < m_farthest)
            return false; // it turns back
        if (distance <= reach * reach) {
            m_farthest = distance;
            return true;
        }
        if (!m_isOpen && (turn(m_low, step) < 0 || turn(step, m_high) < 0))
            return false;
        // The lines from the corner that pass the point at the reach.
        const double along = std::sqrt(distance - reach * reach);
        const QPointF low(step.x() * along + step.y() * reach, step.y() * along - step.x() * reach);
        const QPointF high(step.x() * along - step.y() * reach, step.y() * along + step.x() * reach);
        if (m_isOpen || turn(m_low, low) > 0)
            m_low = low;
        if (m_isOpen || turn(high, m_high) > 0)
            m_high = high;
        m_isOpen = false;
        m_farthest = distance;
        return true;
    }

private:
    static double turn(const QPointF &from, const QPointF &to) { return from.x() * to.y() - from.y() * to.x(); }

    QPointF m_from;
    QPointF m_low;
    QPointF m_high;
    double m_farthest = 0;
    bool m_isOpen = true;
};

// Whether a line between these corners may show in the area.
bool meets(const QPointF &from, const QPointF &to, const QRectF &area)
{
    return std::max(from.x(), to.x()) >= area.left() && std::min(from.x(), to.x()) <= area.right()
        && std::max(from.y(), to.y()) >= area.top() && std::min(from.y(), to.y()) <= area.bottom();
}

// The stretches of a line that may show in the area. A line that does not reach it has none.
QVector<QVector<QPointF>> stretchesIn(const QVector<QPointF> &corners, const QRectF &area)
{
    QVector<QVector<QPointF>> stretches;
    bool isInside = false;
    for (int i = 1; i < corners.size(); ++i) {
        const bool meetsNow = meets(corners.at(i - 1), corners.at(i), area);
        if (meetsNow && !isInside)
            stretches.append({corners.at(i - 1)});
        if (meetsNow)
            stretches.last().append(corners.at(i));
        isInside = meetsNow;
    }
    return stretches;
}

void appendLine(QPainterPath &path, const QVector<QPointF> &corners, bool isClosed)
{
    const QVector<QPointF> kept = withoutIdleCorners(corners);
    if (kept.isEmpty())
        return;
    path.moveTo(kept.first());
    for (int i = 1; i < kept.size(); ++i)
        path.lineTo(kept.at(i));
    if (isClosed)
        path.closeSubpath();
    else if (kept.size() == 1)
        path.lineTo(kept.first()); // a dot of the pen
}

// Lines go to dots and lose idle corners; curves keep theirs.
// Of lines that are only stroked goes what lies outside of a valid \a strokedIn, too.
QPainterPath onDots(const QPainterPath &path, const QTransform &toDots, const QRectF &strokedIn)
{
    QPainterPath result;
    result.setFillRule(path.fillRule());
    result.reserve(path.elementCount());
    QVector<QPointF> corners;
    corners.reserve(path.elementCount());
    const auto flush = [&] {
        const bool isRing = corners.size() > 2 && corners.first() == corners.last();
        if (strokedIn.isValid() && corners.size() > 1)
            for (const QVector<QPointF> &stretch : stretchesIn(corners, strokedIn))
                appendLine(result, stretch, stretch.size() == corners.size() && isRing);
        else if (!corners.isEmpty())
            appendLine(result, corners, isRing);
        corners.resize(0); // keeps its room
    };
    for (int i = 0; i < path.elementCount(); ++i) {
        const QPainterPath::Element element = path.elementAt(i);
        if (element.isCurveTo()) {
            if (!corners.isEmpty()) {
                const QPointF end = corners.last();
                flush();
                if (result.elementCount() == 0 || result.currentPosition() != end)
                    result.moveTo(end);
            }
            result.cubicTo(toDots.map(QPointF(element)), toDots.map(QPointF(path.elementAt(i + 1))),
                           onDot(toDots.map(QPointF(path.elementAt(i + 2)))));
            i += 2;
            continue;
        }
        if (element.isMoveTo())
            flush();
        else if (corners.isEmpty())
            corners.append(result.currentPosition()); // behind a curve
        corners.append(onDot(toDots.map(QPointF(element))));
    }
    flush();
    return result;
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

QVector<QPointF> withoutIdleCorners(const QVector<QPointF> &corners)
{
    QVector<QPointF> kept;
    kept.reserve(corners.size());
    Sector sector;
    for (const QPointF &corner : corners) {
        if (kept.isEmpty()) {
            kept.append(corner);
            sector.begin(corner);
        } else if (kept.size() == 1 || !sector.take(corner)) {
            if (corner == kept.last())
                continue;
            if (kept.size() > 1)
                sector.begin(kept.last());
            kept.append(corner);
            sector.take(corner);
        } else {
            kept.last() = corner;
        }
    }
    return kept;
}

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
        const QPainterPath shown = onDots(path, transform(), strokedIn);
        if (strokedIn.isValid() && shown.elementCount() >= longLine)
            drawFromItsMiddle(shown);
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
        if (!applyClip())
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
    void drawFromItsMiddle(const QPainterPath &path)
    {
        const QRectF area = path.controlPointRect();
        const QPointF origin = onDot({area.center().x(), area.top()});
        m_target->translate(origin);
        const QPainterPath moved = path.translated(-origin);
        m_target->drawPath(m_longLines && PdfLines::canHold(moved) ? m_longLines->markFor(moved) : moved);
        m_target->resetTransform();
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
