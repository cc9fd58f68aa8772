#pragma once

#include "logview/geometry/depthaxis.h"

namespace logview {

/// What the curves of a track must know of it.
struct TrackGeometry
{
    DepthAxis axis;
    DepthReference reference;
    float width = 0; ///< pixels
    int trackType = 0; ///< LinearTrack, LogarithmicTrack or DepthTrack
};

} // namespace logview
