#pragma once

#include "survey/topsplan.h"

namespace survey {

/// What is to be known of a row before it is written, as sentences: how its well was found, what is left out and why.
QStringList topsNotes(const TopsRow &row);

/// "Tops of 3 wells were written: 20 new, 2 moved." \a isCancelled: before all rows were tried.
QString topsSentence(const TopsPlan &plan, bool isCancelled);

/// The summary for the user, as lines of plain text: which wells were written, which were not and stayed as they were, each
/// with the reason, and what of the files was not understood.
QString topsReport(const TopsPlan &plan, bool isCancelled, const QString &surveyDirectory);

} // namespace survey
