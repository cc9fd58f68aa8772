#include "logview/paper/svgdevice.h"

#include "logview/paper/sheet.h"

#include <QBuffer>
#include <QImage>
#include <QPainter>
#include <QPainterPath>

namespace logview {

namespace {

QByteArray number(double value)
{
    QByteArray text = QByteArray::number(value, 'f', 3);
    while (text.endsWith('0'))
        text.chop(1);
    if (text.endsWith('.'))
        text.chop(1);
    return text == "-0" ? QByteArrayLiteral("0") : text;
}

QByteArray point(const QPointF &p)
{
    return number(p.x()) + ' ' + number(p.y());
}

QByteArray pathData(const QPainterPath &path)
{
    QByteArray data;
    for (int i = 0; i < path.elementCount(); ++i) {
        const QPainterPath::Element element = path.elementAt(i);
        if (element.isMoveTo()) {
            data += 'M' + point(element);
        } else if (element.isLineTo()) {
            data += 'L' + point(element);
        } else {
            data += 'C' + point(element) + ' ' + point(path.elementAt(i + 1)) + ' ' + point(path.elementAt(i + 2));
            i += 2;
        }
    }
    return data;
}

QByteArray paint(const char *property, const QBrush &brush)
{
    const QByteArray name(property);
    if (brush.style() == Qt::NoBrush)
        return ' ' + name + "=\"none\"";
    QByteArray text = ' ' + name + "=\"" + brush.color().name().toLatin1() + '"';
    if (brush.color().alpha() < 255)
        text += ' ' + name + "-opacity=\"" + number(brush.color().alphaF()) + '"';
    return text;
}

QByteArray strokeOf(const QPen &pen)
{
    if (pen.style() == Qt::NoPen)
        return {};
    QByteArray text = paint("stroke", pen.brush()) + " stroke-width=\"" + number(pen.widthF()) + '"';
    if (pen.capStyle() != Qt::FlatCap)
        text += pen.capStyle() == Qt::RoundCap ? " stroke-linecap=\"round\"" : " stroke-linecap=\"square\"";
    if (pen.joinStyle() == Qt::RoundJoin)
        text += " stroke-linejoin=\"round\"";
    else if (pen.joinStyle() == Qt::BevelJoin)
        text += " stroke-linejoin=\"bevel\"";
    if (pen.style() != Qt::SolidLine) {
        QByteArray dashes;
        for (const double length : pen.dashPattern())
            dashes += (dashes.isEmpty() ? "" : " ") + number(length * pen.widthF());
        text += " stroke-dasharray=\"" + dashes + '"';
    }
    return text;
}

QByteArray transformOf(const QTransform &transform)
{
    if (transform.isIdentity())
        return {};
    return " transform=\"matrix(" + number(transform.m11()) + ' ' + number(transform.m12()) + ' '
        + number(transform.m21()) + ' ' + number(transform.m22()) + ' ' + number(transform.dx()) + ' '
        + number(transform.dy()) + ")\"";
}

} // namespace

class SvgDevice::Engine : public VectorEngine
{
public:
    bool end() override
    {
        endGroup();
        return true;
    }

    void drawPath(const QPainterPath &path) override
    {
        if (path.isEmpty() || (m_brush.style() == Qt::NoBrush && m_pen.style() == Qt::NoPen))
            return;
        beginGroup();
        m_body += "<path d=\"" + pathData(path) + '"' + paint("fill", m_brush) + strokeOf(m_pen)
            + (path.fillRule() == Qt::OddEvenFill && m_brush.style() != Qt::NoBrush ? " fill-rule=\"evenodd\"" : "")
            + transformOf(transform()) + opacity() + "/>\n";
    }
    using VectorEngine::drawPolygon;
    void drawPolygon(const QPointF *points, int count, PolygonDrawMode mode) override
    {
        QPainterPath path;
        path.setFillRule(mode == WindingMode ? Qt::WindingFill : Qt::OddEvenFill);
        for (int i = 0; i < count; ++i) {
            if (i == 0)
                path.moveTo(points[i]);
            else
                path.lineTo(points[i]);
        }
        if (mode != PolylineMode)
            path.closeSubpath();
        const QBrush brush = m_brush;
        if (mode == PolylineMode)
            m_brush = Qt::NoBrush;
        drawPath(path);
        m_brush = brush;
    }
    void drawImage(const QRectF &target, const QImage &image, const QRectF &source, Qt::ImageConversionFlags) override
    {
        QByteArray bytes;
        QBuffer buffer(&bytes);
        image.copy(source.toAlignedRect()).save(&buffer, "PNG");
        beginGroup();
        m_body += "<image x=\"" + number(target.x()) + "\" y=\"" + number(target.y()) + "\" width=\""
            + number(target.width()) + "\" height=\"" + number(target.height())
            + "\" preserveAspectRatio=\"none\" xlink:href=\"data:image/png;base64," + bytes.toBase64() + '"'
            + transformOf(transform()) + opacity() + "/>\n";
    }
    const QByteArray &body() const { return m_body; }

protected:
    void take(const QPaintEngineState &now) override
    {
        m_pen = now.pen();
        m_brush = now.brush();
        m_opacity = now.opacity();
    }
    void clip(const QPainterPath &path, Qt::ClipOperation operation) override
    {
        const bool isWithin = operation == Qt::IntersectClip && m_isClipped;
        m_clip = isWithin ? m_clip.intersected(path) : path;
        m_isClipped = true;
    }
    void setClipping(bool isOn) override { m_isClipped = isOn; }

private:
    QByteArray opacity() const { return m_opacity < 1 ? " opacity=\"" + number(m_opacity) + '"' : QByteArray(); }
    // What is clipped alike stands in one group.
    void beginGroup()
    {
        const QByteArray wanted = m_isClipped ? pathData(m_clip) : QByteArray();
        if (wanted == m_groupClip)
            return;
        endGroup();
        m_groupClip = wanted;
        if (wanted.isEmpty())
            return;
        const QByteArray id = "c" + QByteArray::number(++m_clipCount);
        m_body += "<clipPath id=\"" + id + "\"><path d=\"" + wanted + "\"/></clipPath>\n<g clip-path=\"url(#" + id
            + ")\">\n";
    }
    void endGroup()
    {
        if (!m_groupClip.isEmpty())
            m_body += "</g>\n";
        m_groupClip.clear();
    }

    QByteArray m_body;
    QByteArray m_groupClip;
    int m_clipCount = 0;
    QPen m_pen;
    QBrush m_brush;
    double m_opacity = 1;
    QPainterPath m_clip;
    bool m_isClipped = false;
};

SvgDevice::SvgDevice(const QSizeF &sizePx, double dotsPerInch)
    : VectorDevice(sizePx, dotsPerInch)
    , m_engine(std::make_unique<Engine>())
{
}

SvgDevice::~SvgDevice() = default;

QPaintEngine *SvgDevice::paintEngine() const
{
    return m_engine.get();
}

QByteArray SvgDevice::bytes() const
{
    const QByteArray width = number(sizeDots().width());
    const QByteArray height = number(sizeDots().height());
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
           "<svg xmlns=\"http://www.w3.org/2000/svg\" xmlns:xlink=\"http://www.w3.org/1999/xlink\" width=\""
        + number(sizePx().width() / pixelsPerMm) + "mm\" height=\"" + number(sizePx().height() / pixelsPerMm)
        + "mm\" viewBox=\"0 0 " + width + ' ' + height + "\">\n<rect width=\"" + width + "\" height=\"" + height
        + "\" fill=\"#ffffff\"/>\n" + m_engine->body() + "</svg>\n";
}

} // namespace logview
