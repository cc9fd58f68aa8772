#pragma once

#include <QByteArray>
#include <QString>

/// Names of wells: how the host sorts them, which of them it can hold, and the file names made of them.
namespace survey {

/// Names sort as these bytes do: the host compares upper-cased bytes, ASCII letters only.
QByteArray hostSortKey(const QString &name);

/// The order in which people look names up: runs of digits by their number ("A-2" before "A-10"), letters without
/// regard to case.
bool isNaturallyBefore(const QString &a, const QString &b);

/// Why the host's list of wells cannot hold a name (without blanks around it), as a sentence; empty when it can.
QString storedNameProblem(const QString &name);

/// A name as the common part of a well's file names: letters and digits of any script stay, what may trouble a file
/// system does not. Different names may give the same.
QString cleanedStem(const QString &name);

/// "Probe_2" of "Probe_2.well".
QString stemOf(const QString &fileName);

/// Whether the name is that of a visible file in the folder itself, not of one elsewhere.
bool isPlainFileName(const QString &name);

} // namespace survey
