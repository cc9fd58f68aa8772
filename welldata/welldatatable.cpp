#include "welldata/welldatatable.h"

#include "base/cellcombobox.h"
#include "base/cellproperties.h"
#include "base/numbervalidator.h"
#include "welldata/celledit.h"

#include <QApplication>
#include <QHeaderView>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QStringListModel>

#include <algorithm>

using welldata::CellKind;
using welldata::TableRow;

namespace {

constexpr int cellsAtMost = 1600; // widgets; more of them make adding a row slow
constexpr int rowsAround = 40; // above and below the view keep their cells

int rowOf(const QWidget *cell)
{
    return cell->property(base::rowProperty).toInt();
}

int columnOf(const QWidget *cell)
{
    return cell->property(base::columnProperty).toInt();
}

// Text that is no number stands out, on a light ground and on a dark one.
void markNumber(CellEdit *edit, bool isProblem)
{
    QPalette colors = edit->parentWidget() ? edit->parentWidget()->palette() : QApplication::palette();
    const bool isDark = colors.color(QPalette::Base).lightness() < 128;
    if (isProblem)
        colors.setColor(QPalette::Text, isDark ? QColor(255, 120, 110) : QColor(190, 20, 20));
    edit->setPalette(colors);
}

} // namespace

WellDataTable::WellDataTable(const QVector<welldata::TableColumn> &columns, QWidget *parent)
    : TabbedTable(0, columns.size(), parent)
    , m_columns(columns)
    , m_validator(new base::NumberValidator(this))
    , m_choices(new QStringListModel(this))
{
    setObjectName(QStringLiteral("dataTable"));
    setSelectionMode(ExtendedSelection);
    setTabKeyNavigation(true);
    setVerticalScrollMode(ScrollPerItem);
    horizontalHeader()->setHighlightSections(false);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 10);
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    for (int column = 0; column < columns.size(); ++column) {
        const welldata::TableColumn &info = columns.at(column);
        auto *header = new QTableWidgetItem(info.title);
        header->setToolTip(info.toolTip);
        setHorizontalHeaderItem(column, header);
        setColumnWidth(column, info.widthPx);
        if (info.kind == CellKind::Choice)
            m_choices->setStringList(info.choices);
    }
    connect(model(), &QAbstractItemModel::dataChanged, this, &WellDataTable::takeItems);
    connect(verticalScrollBar(), &QScrollBar::valueChanged, this, &WellDataTable::makeCellsInView);
}

void WellDataTable::setRows(const QVector<TableRow> &rows)
{
    finishEditing();
    ++m_fillCount;
    dropCells([](const QWidget *) { return true; });
    setRowCount(0);
    m_rows = rows;
    setRowCount(m_rows.size());
    for (int row = 0; row < qMin(m_rows.size(), rowsWithCells); ++row)
        makeCells(row);
    makeCellsInView();
}

void WellDataTable::addRows(int count)
{
    m_rows.reserve(m_rows.size() + count);
    for (int i = 0; i < count; ++i)
        m_rows.append(welldata::newRow(m_columns));
    setRowCount(m_rows.size());
}

void WellDataTable::appendNewRow()
{
    addRows(1);
    makeCells(m_rows.size() - 1);
    makeCellsInView();
    goTo(m_rows.size() - 1, 0);
    emit changed();
}

QVector<int> WellDataTable::rowsToRemove() const
{
    QVector<int> rows;
    for (const QModelIndex &index : selectionModel()->selectedIndexes())
        rows.append(index.row());
    std::sort(rows.begin(), rows.end());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    if (rows.isEmpty() && rowCount() > 0)
        rows.append(currentRow() >= 0 ? currentRow() : rowCount() - 1);
    return rows;
}

void WellDataTable::removeRows()
{
    finishEditing();
    const QVector<int> rows = rowsToRemove();
    if (rows.isEmpty())
        return;
    dropCells([&rows](const QWidget *cell) { return std::binary_search(rows.begin(), rows.end(), rowOf(cell)); });
    // Neighbours go together, the lowest first: what is above keeps its number.
    for (int end = rows.size(); end > 0;) {
        int begin = end - 1;
        while (begin > 0 && rows.at(begin - 1) == rows.at(begin) - 1)
            --begin;
        model()->removeRows(rows.at(begin), end - begin);
        end = begin;
    }
    QVector<TableRow> left;
    left.reserve(m_rows.size() - rows.size());
    for (int row = 0, next = 0; row < m_rows.size(); ++row) {
        if (next < rows.size() && rows.at(next) == row)
            ++next;
        else
            left.append(m_rows.at(row));
    }
    m_rows = left;
    renumberCells(rows);
    makeCellsInView();
    emit changed();
}

void WellDataTable::finishEditing()
{
    const QWidget *focus = focusWidget();
    if (focus && focus != this && isAncestorOf(focus) && focus->hasFocus())
        setFocus();
}

// Cells stand where their rows are now.
void WellDataTable::renumberCells(const QVector<int> &removedRows)
{
    for (const QPointer<QWidget> &cell : qAsConst(m_cells)) {
        if (!cell)
            continue;
        const auto next = std::lower_bound(removedRows.begin(), removedRows.end(), rowOf(cell));
        cell->setProperty(base::rowProperty, rowOf(cell) - static_cast<int>(next - removedRows.begin()));
    }
}

void WellDataTable::setNumbers(int row, const TableRow &numbers)
{
    m_rows[row].numbers = numbers.numbers;
    for (int column = 0; column < m_columns.size(); ++column)
        if (kind(column) == CellKind::Number)
            showCell(row, column);
}

