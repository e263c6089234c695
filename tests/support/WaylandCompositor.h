// A Wayland compositor of the test's own, in a window that fills an X server of the test's own: the
// pointer and the keys of that server are its own, and its screen shows what it shows. Each window
// of a program fills it. Ends with the object.
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
  // Throws std::runtime_error when there is no weston or it does not come up.
  WaylandCompositor(XServer& server, QSize screen);
  ~WaylandCompositor();
  WaylandCompositor(const WaylandCompositor&) = delete;
  WaylandCompositor& operator=(const WaylandCompositor&) = delete;

  // As WAYLAND_DISPLAY takes it.
  std::string display() const { return folder_.at("run/wayland"); }

 private:
  TempTree folder_{"run/ mode=0700\n"};
  std::optional<Process> process_;
};

}  // namespace tessaly
