// The one thing that the main thread and a running walk share: whether the walk should stop.
// Safe from any thread.
#pragma once

#include <mutex>

namespace tessaly {

class CancelFlag {
 public:
  void set() {
    const std::lock_guard lock(mutex_);
    value_ = true;
  }

  bool isSet() const {
    const std::lock_guard lock(mutex_);
    return value_;
  }

 private:
  mutable std::mutex mutex_;
  bool value_ = false;
};

}  // namespace tessaly
