#include "host/opendtect/markerwatch.h"

#include "host/opendtect/odtext.h"

#include <notify.h>
#include <welldata.h>
#include <wellman.h>

namespace opendtect {

MarkerWatch::MarkerWatch(std::function<void(const QString &wellKey)> changed)
    : m_changed(std::move(changed))
{
}

MarkerWatch::~MarkerWatch()
{
    detachAllNotifiers();
}

void MarkerWatch::attach()
{
    const ObjectSet<Well::Data> &wells = Well::MGR().wells();
    for (int i = 0; i < wells.size(); ++i)
        if (Well::Data *well = const_cast<Well::Data *>(wells[i]))
            mAttachCBIfNotAttached(well->markerschanged, MarkerWatch::markersChanged);
}

void MarkerWatch::markersChanged(CallBacker *well)
{
    if (const auto *data = dynamic_cast<const Well::Data *>(well))
        m_changed(toQString(data->multiID().buf()));
}

} // namespace opendtect
