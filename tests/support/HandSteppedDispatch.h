// A Dispatch without threads: work waits on its queue until a test runs it, and time stands still
// until a test advances it. So a test chooses the order of all work, including late results.
//
// async() and after() may be called from any thread. One thread runs the work; it is both the main
// thread and the thread of the workers.
#pragma once

#include <array>
#include <chrono>
#include <cstddef>
#include <deque>
#include <mutex>

#include "platform/DelayedWork.h"
#include "platform/Dispatch.h"

namespace tessaly {

class HandSteppedDispatch final : public Dispatch {
 public:
  void async(Queue queue, Work work) override;
  void after(std::chrono::milliseconds delay, Queue queue, Work work) override;

  // The number of pieces of work on `queue`, without delayed ones.
  std::size_t waiting(Queue queue) const;

  // Runs the oldest piece of work on `queue`; false if there is none.
  bool step(Queue queue);

  // Removes the oldest piece of work from `queue` without running it, like a worker that hangs in
  // it. Null if there is none. The caller may run it later.
  Work take(Queue queue);

  // Runs the work on `queue`, including the work that this adds, until it is empty. Returns the
  // number of pieces.
  std::size_t drain(Queue queue);

  // Drains all queues in turn until all are empty.
  void drainAll();

  // Advances time. Work that becomes due is put on its queue, in the order of its times; nothing
  // runs.
  void advance(std::chrono::nanoseconds by);

  // Advances time to the next delayed piece of work; false if there is none.
  bool advanceToNextDue();

  // Time since the construction, by the dispatch's own clock.
  std::chrono::nanoseconds now() const;

 private:
  std::deque<Work>& works(Queue queue) { return queues_[static_cast<std::size_t>(queue)]; }
  void moveTo(std::chrono::nanoseconds time);

  mutable std::mutex mutex_;
  std::array<std::deque<Work>, 3> queues_;
  DelayedWork delayed_;
  std::chrono::nanoseconds now_{0};
};

}  // namespace tessaly
