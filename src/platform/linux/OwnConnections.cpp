#include "platform/OwnConnections.h"

#include <charconv>
#include <csignal>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace tessaly::OwnConnections {

namespace {

// Descriptors inherited at the start lack the flag FD_CLOEXEC; those that the program and its
// libraries open later have it.
bool isOurs(int descriptor) {
  const int flags = ::fcntl(descriptor, F_GETFD);
  return descriptor > STDERR_FILENO && flags >= 0 && (flags & FD_CLOEXEC) != 0;
}

bool leadsTo(const std::string& server, int descriptor) {
  sockaddr_un address{};
  socklen_t length = sizeof address;
  // getpeername() takes every type of address as a generic one.
  return !server.empty() &&
         ::getpeername(descriptor, reinterpret_cast<sockaddr*>(&address), &length) == 0 &&
         address.sun_family == AF_UNIX && length <= sizeof address &&
         server ==
             std::string(address.sun_path, ::strnlen(address.sun_path, sizeof address.sun_path));
}

}  // namespace

void failWritesToEnded() {
  std::signal(SIGPIPE, SIG_IGN);
}

void shutDown(int spared, const std::string& sparedServer) {
  const std::unique_ptr<DIR, int (*)(DIR*)> folder(::opendir("/proc/self/fd"), ::closedir);
  if (!folder) return;
  while (const dirent* entry = ::readdir(folder.get())) {
    int descriptor = -1;
    const char* const end = entry->d_name + std::strlen(entry->d_name);
    if (std::from_chars(entry->d_name, end, descriptor).ptr != end) continue;
    const bool isSpared = descriptor == spared || leadsTo(sparedServer, descriptor);
    // Fails for descriptors that are not sockets.
    if (isOurs(descriptor) && !isSpared) ::shutdown(descriptor, SHUT_RDWR);
  }
}

}  // namespace tessaly::OwnConnections
