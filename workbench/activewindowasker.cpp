#include "workbench/activewindowasker.h"

namespace workbench {

base::BoxButton ActiveWindowAsker::show(const base::Box &box)
{
    return m_boxes.show(box);
}

} // namespace workbench
