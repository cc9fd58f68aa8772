#pragma once

#include <QString>

/// The group of a log name: the curve group table's, else the first group file in group order that lists the name,
/// else "Others". A table entry without a group counts as absent.
QString findCurveGroup(const QString &projectFolder, const QString &logName);

/// What a user assigns: the name goes into the group's file and the table maps it to the group, so that the next
/// default-logs pass keeps it. The group "None", which has no file, or an empty one changes nothing. Silent.
void assignCurveGroup(const QString &projectFolder, const QString &logName, const QString &group);
