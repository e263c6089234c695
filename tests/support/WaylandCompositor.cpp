#include "support/WaylandCompositor.h"

#include <stdexcept>
#include <sys/socket.h>
#include <sys/un.h>
#include <utility>

#include "support/Descriptor.h"

namespace tessaly {

namespace {

bool takesConnections(const std::string& path) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  path.copy(address.sun_path, sizeof address.sun_path - 1);
  const Descriptor socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
  return ::connect(socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
}

}  // namespace

WaylandCompositor::WaylandCompositor(XServer& server, QSize screen) {
  // weston misses a pointer that is over its window when that appears.
  server.movePointer({screen.width() + 10, screen.height() / 2});
  Result<Process> launched = Process::launch(
      {.path = "/usr/bin/weston",
       .args = {"--no-config", "--backend=x11-backend.so", "--use-pixman", "--shell=kiosk-shell.so",
                "--idle-time=0", "--socket=wayland", "--width=" + std::to_string(screen.width()),
                "--height=" + std::to_string(screen.height())},
       .environment = {{"DISPLAY", server.display().toStdString()},
                       {"XDG_RUNTIME_DIR", folder_.at("run")},
                       {"HOME", folder_.path()}},
       .output = Process::Stream::discarded,
       .error = Process::Stream::discarded});
  if (!launched) throw std::runtime_error("weston cannot be started");
  process_ = std::move(launched).value();
  while (!takesConnections(display())) {
    // Waits a moment before trying again, unless weston has ended.
    if (process_->waitUntil(Deadline::after(0.01)))
      throw std::runtime_error("weston does not start");
  }
}

WaylandCompositor::~WaylandCompositor() {
  process_->terminate();
  process_->waitUntil(Deadline::never());
}

}  // namespace tessaly
