#pragma once

#include "demo/demorock.h"
#include "demo/demowells.h"

#include <QVector>

namespace demo {

/// What the drilled hole looks like at one depth.
struct HoleSample
{
    double bitIn, caliperIn;
    double roughness; ///< how much a pad loses contact with the wall, 0 for a smooth hole
};

/// The hole at these points: mud cake on permeable sand, caving in soft shale.
QVector<HoleSample> makeHole(const WellPlan &plan, const QVector<RockSample> &rock);

} // namespace demo
