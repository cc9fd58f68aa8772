#pragma once

#include <QString>

namespace testing_support {

/// Adds wells to a survey until it has \a wells: copies of the files of its well \a stem, under the names \a prefix and
/// a number from 1.
void addAlikeWells(const QString &survey, const QString &stem, const QString &prefix, int wells);

} // namespace testing_support
