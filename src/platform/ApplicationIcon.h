// The icon of the program, where the desktop keeps one: in a dock or a list of windows. Main thread
// only. Neither call waits, and neither tells of a failure.
#pragma once

#include <string>

namespace tessaly {

class ApplicationIcon {
 public:
  virtual ~ApplicationIcon() = default;

  // Puts a short text on the icon, UTF-8, such as "87%"; an empty one takes the badge away.
  virtual void setBadge(const std::string& text) = 0;

  // Lets the user know that something is worth a look, until he turns to the program. Does nothing
  // while he is there already.
  virtual void requestAttention() = 0;
};

}  // namespace tessaly
