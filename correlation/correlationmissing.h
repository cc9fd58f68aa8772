#pragma once

#include "correlation/correlationproperties.h"

namespace correlation {

/// What a correlation names and the survey no longer has, as a sentence for its properties: their choosers cannot show
/// it, and a save loses it. \a markers are those of its wells. Empty when nothing is missing.
QString missingText(const CorrelationProperties &properties, const KnownNames &known, const QStringList &markers);

} // namespace correlation
