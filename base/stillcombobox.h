#pragma once

#include <QComboBox>
#include <QWheelEvent>

namespace base {

/// Chooses inside a table: turning the wheel over it scrolls the table, changes no choice and takes no focus.
class StillComboBox : public QComboBox
{
public:
    explicit StillComboBox(QWidget *parent = nullptr)
        : QComboBox(parent)
    {
        setFocusPolicy(Qt::StrongFocus);
    }

protected:
    void wheelEvent(QWheelEvent *event) override { event->ignore(); }
};

} // namespace base
