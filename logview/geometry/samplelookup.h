#pragma once

#include "logview/geometry/curvesamples.h"

#include <optional>

namespace logview {

struct Sample
{
    double depthM = 0;
    double value = nullSampleValue;
};

/// The sample at a measured depth: the nearest one, of two equally near ones the upper, when the depth lies within
/// the log's range; otherwise the asked depth with the value -999.25. A null sample reads -999.25 too. Logarithmic
/// in the number of samples for depths in order, linear for others.
Sample sampleAt(const CurveSamples &samples, double depthM);

/// The least measured depth, in metres, at which the log has a value; none when it has no value anywhere.
std::optional<double> shallowestDepthM(const CurveSamples &samples);

} // namespace logview
