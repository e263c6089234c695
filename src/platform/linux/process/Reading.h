// Waiting for a descriptor, and reading it, no longer than until a deadline.
#pragma once

#include <cstddef>
#include <string>

#include "platform/Deadline.h"

namespace tessaly::process {

// Where reading gives up, since nobody wants more and memory has an end.
inline constexpr std::size_t mostBytes = std::size_t{64} << 20;

// False when the deadline passes before there is something to read, or an end.
bool waitUntilReadable(int descriptor, Deadline deadline);

// Reads a descriptor that does not block up to its end, to mostBytes, or until the deadline passes.
// The first `sure` bytes are read whatever the deadline, as far as they are there already.
std::string readUntil(int descriptor, Deadline deadline, std::size_t sure);

}  // namespace tessaly::process
