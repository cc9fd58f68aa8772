#pragma once

#include "demo/demofield.h"

#include <QVector>

namespace demo {

/// The perforated and tested intervals of a well, chosen from its tops and the contacts.
QVector<Perforation> makePerforations(const Well &well);

/// Core plug porosity and density between two tops of a well, scattered about its logs.
QVector<CalibrationSet> makeCoreData(const Well &well, const QString &fromTop, const QString &toTop, quint64 seed);

} // namespace demo
