#pragma once

#include "datastore/wellscatalogue.h"
#include "las/namelist.h"

#include <QString>

#include <optional>

/// How logs come onto the common grid of a LAS export, as plain data.
namespace las {

/// A log as a list of the well's logs showed it.
struct ListedLog
{
    QString name;
    int row = 0;
};

/// Reads the log; names may repeat and the well's logs may have changed since they were listed, so the row counts
/// where the name still stands there, else the first log of the name. Nothing where it is gone or cannot be read.
std::optional<LogCurveData> readListedLog(const WellsCatalogue &catalogue, int well, const ListedLog &log,
                                          WellsCatalogue::OnFailure onFailure);

/// From the smallest first depth and the well's maximum depth to the largest last depth and 0.
struct ExportRange
{
    double start = 0;
    double stop = 0;

    explicit ExportRange(double wellMaximumDepth)
        : start(wellMaximumDepth)
    {
    }
    /// A log without samples changes nothing.
    void add(const LogCurveData &log);
};

/// A log on its way into a file.
struct ExportLog
{
    LogCurveData data;
    /// Samples are taken at its first depth, first depth + interval, … while the file is written, so that a fine grid
    /// needs no memory. The depths then increase strictly.
    bool isResampled = false;
};

/// The log, to be resampled where its own step differs from the interval. A log whose depths do not increase strictly
/// is written as it is and sets \a isUnsuited; one without a second sample is so too, silently.
ExportLog exportLog(const LogCurveData &log, double interval, bool *isUnsuited);

/// The host's box about logs that could not be read, by well.
QString unreadableLogsText(const NameList &logs);

/// The warning that names all logs which were written without resampling, by well.
QString unsuitedExportWarning(const NameList &logs);

} // namespace las
