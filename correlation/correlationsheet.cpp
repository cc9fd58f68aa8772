#include "correlation/correlationsheet.h"

#include "correlation/correlationview.h"
#include "logview/headerpane.h"
#include "logview/paper/displaysheet.h"
#include "logview/trackitem.h"

#include <cmath>

namespace correlation {

namespace {

// The border of a well's last track reaches into the gap behind it, and a page shows a pixel beside its part: this keeps
// the one off the other.
constexpr double borderReach = 2.5;

} // namespace

logview::SheetContents sheetContents(const QGraphicsScene &headerScene, const CorrelationView &view)
{
    logview::SheetContents contents;
    contents.title = view.properties().name;
    contents.depthTypeText = logview::depthTypeText(view.depthType());
    contents.unit = view.depthUnit();
    contents.scale = view.scaleFactor();
    contents.headerHeight = std::ceil(logview::headerArea(headerScene).height());
    contents.leftMargin = view.properties().markers.isEmpty() ? 0 : logview::markerNamesWidth;
    contents.hasOneWell = false;
    const TrackItem *longest = nullptr;
    bool haveOneDepth = true;
    for (const TrackItem *track : view.tracks()) {
        haveOneDepth = haveOneDepth && track->axis().start == view.tracks().first()->axis().start;
        if (!longest || track->height() > longest->height())
            longest = track;
    }
    // The names of a well's markers stand in the gap before it; those of the first one, in the margin.
    for (const WellColumn &column : view.columns()) {
        if (!(column.right > column.left))
            continue;
        contents.trackStarts.append(contents.trackEnds.isEmpty() ? column.left
                                                                 : contents.trackEnds.last() + borderReach);
        contents.trackEnds.append(column.right);
    }
    if (longest) {
        contents.axis = longest->axis();
        contents.depthsOf = haveOneDepth ? QString() : longest->wellName();
    }
    return contents;
}

} // namespace correlation
