#pragma once

#include "datastore/calibrationfile.h"

namespace batch {

class Session;

/// What messages call the calibration points of a well and group.
QString pointsOfWell(const QString &wellName, const QString &group);
/// The calibration points; why they cannot be read goes to the failures.
CalibrationRecord readPoints(Session &session, const QString &wellName, const QString &group, QStringList *failures);

} // namespace batch
