#pragma once

#include "workbench/basemapgeometry.h"

#include <limits>

/// Wells of a base map, and numbers that are no place on it.
namespace map_wells {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

inline workbench::MapWell at(double x, double y, int type = host::NoWellType)
{
    return {QStringLiteral("W"), x, y, type};
}

/// About 10 km by 9 km.
inline QVector<workbench::MapWell> manyWells(int count)
{
    QVector<workbench::MapWell> wells;
    for (int i = 0; i < count; ++i)
        wells.append({QStringLiteral("Well-%1").arg(i), 500000.0 + (i * 7919) % 10000,
                      6000000.0 + (i * 104729) % 9000, i % 5});
    return wells;
}

} // namespace map_wells
