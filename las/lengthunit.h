#pragma once

#include <QString>

#include <optional>

namespace las {

/// How many metres one is of a unit of length as LAS headers write it, in any letter case: metres, feet (0.3048 m) and
/// tenths of an inch. Nothing for any other unit and for none.
std::optional<double> metresPerUnit(const QString &unit);

/// Whether that unit is a kind of foot or inch.
bool isImperial(const QString &unit);

} // namespace las
