#pragma once

#include "programs/batch/result.h"

#include <QByteArray>

namespace batch {

struct Command;

/// The records of a result as people read them: a table or a block each, UTF-8. Characters that a terminal would obey
/// are replaced. Notices and failures are not part of it.
QByteArray textOf(const ResultForm &form, const Result &result);

/// The result as one JSON object, UTF-8, with a line end: "command", "survey" (empty without one), the list of records
/// under its key, "notices" and "failures". The order of keys means nothing.
QByteArray jsonOf(const Command &command, const QString &surveyDirectory, const Result &result);

/// Text without the characters that a terminal would obey; line ends stay.
QString harmless(QString text);

} // namespace batch
