#include "base/vectorregisters.h"

namespace base {

#if defined(__x86_64__) && defined(__GNUC__)

namespace {

[[gnu::target("avx")]] void clearUpperParts()
{
    __builtin_ia32_vzeroupper();
}

} // namespace

void freeVectorRegisters()
{
    if (__builtin_cpu_supports("avx"))
        clearUpperParts();
}

#else

void freeVectorRegisters()
{
}

#endif

} // namespace base
