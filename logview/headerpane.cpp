#include "logview/headerpane.h"

#include "logview/trackheaderitem.h"

#include <QGraphicsScene>
#include <QVector>

#include <algorithm>

namespace logview {

QRectF headerArea(const QGraphicsScene &headerScene)
{
    QRectF area;
    for (const QGraphicsItem *item : headerScene.items())
        if (item->isVisible())
            area |= item->sceneBoundingRect();
    return area;
}

void alignHeaders(const QGraphicsScene &headerScene)
{
    QVector<TrackHeaderItem *> headers;
    double bottom = 0;
    for (QGraphicsItem *item : headerScene.items()) {
        if (auto *header = qgraphicsitem_cast<TrackHeaderItem *>(item)) {
            headers.append(header);
            bottom = std::max(bottom, header->scenePos().y() + header->contentHeight());
        }
    }
    for (TrackHeaderItem *header : qAsConst(headers))
        header->setBorderHeight(bottom - header->scenePos().y());
}

} // namespace logview