void WellDataTable::setColor(int row, const QColor &color)
{
    for (int column = 0; column < m_columns.size(); ++column)
        if (kind(column) == CellKind::Color)
            changeCell(row, column, color.name());
}

void WellDataTable::makeCells(int row)
{
    const QScopedValueRollback<bool> writing(m_isWriting, true);
    for (int column = 0; column < m_columns.size(); ++column) {
        const bool isItem = kind(column) == CellKind::Name || kind(column) == CellKind::Color;
        if (isItem && !item(row, column)) {
            setItem(row, column, makeItem(row, column));
            ++m_madeCells;
        } else if (!isItem && !cellWidget(row, column)) {
            QWidget *cell = makeWidget(row, column);
            m_cells.append(cell);
            setCellWidget(row, column, cell);
            ++m_madeCells;
            if (auto *edit = qobject_cast<CellEdit *>(cell))
                emit cellEditMade(edit);
        }
    }
}

QTableWidgetItem *WellDataTable::makeItem(int row, int column)
{
    auto *cell = new QTableWidgetItem;
    if (kind(column) == CellKind::Color) {
        cell->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
        cell->setBackground(m_rows.at(row).color);
    } else {
        cell->setText(m_rows.at(row).name);
    }
    return cell;
}

QWidget *WellDataTable::makeWidget(int row, int column)
{
    const welldata::TableColumn &info = m_columns.at(column);
    if (info.kind == CellKind::Choice) {
        auto *box = new base::CellComboBox(m_choices, this);
        box->setProperty(base::rowProperty, row);
        box->setProperty(base::columnProperty, column);
        box->setCurrentText(m_rows.at(row).choice);
        connect(box, &QComboBox::currentTextChanged, this, [this, box](const QString &text) {
            m_rows[rowOf(box)].choice = text;
            emit changed();
        });
        return box;
    }
    auto *edit = new CellEdit(m_validator, row, column);
    edit->setToolTip(info.toolTip);
    edit->showText(cellText(m_rows.at(row), info));
    const int number = info.number;
    connect(edit, &QLineEdit::textChanged, this, [this, edit, number](const QString &text) {
        welldata::NumberCell &cell = m_rows[edit->row()].numbers.at(static_cast<size_t>(number));
        cell.setText(text);
        markNumber(edit, !text.isEmpty() && !cell.isNumber());
        emit changed();
    });
    const welldata::NumberCell &cell = m_rows.at(row).numbers.at(static_cast<size_t>(number));
    if (!cell.isNumber() && !cell.text().isEmpty())
        markNumber(edit, true);
    return edit;
}

void WellDataTable::makeCellsInView()
{
    const int first = rowAt(0);
    if (first < 0 || rowCount() != m_rows.size()) // rows come or go at this moment
        return;
    const int below = rowAt(viewport()->height() - 1);
    const int last = below < 0 ? rowCount() - 1 : below;
    for (int row = first; row <= last; ++row)
        makeCells(row);
    if (m_cells.size() > cellsAtMost)
        dropCells([first, last](const QWidget *cell) {
            const int row = rowOf(cell);
            return row >= rowsWithCells && (row < first - rowsAround || row > last + rowsAround) && !cell->hasFocus();
        });
}

// Before its row goes: Qt's view remembers a cell's widget until that is taken out of the cell.
void WellDataTable::dropCells(const std::function<bool(const QWidget *cell)> &isDropped)
{
    QVector<QPointer<QWidget>> kept;
    for (const QPointer<QWidget> &cell : qAsConst(m_cells)) {
        if (!cell)
            continue;
        if (!isDropped(cell)) {
            kept.append(cell);
            continue;
        }
        cell->hide(); // it goes later
        removeCellWidget(rowOf(cell), columnOf(cell));
    }
    m_cells = kept;
}

// What stands in an item is the user's: a typed name, a colour.
void WellDataTable::takeItems(const QModelIndex &from, const QModelIndex &to)
{
    if (m_isWriting)
        return;
    bool isChanged = false;
    for (int row = from.row(); row <= qMin(to.row(), m_rows.size() - 1); ++row) {
        for (int column = from.column(); column <= to.column(); ++column) {
            const QTableWidgetItem *cell = item(row, column);
            if (!cell)
                continue;
            if (kind(column) == CellKind::Name)
                m_rows[row].name = cell->text();
            else if (kind(column) == CellKind::Color)
                m_rows[row].color = cell->background().color();
            isChanged = true;
        }
    }
    if (isChanged)
        emit changed();
}

void WellDataTable::showCell(int row, int column)
{
    const QScopedValueRollback<bool> writing(m_isWriting, true);
    const TableRow &shown = m_rows.at(row);
    if (auto *edit = qobject_cast<CellEdit *>(cellWidget(row, column))) {
        const QString text = cellText(shown, m_columns.at(column));
        edit->showText(text);
        markNumber(edit,
                   !text.isEmpty() && !shown.numbers.at(static_cast<size_t>(m_columns.at(column).number)).isNumber());
    } else if (auto *box = qobject_cast<QComboBox *>(cellWidget(row, column))) {
        const QSignalBlocker blocker(box);
        box->setCurrentText(shown.choice);
    } else if (QTableWidgetItem *cell = item(row, column)) {
        if (kind(column) == CellKind::Color)
            cell->setBackground(shown.color);
        else if (kind(column) == CellKind::Name)
            cell->setText(shown.name);
    }
}

void WellDataTable::changeCell(int row, int column, const QString &text)
{
    if (!setCellText(&m_rows[row], m_columns.at(column), text))
        return;
    showCell(row, column);
    if (kind(column) == CellKind::Number)
        emit numberChanged(row, column);
    emit changed();
}
