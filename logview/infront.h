#pragma once

#include <QtGlobal>

QT_BEGIN_NAMESPACE
class QWidget;
QT_END_NAMESPACE

namespace logview {

/// Whether a display stands neither behind another tab nor on a work area behind another one: what is behind leaves
/// the dock "Properties" to what the user sees. A window that is not shown yet hides none of its displays.
bool isInFront(const QWidget &display);

} // namespace logview
