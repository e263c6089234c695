// A combination of keys that works in whatever program the user is: Command Shift Space. Main
// thread only.
#pragma once

#include <functional>

namespace tessaly {

class GlobalHotKey {
 public:
  virtual ~GlobalHotKey() = default;

  // From now on `pressed` runs on the main queue once for each press, until the object goes. Where
  // the combination cannot be had, nothing happens: the program does without. To be called once.
  virtual void install(std::function<void()> pressed) = 0;
};

}  // namespace tessaly
