#pragma once

#include "base/tabbedtable.h"
#include "welldata/tablerow.h"

#include <QPointer>

#include <functional>

QT_BEGIN_NAMESPACE
class QStringListModel;
QT_END_NAMESPACE

namespace base {
class NumberValidator;
}
class CellEdit;

/// The table of the three editors of well data. Its rows are plain data; items and widgets stand only in the first rows
/// and in those that have come into view, so that a table of 10,000 rows costs no more than its rows. Editing rewrites
/// cells and never the table.
class WellDataTable : public base::TabbedTable
{
    Q_OBJECT

public:
    /// So many rows have their cells at once.
    static constexpr int rowsWithCells = 200;

    explicit WellDataTable(const QVector<welldata::TableColumn> &columns, QWidget *parent = nullptr);

    const QVector<welldata::TableRow> &rows() const { return m_rows; }
    /// Shows other rows.
    void setRows(const QVector<welldata::TableRow> &rows);
    /// Appends an empty row and goes there.
    void appendNewRow();
    /// Removes the rows in which something is selected, else the current row, else the last one.
    void removeRows();
    /// Takes the numbers of a row and rewrites those of its cells that show another text.
    void setNumbers(int row, const welldata::TableRow &numbers);
    void setColor(int row, const QColor &color);
    /// A line that is being edited is finished, and the table has the keyboard.
    void finishEditing();

    /// How often all rows were shown anew, and how many cells were made so far.
    int fillCount() const { return m_fillCount; }
    int madeCells() const { return m_madeCells; }

signals:
    /// The user changed something, or rows came or went.
    void changed();
    /// A line of a number came into being.
    void cellEditMade(CellEdit *edit);
    /// A number was changed other than in its line: pasted or cleared.
    void numberChanged(int row, int column);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void currentChanged(const QModelIndex &current, const QModelIndex &previous) override;

protected slots:
    void closeEditor(QWidget *editor, QAbstractItemDelegate::EndEditHint hint) override;

private:
    welldata::CellKind kind(int column) const { return m_columns.at(column).kind; }
    void makeCells(int row);
    void makeCellsInView();
    void dropCells(const std::function<bool(const QWidget *cell)> &isDropped);
    void renumberCells(const QVector<int> &removedRows);
    QWidget *makeWidget(int row, int column);
    QTableWidgetItem *makeItem(int row, int column);
    void takeItems(const QModelIndex &from, const QModelIndex &to);
    void showCell(int row, int column);
    void goTo(int row, int column);
    bool walk(int row, int column, int key);
    bool cellKeyPressed(QWidget *cell, const QKeyEvent *event);
    bool clipboardKeyPressed(const QKeyEvent *event, bool isInLine);
    void addRows(int count);
    void copySelected() const;
    bool paste(bool isInLine);
    void clearSelected();
    QVector<int> rowsToRemove() const;
    void changeCell(int row, int column, const QString &text);

    QVector<welldata::TableColumn> m_columns;
    QVector<welldata::TableRow> m_rows;
    QVector<QPointer<QWidget>> m_cells; ///< the widgets that stand in cells
    base::NumberValidator *m_validator; ///< one for all lines; a child
    QStringListModel *m_choices; ///< one for all boxes; a child
    int m_fillCount = 0;
    int m_madeCells = 0;
    bool m_isWriting = false; ///< the table writes its own cells
    bool m_isMovedByKey = false;
    bool m_isMoving = false; ///< Qt makes another cell the current one
};
