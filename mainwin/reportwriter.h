#pragma once

#include <QString>

#include <functional>

struct ProjectData;

/// Where the reports of the two commands below go: one file a well, and one of all wells.
QString logsReportPath(const ProjectData &projectData, const QString &wellName);
QString markersReportPath(const ProjectData &projectData);

/// The two report commands: they read the wells, write the report files into the project folder and tell the user
/// in boxes how it went. A file appears complete or not at all; the files reach the disk together at the end.
/// True when it was written.
/// \a mayGoOn is called before each well, so that windows can be repainted; false ends the report there, in silence.
bool writeLogsReport(ProjectData &projectData, const std::function<bool()> &mayGoOn = {});
bool writeMarkersReport(ProjectData &projectData, const std::function<bool()> &mayGoOn = {});
