#include "survey/surveyunit.h"

#include "survey/surveyfolder.h"

namespace survey {

namespace {

bool isUnchanged(const FileState &now, const FileState &before)
{
    const bool isMissing = now.size < 0 && before.size < 0;
    return isMissing || now.isSame(before);
}

} // namespace

DepthUnit SurveyUnit::of(const QString &surveyDirectory)
{
    const FileState survey = fileState(surveyFilePath(surveyDirectory));
    const FileState defaults = fileState(surveyDefaultsPath(surveyDirectory));
    if (m_directory != surveyDirectory || !isUnchanged(survey, m_surveyState)
        || !isUnchanged(defaults, m_defaultsState)) {
        m_unit = readSurveyInfo(surveyDirectory).value.depthUnit;
        m_directory = surveyDirectory;
        m_surveyState = survey;
        m_defaultsState = defaults;
    }
    return m_unit;
}

} // namespace survey
