// A dispatch that a test can wait for: each piece of work for a worker queue gets a thread of its
// own; the main queue is Qt's event loop on the thread that created the dispatch.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdlib>
#include <gtest/gtest.h>
#include <mutex>
#include <thread>
#include <utility>
#include <vector>

#include "app/desktop/MainQueue.h"
#include "platform/Dispatch.h"
#include "support/EventuallyByEvents.h"

namespace tessaly {

class QtDispatch final : public Dispatch {
 public:
  ~QtDispatch() override { finish(); }

  void async(Queue queue, Work work) override {
    const std::lock_guard lock(mutex_);
    ++unfinished_;
    if (queue == Queue::main) {
      onMain([this, work = std::move(work)] {
        work();
        ended();
      });
    } else {
      threads_.emplace_back([this, work = std::move(work)] {
        work();
        onMain([this] { ended(); });
      });
    }
  }

  // No test with this dispatch uses delays.
  void after(std::chrono::milliseconds, Queue, Work) override { ADD_FAILURE(); }

  // Runs the event loop until all work and its results have run.
  void finish() {
    // Work that runs past the limit uses objects of the test, which are about to be destroyed.
    if (!eventuallyByEvents([this] { return !isBusy(); }, "the end of all work")) std::abort();
    for (std::thread& thread : threads_) thread.join();
    threads_.clear();
  }

 private:
  bool isBusy() {
    const std::lock_guard lock(mutex_);
    return unfinished_ > 0;
  }
  void ended() {
    const std::lock_guard lock(mutex_);
    --unfinished_;
  }
  void onMain(Work work) { main_.post(std::move(work)); }

  std::mutex mutex_;
  std::size_t unfinished_ = 0;
  std::vector<std::thread> threads_;
  MainQueue main_;
};

}  // namespace tessaly
