#pragma once

#include "base/atomicfile.h"
#include "datastore/logcurvedata.h"

#include <QByteArray>

/// Logs as text files of two columns inside the project.
namespace las {

/// Two title lines and one line a sample; the last sample's line has no end.
QByteArray curveText(const QString &wellName, const LogCurveData &log);

/// Writes the log into the well's folder of the project, which is made where it is missing.
base::WriteResult writeCurveText(const QString &projectFolder, const QString &wellName, const LogCurveData &log);

} // namespace las
