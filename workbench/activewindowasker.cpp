#include "workbench/activewindowasker.h"

#include "base/messageboxasker.h"

#include <QApplication>

namespace workbench {

base::BoxButton ActiveWindowAsker::show(const base::Box &box)
{
    return base::MessageBoxAsker(QApplication::activeWindow()).show(box);
}

} // namespace workbench
