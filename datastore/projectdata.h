#pragma once

#include "datastore/project.h"
#include "datastore/wellscatalogue.h"
#include "host/host.h"

namespace base {
class Asker;
}

/// What one launch works on: made at each click on the plug-in's action, shared by reference with every window, and
/// kept until these are gone.
struct ProjectData
{
    ProjectData(host::Host &hostInterface, base::Asker &userAsker)
        : host(hostInterface)
        , asker(userAsker)
        , catalogue(hostInterface.wells(), userAsker,
                    [&hostInterface](const QString &text) { hostInterface.showError(text); })
    {
    }

    /// The host's error box for what of a well could not be read in one operation: the well's name, and those of the
    /// logs where it is not the well itself.
    void tellUnread(const QString &wellName, const QStringList &logNames = {});

    host::Host &host;
    base::Asker &asker;
    Project project;
    WellsCatalogue catalogue;
};
