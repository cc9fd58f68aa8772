#pragma once

#include <QColor>

QT_BEGIN_NAMESPACE
class QWidget;
QT_END_NAMESPACE

namespace base {

/// Asks for a colour over \a parent; invalid when the user cancels, or when \a parent goes meanwhile: then nothing of it
/// may be touched.
QColor chooseColor(QWidget *parent, const QColor &current);

} // namespace base
