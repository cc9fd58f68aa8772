#include "programs/surveypreparation.h"

#include "datastore/project.h"

namespace programs {

void prepareSurvey(const QString &surveyDirectory)
{
    Project project;
    openProjectFolder(surveyDirectory, &project); // makes and seeds it
}

} // namespace programs
