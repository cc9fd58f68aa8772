#pragma once

#include <QString>
#include <QStringList>

/// Links below a folder whose content is to stay its own: a link that leads out of it is not followed, and one that
/// leads nowhere (a share that is not mounted) is no missing file.
namespace base {

/// Whether anything has this name, be it a link that leads nowhere.
bool isThere(const QString &path);

/// 0 when no component of \a path below \a root is a link that leads out of \a root or nowhere; EXDEV or ENOLINK for
/// the first that does. A path that is not below \a root, and an empty \a root, know no such link.
int linkProblem(const QString &root, const QString &path);

/// The paths of all such links at any depth below \a folder, \a folder itself included, sorted. No link is followed.
QStringList forbiddenLinks(const QString &root, const QString &folder);

/// The system's words for an errno value, but for the two of linkProblem(), which get words of their own.
QString systemErrorText(int code);

} // namespace base
