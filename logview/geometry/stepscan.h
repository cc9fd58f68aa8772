#pragma once

#include "logview/geometry/curvesamples.h"
#include "logview/geometry/depthaxis.h"
#include "logview/geometry/valuescale.h"

#include <utility>

/// What is computed of many samples at once, places in the painter's steps of 1/64 pixel: loops without branches, in the widest vector
/// instructions that the processor has.
namespace logview {

/// The order of some depths. This is what making a display of long logs costs besides reading them.
DepthOrder orderOf(const float *depths, int count);

/// Steps of some values on a linear scale, rounded down.
void placeValues(const ValueScale &scale, const float *values, int count, int *steps);
/// Steps of some values on a logarithmic scale, whose distance from the first limit counts, rounded down: \a low is the logarithm of
/// that limit, \a perDecade are the steps of a factor of ten. A value whose step rounding may decide, or that is smaller than a
/// normal number, gives undecidedStep: it has to be placed by itself.
void placeLogarithms(double low, double perDecade, const float *values, int count, int *steps);
constexpr int undecidedStep = -1;
/// Steps of some depths in metres below a row of their axis, rounded down; none of them stands above it.
void placeDepths(const DepthAxis &axis, const DepthReference &reference, const float *depthsM, int count, int row,
                 int *steps);

/// The first of the values [from, end) that is not between two, these excluded, or that is null.
int firstBeyond(const float *values, int from, int end, float low, float high);
/// The smallest and the largest of the numbers [from, to], the last one included.
std::pair<int, int> extremesOf(const int *steps, int from, int to);
std::pair<float, float> extremesOf(const float *values, int from, int to);
/// The first of the steps [from, end) that is not less than one, or the end.
int firstFrom(const int *steps, int from, int end, int least);

/// What is told of a line from one point to the next.
enum LineMark {
    /// It goes up or to another row, it is so steep that it sets a pixel, or none where others would, or it is short and may set a
    /// pixel below its row.
    Special = 1,
    Crosses = 2, ///< the middle of a column
    Turns = 4, ///< goes to the left from the first half of a pixel, which it sets after one to the right
};
/// Marks the lines from each of some points to the next.
void markLines(const int *x, const int *y, int lines, unsigned char *marks);

} // namespace logview
