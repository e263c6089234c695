// The paths of the archives that are being made, shared by the main thread and the workers that
// make them. Safe from any thread.
#pragma once

#include <algorithm>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "scan/PathName.h"

namespace tessaly {

class ZipsInWork {
 public:
  void begin(const std::string& path) {
    const std::lock_guard lock(mutex_);
    paths_.push_back(path);
  }
  void end(const std::string& path) {
    const std::lock_guard lock(mutex_);
    const auto found = std::find(paths_.begin(), paths_.end(), path);
    if (found != paths_.end()) paths_.erase(found);
  }

  std::vector<std::string> paths() const {
    const std::lock_guard lock(mutex_);
    return paths_;
  }
  // Whether one of them has this name, in any folder.
  bool hasName(std::string_view name) const {
    const std::lock_guard lock(mutex_);
    return std::any_of(paths_.begin(), paths_.end(),
                       [&](const std::string& path) { return lastPathComponent(path) == name; });
  }
  bool areAny() const {
    const std::lock_guard lock(mutex_);
    return !paths_.empty();
  }

  // Cancels all archives, including later ones.
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
  std::vector<std::string> paths_;  // one for each archive
  bool isGivenUp_ = false;
};

}  // namespace tessaly
