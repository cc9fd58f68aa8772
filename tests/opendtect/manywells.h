#pragma once

#include <QString>

namespace odsurvey {

struct SurveySize
{
    int wells = 1000;
    int logs = 20;
    int samples = 100;
};

/// Makes a survey of alike wells that differ in their names only ("Well_0", …), each with ten markers, and has the host
/// make it current. The host wrote the files of the first.
QString openManyWells(const QString &name, const SurveySize &size);

/// Counts how often files of a folder are opened, by whomever.
class OpenedFiles
{
public:
    explicit OpenedFiles(const QString &folder);
    ~OpenedFiles();
    OpenedFiles(const OpenedFiles &) = delete;
    OpenedFiles &operator=(const OpenedFiles &) = delete;

    /// The openings since the last call of files whose names end so.
    int take(const QString &ending);

private:
    int m_watch = -1;
};

} // namespace odsurvey
