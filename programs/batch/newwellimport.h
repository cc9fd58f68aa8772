#pragma once

#include "programs/batch/result.h"
#include "survey/newwells.h"

namespace batch {

struct CurveChoice;
class Session;

/// Makes a proposed well with the logs of its files, as the workbench does: all of it or nothing.
Result importAsNewWell(Session &session, const survey::NewWell &well, const CurveChoice &choice);

} // namespace batch
