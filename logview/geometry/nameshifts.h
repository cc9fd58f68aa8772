#pragma once

#include <QVector>

#include <optional>

namespace logview {

/// What a name takes of the scene's height at its own place.
struct NameSpan
{
    double top = 0;
    double bottom = 0;
};
/// How far the names beside one well have to move, down or (negative) up, so that none lies over another; as little as
/// possible. Nothing for a name that finds no room within farthestNameShift pixels of its line, among so many others.
constexpr double farthestNameShift = 60;
QVector<std::optional<double>> nameShifts(const QVector<NameSpan> &names);

} // namespace logview
