#include "host/opendtect/scratchwell.h"

#include <welllogset.h>
#include <wellman.h>
#include <wellmarker.h>
#include <welltrack.h>

namespace opendtect {

namespace {

void empty(Well::Info &info)
{
    const Well::Info none("");
    info.setName("");
    info.uwid = none.uwid;
    info.oper = none.oper;
    info.state = none.state;
    info.county = none.county;
    info.source_ = none.source_;
    info.welltype_ = none.welltype_;
    info.surfacecoord = none.surfacecoord;
    info.replvel = none.replvel;
    info.groundelev = none.groundelev;
}

} // namespace

Well::Data &ScratchWell::emptied()
{
    if (!m_data) {
        m_data = new Well::Data;
        return *m_data;
    }
    empty(m_data->info());
    m_data->track().setEmpty();
    m_data->logs().setEmpty();
    m_data->markers().erase();
    return *m_data;
}

void ScratchWell::release()
{
    if (!m_data)
        return;
    // The library deletes a well with its last reference only where the manager knows it.
    Well::MGR().wells() += m_data.ptr();
    m_data = nullptr;
}

} // namespace opendtect
