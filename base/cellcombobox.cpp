#include "base/cellcombobox.h"

#include <QKeyEvent>

namespace base {

CellComboBox::CellComboBox(QAbstractItemModel *choices, QWidget *table)
    : StillComboBox(table)
    , m_table(table)
{
    setModel(choices);
    setFocusPolicy(Qt::ClickFocus); // F2 in the cell brings the keyboard here
    setMaxVisibleItems(22);
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon); // else every box measures every choice
}

void CellComboBox::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Escape:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        m_table->setFocus();
        break;
    default:
        QComboBox::keyPressEvent(event);
    }
}

} // namespace base
