#pragma once

#include "survey/depthunit.h"
#include "survey/odfile.h"

namespace survey {

/// The depth unit of a survey, kept as long as the files that tell it are unchanged: every read and write of a well
/// asks for it.
class SurveyUnit
{
public:
    DepthUnit of(const QString &surveyDirectory);

private:
    QString m_directory;
    FileState m_surveyState;
    FileState m_defaultsState;
    DepthUnit m_unit = DepthUnit::Metre;
};

} // namespace survey
