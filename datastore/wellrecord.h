#pragma once

#include <QString>

/// Position and elevations of one well. Metres (the survey's depth unit).
struct WellRecord
{
    QString wellName;
    double x = 0; ///< surface coordinates
    double y = 0;
    double kbElevation = 0; ///< kelly bushing above datum; 0 when the host does not know it
    double totalDepth = 0; ///< last measured depth of the track
    double reserved = 0; ///< always 0
    double secondElevation = 0; ///< ground level above datum; 0 when the host does not know it
    QString wellType; ///< "Oil", "Gas" or empty
};
