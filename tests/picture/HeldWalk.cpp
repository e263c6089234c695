#include "picture/HeldWalk.h"

namespace tessaly {

void HeldWalk::holdHalfWay() {
  const std::lock_guard lock(mutex_);
  hold_ = true;
}

void HeldWalk::release() {
  {
    const std::lock_guard lock(mutex_);
    hold_ = false;
  }
  released_.notify_all();
}

DiskNode HeldWalk::operator()(const std::string& root, const DiskScanner::Callbacks& callbacks,
                              const DiskScanner::Options& options) {
  DiskScanner::Callbacks held = callbacks;
  held.percent = [this, &callbacks](double fraction) {
    callbacks.percent(fraction);
    if (fraction < 0.3 || fraction >= 1) return;
    std::unique_lock lock(mutex_);
    released_.wait(lock, [this] { return !hold_; });
  };
  return DiskScanner::scan(root, held, options);
}

}  // namespace tessaly
