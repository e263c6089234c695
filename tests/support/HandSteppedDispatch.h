// A Dispatch without threads, moved on by hand: work waits on its queue until a test takes the next
// step, and time stands still until a test advances it. So a test can put every overtaking and
// every late result in the order it wants.
//
// async() and after() may be called from any thread. Stepping belongs to one thread, which then is
// the main thread and the workers' alike.
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

  // Pieces of work that stand in `queue`; what waits for its time is not among them.
  std::size_t waiting(Queue queue) const;

  // Runs the oldest piece of work of `queue`; false if there was none.
  bool step(Queue queue);

  // Takes the oldest piece of work off `queue` without running it, as a worker does that hangs in
  // it. Null if there was none. Whoever has it may run it later.
  Work take(Queue queue);

  // Steps through `queue` until it is empty, with what that work adds to it. Returns the number of
  // steps.
  std::size_t drain(Queue queue);

  // Drains all queues in turn until none holds anything.
  void drainAll();

  // Moves time on. What becomes due is put on its queue, in the order of its times; nothing is run.
  void advance(std::chrono::nanoseconds by);

  // Moves time on to when the next delayed piece is due; false if there is none.
  bool advanceToNextDue();

  // Time since the dispatch was made, by its own clock.
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
