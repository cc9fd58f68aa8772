#pragma once

#include <QString>

QT_BEGIN_NAMESPACE
class QTabWidget;
class QWidget;
QT_END_NAMESPACE

namespace base {

/// A line in the middle of an empty area that says what to do.
QWidget *emptyHint(const QString &text);

/// Fills \a area with \a tabs, and as long as there are none with the hint.
void fillWithTabs(QWidget *area, QTabWidget *tabs, const QString &hintText);

} // namespace base
