#include "app/desktop/Display.h"

#include <cstdlib>
#include <cstring>
#include <string_view>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#include <xcb/xcb.h>

#include <QDir>
#include <QLibraryInfo>

namespace tessaly {

namespace {

std::string environment(const char* name) {
  const char* value = std::getenv(name);
  return value != nullptr ? value : "";
}

bool xServerAnswers() {
  xcb_connection_t* connection = xcb_connect(nullptr, nullptr);
  const bool answers = xcb_connection_has_error(connection) == 0;
  xcb_disconnect(connection);
  return answers;
}

bool qtSpeaksWayland() {
  const QDir plugins(QLibraryInfo::path(QLibraryInfo::PluginsPath) + QStringLiteral("/platforms"));
  return !plugins.entryList({QStringLiteral("libqwayland*")}).isEmpty();
}

bool waylandServerAnswers() {
  std::string path = environment("WAYLAND_DISPLAY");
  if (path.empty()) return false;
  if (path.front() != '/') path = environment("XDG_RUNTIME_DIR") + "/" + path;
  sockaddr_un address = {};
  address.sun_family = AF_UNIX;
  if (path.size() >= sizeof(address.sun_path)) return false;
  std::memcpy(address.sun_path, path.c_str(), path.size() + 1);
  const int descriptor = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  if (descriptor < 0) return false;
  // connect() takes every kind of address through the one generic type.
  const bool answers =
      connect(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) == 0;
  close(descriptor);
  return answers;
}

bool reached(std::string_view platform, const DisplayFacts& facts) {
  const std::string_view name = platform.substr(0, platform.find(':'));
  if (name.empty()) return false;
  if (name == "xcb") return facts.xAnswers;
  if (name.starts_with("wayland")) return facts.waylandAnswers;
  return true;
}

}  // namespace

DisplayFacts DisplayFacts::ofThisMachine() {
  return {
      .requested = environment("QT_QPA_PLATFORM"),
      .waylandSession = environment("XDG_SESSION_TYPE") == "wayland",
      .waylandAnswers = qtSpeaksWayland() && waylandServerAnswers(),
      .xAnswers = xServerAnswers(),
  };
}

std::string platformFor(const DisplayFacts& facts) {
  std::string order = facts.requested;
  if (order.empty()) order = facts.waylandSession ? "wayland;xcb" : "xcb;wayland";
  std::string_view rest = order;
  while (!rest.empty()) {
    const auto end = rest.find(';');
    const std::string_view platform = rest.substr(0, end);
    if (reached(platform, facts)) return std::string(platform);
    rest = end == std::string_view::npos ? std::string_view() : rest.substr(end + 1);
  }
  return "";
}

}  // namespace tessaly
