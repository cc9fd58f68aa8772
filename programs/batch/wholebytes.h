#pragma once

#include <cstddef>

namespace batch {

/// Writes all bytes into a pipe, a terminal or a file, however often signals interrupt it. 0, or the system's error number.
int writeWhole(int file, const void *bytes, size_t size);
/// Reads that many bytes. False at an error, and where there are fewer.
bool readWhole(int file, void *bytes, size_t size);

} // namespace batch
