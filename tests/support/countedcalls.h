#pragma once

/// What a program asks of the file system, whoever in it does: on a disk far away each of these takes its time.
namespace counted_calls {

/// Opening, reading, writing, flushing, looking for, naming and removing files and folders since the program's start,
/// done or failed.
long total();

/// Is called at each of them, in the thread that makes it; null for nothing.
void setOnCall(void (*function)());

} // namespace counted_calls
