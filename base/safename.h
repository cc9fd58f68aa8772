#pragma once

#include <QString>

/// Names of wells, logs, templates and correlations as file names.
namespace base {

/// The longest file name, in bytes.
constexpr int maximumFileNameBytes = 255;

/// \a name as part of a file name. An ordinary name comes back as it is. In a name that holds a "/", a control
/// character or something that looks like %XX, those characters and "%" become %XX of their bytes; ".", "..",
/// reserved names and the empty name get names of their own too. A name too long for a file name together with \a otherBytes
/// bytes around it is cut and closed with a digest. No two names give the same result.
QString fileNameFor(const QString &name, int otherBytes = 0);

/// Whether \a name is one component of a path and nothing more: not empty, not "." or "..", no "/", no null.
bool isPathComponent(const QString &name);

/// Whether \a name is kept for hidden files and folders of our own (".lorva-…"): such a folder in a project is nobody's
/// template or correlation.
bool isReservedName(const QString &name);

/// Why a name that a user typed for a template or a correlation cannot be taken, as a sentence for a box; empty
/// when it can. \a otherBytes is what its file name has around it.
QString typedNameProblem(const QString &name, int otherBytes = 0);

} // namespace base
