// The only way to pass work between threads: the main queue, whose thread owns all state that views
// observe, and two worker queues for blocking work. Only three other parts of the program start
// threads: the walk of a disk, which joins its own before it returns, the digests of many files,
// and on Linux the reaper of child processes.
//
// `async` and `after` may be called from any thread. Work on the main queue runs one piece at a
// time, on the main thread, in the order of the calls. Worker queues are concurrent: they start
// another thread when all of theirs are busy, so a task that blocks delays no other.
#pragma once

#include <chrono>
#include <functional>

namespace tessaly {

class Dispatch {
 public:
  enum class Queue { main, userInitiated, utility };
  using Work = std::function<void()>;

  virtual ~Dispatch() = default;

  // Runs `work` on `queue` as soon as possible; returns at once.
  virtual void async(Queue queue, Work work) = 0;

  // Runs `work` on `queue` once `delay` has passed.
  virtual void after(std::chrono::milliseconds delay, Queue queue, Work work) = 0;
};

}  // namespace tessaly
