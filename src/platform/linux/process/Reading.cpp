#include "platform/linux/process/Reading.h"

#include <algorithm>
#include <cerrno>
#include <poll.h>
#include <unistd.h>

namespace tessaly::process {

bool waitUntilReadable(int descriptor, Deadline deadline) {
  while (true) {
    pollfd watched{descriptor, POLLIN, 0};
    const int ready = poll(&watched, 1, deadline.pollTimeout());
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

}  // namespace tessaly::process
