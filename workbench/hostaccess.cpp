#include "workbench/hostaccess.h"

namespace {

host::Host *currentHost = nullptr;

} // namespace

extern "C" {

__attribute__((visibility("default"))) host::Host *lorvaWorkbenchHost()
{
    return currentHost;
}

__attribute__((visibility("default"))) void lorvaSetWorkbenchHost(host::Host *host)
{
    currentHost = host;
}
}
