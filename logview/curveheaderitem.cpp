#include "logview/curveheaderitem.h"

#include "logview/curveitem.h"
#include "logview/geometry/depthaxis.h"
#include "logview/geometry/displaystyle.h"

#include <QFontMetrics>
#include <QGraphicsSceneMouseEvent>
#include <QPainter>
#include <QTextDocument>

namespace {

// Names from data may look like markup.
QString plainToolTip(const QString &text)
{
    return Qt::mightBeRichText(text) ? Qt::convertFromPlainText(text) : text;
}

// Curves of a kind begin alike and end differently: what is left out stands in the middle.
QString shownName(const QString &name, double headerWidth, const QFontMetrics &metrics)
{
    return metrics.elidedText(name, Qt::ElideMiddle, logview::toInt(headerWidth - 10));
}

} // namespace

CurveHeaderItem::CurveHeaderItem(CurveItem *curve, QGraphicsItem *trackHeader)
    : QGraphicsObject(trackHeader)
    , m_curve(curve)
{
    setFlag(ItemIsSelectable);
    showCurve();
    connect(curve, &CurveItem::changed, this, &CurveHeaderItem::showCurve);
}

void CurveHeaderItem::showCurve()
{
    prepareGeometryChange();
    m_width = static_cast<double>(m_curve->scale().width);
    setVisible(m_curve->isVisible());
    setSelected(m_curve->isSelected());
    tellWhatIsNotSeen();
    update();
}

void CurveHeaderItem::tellWhatIsNotSeen()
{
    const QString name = m_curve->curveName();
    QStringList lines;
    if (shownName(name, m_width, QFontMetrics(logview::timesFont())) != name)
        lines.append(name);
    if (m_curve->isLogMissing())
        lines.append(QStringLiteral("No such log in %1").arg(m_curve->wellName()));
    setToolTip(plainToolTip(lines.join(QLatin1Char('\n'))));
}

QRectF CurveHeaderItem::boundingRect() const
{
    return QRectF(0, 0, m_width, height);
}

void CurveHeaderItem::paint(QPainter *painter, const QStyleOptionGraphicsItem *, QWidget *)
{
    const CurveFillStyle &fill = m_curve->fillStyle();
    const QRectF swatch(5, 1, m_width - 11, 18);
    if (fill.isOn && !fill.bar.isNull())
        painter->drawImage(swatch, fill.bar.image);
    else if (fill.isOn && fill.color.isValid())
        painter->fillRect(swatch, fill.color);

    QFont font = logview::timesFont();
    painter->setFont(font);
    const QColor textColor = m_curve->isLogMissing() ? Qt::gray : Qt::black;
    painter->setPen(textColor);
    painter->drawText(QRectF(5, 1, m_width - 10, 20), Qt::AlignCenter,
                      shownName(m_curve->curveName(), m_width, painter->fontMetrics()));
    QPen linePen = m_curve->currentPen();
    if (m_curve->isLogMissing() && !m_curve->isSelected())
        linePen.setColor(textColor);
    painter->setPen(linePen);
    painter->drawLine(QPointF(5, 22), QPointF(m_width - 5, 22));

    const int third = logview::toInt((m_width - 10) / 3);
    painter->setPen(textColor);
    // A limit is there whole, in smaller letters if need be: half a number is another number.
    const auto drawLimit = [painter, third](int x, int alignment, const QFont &largest, float limit) {
        const QString text = QString::number(static_cast<double>(limit));
        painter->setFont(logview::fittedFont(largest, text, third, painter->device()));
        painter->drawText(QRectF(x, 23, third, 20), alignment | Qt::AlignVCenter, text);
    };
    drawLimit(5, Qt::AlignLeft, font, m_curve->scale().minimum);
    painter->setFont(font);
    if (painter->fontMetrics().horizontalAdvance(m_curve->unit()) > third) {
        font.setPointSize(8);
        painter->setFont(font);
    }
    painter->drawText(QRectF(third + 5, 23, third, 20), Qt::AlignCenter, m_curve->unit());
    font.setPointSize(10);
    drawLimit(2 * third + 5, Qt::AlignRight, font, m_curve->scale().maximum);
}

QVariant CurveHeaderItem::itemChange(GraphicsItemChange change, const QVariant &value)
{
    return QGraphicsObject::itemChange(change, change == ItemSelectedChange ? m_curve->isSelected() : value);
}

void CurveHeaderItem::mousePressEvent(QGraphicsSceneMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        emit clicked(m_curve);
}
