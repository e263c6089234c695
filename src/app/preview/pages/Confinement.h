// Limits this process while it handles a foreign file, and ends it in time. Call each function
// once, on the first thread, in this order.
#pragma once

#include <optional>
#include <string>

namespace tessaly::Confinement {

// Limits the memory to what decoding needs, the files to those that are read, and disables core
// dumps. If memory is exhausted, the process exits with ReaderAnswer::outOfMemory unless the
// library handles that.
void limitResources();

// Returns a descriptor for the answer, the former standard output: output of libraries is dropped.
// -1 on failure.
int takeAnswer();

// Waits for a request on standard input. Absent if none comes.
std::optional<std::string> awaitRequest();

// From now on the process ends when its time is over, or when the other end of standard input is
// closed, as by the end of the asking program.
void endWithRequest(double seconds);

}  // namespace tessaly::Confinement
