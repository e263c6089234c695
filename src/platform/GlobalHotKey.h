// A key combination that works in every program: Command Shift Space. Main thread only.
#pragma once

#include <functional>

namespace tessaly {

class GlobalHotKey {
 public:
  virtual ~GlobalHotKey() = default;

  // From now on `pressed` runs on the main queue once for each press, until the object is
  // destroyed. If the combination is not available, nothing happens. To be called once.
  virtual void install(std::function<void()> pressed) = 0;
};

}  // namespace tessaly
