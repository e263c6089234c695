// Every hop between threads goes through here: the main queue, where all state that views observe
// lives, and two worker queues for blocking work. Nothing else in the program starts threads, apart
// from the walk of a disk, which joins its own before it returns.
//
// `async` and `after` may be called from any thread. Work on the main queue runs one piece at a
// time, on the main thread, in the order in which it was handed over. Worker queues are concurrent:
// they start another thread when all of theirs are busy, so that a task that blocks holds up no
// other.
#pragma once

#include <chrono>
#include <functional>

namespace tessaly {

class Dispatch {
 public:
  enum class Queue { main, userInitiated, utility };
  using Work = std::function<void()>;

  virtual ~Dispatch() = default;

  // Runs `work` on `queue` as soon as it can; returns at once.
  virtual void async(Queue queue, Work work) = 0;

  // Runs `work` on `queue` once `delay` has passed.
  virtual void after(std::chrono::milliseconds delay, Queue queue, Work work) = 0;
};

}  // namespace tessaly
