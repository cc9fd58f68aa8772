#pragma once

#include <QString>

namespace demo {

/// Makes the demo survey at \a directory, which must not exist or be empty: the field's wells, logs, markers,
/// perforations and calibration points, read from LAS and text files that stay in its folder "Import" (with one LAS
/// file in feet that is not imported), and an opened project. It appears whole or not at all. Returns why it could
/// not be made, or an empty string.
QString makeDemoSurvey(const QString &directory);

/// The same with wells on a line across the field, for correlations of many wells.
QString makeSectionSurvey(const QString &directory, int wells);

} // namespace demo
