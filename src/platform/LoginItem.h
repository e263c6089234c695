// Whether the desktop starts the program by itself when the user logs in. Main thread only.
#pragma once

#include <memory>

namespace tessaly {

class LoginItem {
 public:
  virtual ~LoginItem() = default;

  // As it stands now: others may change it, too.
  virtual bool isEnabled() const = 0;

  // True if it is so afterwards, whether or not there was anything to do.
  virtual bool setEnabled(bool on) = 0;
};

// Of the user and the program that this process is.
std::unique_ptr<LoginItem> loginItem();

}  // namespace tessaly
