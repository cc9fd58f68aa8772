#pragma once

#include "host/wells.h"
#include "survey/depthunit.h"

#include <functional>
#include <limits>

namespace survey {

/// One line of the overview of a survey.
struct WellSummary
{
    static constexpr int unknownCount = -1;
    static constexpr double unknownNumber = std::numeric_limits<double>::quiet_NaN();

    QString key;
    QString name;
    double x = unknownNumber; ///< surface position, survey coordinates
    double y = unknownNumber;
    double kbElevation = unknownNumber; ///< lengths in the survey's depth unit
    double totalDepth = unknownNumber;
    int typeCode = host::NoWellType;
    int logCount = unknownCount;
    int markerCount = unknownCount;
    QString error; ///< why the well cannot be read, as a sentence; empty when it can
};

/// All wells in the host's order, each asked once for its header, its logs and its markers; no samples are read.
/// A well that cannot be read is listed with its error. \a unit is the survey's depth unit. \a progress is told before each
/// well how many are done, and of how many.
host::Outcome<QVector<WellSummary>> readWellSummaries(host::Wells &wells, DepthUnit unit = DepthUnit::Metre,
                                                      const std::function<void(int done, int all)> &progress = {});

} // namespace survey
