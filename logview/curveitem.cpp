#include "logview/curveitem.h"

#include "logview/geometry/curvepath.h"
#include "logview/geometry/displaystyle.h"
#include "logview/pointitem.h"
#include "logview/visiblearea.h"
#include "logview/welldisplaydata.h"

#include <QPainter>
#include <QStyleOptionGraphicsItem>

#include <algorithm>

namespace {

constexpr double pickingReach = 3; // pixels
constexpr double boundingMargin = 8; // half of the widest selected pen, and calibration points on the edge

bool isFillOn(const QString &upTo)
{
    return !upTo.isEmpty() && upTo != QLatin1String("None");
}

QPen penOf(const TemplateCurveInfo &line)
{
    const QColor color = line.color.isValid() ? line.color : QColor(Qt::black);
    return QPen(QBrush(color), line.penWidth, static_cast<Qt::PenStyle>(line.penStyle), Qt::RoundCap, Qt::RoundJoin);
}

logview::ValueScale scaleOf(const TemplateCurveInfo &line, const logview::TrackGeometry &track)
{
    return {track.trackType == LogarithmicTrack, static_cast<float>(line.minimum), static_cast<float>(line.maximum),
            track.width};
}

} // namespace

CurveItem::CurveItem(const TrackInfo &definition, const TemplateCurveInfo &line,
                     const std::shared_ptr<WellDisplayData> &well, const logview::TrackGeometry &geometry,
                     QGraphicsItem *track)
    : QGraphicsObject(track)
    , m_well(well)
    , m_geometry(geometry)
    , m_line(line)
    , m_scale(scaleOf(line, geometry))
    , m_pen(penOf(line))
{
    setFlags(ItemIsSelectable | ItemUsesExtendedStyleOption);
    const DisplayedLog log = m_well->log(line.curve);
    m_samples = log.samples;
    m_unit = log.unit;
    m_isLogMissing = log.isMissing;
    readFill(definition);
    if (line.isCalibrationShown)
        m_calibration = m_well->calibration(m_line.group);
    setGeometry(geometry);
}

QString CurveItem::wellName() const
{
    return m_well->record().wellName;
}

void CurveItem::readFill(const TrackInfo &definition)
{
    const int lineCount = definition.curves.size();
    // A left fill goes first, also one up to something that is not there.
    const bool isRight = !isFillOn(m_line.leftUpTo) && isFillOn(m_line.rightUpTo);
    const logview::FillTarget target = logview::fillTarget(isRight ? m_line.rightUpTo : m_line.leftUpTo, lineCount);
    m_fillStyle.isOn = target.isOn;
    m_fillStyle.color = isRight ? m_line.rightFillColor : m_line.leftFillColor;
    if (!target.isOn)
        return;
    const int barNumber = isRight ? m_line.rightFillIndex : m_line.leftFillIndex;
    if (barNumber > 0)
        m_fillStyle.bar = m_well->colorBar(barNumber);
    m_fillSettings.side = isRight ? logview::FillSide::Right : logview::FillSide::Left;
    m_fillSettings.limit = target.limit;
    m_fillSettings.barColors = m_fillStyle.bar.colors;
    m_fillStyle.isOn = m_fillStyle.color.isValid() || !m_fillStyle.bar.isNull();
    if (target.limit != logview::FillLimit::Curve)
        return;
    const TemplateCurveInfo &other = definition.curves.at(target.curveNumber - 1);
    m_fillSettings.other = m_well->log(other.curve).samples;
    m_fillSettings.otherScale = scaleOf(other, m_geometry);
}

QRectF CurveItem::boundingRect() const
{
    return QRectF(0, 0, static_cast<double>(m_scale.width), static_cast<double>(m_geometry.axis.height))
        .adjusted(-boundingMargin, -boundingMargin, boundingMargin, boundingMargin);
}

logview::CurveKey CurveItem::key() const
{
    return logview::curveKey(m_samples, m_geometry.axis, m_geometry.reference, m_scale);
}

QPainterPath CurveItem::shape() const
{
    return logview::reducedPath(m_samples, key());
}

bool CurveItem::contains(const QPointF &point) const
{
    return logview::passes(m_samples, key(), withinReach(QRectF(point, QSizeF(0, 0))));
}

