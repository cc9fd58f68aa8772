// How the keyboard and the clipboard work in the table.

#include "base/cellproperties.h"
#include "base/textbytes.h"
#include "welldata/celledit.h"
#include "welldata/welldatatable.h"

#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QScopedValueRollback>

#include <algorithm>

using welldata::CellKind;

namespace {

bool isEnter(int key)
{
    return key == Qt::Key_Return || key == Qt::Key_Enter;
}

// So that what is typed next replaces it.
void selectText(QWidget *cell)
{
    if (auto *edit = qobject_cast<CellEdit *>(cell))
        edit->selectAll();
}

} // namespace

void WellDataTable::goTo(int row, int column)
{
    if (row < 0 || row >= rowCount() || column < 0 || column >= columnCount())
        return;
    setCurrentCell(row, column);
    scrollTo(model()->index(row, column));
    makeCells(row);
    if (QWidget *cell = cellWidget(row, column)) {
        cell->setFocus();
        selectText(cell);
    } else {
        setFocus();
    }
}

// Where a key leads from a cell; Tab also out of the table. True for a key that walks, also where the table ends.
bool WellDataTable::walk(int row, int column, int key)
{
    const bool isFirst = row == 0 && column == 0;
    const bool isLast = row == rowCount() - 1 && column == columnCount() - 1;
    if (isEnter(key))
        goTo(row + 1, column);
    else if ((key == Qt::Key_Tab && isLast) || (key == Qt::Key_Backtab && isFirst))
        leave(key == Qt::Key_Tab);
    else if (key == Qt::Key_Tab)
        goTo(column + 1 < columnCount() ? row : row + 1, (column + 1) % columnCount());
    else if (key == Qt::Key_Backtab)
        goTo(column > 0 ? row : row - 1, column > 0 ? column - 1 : columnCount() - 1);
    else
        return false;
    return true;
}

bool WellDataTable::eventFilter(QObject *watched, QEvent *event)
{
    auto *cell = qobject_cast<QWidget *>(watched);
    if (cell && cell->property(base::rowProperty).isValid()) {
        const int row = cell->property(base::rowProperty).toInt();
        const int column = cell->property(base::columnProperty).toInt();
        if (event->type() == QEvent::FocusIn && (currentRow() != row || currentColumn() != column))
            setCurrentCell(row, column);
        if (event->type() == QEvent::KeyPress && cellKeyPressed(cell, static_cast<QKeyEvent *>(event)))
            return true;
    }
    return QTableWidget::eventFilter(watched, event);
}

bool WellDataTable::cellKeyPressed(QWidget *cell, const QKeyEvent *event)
{
    const int row = cell->property(base::rowProperty).toInt();
    const int column = cell->property(base::columnProperty).toInt();
    const bool isLine = qobject_cast<CellEdit *>(cell);
    if (walk(row, column, event->key()))
        return true;
    if (isLine && event->modifiers() == Qt::NoModifier && event->key() == Qt::Key_Up) {
        goTo(row - 1, column);
        return true;
    }
    if (isLine && event->modifiers() == Qt::NoModifier && event->key() == Qt::Key_Down) {
        goTo(row + 1, column);
        return true;
    }
    return isLine && clipboardKeyPressed(event, true);
}

// Keys that work on all selected cells. In a line they are its own as long as they mean no more than it.
bool WellDataTable::clipboardKeyPressed(const QKeyEvent *event, bool isInLine)
{
    const bool isMore = !isInLine || selectionModel()->selectedIndexes().size() > 1;
    if (event->matches(QKeySequence::Paste))
        return paste(isInLine);
    if (event->matches(QKeySequence::Copy) && isMore)
        copySelected();
    else if (event->key() == Qt::Key_Delete && event->modifiers() == Qt::NoModifier && isMore)
        clearSelected();
    else
        return false;
    return true;
}

