#include "logview/trackitem.h"

#include "logview/curveitem.h"
#include "logview/geometry/displaystyle.h"
#include "logview/geometry/perforationgeometry.h"
#include "logview/geometry/trackgrid.h"
#include "logview/visiblearea.h"
#include "logview/welldisplaydata.h"

#include <QGraphicsSceneHoverEvent>
#include <QPainter>
#include <QStyleOptionGraphicsItem>

#include <algorithm>

namespace {

constexpr double boundingMargin = 2; // the outline is 2 pixels wide
constexpr int depthFontPoints = 8; // five digits fit into half an inch
constexpr int dotPeriod = 3; // pixels
constexpr float widestTrackInches = 1000; // beyond it no display could be laid out in whole pixels

bool isScaled(const QPainter &painter)
{
    return painter.deviceTransform().type() > QTransform::TxTranslate;
}

} // namespace

TrackItem::TrackItem(const TrackInfo &definition, const std::shared_ptr<WellDisplayData> &well, float totalDepthM)
    : m_definition(definition)
    , m_well(well)
    , m_axis(logview::DepthAxis::of(0, totalDepthM))
    , m_width(static_cast<float>(well->initialTrackWidth(definition.type)))
{
    m_reference.kbElevationM = well->record().kbElevation;
    setFlags(ItemIsSelectable | ItemSendsGeometryChanges | ItemUsesExtendedStyleOption);
    setAcceptHoverEvents(true);
    for (const TemplateCurveInfo &line : m_definition.curves)
        if (line.curve != defaultCurveName())
            m_curves.append(new CurveItem(m_definition, line, m_well, geometry(), this));
}

TrackItem::~TrackItem()
{
    qDeleteAll(m_curves);
}

void TrackItem::removeCurve(CurveItem *curve)
{
    if (!m_curves.removeOne(curve))
        return;
    delete curve;
    emit curvesChanged();
}

QRectF TrackItem::boundingRect() const
{
    return QRectF(0, 0, static_cast<double>(m_width), static_cast<double>(height()))
        .adjusted(-boundingMargin, -boundingMargin, boundingMargin, boundingMargin);
}

QString TrackItem::wellName() const
{
    return m_well->record().wellName;
}

void TrackItem::setTrackType(int trackType)
{
    m_definition.type = trackType;
    changeGeometry();
    emit resized(); // a depth track has one header
    emit typeChosen();
}

void TrackItem::setStartDepth(float depth)
{
    setDepthRange(depth, m_axis.end);
}

void TrackItem::setEndDepth(float depth)
{
    setDepthRange(m_axis.start, depth);
}

void TrackItem::setDepthRange(float start, float end)
{
    prepareGeometryChange();
    m_axis = logview::DepthAxis::of(start, end, lengthScale());
    changeGeometry();
}

// The scale that decides about lengths and, with them, about how many depths are written and ruled.
float TrackItem::lengthScale() const
{
    return m_areFeetTrue ? logview::trueScale(m_scale, m_reference.unit) : m_scale;
}

void TrackItem::setScale(float scale)
{
    m_scale = scale;
    setDepthRange(m_axis.start, m_axis.end);
}

void TrackItem::setWidthInches(float inches)
{
    if (!(inches > 0))
        return;
    prepareGeometryChange();
    m_width = widthOf(inches);
    changeGeometry();
    emit resized();
}

float TrackItem::widthOf(float inches)
{
    return std::min(inches, widestTrackInches) * logview::widthPixelsPerInch;
}

void TrackItem::setMdFlag()
{
    setDepthType(logview::MeasuredDepth);
}

void TrackItem::setTvdssFlag()
{
    setDepthType(logview::TvdSubsea);
}

void TrackItem::setDepthType(logview::DepthType depthType)
{
    m_reference.type = depthType;
    changeGeometry();
}

QString TrackItem::depthTypeText() const
{
    if (m_reference.type == logview::TvdKb)
        return QStringLiteral("TVDKB");
    return m_reference.type == logview::TvdSubsea ? QStringLiteral("TVDSS") : QStringLiteral("MD");
}

