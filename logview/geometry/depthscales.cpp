#include "logview/geometry/depthscales.h"

#include <algorithm>
#include <array>

namespace logview {

namespace {

constexpr std::array<float, 7> usualScales{100, 200, 500, 1000, 2000, 5000, 10000};

float nextCoarser(float scale)
{
    const auto next = std::upper_bound(usualScales.begin(), usualScales.end(), scale);
    return next == usualScales.end() ? scale : *next;
}

float nextFiner(float scale)
{
    const auto next = std::lower_bound(usualScales.begin(), usualScales.end(), scale);
    return next == usualScales.begin() ? scale : *std::prev(next);
}

} // namespace

float steppedScale(float scale, int steps)
{
    const auto most = static_cast<int>(usualScales.size());
    for (int step = std::clamp(steps, -most, most); step != 0; step += step > 0 ? -1 : 1)
        scale = step > 0 ? nextCoarser(scale) : nextFiner(scale);
    return scale;
}

} // namespace logview
