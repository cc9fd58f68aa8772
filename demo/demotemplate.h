#pragma once

#include <QString>

struct Project;

namespace demo {

/// Writes the global template "Petrophysics" into the project: a composite log with fills, colour bars, perforation
/// zones and calibration points. False when a file could not be written.
bool writeDemoTemplate(const Project &project);

} // namespace demo
