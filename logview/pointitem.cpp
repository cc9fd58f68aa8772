#include "logview/pointitem.h"

#include <QPainter>
#include <QPen>

PointItem::PointItem(const QColor &color, int sizePx, int shapeCode, QGraphicsItem *parent)
    : QGraphicsItem(parent)
    , m_color(color)
    , m_size(sizePx)
    , m_shapeCode(shapeCode)
{
    setAcceptedMouseButtons(Qt::NoButton); // clicks are for the curve below
}

QRectF PointItem::boundingRect() const
{
    return QRectF(-m_size, -m_size, 2 * m_size, 2 * m_size);
}

QPainterPath PointItem::shape() const
{
    QPainterPath path;
    path.addRect(boundingRect());
    return path;
}

void PointItem::paint(QPainter *painter, const QStyleOptionGraphicsItem *, QWidget *)
{
    // Half the pen on each side of a shape of that size fills the bounding rectangle.
    const QBrush brush(m_color);
    const QRectF core(-m_size / 2.0, -m_size / 2.0, m_size, m_size);
    painter->setBrush(brush);
    painter->setPen(QPen(brush, m_size, Qt::SolidLine, Qt::SquareCap, Qt::BevelJoin));
    if (m_shapeCode == circleShape)
        painter->drawEllipse(core);
    else
        painter->drawRect(core);
}
