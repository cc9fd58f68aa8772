#include "workbench/legiblestyle.h"

#include <QPainter>
#include <QStyleOption>

namespace workbench {

namespace {

constexpr int outlineAlpha = 140;
constexpr double crossReach = 3.5; // pixels from its middle
constexpr double crossWidth = 1.5;
constexpr int darkestLight = 128; // lightness of a window that counts as light

} // namespace

void LegibleStyle::drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                                 const QWidget *widget) const
{
    const bool isDark = option->palette.color(QPalette::Window).lightness() < darkestLight;
    const bool isBox = element == PE_IndicatorCheckBox;
    if (!isDark || (!isBox && element != PE_IndicatorRadioButton && element != PE_IndicatorTabClose)) {
        QProxyStyle::drawPrimitive(element, option, painter, widget);
        return;
    }
    QColor outline = option->palette.color(QPalette::WindowText);
    outline.setAlpha(option->state & State_MouseOver ? 255 : outlineAlpha);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing, !isBox);
    if (element == PE_IndicatorTabClose) {
        painter->setPen(QPen(outline, crossWidth));
        const QPointF middle = QRectF(option->rect).center();
        painter->drawLine(middle - QPointF(crossReach, crossReach), middle + QPointF(crossReach, crossReach));
        painter->drawLine(middle - QPointF(crossReach, -crossReach), middle + QPointF(crossReach, -crossReach));
        painter->restore();
        return;
    }
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    painter->setPen(outline);
    painter->setBrush(Qt::NoBrush);
    const QRectF rect = QRectF(option->rect).adjusted(0.5, 0.5, -0.5, -0.5);
    if (isBox)
        painter->drawRect(rect);
    else
        painter->drawEllipse(rect);
    painter->restore();
}

} // namespace workbench
