#pragma once

#include <QComboBox>

namespace base {

/// Chooses inside a table: turning the wheel over it scrolls the table, Tab passes it by, and Enter or Escape gives
/// the keyboard back to the table.
class CellComboBox : public QComboBox
{
    Q_OBJECT

public:
    /// \a choices may be shared by many boxes; \a table gets the keyboard back.
    CellComboBox(QAbstractItemModel *choices, QWidget *table);

protected:
    void wheelEvent(QWheelEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    QWidget *m_table;
};

} // namespace base
