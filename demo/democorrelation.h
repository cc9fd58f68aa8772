#pragma once

#include <QString>

struct Project;

namespace demo {

struct Field;

/// The name of the demo's correlation.
QString demoCorrelationName();

/// Writes a correlation of all wells of the field: the reservoir's tops joined, its three units shaded. False when the
/// file could not be written.
bool writeDemoCorrelation(const Project &project, const Field &field);

} // namespace demo
