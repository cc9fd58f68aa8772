#pragma once

#include <QString>

QT_BEGIN_NAMESPACE
class QLabel;
class QTabWidget;
class QWidget;
QT_END_NAMESPACE

namespace base {

/// A line in the middle of an empty area that says what to do.
QLabel *emptyHint(const QString &text);

/// Fills \a area with \a tabs, and as long as there are none with the hint, which is given back and stays the area's.
QLabel *fillWithTabs(QWidget *area, QTabWidget *tabs, const QString &hintText);

} // namespace base
