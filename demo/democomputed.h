#pragma once

#include "demo/demoborehole.h"
#include "demo/demofield.h"
#include "demo/demorock.h"

#include <QVector>

namespace demo {

/// VSH_log, PHIE_log and WS_log (v/v) as an interpreter works them out of the measured logs; rock
/// and hole are those at the samples of the curves.
QVector<Curve> computedCurves(const QVector<Formation> &column, const QVector<RockSample> &rock,
                              const QVector<HoleSample> &hole, const QVector<Curve> &measured);

} // namespace demo
