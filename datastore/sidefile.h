#pragma once

#include "datastore/storeresult.h"
#include "datastore/textfields.h"

namespace base {
class Asker;
}

/// What the per-well side files in the project folder have in common.
namespace sidefile {

/// Writes the file after asking whether an existing one may be replaced; a failure is told in a warning box. A write-protected file is protected: it stays, also after "Yes". So is one
/// that a link leads out of the survey to.
StoreResult writeAfterQuestion(const QString &projectFolder, const QString &path, const QByteArray &bytes,
                               const QString &title, const QString &question, base::Asker &asker);

/// A number as it stands in a side file; 0 for text that is none and for what a float cannot hold.
float toFloat(textfields::Field text);

/// A number with six significant digits, fixed or with an exponent, whichever is shorter; 0 for what is not finite.
QByteArray number(float value);

} // namespace sidefile
