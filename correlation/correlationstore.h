#pragma once

#include "base/atomicfile.h"
#include "correlation/correlationproperties.h"

#include <optional>

struct Project;
struct ProjectData;

namespace correlation {

/// The folder whose sub-folders are the saved correlations.
QString correlationsFolder(const Project &project);

/// Whether there is a correlation, or anything else, of that name.
bool exists(const Project &project, const QString &name);

/// The wells and templates there are, for load(). \a data must outlive it.
KnownNames knownNames(const ProjectData &data);

/// The file of a correlation; nothing where there is none. \a error, when given, tells why one that is there could not
/// be read.
std::optional<CorrelationProperties> load(const Project &project, const QString &name, const KnownNames &known,
                                          QString *error = nullptr);

/// Writes the file of the correlation properties.name, and makes its folder where it is missing. When that fails
/// nothing is changed.
base::WriteResult write(const Project &project, const CorrelationProperties &properties);

/// Removes the folder of a correlation with all it holds. True when there is none any more.
bool remove(const Project &project, const QString &name);

} // namespace correlation
