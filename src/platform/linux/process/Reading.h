// Waiting for a descriptor, reading and writing it, each until a deadline.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "platform/Deadline.h"
#include "platform/Process.h"
#include "platform/linux/FileDescriptor.h"

namespace tessaly::process {

// Limit of one reading, to bound the memory.
inline constexpr std::size_t mostBytes = std::size_t{64} << 20;

// False if the deadline passes before there is data or an end.
bool waitUntilReadable(int descriptor, Deadline deadline);

// The same for the first of two descriptors to become ready; a second below 0 means none.
bool waitUntilReadable(int first, int second, Deadline deadline);

// Reads a non-blocking descriptor up to its end, to mostBytes, or until the deadline. The first
// `sure` bytes are read whatever the deadline, if they are already available.
std::string readUntil(int descriptor, Deadline deadline, std::size_t sure);

// Reads all available data of a non-blocking pipe, and appends it to `sample` while that has fewer
// than `most` bytes. Closes the pipe at its end.
void takeSample(FileDescriptor& pipe, std::string& sample, std::size_t most);

// Appends the available data of a non-blocking descriptor, at most `most` bytes.
Process::Reading readMore(int descriptor, std::string& text, std::size_t most, Deadline deadline);

// Sends all of `bytes` to a socket. False at the deadline or if the other end is closed.
bool sendAll(int socket, std::string_view bytes, Deadline deadline);

}  // namespace tessaly::process
