#pragma once

#include <QByteArray>
#include <QString>

/// Writes \a text to a file that does not exist yet; a null text gives an empty file. 0: a file of that path exists
/// and is left as it is; 1: the file was made; -1: it could not be made.
int writeIfMissing(const QString &path, const QByteArray &text);

/// Writes the curve group files that are missing from the project, then the templates "Default" and "Simple" where
/// their folders do not exist (a link, even one that leads nowhere, is there). Ends in silence at the first file that cannot be made; false then, or when what was
/// made did not reach the disk. A template appears whole or not at all.
bool seedProject(const QString &projectFolder);
