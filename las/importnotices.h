#pragma once

#include "las/wellinfo.h"

#include <QStringList>

namespace las {

/// What somebody who imports the file should know of it, the gravest first; each a short plain text without line
/// breaks. The file is read the same with and without them. \a listedCurves: how many curves the dialog lists at most.
QStringList importNotices(const WellInfo &file, int listedCurves);

} // namespace las
