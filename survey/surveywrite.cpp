#include "survey/surveywrite.h"

#include "base/folderlinks.h"
#include "survey/odfile.h"

namespace survey {

SurveyWrite::SurveyWrite(const QString &surveyDirectory)
{
    const QString folder = surveyDirectory + QStringLiteral("/WellInfo");
    const int linkProblem = base::linkProblem(surveyDirectory, folder);
    if (linkProblem != 0) {
        m_problem = writeErrorText(folder, base::systemErrorText(linkProblem));
        return;
    }
    m_lock.emplace(folder);
    if (m_lock->isRefused())
        m_problem =
            QStringLiteral("Another program has been writing in %1 for too long. Nothing was changed.").arg(folder);
}

} // namespace survey
