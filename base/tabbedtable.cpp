#include "base/tabbedtable.h"

#include <QFocusEvent>

namespace base {

TabbedTable::TabbedTable(int rows, int columns, QWidget *parent)
    : QTableWidget(rows, columns, parent)
{
}

bool TabbedTable::isAtEnd(bool isNext) const
{
    return isNext ? currentRow() == rowCount() - 1 && currentColumn() == columnCount() - 1
                  : currentRow() == 0 && currentColumn() == 0;
}

bool TabbedTable::focusNextPrevChild(bool isNext)
{
    return isAtEnd(isNext) ? leave(isNext) : QTableWidget::focusNextPrevChild(isNext);
}

// The window goes on from the widget that has the keyboard: that must be the table, not one of its cells.
bool TabbedTable::leave(bool isNext)
{
    setFocus(Qt::OtherFocusReason);
    return QAbstractScrollArea::focusNextPrevChild(isNext);
}

void TabbedTable::focusInEvent(QFocusEvent *event)
{
    QTableWidget::focusInEvent(event);
    const bool isForward = event->reason() == Qt::TabFocusReason;
    if ((!isForward && event->reason() != Qt::BacktabFocusReason) || rowCount() == 0)
        return;
    setCurrentCell(isForward ? 0 : rowCount() - 1, isForward ? 0 : columnCount() - 1);
    if (QWidget *cell = cellWidget(currentRow(), currentColumn()))
        cell->setFocus(event->reason());
}

} // namespace base
