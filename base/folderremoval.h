#pragma once

#include <QString>

namespace base {

/// Deletes the folder \a name directly inside \a parent with all its content. It is first moved into a hidden folder
/// of \a projectFolder, so that a crash leaves it either whole or gone from its place. Refused, with nothing touched:
/// a name that is no single path component, a link, anything but a folder, a
/// \a parent that a link out of the survey leads to (the survey holds the project folder). True when it is gone from its place.
bool removeFolder(const QString &parent, const QString &name, const QString &projectFolder);

} // namespace base
