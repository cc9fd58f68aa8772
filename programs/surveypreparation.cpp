#include "programs/surveypreparation.h"

#include "datastore/project.h"

void prepareSurvey(const QString &surveyDirectory)
{
    Project project;
    openProjectFolder(surveyDirectory, &project); // makes and seeds it
}
