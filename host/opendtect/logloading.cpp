#include "host/opendtect/logloading.h"

#include "host/opendtect/odtext.h"

#include <memory>

#include <bufstring.h>
#include <welldata.h>
#include <welllog.h>
#include <welllogset.h>
#include <wellreader.h>

namespace opendtect {

LoadedLog loadLog(Well::Data &well, const char *name)
{
    if (well.logs().isLoaded(name))
        return {well.logs().getLog(name), {}};
    return reloadLog(well, name);
}

LoadedLog reloadLog(Well::Data &well, const char *name)
{
    const BufferString wanted(name); // the name may be that of an object that goes
    Well::LogSet &logs = well.logs();
    const int place = logs.indexOf(wanted);
    // Reading into an object that is there would leak the one read.
    std::unique_ptr<Well::Log> before(place < 0 ? nullptr : logs.remove(place));
    const Well::Reader reader(well.multiID(), well);
    const bool isRead = reader.getLog(wanted);
    if (!logs.isPresent(wanted) && before)
        logs.add(before.release());
    for (int i = logs.size() - 1; place >= 0 && i > place; --i)
        logs.swap(i, i - 1);
    if (isRead && logs.isLoaded(wanted))
        return {logs.getLog(wanted), {}};
    return {nullptr, toQString(reader.errMsg())};
}

} // namespace opendtect
