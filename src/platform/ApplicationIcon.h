// The program's icon in the desktop's dock or list of windows. Main thread only. Neither call waits
// or reports failures.
#pragma once

#include <string>

namespace tessaly {

class ApplicationIcon {
 public:
  virtual ~ApplicationIcon() = default;

  // Shows a short UTF-8 text on the icon, such as "87%"; an empty one removes the badge.
  virtual void setBadge(const std::string& text) = 0;

  // Asks for the user's attention until the program gets the focus. Does nothing if it already has
  // it.
  virtual void requestAttention() = 0;
};

}  // namespace tessaly
