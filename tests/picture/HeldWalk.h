// The real walk, except that it can be paused half-way, so that tests can look at a running scan.
#pragma once

#include <condition_variable>
#include <mutex>
#include <string>

#include "scan/DiskScanner.h"

namespace tessaly {

class HeldWalk {
 public:
  // Releases a paused walk at the end of the scope, so that its thread can be joined.
  class Release {
   public:
    explicit Release(HeldWalk& walk) : walk_(walk) {}
    ~Release() { walk_.release(); }
    Release(const Release&) = delete;
    Release& operator=(const Release&) = delete;

   private:
    HeldWalk& walk_;
  };

  // Pauses the next walks at their first report of 30 % or more, until they are released.
  void holdHalfWay();
  void release();

  DiskNode operator()(const std::string& root, const DiskScanner::Callbacks& callbacks,
                      const DiskScanner::Options& options);

 private:
  std::mutex mutex_;
  std::condition_variable released_;
  bool hold_ = false;
};

}  // namespace tessaly
