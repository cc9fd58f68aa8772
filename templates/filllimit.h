#pragma once

#include <QString>

/// What a fill may go up to, by its place in the choosers: "None", the boundary of the fill's side, and then the curves
/// of the track.
namespace filllimit {

constexpr int none = 0;
constexpr int firstCurve = 2;
QString leftBoundary();
QString rightBoundary();
QString text(int index, const QString &boundary);
/// -1 for a text that names nothing of a track of so many curves.
int index(const QString &text, const QString &boundary, int curveCount);

} // namespace filllimit
