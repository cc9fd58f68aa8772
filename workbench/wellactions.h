#pragma once

#include "survey/surveystore.h"

QT_BEGIN_NAMESPACE
class QWidget;
QT_END_NAMESPACE

namespace base {
class Asker;
}

/// What a user does to one well, asked for and written.
namespace workbench {

/// The well as the survey has it now; empty when it has gone.
host::WellEntry storedWell(survey::SurveyStore &store, const QString &key);

/// One of those below.
using WellAction = bool (*)(survey::SurveyStore &store, base::Asker &asker, const host::WellEntry &well,
                            QWidget *parent);

/// True when something was written. A well that cannot be read is told in a box.
bool editWell(survey::SurveyStore &store, base::Asker &asker, const host::WellEntry &well, QWidget *parent);
bool renameWell(survey::SurveyStore &store, base::Asker &asker, const host::WellEntry &well, QWidget *parent);
/// Asks first.
bool deleteWell(survey::SurveyStore &store, base::Asker &asker, const host::WellEntry &well);

} // namespace workbench
