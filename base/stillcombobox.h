#pragma once

#include "base/popupwidth.h"

#include <QComboBox>
#include <QWheelEvent>

namespace base {

/// Chooses inside a table: turning the wheel over it scrolls the table, changes no choice and takes no focus. Its list shows
/// the entries whole, however narrow the cell is.
class StillComboBox : public QComboBox
{
public:
    explicit StillComboBox(QWidget *parent = nullptr)
        : QComboBox(parent)
    {
        setFocusPolicy(Qt::StrongFocus);
    }

    void showPopup() override
    {
        fitPopup(*this);
        QComboBox::showPopup();
    }

protected:
    void wheelEvent(QWheelEvent *event) override { event->ignore(); }
};

} // namespace base
