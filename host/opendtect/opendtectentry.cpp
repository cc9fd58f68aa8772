// The entry points of the plug-in as the host loads it.

#include "host/opendtect/opendtecthost.h"
#include "plugin/lorvaosmgr.h"
#include "plugin/plugininfotexts.h"

#include <odplugin.h>
#include <uiodmain.h>
#include <uiodmenumgr.h>

namespace {

struct Plugin
{
    Plugin(uiMainWin *window, uiMenu *menu)
        : host(window, menu)
        , manager(host)
    {
    }

    opendtect::OpendTectHost host;
    lorvaosMgr manager;
};

// Without the host's main window there is no menu to be started from.
std::unique_ptr<Plugin> makePlugin()
{
    uiODMain *window = ODMainWin();
    return window ? std::make_unique<Plugin>(window, window->menuMgr().utilMnu()) : nullptr;
}

} // namespace

extern "C" {

Q_DECL_EXPORT PluginInfo *GetLORVAOSPluginInfo()
{
    static PluginInfo info(pluginDisplayName, pluginProductName, pluginCreator, pluginVersion, pluginText,
                           static_cast<PluginInfo::LicenseType>(pluginLicense));
    return &info;
}

Q_DECL_EXPORT const char *InitLORVAOSPlugin(int, char **)
{
    // Made once, whoever calls and how often.
    static std::unique_ptr<Plugin> plugin;
    if (!plugin)
        plugin = makePlugin();
    return plugin ? nullptr : pluginInitFailure;
}
}
