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

    host::Host &host;
    base::Asker &asker;
    Project project;
    WellsCatalogue catalogue;
};
