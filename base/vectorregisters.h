#pragma once

namespace base {

/// Tells the processor that nothing is in the upper parts of its vector registers. Libraries that use all of them may leave
/// something there, and on some processors each vector instruction of code for any x86-64, as ours, then waits for the one
/// before: half the speed. To be called before long computations; costs a few cycles.
void freeVectorRegisters();

} // namespace base
