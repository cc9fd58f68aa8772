#include "logview/geometry/samplelookup.h"

#include <algorithm>
#include <cmath>

namespace logview {

namespace {

Sample sampleOf(const CurveSamples &samples, int i)
{
    return {samples.depthM(i), samples.isNull(i) ? nullSampleValue : samples.value(i)};
}

// Index of the first depth that is not before the asked one in the order of the log.
int lowerBound(const CurveSamples &samples, double depthM)
{
    const bool isAscending = samples.order() == DepthOrder::Ascending;
    return samples.partition(0, samples.size(),
                             [&](double depth) { return isAscending ? depth < depthM : depth > depthM; });
}

int nearestInOrder(const CurveSamples &samples, double depthM)
{
    const int next = lowerBound(samples, depthM);
    if (next == samples.size() || (next == 0 && samples.depthM(0) != depthM))
        return -1;
    if (next == 0)
        return 0;
    const double before = std::abs(samples.depthM(next - 1) - depthM);
    const double after = std::abs(samples.depthM(next) - depthM);
    const bool isBeforeUpper = samples.order() == DepthOrder::Ascending;
    const int nearest = before < after || (before == after && isBeforeUpper) ? next - 1 : next;
    // Of samples at the same depth the first, as in a log that is searched from its start.
    return nearest == next ? next : lowerBound(samples, samples.depthM(nearest));
}

int nearestOfAll(const CurveSamples &samples, double depthM)
{
    int nearest = -1;
    bool isAbove = false;
    bool isBelow = false;
    for (int i = 0; i < samples.size(); ++i) {
        const double depth = samples.depthM(i);
        if (!std::isfinite(depth))
            continue;
        isAbove = isAbove || depth <= depthM;
        isBelow = isBelow || depth >= depthM;
        const double distance = std::abs(depth - depthM);
        const double best = nearest < 0 ? distance : std::abs(samples.depthM(nearest) - depthM);
        if (nearest < 0 || distance < best || (distance == best && depth < samples.depthM(nearest)))
            nearest = i;
    }
    return isAbove && isBelow ? nearest : -1;
}

} // namespace

Sample sampleAt(const CurveSamples &samples, double depthM)
{
    const Sample missing{depthM, nullSampleValue};
    if (samples.isEmpty() || !std::isfinite(depthM))
        return missing;
    const int i =
        samples.order() == DepthOrder::Unsorted ? nearestOfAll(samples, depthM) : nearestInOrder(samples, depthM);
    return i < 0 ? missing : sampleOf(samples, i);
}

std::optional<double> shallowestDepthM(const CurveSamples &samples)
{
    std::optional<double> shallowest;
    for (int i = 0; i < samples.size(); ++i) {
        const double depth = samples.depthM(i);
        if (samples.isNull(i) || !std::isfinite(depth))
            continue;
        if (samples.order() == DepthOrder::Ascending)
            return depth;
        shallowest = std::min(depth, shallowest.value_or(depth));
    }
    return shallowest;
}

} // namespace logview
