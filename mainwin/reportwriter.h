#pragma once

struct ProjectData;

/// The two report commands: they read the wells, write the report files into the project folder and tell the user
/// in boxes how it went. A file appears complete or not at all.
void writeLogsReport(ProjectData &projectData);
void writeMarkersReport(ProjectData &projectData);
