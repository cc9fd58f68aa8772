#pragma once

#include "datastore/logcurvedata.h"
#include "datastore/wellrecord.h"

#include <QStringList>
#include <QVector>

/// How logs come onto the common grid of a LAS export, as plain data.
namespace las {

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

/// The log resampled where its own step differs from the interval. A log whose depths do not increase strictly stays
/// as it is and sets \a isUnsuited; so does one without a second sample, silently.
LogCurveData resampledForExport(const LogCurveData &log, double interval, bool *isUnsuited);

/// The warning that names logs which were written without resampling; each as "well: log".
QString unsuitedExportWarning(const QStringList &logs);

} // namespace las
