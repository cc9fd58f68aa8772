#pragma once

#include "base/asker.h"

namespace workbench {

/// Shows boxes over the window that the user is working in, which may be a dialog.
class ActiveWindowAsker : public base::Asker
{
public:
    base::BoxButton show(const base::Box &box) override;
};

} // namespace workbench
