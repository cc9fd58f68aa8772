#pragma once

#include <QtGlobal>

QT_BEGIN_NAMESPACE
class QMenu;
class QTableWidget;
class QWidget;
QT_END_NAMESPACE

namespace las {

/// A menu that checks and unchecks the boxes in one column of a table: all, none, the others, or no more \a depthRow,
/// whose entry is missing where the table has no such row. \a parent owns the menu; the table must outlive it.
QMenu *curveSelectionMenu(QTableWidget *table, int boxColumn, int depthRow, QWidget *parent);

} // namespace las
