// A queue of blocking work with threads of its own.
//
// Work begins in the order of the calls and runs concurrently. When all threads are busy, the next
// work gets another thread, so work that blocks delays no other; a few idle threads wait for more
// work, the rest end. If the system refuses a thread, work waits for the existing ones and for
// grow().
//
// Work must not throw. async() may be called from any thread, including a thread of the queue.
#pragma once

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <list>
#include <mutex>
#include <string>
#include <thread>

#include "platform/Dispatch.h"
#include "platform/StartThread.h"

namespace tessaly {

class WorkerQueue {
 public:
  enum class Priority {
    normal,
    low  // yields to other work while the processors are busy
  };

  struct Settings {
    std::string name;  // of the threads, as shown by debuggers; cut after 15 bytes
    Priority priority = Priority::normal;
    // Beyond this number of threads, work waits. Only a guard against a flood.
    std::size_t maxThreads = 512;
    std::size_t maxIdleThreads = 4;
    StartThread startThread = tessaly::startThread;
  };

  struct Counts {
    std::size_t threads = 0;
    std::size_t busy = 0;     // threads that run work
    std::size_t waiting = 0;  // work that has not begun
  };

  explicit WorkerQueue(Settings settings);
  // Stops the queue. Must not be called from one of its threads.
  ~WorkerQueue();
  WorkerQueue(const WorkerQueue&) = delete;
  WorkerQueue& operator=(const WorkerQueue&) = delete;

  // Runs `work` as soon as a thread is free for it; drops it after close(). False if work waits for
  // a thread that the system refuses: then call grow() later.
  bool async(Dispatch::Work work);

  // Tries again to start the threads that work waits for. False if the system still refuses one.
  bool grow();

  // Drops work that has not begun, and all later work. Does not wait for running work, which
  // counts() continues to report.
  void close();

  // Closes the queue, waits for running work, and joins all threads.
  void stop();

  Counts counts() const;

 private:
  using Threads = std::list<std::thread>;

  bool startMissingThreads();
  bool startThread();
  void serve(Threads::iterator self);
  void retire(Threads::iterator self, std::unique_lock<std::mutex>& lock);

  const Settings settings_;
  mutable std::mutex mutex_;
  std::condition_variable wake_;
  std::deque<Dispatch::Work> waiting_;
  Threads threads_;
  std::thread retired_;  // ended last or about to; joined by the next one to retire
  std::size_t busy_ = 0;
  bool stopping_ = false;
};

}  // namespace tessaly
