#include "logview/paper/displaysheet.h"

#include "logview/headerpane.h"
#include "logview/trackitem.h"
#include "logview/welllogsscene.h"
#include "logview/welllogsscenepropertywidget.h"

#include <cmath>

namespace logview {

QString depthTypeText(int depthType)
{
    if (depthType == TvdKb)
        return QStringLiteral("TVDKB");
    return depthType == TvdSubsea ? QStringLiteral("TVDSS") : QStringLiteral("MD");
}

SheetContents sheetContents(const QGraphicsScene &headerScene, const WellLogsScene &scene)
{
    SheetContents contents;
    contents.title = scene.well().wellName;
    contents.depthTypeText = depthTypeText(scene.depthType());
    contents.unit = static_cast<DepthUnit>(scene.depthUnit());
    contents.scale = scene.panel()->scale();
    contents.headerHeight = std::ceil(headerArea(headerScene).height());
    contents.leftMargin = scene.markers().all().isEmpty() ? 0 : markerNamesWidth;
    for (const TrackItem *track : scene.tracks()) {
        contents.axis = track->axis();
        contents.trackStarts.append(track->x());
        contents.trackEnds.append(track->x() + static_cast<double>(track->width()));
    }
    return contents;
}

} // namespace logview
