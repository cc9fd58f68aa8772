#pragma once

#include <QStringList>

/// The curve groups in the order of every group list of the interface, "None" first and "Others" last.
QStringList curveGroupNames();

/// The zone types of perforation zones in the order of every list of them.
QStringList zoneTypeNames();
