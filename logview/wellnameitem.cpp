#include "logview/wellnameitem.h"

#include "logview/geometry/depthaxis.h"
#include "logview/geometry/displaystyle.h"

#include <QFontMetrics>
#include <QGraphicsScene>
#include <QPainter>
#include <QTextDocument>

namespace {

constexpr int frameWidth = 2;

QString shownName(const QString &wellName, int bannerWidth, const QFontMetrics &metrics)
{
    return metrics.elidedText(wellName, Qt::ElideMiddle, bannerWidth - 2 * frameWidth);
}

} // namespace

WellNameItem::WellNameItem(const QString &wellName, float widthPx, QGraphicsScene *scene)
    : m_wellName(wellName)
    , m_width(widthPx)
{
    tellLongName();
    if (scene)
        scene->addItem(this);
}

void WellNameItem::setWidth(float widthPx)
{
    prepareGeometryChange();
    m_width = widthPx;
    tellLongName();
    update();
}

void WellNameItem::tellLongName()
{
    const QString shown =
        shownName(m_wellName, logview::toInt(static_cast<double>(m_width)), QFontMetrics(logview::timesFont()));
    setToolTip(shown == m_wellName ? QString() : Qt::convertFromPlainText(m_wellName));
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
    painter->setPen(QPen(Qt::black, frameWidth));
    painter->drawRect(banner);
    painter->setFont(logview::timesFont());
    painter->drawText(banner, Qt::AlignCenter, shownName(m_wellName, banner.width(), painter->fontMetrics()));
}
