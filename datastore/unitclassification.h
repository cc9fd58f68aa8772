#pragma once

#include <QString>

/// The curve group that a unit label stands for, "Others" for every unit without one. Lower-cases \a unit and
/// compares it exactly with a fixed table of units.
QString curveGroupOfUnit(QString &unit);