QRectF CurveItem::withinReach(const QRectF &area) const
{
    const double reach = pickingReach + m_pen.widthF() / 2;
    return area.adjusted(-reach, -reach, reach, reach);
}

bool CurveItem::collidesWithPath(const QPainterPath &path, Qt::ItemSelectionMode) const
{
    return logview::passes(m_samples, key(), withinReach(path.boundingRect()));
}

void CurveItem::paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *)
{
    const QVector<QRectF> parts = logview::visibleParts(*painter, *option);
    const double rowsPerPixel = logview::rowsPerPixel(*painter);
    if (m_fillStyle.isOn)
        for (const QRectF &part : parts)
            m_fill.show(*painter, m_samples, key(), m_fillSettings, m_fillStyle.color,
                        {part.top() - 1, part.bottom() + 1, rowsPerPixel});
    painter->setBrush(Qt::transparent);
    m_curveLine.update(m_samples, key());
    for (const QRectF &part : parts)
        m_curveLine.paint(*painter, currentPen(), part.top(), part.bottom());
}

void CurveItem::setGeometry(const logview::TrackGeometry &geometry)
{
    prepareGeometryChange();
    m_geometry = geometry;
    m_scale = scaleOf(m_line, geometry);
    m_fillSettings.otherScale.isLogarithmic = m_scale.isLogarithmic;
    m_fillSettings.otherScale.width = m_scale.width;
    // A depth track shows depths; its one line names the depth itself.
    setVisible(m_geometry.trackType != DepthTrack);
    placePoints();
    redraw();
}

void CurveItem::redraw()
{
    update();
    emit changed();
}

void CurveItem::setCurveName(const QString &name)
{
    m_line.curve = name;
    redraw();
}

QPen CurveItem::currentPen() const
{
    return isSelected() ? logview::selectionPen(m_pen) : m_pen;
}

void CurveItem::setLineColor(const QColor &color)
{
    m_pen.setColor(color);
    redraw();
}

void CurveItem::setLineStyle(Qt::PenStyle style)
{
    m_pen.setStyle(style);
    redraw();
}

void CurveItem::setLineWidth(int widthPx)
{
    m_pen.setWidth(widthPx);
    redraw();
}

void CurveItem::setFillColor(const QColor &color)
{
    m_fillStyle.color = color;
    m_fillStyle.bar = {};
    m_fillSettings.barColors.clear();
    redraw();
}

// Samples hold measured depths. A subsea display asks with its own depths, so that the value is that of the line
// under the mouse.
logview::Sample CurveItem::sampleAt(double depthM) const
{
    const logview::DepthReference &reference = m_geometry.reference;
    const double toMeasured = reference.type == logview::TvdSubsea ? reference.kbElevationM : 0;
    logview::Sample sample = logview::sampleAt(m_samples, depthM + toMeasured);
    sample.depthM -= toMeasured;
    return sample;
}

void CurveItem::reloadCalibration()
{
    if (m_line.isCalibrationShown)
        m_calibration = m_well->calibration(m_line.group);
    placePoints();
}

void CurveItem::placePoints()
{
    m_points = logview::placeCalibration(m_calibration, m_geometry.axis, m_scale);
    while (m_pointItems.size() > m_points.size())
        delete m_pointItems.takeLast();
    while (m_pointItems.size() < m_points.size())
        m_pointItems.append(new PointItem(m_line.pointColor, std::max(m_line.pointSize, 1), m_line.pointShape, this));
    for (int i = 0; i < m_points.size(); ++i) {
        m_pointItems.at(i)->setPos(m_points.at(i).position);
        m_pointItems.at(i)->setVisible(m_points.at(i).isInRange);
    }
}

CurveItem::PointValue CurveItem::calibrationPointAt(const QPointF &position) const
{
    const int point = logview::calibrationAt(m_points, position, std::max(m_line.pointSize, 1));
    if (point < 0)
        return {};
    return {true, static_cast<double>(m_points.at(point).value)};
}

QVariant CurveItem::itemChange(GraphicsItemChange change, const QVariant &value)
{
    if (change == ItemSelectedHasChanged) {
        redraw();
    }
    return QGraphicsObject::itemChange(change, value);
}
