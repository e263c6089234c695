#include "platform/OwnConnections.h"

#include <charconv>
#include <csignal>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <sys/socket.h>
#include <unistd.h>

namespace tessaly::OwnConnections {

namespace {

// A descriptor that came with the start of the process is one that survives the start of a program;
// those that we, or libraries, open later do not.
bool isOurs(int descriptor) {
  const int flags = ::fcntl(descriptor, F_GETFD);
  return descriptor > STDERR_FILENO && flags >= 0 && (flags & FD_CLOEXEC) != 0;
}

}  // namespace

void failWritesToEnded() {
  std::signal(SIGPIPE, SIG_IGN);
}

void shutDown(int spared) {
  const std::unique_ptr<DIR, int (*)(DIR*)> folder(::opendir("/proc/self/fd"), ::closedir);
  if (!folder) return;
  while (const dirent* entry = ::readdir(folder.get())) {
    int descriptor = -1;
    const char* const end = entry->d_name + std::strlen(entry->d_name);
    if (std::from_chars(entry->d_name, end, descriptor).ptr != end) continue;
    // Refused for all that is no socket.
    if (isOurs(descriptor) && descriptor != spared) ::shutdown(descriptor, SHUT_RDWR);
  }
}

}  // namespace tessaly::OwnConnections
