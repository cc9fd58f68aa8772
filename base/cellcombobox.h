#pragma once

#include "base/stillcombobox.h"

namespace base {

/// A box that Tab passes by; Enter or Escape gives the keyboard back to the table.
class CellComboBox : public StillComboBox
{
    Q_OBJECT

public:
    /// \a choices may be shared by many boxes; \a table gets the keyboard back.
    CellComboBox(QAbstractItemModel *choices, QWidget *table);

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    QWidget *m_table;
};

} // namespace base
