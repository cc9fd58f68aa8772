#include "logview/wellnameitem.h"

#include "logview/geometry/depthaxis.h"
#include "logview/geometry/displaystyle.h"

#include <QGraphicsScene>
#include <QPainter>

WellNameItem::WellNameItem(const QString &wellName, float widthPx, QGraphicsScene *scene)
    : m_wellName(wellName)
    , m_width(widthPx)
{
    if (scene)
        scene->addItem(this);
}

void WellNameItem::setWidth(float widthPx)
{
    prepareGeometryChange();
    m_width = widthPx;
    update();
}

QRectF WellNameItem::boundingRect() const
{
    return QRectF(-1, -1, static_cast<double>(m_width) + 2, bannerHeight + 2);
}

void WellNameItem::paint(QPainter *painter, const QStyleOptionGraphicsItem *, QWidget *)
{
    const QRect banner(0, 0, logview::toInt(static_cast<double>(m_width)), bannerHeight);
    if (banner.isEmpty())
        return;
    painter->setBrush(QColor(240, 127, 33, 255));
    painter->setPen(QPen(Qt::black, 2));
    painter->drawRect(banner);
    painter->setFont(logview::timesFont());
    painter->drawText(banner, Qt::AlignCenter, m_wellName);
}
