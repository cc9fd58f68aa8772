#pragma once

#include "host/host.h"

/// Where a plug-in that was built for the workbench finds the workbench that loaded it. These two functions are a
/// small shared library of their own, because the program and its plug-ins must see one and the same pointer.
extern "C" {
/// Null outside a workbench. Not the caller's; valid as long as the plug-in is loaded.
host::Host *lorvaWorkbenchHost();
/// Called by the workbench before it loads plug-ins, and with null when it goes.
void lorvaSetWorkbenchHost(host::Host *host);
}
