#pragma once

#include "programs/batch/result.h"

namespace batch {

class Session;

/// Gives the logs of such records (see ImportedWell) their curve groups, and brings the project up to date with the survey, as
/// a launch does. Gives what of it could not be written, as sentences that name the files.
QStringList assignGroups(Session &session, const Result &imported);

} // namespace batch
