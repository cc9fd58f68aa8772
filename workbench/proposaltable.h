#pragma once

#include <QString>

QT_BEGIN_NAMESPACE
class QAbstractItemModel;
class QLabel;
class QTableView;
class QWidget;
QT_END_NAMESPACE

/// What dialogs that propose changes row by row have in common: a table whose last column has notes, the notes of the
/// current row below it, and a line on the state of it all.
namespace workbench {

QTableView *newProposalTable(const char *objectName, QAbstractItemModel *model, QWidget *parent);
/// Makes the columns as wide as their contents, but for long names, with some room from the column \a first on; the last one
/// gets the rest.
void fitProposalColumns(QTableView *table, int first);
/// For the notes of the current row.
QLabel *newNotesLabel(QWidget *parent);
QLabel *newStateLabel(QWidget *parent);
/// The problem in the colour of problems, or the state where there is none.
void showState(QLabel *label, const QString &problem, const QString &state);

} // namespace workbench
