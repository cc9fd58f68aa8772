#pragma once

#include <QTableWidget>

namespace base {

/// A table that Tab enters at its first cell, walks through cell by cell, and leaves behind the last one; Shift+Tab goes the
/// other way round. Widgets in its cells are to have the focus policy Qt::ClickFocus: the window's own order passes them by.
class TabbedTable : public QTableWidget
{
    Q_OBJECT

public:
    TabbedTable(int rows, int columns, QWidget *parent = nullptr);

protected:
    bool focusNextPrevChild(bool isNext) override;
    void focusInEvent(QFocusEvent *event) override;
    /// Gives the keyboard to what stands behind the table, else to what stands before it. True when there is something.
    bool leave(bool isNext);

private:
    bool isAtEnd(bool isNext) const;
};

} // namespace base
