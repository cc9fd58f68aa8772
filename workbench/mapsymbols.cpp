#include "workbench/mapsymbols.h"

#include <QPainter>

#include <cmath>

namespace workbench {

namespace {

const QColor oilGreen(47, 158, 88);
const QColor gasRed(220, 74, 61);

void drawRays(QPainter &painter, const QPointF &centre, double from, double to, int count, double startAngle)
{
    constexpr double fullCircle = 6.283185307179586;
    for (int i = 0; i < count; ++i) {
        const double angle = startAngle + i * fullCircle / count;
        const QPointF direction(std::cos(angle), std::sin(angle));
        painter.drawLine(centre + from * direction, centre + to * direction);
    }
}

} // namespace

void drawMapSymbol(QPainter &painter, const QPointF &centre, MapSymbol symbol, double radiusPx,
                   const QPalette &palette)
{
    const QColor ink = palette.color(QPalette::Text);
    const double rayEnd = 1.6 * radiusPx;
    const auto draw = [&](const QColor &line, const QBrush &fill, int rays) {
        painter.setPen(QPen(line, 1.3));
        painter.setBrush(fill);
        if (rays > 0)
            drawRays(painter, centre, radiusPx, rayEnd, rays, 0);
        painter.drawEllipse(centre, radiusPx, radiusPx);
    };
    switch (symbol) {
    case MapSymbol::Oil:
        draw(oilGreen.darker(120), oilGreen, 0);
        break;
    case MapSymbol::Gas:
        draw(gasRed, palette.color(QPalette::Base), 8);
        break;
    case MapSymbol::OilAndGas:
        draw(gasRed, oilGreen, 8);
        break;
    case MapSymbol::Dry:
        draw(ink, palette.color(QPalette::Base), 4);
        break;
    case MapSymbol::Other:
        draw(ink, palette.color(QPalette::Base), 0);
        break;
    }
}

QString mapSymbolName(MapSymbol symbol)
{
    switch (symbol) {
    case MapSymbol::Oil:
        return QStringLiteral("Oil");
    case MapSymbol::Gas:
        return QStringLiteral("Gas");
    case MapSymbol::OilAndGas:
        return QStringLiteral("Oil and gas");
    case MapSymbol::Dry:
        return QStringLiteral("Dry");
    case MapSymbol::Other:
        break;
    }
    return QStringLiteral("Other");
}

} // namespace workbench
