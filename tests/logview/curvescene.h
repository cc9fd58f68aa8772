#pragma once

#include "logview/geometry/curvepath.h"

#include <QPen>

/// The pens and tracks in which tests draw curves.
namespace curvescene {

inline QPen solidPen(int width)
{
    return {QBrush(Qt::black), static_cast<double>(width), Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin};
}

/// Where a curve lies: without an elevation of the kelly bushing.
struct Scene
{
    logview::DepthAxis axis;
    logview::DepthReference reference;
    logview::ValueScale scale;
};

inline Scene sceneOf(float start, float end, float height, bool isLogarithmic, bool isMirrored)
{
    Scene scene;
    scene.axis = {start, end, height};
    scene.scale = {isLogarithmic, isLogarithmic ? 0.2F : 0, isLogarithmic ? 2000.0F : 150.0F, 200.0F};
    if (isMirrored)
        std::swap(scene.scale.minimum, scene.scale.maximum);
    return scene;
}

} // namespace curvescene
