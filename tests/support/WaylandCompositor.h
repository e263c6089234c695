// A Wayland compositor for one test, in a window that fills the test's X server: it takes the
// pointer and the keys of that server, and shows its output on that screen. Every window of a
// program is maximised. Ends with the object.
#pragma once

#include <optional>
#include <string>

#include <QSize>

#include "platform/Process.h"
#include "support/TempTree.h"
#include "support/XServer.h"

namespace tessaly {

class WaylandCompositor {
 public:
  // Throws std::runtime_error if weston is missing or does not start.
  WaylandCompositor(XServer& server, QSize screen);
  ~WaylandCompositor();
  WaylandCompositor(const WaylandCompositor&) = delete;
  WaylandCompositor& operator=(const WaylandCompositor&) = delete;

  // The value for WAYLAND_DISPLAY.
  std::string display() const { return folder_.at("run/wayland"); }

 private:
  TempTree folder_{"run/ mode=0700\n"};
  std::optional<Process> process_;
};

}  // namespace tessaly
