#pragma once

#include <QString>

#include <optional>

namespace las {

/// How many metres one is of a unit of depth that counts as feet in LAS files: F, FT, FEET, and .1IN, the tenth of an
/// inch, which the header's field rule reads as "1IN". Letter case does not count. Nothing for any other unit.
inline std::optional<double> metresPerFeetUnit(const QString &unit)
{
    const QString name = unit.toUpper();
    if (name == QLatin1String("F") || name == QLatin1String("FT") || name == QLatin1String("FEET"))
        return 0.3048;
    if (name == QLatin1String("1IN") || name == QLatin1String(".1IN"))
        return 0.00254;
    return std::nullopt;
}

} // namespace las
