#pragma once

#include "demo/demofield.h"
#include "demo/demostratigraphy.h"
#include "demo/demowells.h"

#include <QVector>

namespace demo {

/// Sampling of all logs, half a foot in metres.
constexpr double logStepM = 0.1524;

/// Measured depths (m) of the log samples of a well.
QVector<double> logDepths(const WellPlan &plan);

/// The logs of a well at these depths: measured ones, then the computed ones.
QVector<Curve> makeCurves(const WellPlan &plan, const QVector<Formation> &column, const QVector<double> &depthsM);

} // namespace demo
