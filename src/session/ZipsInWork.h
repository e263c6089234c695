// The archives that are being made, as the main thread and the workers that make them share them.
// Safe from any thread.
#pragma once

#include <algorithm>
#include <mutex>
#include <string>
#include <vector>

namespace tessaly {

class ZipsInWork {
 public:
  void begin(const std::string& name) {
    const std::lock_guard lock(mutex_);
    names_.push_back(name);
  }
  void end(const std::string& name) {
    const std::lock_guard lock(mutex_);
    const auto found = std::find(names_.begin(), names_.end(), name);
    if (found != names_.end()) names_.erase(found);
  }

  bool has(const std::string& name) const {
    const std::lock_guard lock(mutex_);
    return std::find(names_.begin(), names_.end(), name) != names_.end();
  }
  bool areAny() const {
    const std::lock_guard lock(mutex_);
    return !names_.empty();
  }

  // From now on every archive is given up.
  void giveUp() {
    const std::lock_guard lock(mutex_);
    isGivenUp_ = true;
  }
  bool isGivenUp() const {
    const std::lock_guard lock(mutex_);
    return isGivenUp_;
  }

 private:
  mutable std::mutex mutex_;
  std::vector<std::string> names_;  // of the files, one for each archive
  bool isGivenUp_ = false;
};

}  // namespace tessaly
