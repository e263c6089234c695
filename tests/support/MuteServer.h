// A display server that accepts connections and never answers.
#pragma once

#include <cstddef>
#include <poll.h>
#include <string>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#include <utility>

#include "support/Descriptor.h"

namespace tessaly {

class MuteServer {
 public:
  // A server with its socket at `path`.
  static MuteServer at(const std::string& path) {
    MuteServer server;
    server.display_ = path;
    server.listen(path, 0);
    return server;
  }

  // A server at the abstract socket that X clients try first, with a display number that no real
  // server has. The name disappears with the socket.
  static MuteServer ofX() {
    constexpr int first = 4100;
    constexpr int last = 4200;
    MuteServer server;
    for (int number = first; number < last && !server.isThere(); ++number) {
      const std::string path = "/tmp/.X11-unix/X" + std::to_string(number);
      server.display_ = ":" + std::to_string(number);
      if (::access(path.c_str(), F_OK) != 0) server.listen(path, 1);
    }
    return server;
  }

  bool isThere() const { return static_cast<bool>(socket_); }
  const Descriptor& socket() const { return socket_; }
  // The value for DISPLAY or WAYLAND_DISPLAY.
  const std::string& display() const { return display_; }

  // Whether a client has connected since the last call.
  bool wasAsked() const {
    pollfd waiting{socket_.get(), POLLIN, 0};
    if (::poll(&waiting, 1, 0) <= 0) return false;
    return static_cast<bool>(Descriptor(::accept4(socket_.get(), nullptr, nullptr, SOCK_CLOEXEC)));
  }

 private:
  // `start` is the offset of the name in the address.
  void listen(const std::string& path, std::size_t start) {
    constexpr int waiting = 4;
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    path.copy(address.sun_path + start, sizeof address.sun_path - 1 - start);
    const auto length =
        static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + start + path.size());
    Descriptor socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
    if (::bind(socket.get(), reinterpret_cast<const sockaddr*>(&address), length) == 0 &&
        ::listen(socket.get(), waiting) == 0) {
      socket_ = std::move(socket);
    }
  }

  Descriptor socket_;
  std::string display_;
};

}  // namespace tessaly
