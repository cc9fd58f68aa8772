#pragma once

#include "base/asker.h"

#include <QPointer>
#include <QWidget>

namespace base {

/// Shows boxes as QMessageBox over the active window; without one over the window of the box before, or a parent widget.
class MessageBoxAsker : public Asker
{
public:
    /// \a parent may be null or be deleted meanwhile; boxes then stand on their own.
    explicit MessageBoxAsker(QWidget *parent = nullptr);
    BoxButton show(const Box &box) override;

private:
    QWidget *windowBelow();

    QPointer<QWidget> m_parent;
    QPointer<QWidget> m_below;
};

} // namespace base
