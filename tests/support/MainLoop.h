// A main queue that a test runs on its own thread, for a ThreadedDispatch without an event loop.
// post() may be called from any thread.
#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <gtest/gtest.h>
#include <mutex>
#include <utility>

#include "platform/Dispatch.h"
#include "support/Eventually.h"

namespace tessaly {

class MainLoop {
 public:
  void post(Dispatch::Work work) {
    const std::lock_guard lock(mutex_);
    works_.push_back(std::move(work));
    posted_.notify_one();
  }

  // Runs posted work until `done` is true; it is tested before each piece, and only such work may
  // make it true. If no work comes for a very long time, the test fails.
  void runUntil(const std::function<bool()>& done) {
    while (!done()) {
      std::unique_lock lock(mutex_);
      if (!posted_.wait_for(lock, longestAwaited, [this] { return !works_.empty(); })) {
        ADD_FAILURE() << "timed out waiting for: work on the main queue";
        return;
      }
      const Dispatch::Work work = std::move(works_.front());
      works_.pop_front();
      lock.unlock();
      work();
    }
  }

  // Runs all work posted so far.
  void runPosted() {
    std::deque<Dispatch::Work> works;
    {
      const std::lock_guard lock(mutex_);
      works.swap(works_);
    }
    for (const Dispatch::Work& work : works) work();
  }

 private:
  std::mutex mutex_;
  std::condition_variable posted_;
  std::deque<Dispatch::Work> works_;
};

}  // namespace tessaly
