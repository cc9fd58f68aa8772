#pragma once

#include "base/asker.h"

#include <QPointer>
#include <QWidget>

namespace base {

/// Shows boxes as QMessageBox over the active window, or over a parent widget when the program has none.
class MessageBoxAsker : public Asker
{
public:
    /// \a parent may be null or be deleted meanwhile; boxes then stand on their own.
    explicit MessageBoxAsker(QWidget *parent = nullptr);
    BoxButton show(const Box &box) override;

private:
    QPointer<QWidget> m_parent;
};

} // namespace base
