#pragma once

#include "survey/newwells.h"

namespace survey {

/// What became of a choice of LAS files.
struct NewWellsOutcome
{
    QVector<MadeWell> wells; ///< those that were tried, in order
    bool isCancelled = false;
    QStringList otherFiles; ///< paths of files that were passed over because of their names
};

/// "3 wells were made with 24 logs."
QString outcomeSentence(const NewWellsOutcome &outcome);

/// The summary for the user, as lines of plain text: what was made, what was not and what was left out, each with the
/// reason. \a wells are the rows after the work.
QString newWellsReport(const NewWells &wells, const NewWellsOutcome &outcome, const QString &surveyDirectory);

} // namespace survey