void WellDataTable::keyPressEvent(QKeyEvent *event)
{
    if (state() == EditingState) { // what the line of a name left over: Enter, which closes the line afterwards
        QTableWidget::keyPressEvent(event);
        return;
    }
    const int row = currentRow();
    const int column = currentColumn();
    const bool isColor = column >= 0 && kind(column) == CellKind::Color;
    const bool opens = isEnter(event->key()) || event->key() == Qt::Key_Space || event->key() == Qt::Key_F2;
    if (isColor && opens && item(row, column))
        emit itemDoubleClicked(item(row, column));
    else if (row >= 0 && walk(row, column, event->key()))
        event->accept();
    else if (!clipboardKeyPressed(event, false)) {
        const QScopedValueRollback<bool> byKey(m_isMovedByKey, !(event->modifiers() & Qt::ShiftModifier));
        QTableWidget::keyPressEvent(event);
    }
}

// Qt gives the keyboard to the widget of the current cell.
void WellDataTable::currentChanged(const QModelIndex &current, const QModelIndex &previous)
{
    if (m_isMovedByKey && current.isValid())
        makeCells(current.row());
    const QScopedValueRollback<bool> moving(m_isMoving, true);
    QTableWidget::currentChanged(current, previous);
    if (m_isMovedByKey)
        selectText(cellWidget(current.row(), current.column()));
}

// A name that was typed is left to the cell where the key leads. A line that Qt closes since the current cell is another
// one already leads nowhere: a second move within the first would destroy the indexes that Qt holds.
void WellDataTable::closeEditor(QWidget *editor, QAbstractItemDelegate::EndEditHint hint)
{
    const int row = currentRow();
    const int column = currentColumn();
    const bool isNext = hint == QAbstractItemDelegate::EditNextItem;
    const bool isPrevious = hint == QAbstractItemDelegate::EditPreviousItem;
    QTableWidget::closeEditor(editor, isNext || isPrevious ? QAbstractItemDelegate::NoHint : hint);
    if (m_isMoving)
        return;
    if (isNext)
        walk(row, column, Qt::Key_Tab);
    else if (isPrevious)
        walk(row, column, Qt::Key_Backtab);
    else if (hint == QAbstractItemDelegate::SubmitModelCache)
        walk(row, column, Qt::Key_Return);
}

void WellDataTable::resizeEvent(QResizeEvent *event)
{
    QTableWidget::resizeEvent(event);
    makeCellsInView();
}

// As spreadsheets take it: rows are lines, tabs stand between columns.
void WellDataTable::copySelected() const
{
    QModelIndexList cells = selectionModel()->selectedIndexes();
    std::sort(cells.begin(), cells.end());
    QString text;
    for (int i = 0; i < cells.size(); ++i) {
        const QModelIndex &cell = cells.at(i);
        if (i > 0)
            text += QLatin1Char(cells.at(i - 1).row() == cell.row() ? '\t' : '\n');
        text += cellText(m_rows.at(cell.row()), m_columns.at(cell.column()));
    }
    QApplication::clipboard()->setText(text);
}

// False for a single value on its way into a line, which takes it itself.
bool WellDataTable::paste(bool isInLine)
{
    const QVector<QString> lines = base::splitLines(QApplication::clipboard()->text());
    if (lines.isEmpty() || (isInLine && lines.size() == 1 && !lines.first().contains(QLatin1Char('\t'))))
        return false;
    finishEditing();
    const int top = qMax(0, currentRow());
    const int left = qMax(0, currentColumn());
    if (top + lines.size() > rowCount())
        addRows(top + lines.size() - rowCount());
    for (int i = 0; i < lines.size(); ++i) {
        const QStringList fields = lines.at(i).split(QLatin1Char('\t'));
        for (int j = 0; j < fields.size() && left + j < columnCount(); ++j)
            changeCell(top + i, left + j, fields.at(j).trimmed());
        if (top + i < rowsWithCells)
            makeCells(top + i);
    }
    makeCellsInView();
    return true;
}

void WellDataTable::clearSelected()
{
    for (const QModelIndex &cell : selectionModel()->selectedIndexes())
        if (kind(cell.column()) == CellKind::Name || kind(cell.column()) == CellKind::Number)
            changeCell(cell.row(), cell.column(), QLatin1String(""));
}
