// Whether the desktop starts the program when the user logs in. Main thread only.
#pragma once

namespace tessaly {

class LoginItem {
 public:
  virtual ~LoginItem() = default;

  // The current state, which other programs may change too.
  virtual bool isEnabled() const = 0;

  // Sets the state. True if it is `on` afterwards, even if nothing had to change.
  virtual bool setEnabled(bool on) = 0;
};

}  // namespace tessaly
