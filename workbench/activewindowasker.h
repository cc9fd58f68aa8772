#pragma once

#include "base/messageboxasker.h"

namespace workbench {

/// Shows boxes over the window that the user is working in, which may be a dialog.
class ActiveWindowAsker : public base::Asker
{
public:
    base::BoxButton show(const base::Box &box) override;

private:
    base::MessageBoxAsker m_boxes;
};

} // namespace workbench
