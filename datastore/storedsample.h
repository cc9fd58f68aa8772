#pragma once

#include "host/hostrecords.h"

#include <cmath>
#include <limits>

/// Samples as hosts store them: in single precision.

/// What a float cannot hold is undefined to the host.
inline float storedSample(double value)
{
    const bool fits = std::fabs(value) <= static_cast<double>(std::numeric_limits<float>::max());
    return fits ? static_cast<float>(value) : host::undefinedValue;
}

/// Whether the value is stored as the null value is. Resampling between nulls leaves values that differ from them in
/// double precision only.
inline bool isStoredAs(double value, double nullValue)
{
    return value == nullValue || storedSample(value) == storedSample(nullValue);
}
