#pragma once

#include "base/atomicfile.h"
#include "datastore/wellrecord.h"
#include "las/exportplan.h"

#include <QByteArray>
#include <QVector>

#include <functional>

/// The LAS 2.0 writer.
namespace las {

/// One file: a well with the logs to write, in the order of their columns.
struct ExportFile
{
    WellRecord well;
    QVector<ExportLog> logs;
    ExportRange range{0};
    double interval = 0; ///< step of the data lines; must be above 0 and able to move the start depth
};

/// A file of the well without logs, with its elevations; \a interval is the step of its data lines.
ExportFile exportFile(const WellRecord &well, const QString &wellName, double interval);

/// Adds a log, where \a isResampling as exportLog() gives it. False where it was to be resampled and could not be.
bool addLog(ExportFile *file, const LogCurveData &log, bool isResampling);

/// Everything up to the data lines, the line "~A DEPT …" included.
QByteArray lasHeader(const ExportFile &file);

/// Writes the file to \a path, whole or not at all. \a goOn is called now and then and ends the writing when it gives
/// false: then the result is good, yet nothing is at the path that was not there before.
/// \a isCreated tells whether a failure came from creating the file (false) or from filling it.
base::WriteResult writeLas(const QString &path, const ExportFile &file, const std::function<bool()> &goOn,
                           bool *isCreated);

/// "well.las" as a file name.
QString lasFileName(const QString &wellName);

} // namespace las
