#pragma once

#include <QString>

namespace programs {

/// Makes the plug-in's project in a new survey, with its seed files, so that the first launch already knows the
/// templates. The workbench itself knows no plug-in.
void prepareSurvey(const QString &surveyDirectory);

} // namespace programs
