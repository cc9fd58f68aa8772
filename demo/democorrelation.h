#pragma once

#include <QString>

struct Project;

namespace demo {

struct Field;

/// The name of the demo's correlation.
QString demoCorrelationName();

/// How the wells of a correlation are drawn.
struct CorrelationLook
{
    const char *templateName = "Simple";
    double scale = 1000; ///< the names of neighbouring tops stand apart
    double trackWidthInches = 1;
};

/// Writes a correlation of all wells of the field: the reservoir's tops joined, its three units shaded. False when the
/// file could not be written.
bool writeDemoCorrelation(const Project &project, const Field &field, const CorrelationLook &look);

} // namespace demo
