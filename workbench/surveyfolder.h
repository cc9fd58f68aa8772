#pragma once

#include "host/hostrecords.h"

#include <QStringList>

namespace workbench {

/// Whether the folder is a survey: it holds ".omf" and ".survey".
bool isSurveyFolder(const QString &path);
/// Why the folder cannot be opened as a survey, as a sentence; empty when it can.
QString surveyFolderProblem(const QString &path);

/// The names of a survey.
struct SurveyInfo
{
    QString name; ///< as the survey file gives it
    QString folderName;
    QString comment;
};

host::Outcome<SurveyInfo> readSurveyInfo(const QString &path);

/// The inline and crossline grid and the place of a new survey: enough for the host to open it.
struct NewSurvey
{
    QString name;
    double xMinimum = 500000; ///< lower left corner, metres
    double yMinimum = 6000000;
    double xMaximum = 510000;
    double yMaximum = 6012500;
    double maximumDepth = 4000; ///< metres
    QString comment;
};

/// Makes a survey folder at \a path with all object folders and empty lists. It is built beside and renamed into
/// place; an existing non-empty folder is refused. A data root that is new or empty gets its mark, so that the host
/// accepts it.
host::Status createSurvey(const QString &path, const NewSurvey &survey);

/// Whether \a root can be marked as a data root without touching anybody's folder: it does not exist or is empty.
bool isNewDataRoot(const QString &root);
/// Gives a folder of surveys the mark (".omf") by which the host knows it; one that has it stays as it is.
host::Status markDataRoot(const QString &root);

} // namespace workbench
