#pragma once

#include <cmath>

namespace survey {

/// Whether tables and headers usually write the number where there is none.
inline bool isUsualNull(double value)
{
    constexpr double usual[] = {-999.25, -999.0, -9999.0, -9999.25, -99999.0, -999999.0};
    for (const double null : usual)
        if (std::abs(value - null) < 1e-4)
            return true;
    return false;
}

} // namespace survey
