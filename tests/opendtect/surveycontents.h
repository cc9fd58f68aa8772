#pragma once

#include "odsurvey.h"

/// Wells with everything that a survey can say of them, and their comparison.
namespace surveycontents {

/// In the order in which the host sorts them.
QVector<odsurvey::Well> wells();

/// Where two sets of wells differ, to the last bit of every number; empty when they do not.
QString difference(const QVector<odsurvey::Well> &left, const QVector<odsurvey::Well> &right);

} // namespace surveycontents
