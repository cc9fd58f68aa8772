// The entry points of the plug-in as the workbench loads it.

#include "plugin/lorvaosmgr.h"
#include "plugin/plugininfotexts.h"
#include "workbench/hostaccess.h"
#include "workbench/plugininforecord.h"

namespace {

std::unique_ptr<lorvaosMgr> &manager()
{
    static std::unique_ptr<lorvaosMgr> instance;
    return instance;
}

} // namespace

extern "C" {

Q_DECL_EXPORT const workbench::PluginInfoRecord *GetLORVAOSPluginInfo()
{
    static const workbench::PluginInfoRecord record{pluginDisplayName, pluginProductName, pluginCreator,
                                                    pluginVersion,     pluginText,        pluginLicense};
    return &record;
}

Q_DECL_EXPORT const char *InitLORVAOSPlugin()
{
    if (manager())
        return nullptr;
    if (host::Host *host = lorvaWorkbenchHost())
        manager() = std::make_unique<lorvaosMgr>(*host);
    return manager() ? nullptr : pluginInitFailure;
}
}
