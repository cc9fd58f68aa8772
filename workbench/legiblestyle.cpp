#include "workbench/legiblestyle.h"

#include <QPainter>
#include <QStyleOption>

namespace workbench {

namespace {

constexpr int outlineAlpha = 140;
constexpr int darkestLight = 128; // lightness of a window that counts as light

} // namespace

void LegibleStyle::drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                                 const QWidget *widget) const
{
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    const bool isBox = element == PE_IndicatorCheckBox;
    if ((!isBox && element != PE_IndicatorRadioButton)
        || option->palette.color(QPalette::Window).lightness() >= darkestLight)
        return;
    QColor outline = option->palette.color(QPalette::WindowText);
    outline.setAlpha(outlineAlpha);
    painter->save();
    painter->setPen(outline);
    painter->setBrush(Qt::NoBrush);
    painter->setRenderHint(QPainter::Antialiasing, !isBox);
    const QRectF rect = QRectF(option->rect).adjusted(0.5, 0.5, -0.5, -0.5);
    if (isBox)
        painter->drawRect(rect);
    else
        painter->drawEllipse(rect);
    painter->restore();
}

} // namespace workbench
