#pragma once

#include <QtGlobal>

QT_BEGIN_NAMESPACE
class QAbstractScrollArea;
class QKeyEvent;
QT_END_NAMESPACE

namespace logview {

/// Scrolls to the top with Home and to the bottom with End, also while Ctrl is held. False for any other key. (Arrows
/// and the page keys are Qt's.)
bool scrollByKey(QAbstractScrollArea &view, const QKeyEvent &event);

} // namespace logview
