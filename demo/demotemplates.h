#pragma once

#include <QString>

struct Project;

namespace demo {

/// Writes global templates for the logs of the demo's wells into the project: "Petrophysics", a composite log with
/// fills, a colour bar, perforation zones and core points, and "Triple Combo", "Density-Neutron" and "Saturation". False
/// when a file could not be written.
bool writeDemoTemplates(const Project &project);

/// Writes the global template sectionTemplate: gamma ray and depth, narrow enough for many wells side by side. False
/// when a file could not be written.
bool writeSectionTemplate(const Project &project);
extern const char sectionTemplate[];

} // namespace demo
