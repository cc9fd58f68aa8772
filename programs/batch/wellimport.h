#pragma once

#include "host/hostrecords.h"
#include "las/wellinfo.h"
#include "programs/batch/result.h"

namespace batch {

struct CurveChoice;
class Session;

/// What is unusual about a loaded file, as sentences.
QStringList fileNotices(const WellInfo &file, bool convertsFeet);
/// Why the import takes nothing of a loaded file, whatever the well: the end of a sentence on the file. Empty when it does.
QString importProblem(const WellInfo &file);

/// Brings the curves of files into a well that is there, as the import of the window does. The record tells what was
/// written; a file that is refused is a failure, and nothing of it is written.
Result importIntoWell(Session &session, const host::WellEntry &well, const QStringList &files,
                      const CurveChoice &choice);

} // namespace batch