void TrackItem::setDepthUnit(logview::DepthUnit unit)
{
    m_reference.unit = unit;
    setDepthRange(m_axis.start, m_axis.end);
}

void TrackItem::setFeetTrue(bool areTrue)
{
    m_areFeetTrue = areTrue;
    setDepthRange(m_axis.start, m_axis.end);
}

void TrackItem::setPerforationsShown(bool areShown)
{
    m_arePerforationsShown = areShown;
    m_perforations = areShown ? m_well->perforations() : PerforationRecord();
    update();
}

void TrackItem::reloadSideFiles()
{
    setPerforationsShown(m_arePerforationsShown);
    for (CurveItem *curve : qAsConst(m_curves))
        curve->reloadCalibration();
}

void TrackItem::setVerticalOffset(float offsetPx)
{
    m_verticalOffset = offsetPx;
    update();
}

void TrackItem::changeGeometry()
{
    for (CurveItem *curve : qAsConst(m_curves))
        curve->setGeometry(geometry());
    update();
    emit changed();
}

void TrackItem::paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *)
{
    const QRect track(0, 0, logview::toInt(static_cast<double>(m_width)), m_axis.heightPx());
    const QRect shown = logview::visibleArea(*painter, *option).toAlignedRect();
    const QRect visible = shown.adjusted(-1, -1, 1, 1) & track;
    painter->fillRect(visible, isSelected() ? logview::highlightColor() : logview::backgroundColor());
    if (m_definition.type == DepthTrack) {
        paintDepths(painter, visible);
        if (m_arePerforationsShown)
            paintPerforations(painter, visible);
    } else {
        paintGrid(painter, isScaled(*painter) ? shown.adjusted(-dotPeriod, -dotPeriod, dotPeriod, dotPeriod) : shown);
    }

    // Sides only as long as they show: a painter takes its time with lines of millions of pixels.
    painter->setPen(QPen(QBrush(Qt::black), 2, Qt::SolidLine, Qt::SquareCap, Qt::BevelJoin));
    const int top = std::max(track.top(), visible.top() - 2);
    const int bottom = std::min(track.top() + track.height(), visible.bottom() + 2);
    painter->drawLine(0, top, 0, bottom);
    painter->drawLine(track.width(), top, track.width(), bottom);
    for (const int y : {0, track.height()})
        if (y >= top && y <= bottom)
            painter->drawLine(0, y, track.width(), y);
}

// A dotted line must not begin outside of what is shown: its dots would start anew at the edge of the device, and
// crawl while the view is scrolled. With a scaled pen they do not, and reach into the pixels beside them.
void TrackItem::paintGrid(QPainter *painter, const QRect &visible) const
{
    const QVector<logview::GridLine> verticals = m_definition.type == LogarithmicTrack
        ? logview::logarithmicGrid(m_width, height())
        : logview::linearGrid(m_width, height());
    painter->setBrush(Qt::NoBrush);
    for (const logview::GridLine &line :
         logview::horizontalGrid(m_axis, lengthScale(), m_width, visible.top(), visible.bottom(), m_verticalOffset)) {
        painter->setPen(logview::gridPen(line.pen));
        painter->drawLine(logview::cutHorizontal(line, visible.left(), visible.right()));
    }
    for (const logview::GridLine &line : verticals) {
        painter->setPen(logview::gridPen(line.pen));
        painter->drawLine(logview::cutVertical(line, visible.top(), visible.bottom()));
    }
}

void TrackItem::paintDepths(QPainter *painter, const QRect &visible) const
{
    QFont font = painter->font();
    font.setPointSize(depthFontPoints);
    painter->setFont(font);
    painter->setPen(Qt::black);
    for (const logview::DepthTick &tick : logview::depthTicks(m_axis, visible.top(), visible.bottom())) {
        painter->drawLine(logview::leftTick(tick));
        painter->drawLine(logview::rightTick(tick, m_width));
    }
    for (const DepthLabel &label : depthLabels(*painter, visible.top(), visible.bottom()))
        painter->drawText(label.place, label.text);
}

