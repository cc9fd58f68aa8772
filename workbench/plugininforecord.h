#pragma once

namespace workbench {

/// The info record that a plug-in's Get…PluginInfo function returns, laid out as the host lays it out.
struct PluginInfoRecord
{
    const char *displayName;
    const char *productName;
    const char *creator;
    const char *version;
    const char *text;
    int license;
};

} // namespace workbench
