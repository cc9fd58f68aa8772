#pragma once

#include "host/hostrecords.h"
#include "survey/depthunit.h"

#include <QStringList>

namespace survey {

/// Whether the folder is a survey: it holds ".omf" and ".survey".
bool isSurveyFolder(const QString &path);
/// Why the folder cannot be opened as a survey, as a sentence; empty when it can.
QString surveyFolderProblem(const QString &path);

/// Whether the user lacks the right to change the survey's wells or its project folder.
bool isReadOnly(const QString &path);

/// What a survey says of itself.
struct SurveyInfo
{
    QString name; ///< as the survey file gives it
    QString folderName;
    QString comment;
    DepthUnit depthUnit = DepthUnit::Metre;
};

host::Outcome<SurveyInfo> readSurveyInfo(const QString &path);

/// The two files that tell it: the survey's own, and the host's defaults for it, which may be missing.
QString surveyFilePath(const QString &survey);
QString surveyDefaultsPath(const QString &survey);

/// The inline and crossline grid and the place of a new survey: enough for the host to open it.
struct NewSurvey
{
    QString name;
    double xMinimum = 500000; ///< lower left corner, metres
    double yMinimum = 6000000;
    double xMaximum = 510000;
    double yMaximum = 6012500;
    DepthUnit depthUnit = DepthUnit::Metre; ///< of all depths and elevations; coordinates are metres
    double maximumDepth = 4000; ///< in that unit
    QString comment;
};

/// Makes a survey folder at \a path with all object folders and empty lists. It is built beside and renamed into
/// place; an existing non-empty folder is refused. A data root that is new or empty gets its mark, so that the host
/// accepts it.
host::Status createSurvey(const QString &path, const NewSurvey &survey);

/// The mark (".omf") by which the host knows a folder of surveys.
QByteArray dataRootMark();

/// Deletes what writes of programs that died left in a survey's folders, and beside it of surveys that they were making,
/// hidden from every listing. To be called when a survey is opened.
void removeSurveyLeftovers(const QString &path);

} // namespace survey
