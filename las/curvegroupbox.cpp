#include "las/curvegroupbox.h"

#include <QKeyEvent>
#include <QWheelEvent>

CurveGroupBox::CurveGroupBox(QAbstractItemModel *groups, QWidget *table)
    : QComboBox(table)
    , m_table(table)
{
    setModel(groups);
    setFocusPolicy(Qt::ClickFocus); // F2 in the cell brings the keyboard here
    setMaxVisibleItems(22);
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon); // else every box measures every group
}

void CurveGroupBox::wheelEvent(QWheelEvent *event)
{
    event->ignore();
}

void CurveGroupBox::keyPressEvent(QKeyEvent *event)
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
