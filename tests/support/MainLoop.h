// A main queue that a test runs itself, on its own thread: what a ThreadedDispatch needs where
// there is no event loop. post() may be called from any thread.
#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <utility>

#include "platform/Dispatch.h"

namespace tessaly {

class MainLoop {
 public:
  void post(Dispatch::Work work) {
    const std::lock_guard lock(mutex_);
    works_.push_back(std::move(work));
    posted_.notify_one();
  }

  // Runs work as it comes in until `done` holds; asked before each piece. Only such work may make
  // it hold.
  void runUntil(const std::function<bool()>& done) {
    while (!done()) {
      std::unique_lock lock(mutex_);
      posted_.wait(lock, [this] { return !works_.empty(); });
      const Dispatch::Work work = std::move(works_.front());
      works_.pop_front();
      lock.unlock();
      work();
    }
  }

  // Runs what has come in so far.
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
