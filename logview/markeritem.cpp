#include "logview/markeritem.h"

#include "logview/geometry/depthaxis.h"
#include "logview/geometry/displaystyle.h"

#include <QFontMetrics>
#include <QPainter>

namespace {

constexpr int namePixelSize = 10;
constexpr int longestNameOnOneLine = 80; // pixels
constexpr int paperAlpha = 200; // below a name: what lies there may be guessed

QFont nameFont(QFont font)
{
    font.setPixelSize(namePixelSize);
    return font;
}

int nameFlags(int textWidthPx)
{
    return textWidthPx <= longestNameOnOneLine ? Qt::AlignRight | Qt::AlignVCenter
                                               : static_cast<int>(Qt::TextWordWrap);
}

} // namespace

/// Draws the line and the name. An item of its own, because both reach beyond the rectangle in which a marker is
/// picked.
class MarkerDrawing : public QGraphicsItem
{
public:
    explicit MarkerDrawing(MarkerItem *marker)
        : QGraphicsItem(marker)
        , m_marker(marker)
    {
        setAcceptedMouseButtons(Qt::NoButton);
    }

    void changeGeometry() { prepareGeometryChange(); }

    QRectF boundingRect() const override
    {
        constexpr double reach = (MarkerItem::maximumThickness + 2) / 2.0 + 1;
        const QRectF line(-reach, -reach, static_cast<double>(m_marker->width()) + 2 * reach, 2 * reach);
        const QRectF name =
            MarkerItem::nameRect(longestNameOnOneLine) | MarkerItem::nameRect(longestNameOnOneLine + 1);
        return line | name.translated(0, m_marker->m_nameShift);
    }
    QPainterPath shape() const override { return {}; } // the marker itself is picked
    void paint(QPainter *painter, const QStyleOptionGraphicsItem *, QWidget *) override
    {
        painter->setFont(nameFont(painter->font()));
        painter->setPen(m_marker->currentPen());
        painter->drawLine(0, 0, logview::toInt(static_cast<double>(m_marker->width())), 0);
        if (!m_marker->m_isNameShown)
            return;
        const QString name = m_marker->markerName();
        const int textWidth = painter->fontMetrics().horizontalAdvance(name);
        if (m_marker->m_isNameOnPaper)
            painter->fillRect(m_marker->nameExtent(painter->font()).translated(0, m_marker->m_nameShift),
                              QColor(255, 255, 255, paperAlpha));
        painter->drawText(MarkerItem::nameRect(textWidth).translated(0, m_marker->m_nameShift), nameFlags(textWidth),
                          name);
    }

private:
    MarkerItem *m_marker;
};

MarkerItem::MarkerItem()
{
    m_drawing = new MarkerDrawing(this);
    setFlag(ItemIsSelectable);
    setDepth(0);
}

QRectF MarkerItem::boundingRect() const
{
    return QRectF(0, 0, static_cast<double>(m_width), 2);
}

QPainterPath MarkerItem::shape() const
{
    QPainterPath path;
    path.addRect(boundingRect());
    return path;
}

void MarkerItem::paint(QPainter *, const QStyleOptionGraphicsItem *, QWidget *)
{
    // Its child draws.
}

void MarkerItem::setWellName(const QString &wellName)
{
    setData(WellNameKey, wellName);
    emit changed();
}

void MarkerItem::setMarkerName(const QString &markerName)
{
    setData(MarkerNameKey, markerName);
    emit changed();
    m_drawing->update();
}

void MarkerItem::editMarkerName(const QString &markerName)
{
    if (markerName == this->markerName())
        return;
    setMarkerName(markerName);
    emit nameEdited();
}

void MarkerItem::setDepth(float depthM)
{
    setData(DepthKey, depthM);
    emit changed();
}

void MarkerItem::editDepth(float depthM)
{
    setDepth(depthM);
    emit depthEdited();
}

void MarkerItem::setLineColor(const QColor &color)
{
    m_lineColor = color;
    emit changed();
    m_drawing->update();
}

void MarkerItem::setLineThickness(int thicknessPx)
{
    m_lineThickness = qBound(1, thicknessPx, maximumThickness);
    emit changed();
    m_drawing->update();
}

void MarkerItem::setWidth(float widthPx)
{
    prepareGeometryChange();
    m_drawing->changeGeometry();
    m_width = widthPx;
    setLine(0, 0, static_cast<double>(widthPx), 0);
}

QPen MarkerItem::currentPen() const
{
    const QPen normal(QBrush(m_lineColor), m_lineThickness, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
    return isSelected() ? logview::selectionPen(normal) : normal;
}

QRectF MarkerItem::nameRect(int textWidthPx)
{
    if (textWidthPx <= longestNameOnOneLine)
        return QRectF(-2 - textWidthPx, -10, textWidthPx, 20);
    return QRectF(-50, -10, 50, 40);
}

void MarkerItem::setNameShift(double shiftPx)
{
    if (shiftPx == m_nameShift)
        return;
    m_drawing->changeGeometry();
    m_nameShift = shiftPx;
    m_drawing->update();
}

void MarkerItem::setNameShown(bool isShown)
{
    if (isShown == m_isNameShown)
        return;
    m_isNameShown = isShown;
    m_drawing->update();
}

void MarkerItem::setNameOnPaper(bool isOnPaper)
{
    m_isNameOnPaper = isOnPaper;
    m_drawing->update();
}

QRectF MarkerItem::nameExtent(const QFont &painterFont) const
{
    const QFontMetrics metrics(nameFont(painterFont));
    const int width = metrics.horizontalAdvance(markerName());
    const QRect place = nameRect(width).toRect();
    if (width <= longestNameOnOneLine)
        return QRectF(place.left(), -metrics.height() / 2.0, width, metrics.height());
    return metrics.boundingRect(place, nameFlags(width), markerName()) & place;
}

bool MarkerItem::isNameCut(const QFont &painterFont) const
{
    const QFontMetrics metrics(nameFont(painterFont));
    const int width = metrics.horizontalAdvance(markerName());
    const QRect place = nameRect(width).toRect();
    return width > longestNameOnOneLine
        && !place.contains(metrics.boundingRect(place, nameFlags(width), markerName()));
}

QVariant MarkerItem::itemChange(GraphicsItemChange change, const QVariant &value)
{
    if (change == ItemSelectedHasChanged)
        m_drawing->update();
    return QGraphicsLineItem::itemChange(change, value);
}
