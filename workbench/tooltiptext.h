#pragma once

#include <QString>

namespace workbench {

/// A tool tip that shows \a text as it is: names and messages come from data, a "<b>" in them is no markup.
QString toolTipText(const QString &text);

} // namespace workbench
