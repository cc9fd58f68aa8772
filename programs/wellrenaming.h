#pragma once

#include <QString>
#include <QStringList>

namespace programs {

/// The project keeps by the well's name: its default logs, templates, perforation zones and calibration points, and its
/// rows in correlations. They follow a well that got another name; \a otherWells are the names of the survey's other
/// wells. What exists under the new name already, or cannot be read or written, stays as it is: sentences tell of it.
QStringList followRenamedWell(const QString &surveyDirectory, const QString &oldName, const QString &newName,
                              const QStringList &otherWells);

} // namespace programs
