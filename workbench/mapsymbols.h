#pragma once

#include "workbench/basemapgeometry.h"

#include <QPalette>

QT_BEGIN_NAMESPACE
class QPainter;
QT_END_NAMESPACE

namespace workbench {

/// Draws a well symbol of the trade: a filled disc for oil, a disc with rays for gas, a circle with ticks for a dry
/// hole, a plain circle for all others. The rays stay inside 1.6 radii.
void drawMapSymbol(QPainter &painter, const QPointF &centre, MapSymbol symbol, double radiusPx,
                   const QPalette &palette);

/// The legend's word.
QString mapSymbolName(MapSymbol symbol);

} // namespace workbench
