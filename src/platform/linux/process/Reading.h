// Waiting for a descriptor, reading and writing it, no longer than until a deadline.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "platform/Deadline.h"
#include "platform/Process.h"
#include "platform/linux/FileDescriptor.h"

namespace tessaly::process {

// Where reading gives up, since nobody wants more and memory has an end.
inline constexpr std::size_t mostBytes = std::size_t{64} << 20;

// False when the deadline passes before there is something to read, or an end.
bool waitUntilReadable(int descriptor, Deadline deadline);

// The same for the first of two to come; a second below 0 is none.
bool waitUntilReadable(int first, int second, Deadline deadline);

// Reads a descriptor that does not block up to its end, to mostBytes, or until the deadline passes.
// The first `sure` bytes are read whatever the deadline, as far as they are there already.
std::string readUntil(int descriptor, Deadline deadline, std::size_t sure);

// Empties a pipe that does not block, without waiting for more, and adds to `sample` as long as
// that has fewer than `most` bytes. Closes the pipe at its end.
void takeSample(FileDescriptor& pipe, std::string& sample, std::size_t most);

// Appends what is there, `most` bytes at most, of a descriptor that does not block.
Process::Reading readMore(int descriptor, std::string& text, std::size_t most, Deadline deadline);

// Sends all of `bytes` to a socket, or gives up at the deadline or where nobody reads any more.
bool sendAll(int socket, std::string_view bytes, Deadline deadline);

}  // namespace tessaly::process
