#pragma once

#include <QStringList>

/// The columns of a curve table.
namespace curvecolumn {

enum {
    Group,
    Curve,
    LeftValue,
    RightValue,
    Color,
    LeftFill,
    RightFill,
    LeftLimit,
    RightLimit,
    Remove,
    LineType,
    LineWidth,
    Calibration,
    PointColor,
    PointSize,
    PointShape,
    Count
};

QStringList headings();

} // namespace curvecolumn
