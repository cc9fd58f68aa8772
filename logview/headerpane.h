#pragma once

#include <QRectF>

QT_BEGIN_NAMESPACE
class QGraphicsScene;
QT_END_NAMESPACE

namespace logview {

/// What the items of a header scene cover; hidden ones do not count.
QRectF headerArea(const QGraphicsScene &headerScene);

/// Lets the borders of all track headers of the scene run down to the end of the longest one.
void alignHeaders(const QGraphicsScene &headerScene);

} // namespace logview
