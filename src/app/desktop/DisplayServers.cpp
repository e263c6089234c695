#include "app/desktop/DisplayServers.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <string>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>
#include <xcb/xcb.h>

namespace tessaly::DisplayServers {

namespace {

class Descriptor {
 public:
  explicit Descriptor(int number) : number_(number) {}
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() { close(); }

  int get() const { return number_; }
  void close() {
    if (number_ >= 0) ::close(std::exchange(number_, -1));
  }

 private:
  int number_;
};

std::string environment(const char* name) {
  const char* value = std::getenv(name);
  return value != nullptr ? value : "";
}

bool becomes(short event, const Descriptor& descriptor, const Deadline& deadline) {
  while (!deadline.hasPassed()) {
    pollfd waiting{descriptor.get(), event, 0};
    if (::poll(&waiting, 1, deadline.pollTimeout()) > 0) return (waiting.revents & event) != 0;
  }
  return false;
}

// Runs in a child that was forked from a program with threads: must not take a lock that they may
// hold, except for memory, which the C library handles.
[[noreturn]] void connectToX(pid_t parent) {
  ::prctl(PR_SET_PDEATHSIG, SIGKILL);
  if (::getppid() != parent) ::_exit(EXIT_FAILURE);
  // The library prints a refusal to standard error.
  const int nothing = ::open("/dev/null", O_RDWR | O_CLOEXEC);
  if (nothing >= 0) ::dup2(nothing, STDERR_FILENO);
  xcb_connection_t* const connection = xcb_connect(nullptr, nullptr);
  ::_exit(xcb_connection_has_error(connection) == 0 ? EXIT_SUCCESS : EXIT_FAILURE);
}

// Without a path if it is too long.
sockaddr_un waylandAddress() {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  const std::string path = waylandSocket();
  if (path.size() < sizeof address.sun_path) path.copy(address.sun_path, path.size());
  return address;
}

// connect() takes every kind of address as the generic type. A listener with a full queue has not
// answered yet.
bool isConnected(const Descriptor& socket, const sockaddr_un& address, const Deadline& deadline) {
  constexpr int aMoment = 20;  // milliseconds
  while (::connect(socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) !=
         0) {
    if ((errno != EAGAIN && errno != EINTR) || deadline.hasPassed()) return false;
    ::poll(nullptr, 0, aMoment);
  }
  return true;
}

}  // namespace

// The library that handles hosts, screens and cookies waits without a limit, so it runs in a
// process that can be killed.
bool xAnswers(Deadline deadline) {
  if (environment("DISPLAY").empty()) return false;
  std::array<int, 2> ends{};
  if (::pipe2(ends.data(), O_CLOEXEC) != 0) return false;
  const Descriptor over(ends[0]);
  Descriptor held(ends[1]);
  const pid_t parent = ::getpid();
  const pid_t child = ::fork();
  if (child < 0) return false;
  if (child == 0) connectToX(parent);
  held.close();
  // The child's end of the pipe closes with the child.
  becomes(POLLHUP, over, deadline);
  ::kill(child, SIGKILL);
  int status = 0;
  pid_t ended = 0;
  while ((ended = ::waitpid(child, &status, 0)) < 0 && errno == EINTR) {
  }
  return ended == child && WIFEXITED(status) && WEXITSTATUS(status) == EXIT_SUCCESS;
}

bool waylandAnswers(Deadline deadline) {
  const sockaddr_un address = waylandAddress();
  if (address.sun_path[0] == '\0') return false;
  const Descriptor socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
  if (socket.get() < 0 || !isConnected(socket, address, deadline)) return false;
  // "wl_display.sync", which every compositor answers: object 1, 12 bytes with request 0, object 2
  // for the answer. In the machine's byte order.
  constexpr std::array<std::uint32_t, 3> sync = {1, 12U << 16U, 2};
  if (::send(socket.get(), sync.data(), sizeof sync, MSG_NOSIGNAL) !=
      static_cast<ssize_t>(sizeof sync)) {
    return false;
  }
  if (!becomes(POLLIN, socket, deadline)) return false;
  char answer = 0;
  return ::recv(socket.get(), &answer, 1, 0) == 1;
}

std::string waylandSocket() {
  std::string path = environment("WAYLAND_DISPLAY");
  if (!path.empty() && path.front() != '/') path = environment("XDG_RUNTIME_DIR") + "/" + path;
  return path;
}

}  // namespace tessaly::DisplayServers
