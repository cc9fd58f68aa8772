// How the keyboard and the wheel work in the table of a track's curves.

#include "base/cellproperties.h"
#include "templates/deftemptrackwidget.h"

#include <QKeyEvent>
#include <QScopedValueRollback>
#include <QTableWidget>

namespace {

bool isActivation(int key)
{
    return key == Qt::Key_Space || key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_F2;
}

} // namespace

// The colour is a cell without widget: the keys stop there all the same.
bool DefTempTrackWidget::keyPressed(int key)
{
    const int row = m_table->currentRow();
    const int column = m_table->currentColumn();
    if (!isRow(row))
        return false;
    const bool isInColor = m_table->hasFocus() && column == curvecolumn::Color && !m_rows.isDepth();
    if (isActivation(key) && isInColor) {
        cellSelected(row, column);
    } else if (isActivation(key) && m_table->hasFocus()) {
        if (QWidget *cell = m_table->cellWidget(row, column))
            cell->setFocus(Qt::OtherFocusReason);
    } else if (isInColor && (key == Qt::Key_Tab || key == Qt::Key_Backtab)) {
        m_table->cellWidget(row, key == Qt::Key_Tab ? curvecolumn::LeftFill : curvecolumn::RightValue)
            ->setFocus(key == Qt::Key_Tab ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    } else if (!m_table->hasFocus() && !m_rows.isDepth()
               && ((key == Qt::Key_Tab && column == curvecolumn::RightValue)
                   || (key == Qt::Key_Backtab && column == curvecolumn::LeftFill))) {
        m_table->setFocus(Qt::OtherFocusReason);
        m_table->setCurrentCell(row, curvecolumn::Color);
    } else {
        return false;
    }
    return true;
}

bool DefTempTrackWidget::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::KeyPress && watched != m_viewport
        && keyPressed(static_cast<QKeyEvent *>(event)->key()))
        return true;
    if (watched == m_viewport) {
        if (event->type() == QEvent::Resize || event->type() == QEvent::LayoutRequest)
            makeRowsInSight();
    } else if (auto *cell = watched == m_table ? nullptr : qobject_cast<QWidget *>(watched)) {
        // The wheel scrolls the table; it does not turn whatever chooser comes under the mouse.
        if (event->type() == QEvent::Wheel && !cell->hasFocus()) {
            event->ignore();
            return true;
        }
        if (event->type() == QEvent::FocusIn)
            m_table->setCurrentCell(cell->property(base::rowProperty).toInt(),
                                    cell->property(base::columnProperty).toInt());
    }
    return QWidget::eventFilter(watched, event);
}

void DefTempTrackWidget::moveCurrentRow(int step)
{
    const int from = m_table->currentRow();
    const int to = from + step;
    if (!isRow(from) || !isRow(to))
        return;
    const int column = m_table->currentColumn();
    m_rows.move(from, to);
    for (const int row : {from, to}) {
        makeRow(row);
        const QScopedValueRollback<bool> showing(m_isShowing, true);
        widgetsOf(row)->show(m_rows.at(row), m_rows.size());
    }
    {
        const QScopedValueRollback<bool> showing(m_isShowing, true);
        showAllLimits();
    }
    m_table->setCurrentCell(to, column);
    tellChange();
}