QVector<TrackItem::DepthLabel> TrackItem::depthLabels(const QPainter &painter, double topY, double bottomY) const
{
    constexpr int sideMargin = 2;
    const QFontMetrics metrics = painter.fontMetrics();
    const int reach = metrics.height();
    QVector<DepthLabel> labels;
    for (const logview::DepthTick &tick :
         logview::depthLabels(m_axis, lengthScale(), logview::toInt(topY) - reach, logview::toInt(bottomY) + reach)) {
        const QString text = logview::labelText(tick);
        const int textWidth = metrics.horizontalAdvance(text);
        const QPoint place = logview::labelPosition(tick, m_width, textWidth, metrics.height());
        labels.append({text, place,
                       QRectF(place.x() - sideMargin, place.y() - metrics.ascent(), textWidth + 2 * sideMargin,
                              metrics.height())});
    }
    return labels;
}

// Depths under a zone stay to be read, on white; the label of the zone gives way to them.
void TrackItem::paintPerforations(QPainter *painter, const QRect &visible) const
{
    const QFont font = painter->font();
    const int reach = painter->fontMetrics().height();
    const QVector<logview::ZoneGeometry> zones = logview::zoneGeometry(
        m_perforations, m_axis, m_reference, m_width, visible.top() - reach, visible.bottom() + reach);
    painter->setPen(Qt::black);
    painter->setBrush(Qt::NoBrush);
    for (const logview::ZoneGeometry &zone : zones) {
        if (zone.colors.left.isValid()) {
            painter->fillRect(zone.left, zone.colors.left);
            painter->fillRect(zone.right, zone.colors.right);
        }
        painter->drawRect(zone.outline());
    }
    for (const DepthLabel &label : depthLabels(*painter, visible.top(), visible.bottom())) {
        const bool isCovered = std::any_of(zones.begin(), zones.end(), [&label](const logview::ZoneGeometry &zone) {
            return zone.outline().intersects(label.box);
        });
        if (!isCovered)
            continue;
        painter->fillRect(label.box, logview::backgroundColor());
        painter->drawText(label.place, label.text);
    }
    for (const logview::ZoneGeometry &zone : zones) {
        const double middle = zone.outline().center().y();
        QVector<QRectF> taken;
        for (const DepthLabel &label : depthLabels(*painter, middle - 4 * reach, middle + 4 * reach))
            taken.append(label.box);
        const logview::ZoneLabel label = logview::zoneLabel(zone, font, painter->device(), taken);
        painter->setFont(label.text.isEmpty() ? font : label.font);
        painter->setPen(label.color);
        painter->drawText(label.rect, Qt::AlignCenter, label.text);
        painter->setFont(font);
    }
}

QString TrackItem::readout(const QPointF &scenePosition) const
{
    QString text = QStringLiteral("Track :%1 | ").arg(m_number);
    if (m_definition.type == DepthTrack)
        return text + QStringLiteral("Depth");
    const bool isFeet = m_reference.unit == logview::Feet;
    const double displayDepth = m_axis.hoverDepth(scenePosition.y());
    const double depthM = isFeet ? displayDepth / logview::feetPerMetre : displayDepth;
    const QString separator = QStringLiteral(" | ");
    for (int i = 0; i < m_curves.size(); ++i) {
        const CurveItem *curve = m_curves.at(i);
        const logview::Sample sample = curve->sampleAt(depthM);
        if (i == 0)
            text += QString::number(isFeet ? sample.depthM * logview::feetPerMetre : sample.depthM) + separator;
        text += curve->curveName() + QLatin1Char(':') + QString::number(sample.value) + separator;
        const CurveItem::PointValue point = curve->calibrationPointAt(curve->mapFromScene(scenePosition));
        if (point.isThere)
            text += QString::number(point.value) + separator;
    }
    return text;
}

void TrackItem::hoverMoveEvent(QGraphicsSceneHoverEvent *event)
{
    emit hovered(readout(event->scenePos()));
}

QVariant TrackItem::itemChange(GraphicsItemChange change, const QVariant &value)
{
    if (change == ItemSelectedHasChanged) {
        update();
        emit changed();
    }
    return QGraphicsObject::itemChange(change, value);
}
