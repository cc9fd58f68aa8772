#include "base/largepages.h"

#include <cstdint>
#include <sys/mman.h>
#include <unistd.h>

namespace base {

void wishForLargePages(void *begin, std::size_t bytes)
{
#ifdef MADV_HUGEPAGE
    constexpr std::size_t largePage = std::size_t(2) << 20; // on all processors of today that have them, or more
    if (bytes < largePage)
        return;
    const auto page = static_cast<std::uintptr_t>(sysconf(_SC_PAGESIZE));
    const auto address = reinterpret_cast<std::uintptr_t>(begin);
    // With the pages at both ends, which others share: arrays that stand side by side then have a large page in common.
    const std::uintptr_t first = address / page * page;
    const std::uintptr_t end = (address + bytes + page - 1) / page * page;
    madvise(reinterpret_cast<void *>(first), end - first, MADV_HUGEPAGE);
#ifdef MADV_POPULATE_WRITE
    // What is not in large pages would be given out at the first byte of each page; older systems know no better.
    madvise(reinterpret_cast<void *>(first), end - first, MADV_POPULATE_WRITE);
#endif
#else
    (void)begin;
    (void)bytes;
#endif
}

} // namespace base
