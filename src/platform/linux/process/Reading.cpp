#include "platform/linux/process/Reading.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace tessaly::process {

namespace {

// Waits for one of two descriptors to become ready; one below 0 is ignored.
bool waitForFirst(std::array<pollfd, 2> watched, Deadline deadline) {
  while (true) {
    const int ready = poll(watched.data(), watched.size(), deadline.pollTimeout());
    if (ready > 0) return true;
    if (ready == 0 && deadline.hasPassed()) return false;
    if (ready < 0 && errno != EINTR) return false;
  }
}

}  // namespace

bool waitUntilReadable(int descriptor, Deadline deadline) {
  return waitUntilReadable(descriptor, -1, deadline);
}

bool waitUntilReadable(int first, int second, Deadline deadline) {
  return waitForFirst({{{first, POLLIN, 0}, {second, POLLIN, 0}}}, deadline);
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
  // A program that writes as fast as this reads must not keep the loop running.
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

Process::Reading readMore(int descriptor, std::string& text, std::size_t most, Deadline deadline) {
  while (true) {
    char buffer[65536];
    const ssize_t count = read(descriptor, buffer, std::min(sizeof buffer, most));
    if (count > 0) {
      text.append(buffer, static_cast<std::size_t>(count));
      return Process::Reading::more;
    }
    if (count == 0 || (errno != EAGAIN && errno != EINTR)) return Process::Reading::end;
    if (errno == EAGAIN && !waitUntilReadable(descriptor, deadline)) return Process::Reading::late;
  }
}

bool sendAll(int socket, std::string_view bytes, Deadline deadline) {
  while (!bytes.empty()) {
    const ssize_t count = send(socket, bytes.data(), bytes.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
    if (count >= 0) {
      bytes.remove_prefix(static_cast<std::size_t>(count));
    } else if (errno == EAGAIN) {
      if (!waitForFirst({{{socket, POLLOUT, 0}, {-1, 0, 0}}}, deadline)) return false;
    } else if (errno != EINTR) {
      return false;
    }
  }
  return true;
}

}  // namespace tessaly::process
