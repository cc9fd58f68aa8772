#pragma once

#include "survey/logfiles.h"

#include <QHash>
#include <QString>
#include <QStringList>

namespace survey {

/// The paths of the files of all wells of the list without their endings, by the wells' keys. None where the list cannot be
/// read.
QHash<QString, QString> wellStems(const QString &surveyDirectory);

/// Reads every log of a well whole, each file once, and reports what is wrong with it, as reading the logs one by one
/// would. Gives the names of the logs. \a stem as in LogFiles.
QStringList checkLogs(const QString &stem, const LogFiles::Report &report);

} // namespace survey
