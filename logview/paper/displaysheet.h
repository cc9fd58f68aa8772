#pragma once

#include "logview/paper/sheet.h"

QT_BEGIN_NAMESPACE
class QGraphicsScene;
QT_END_NAMESPACE

class WellLogsScene;

namespace logview {

/// What the names of markers take left of the tracks, in pixels.
constexpr double markerNamesWidth = 84;

/// "MD", "TVDKB" or "TVDSS".
QString depthTypeText(int depthType);

/// A well's log display as it is to be printed.
SheetContents sheetContents(const QGraphicsScene &headerScene, const WellLogsScene &scene);

} // namespace logview
