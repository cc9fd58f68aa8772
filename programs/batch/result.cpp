#include "programs/batch/result.h"

#include "base/numbers.h"

#include <cmath>

namespace batch {

QJsonValue jsonNumber(double value)
{
    return std::isfinite(value) ? QJsonValue(value) : QJsonValue();
}

QJsonValue jsonNumber(float value)
{
    return std::isfinite(value) ? QJsonValue(base::parseNumber(base::formatShortest(value)).value_or(0))
                                : QJsonValue();
}

} // namespace batch
