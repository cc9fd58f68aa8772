#pragma once

#include <QString>

namespace base {

/// How many deleted folders a project keeps.
constexpr int maximumDeletedFolders = 50;

/// Takes the folder \a name directly inside \a parent, a folder below \a projectFolder, from its place with all its
/// content, in one step. It goes to ".lorva-deleted/<number>/<its path in the project>" in \a projectFolder, where the
/// last maximumDeletedFolders are kept. Refused, with nothing touched: a name that is no single path component, a
/// link, anything but a folder, a \a parent that a link out of the survey leads to (the survey holds the project
/// folder). True when it is gone from its place.
bool removeFolder(const QString &parent, const QString &name, const QString &projectFolder);

/// Keeps the folder \a path, wherever it is, as the deleted folder of \a place (relative to \a projectFolder).
bool keepDeletedFolder(const QString &path, const QString &place, const QString &projectFolder);

} // namespace base
