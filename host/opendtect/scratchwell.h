#pragma once

#include <ptrman.h>
#include <welldata.h>

namespace opendtect {

/// A well of the host's kind, which its manager does not know, to be filled anew for each well that is read: making one
/// costs the host's library more than reading most wells.
class ScratchWell
{
public:
    ScratchWell() = default;
    ~ScratchWell() { release(); }
    ScratchWell(const ScratchWell &) = delete;
    ScratchWell &operator=(const ScratchWell &) = delete;

    /// The well without anything in it.
    Well::Data &emptied();
    /// Gives it back to the host's library; to be called before that ends.
    void release();

private:
    RefMan<Well::Data> m_data;
};

} // namespace opendtect
