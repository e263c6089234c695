#include "platform/linux/process/Reading.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <poll.h>
#include <unistd.h>

namespace tessaly::process {

bool waitUntilReadable(int descriptor, Deadline deadline) {
  return waitUntilReadable(descriptor, -1, deadline);
}

bool waitUntilReadable(int first, int second, Deadline deadline) {
  while (true) {
    std::array<pollfd, 2> watched{{{first, POLLIN, 0}, {second, POLLIN, 0}}};
    const int ready = poll(watched.data(), watched.size(), deadline.pollTimeout());
    if (ready > 0) return true;
    if (ready == 0 && deadline.hasPassed()) return false;
    if (ready < 0 && errno != EINTR) return false;
  }
}

std::string readUntil(int descriptor, Deadline deadline, std::size_t sure) {
  std::string text;
  while (text.size() < mostBytes && (text.size() < sure || !deadline.hasPassed())) {
    char buffer[16384];
    const ssize_t count =
        read(descriptor, buffer, std::min(sizeof buffer, mostBytes - text.size()));
    if (count == 0) break;
    if (count > 0) {
      text.append(buffer, static_cast<std::size_t>(count));
    } else if (errno == EAGAIN) {
      if (!waitUntilReadable(descriptor, deadline)) break;
    } else if (errno != EINTR) {
      break;
    }
  }
  return text;
}

void takeSample(FileDescriptor& pipe, std::string& sample, std::size_t most) {
  // A program that writes as fast as this reads must not keep it here.
  constexpr int mostReads = 64;
  for (int reads = 0; pipe && reads < mostReads; ++reads) {
    std::array<char, 16384> buffer;
    const ssize_t count = read(pipe.get(), buffer.data(), buffer.size());
    if (count > 0) {
      const std::size_t room = most - std::min(most, sample.size());
      sample.append(buffer.data(), std::min(room, static_cast<std::size_t>(count)));
    } else if (count == 0) {
      pipe = FileDescriptor();
    } else if (errno != EINTR) {
      return;
    }
  }
}

}  // namespace tessaly::process
