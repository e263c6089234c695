// A queue of blocking work with threads of its own.
//
// Work begins in the order in which it was handed over and runs concurrently. When all threads are
// busy the next piece gets another thread, so that work that blocks holds up no other; threads that
// have nothing to do wait for more, a few of them, and the rest go. Where the system refuses a
// thread, work waits for those there are, and for grow().
//
// Work must not throw. async() may be called from any thread, that of a running piece included.
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
    low  // gives way to other work where the processors are busy
  };

  struct Settings {
    std::string name;  // of the threads, as debuggers show it; cut after 15 bytes
    Priority priority = Priority::normal;
    // Beyond this many threads, work waits. Only a guard against a flood.
    std::size_t maxThreads = 512;
    std::size_t maxIdleThreads = 4;
    StartThread startThread = tessaly::startThread;
  };

  struct Counts {
    std::size_t threads = 0;
    std::size_t busy = 0;     // threads that have work
    std::size_t waiting = 0;  // pieces of work that have not begun
  };

  explicit WorkerQueue(Settings settings);
  // Stops the queue. Not from one of its own threads.
  ~WorkerQueue();
  WorkerQueue(const WorkerQueue&) = delete;
  WorkerQueue& operator=(const WorkerQueue&) = delete;

  // Runs `work` as soon as a thread is free for it. After close() it is dropped. False when work
  // waits for a thread that the system refuses: then grow() is to be called later.
  bool async(Dispatch::Work work);

  // Tries again to start the threads that work waits for. False when the system still refuses one.
  bool grow();

  // Drops the work that has not begun, and all that comes from now on. Does not wait for what runs,
  // which counts() goes on to tell.
  void close();

  // Closes the queue, waits until what runs has ended, and joins all threads.
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
  std::thread retired_;  // ended last or about to; joined by the next to retire
  std::size_t busy_ = 0;
  bool stopping_ = false;
};

}  // namespace tessaly
