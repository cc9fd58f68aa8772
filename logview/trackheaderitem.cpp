#include "logview/trackheaderitem.h"

#include "logview/curveheaderitem.h"
#include "logview/curveitem.h"
#include "logview/geometry/displaystyle.h"
#include "logview/trackitem.h"

#include <QGraphicsSceneMouseEvent>
#include <QPainter>

#include <algorithm>

TrackHeaderItem::TrackHeaderItem(TrackItem *track)
    : m_track(track)
{
    setFlag(ItemIsSelectable);
    for (CurveItem *curve : track->curves()) {
        auto *header = new CurveHeaderItem(curve, this);
        header->setPos(0, CurveHeaderItem::height * m_curveHeaders.size());
        m_curveHeaders.append(header);
        connect(header, &CurveHeaderItem::clicked, this, &TrackHeaderItem::clicked);
        connect(curve, &QObject::destroyed, header, [this, header] { forgetCurve(header); });
    }
    showTrack();
    connect(track, &TrackItem::changed, this, &TrackHeaderItem::showTrack);
    connect(track, &QObject::destroyed, this, [this] { delete this; });
}

void TrackHeaderItem::showTrack()
{
    prepareGeometryChange();
    m_width = m_track->width();
    setSelected(m_track->isSelected());
    update();
}

void TrackHeaderItem::forgetCurve(CurveHeaderItem *header)
{
    m_curveHeaders.removeOne(header);
    delete header;
    for (int i = 0; i < m_curveHeaders.size(); ++i)
        m_curveHeaders.at(i)->setPos(0, CurveHeaderItem::height * i);
}

int TrackHeaderItem::frameCount() const
{
    const QList<QGraphicsItem *> curves = childItems();
    const auto shown =
        std::count_if(curves.begin(), curves.end(), [](const QGraphicsItem *curve) { return curve->isVisible(); });
    return std::max(static_cast<int>(shown), 1);
}

double TrackHeaderItem::contentHeight() const
{
    return frameCount() * headerHeight;
}

void TrackHeaderItem::setBorderHeight(double heightPx)
{
    prepareGeometryChange();
    m_borderHeight = heightPx;
}

QRectF TrackHeaderItem::boundingRect() const
{
    const double height = std::max(m_borderHeight, contentHeight());
    return QRectF(0, 0, static_cast<double>(m_width), height).adjusted(-1, -1, 1, 1);
}

void TrackHeaderItem::paint(QPainter *painter, const QStyleOptionGraphicsItem *, QWidget *)
{
    const double width = static_cast<double>(m_width);
    painter->setBrush(m_track->isSelected() ? logview::highlightColor() : logview::backgroundColor());
    painter->setPen(Qt::black);
    for (int i = 0; i < frameCount(); ++i)
        painter->drawRect(QRectF(0, i * headerHeight, width, headerHeight));
    for (const double x : {0.0, width})
        painter->drawLine(QPointF(x, 0), QPointF(x, std::max(m_borderHeight, contentHeight())));
    if (m_track->trackType() != DepthTrack)
        return;
    const QRectF typeArea(5, 1, width - 10, 20);
    const QString type = m_track->depthTypeText();
    painter->setFont(logview::fittedFont(logview::timesFont(), type, typeArea.width(), painter->device()));
    painter->drawText(typeArea, Qt::AlignCenter, type);
    const QRectF scaleArea(0, 21, width, 20);
    const QString scale = QStringLiteral("1:") + QString::number(static_cast<double>(m_track->scale()), 'g', 7);
    QFont scaleFont = logview::timesFont();
    scaleFont.setPointSize(8);
    painter->setFont(logview::fittedFont(scaleFont, scale, scaleArea.width(), painter->device()));
    painter->drawText(scaleArea, Qt::AlignCenter, scale);
}

QVariant TrackHeaderItem::itemChange(GraphicsItemChange change, const QVariant &value)
{
    return QGraphicsObject::itemChange(change, change == ItemSelectedChange ? m_track->isSelected() : value);
}

void TrackHeaderItem::mousePressEvent(QGraphicsSceneMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        emit clicked(m_track);
}
