#pragma once

#include "logview/paper/sheet.h"

QT_BEGIN_NAMESPACE
class QGraphicsScene;
QT_END_NAMESPACE

class CorrelationView;

namespace correlation {

/// A correlation as it is to be printed, as it was drawn last, with all wells made. Its depths are those of the well
/// whose tracks are the longest.
logview::SheetContents sheetContents(const QGraphicsScene &headerScene, const CorrelationView &view);

} // namespace correlation
