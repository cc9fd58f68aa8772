#pragma once

#include <cstddef>

namespace base {

/// Asks the system to give the memory of a long array out at once, and in large pages where it can: page by page takes longer than
/// filling it. To be called before the array is filled, whole; a wish, without which everything is the same but slower.
void wishForLargePages(void *begin, std::size_t bytes);

} // namespace base
