#include "logview/trackheaderitem.h"

#include "logview/geometry/displaystyle.h"
#include "logview/trackitem.h"

#include <QGraphicsSceneMouseEvent>
#include <QPainter>

TrackHeaderItem::TrackHeaderItem(TrackItem *track)
    : m_track(track)
{
    setFlag(ItemIsSelectable);
}

TrackHeaderItem::~TrackHeaderItem()
{
    if (m_track)
        m_track->forgetHeader();
}

void TrackHeaderItem::setWidth(float widthPx)
{
    prepareGeometryChange();
    m_width = widthPx;
}

QRectF TrackHeaderItem::boundingRect() const
{
    return QRectF(0, 0, static_cast<double>(m_width), headerHeight).adjusted(-1, -1, 1, 1);
}

void TrackHeaderItem::paint(QPainter *painter, const QStyleOptionGraphicsItem *, QWidget *)
{
    const double width = static_cast<double>(m_width);
    painter->setBrush(m_track->isSelected() ? logview::highlightColor() : logview::backgroundColor());
    painter->setPen(Qt::black);
    painter->drawRect(QRectF(0, 0, width, headerHeight));
    if (m_track->trackType() != DepthTrack)
        return;
    QFont font = logview::timesFont();
    painter->setFont(font);
    painter->drawText(QRectF(5, 1, width - 10, 20), Qt::AlignCenter, m_track->depthTypeText());
    font.setPointSize(8);
    painter->setFont(font);
    painter->drawText(QRectF(5, 21, width - 10, 20), Qt::AlignCenter,
                      QStringLiteral("1:") + QString::number(static_cast<double>(m_track->scale()), 'g', 7));
}

void TrackHeaderItem::mousePressEvent(QGraphicsSceneMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        m_track->clickInHeader(m_track);
}
