#pragma once

#include <QString>

class uiString;

namespace opendtect {

/// A text of the host, which keeps UTF-8 in buffers that its next call may reuse.
QString toQString(const char *text);
QString toQString(const uiString &text);
/// A sentence out of what failed and the host's reason, if it gives one.
QString withReason(const QString &failure, const QString &reason);
/// A folder as the host names it, copied and without a separator at its end.
QString toFolder(const char *path);

} // namespace opendtect
