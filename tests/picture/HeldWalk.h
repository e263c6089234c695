// The real walk, but for one thing: it can be made to stand still half-way, so that a running scan
// can be looked at for as long as it takes.
#pragma once

#include <condition_variable>
#include <mutex>
#include <string>

#include "scan/DiskScanner.h"

namespace tessaly {

class HeldWalk {
 public:
  // Lets a walk that stands still go on, on the way out, so that its thread can be joined.
  class Release {
   public:
    explicit Release(HeldWalk& walk) : walk_(walk) {}
    ~Release() { walk_.release(); }
    Release(const Release&) = delete;
    Release& operator=(const Release&) = delete;

   private:
    HeldWalk& walk_;
  };

  // The next walks stop where they first report three tenths of their way or more, until released.
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
