// The Dispatch of the running program: threads for the worker queues, and a main queue that belongs
// to whoever runs the main thread's event loop.
//
// The destructor drops what has not begun and waits for what runs on the worker queues. Work that
// it has handed to the main queue by then is that queue's affair.
#pragma once

#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

#include "platform/DelayedWork.h"
#include "platform/Dispatch.h"
#include "platform/WorkerQueue.h"

namespace tessaly {

class ThreadedDispatch final : public Dispatch {
 public:
  // Puts work at the end of the main queue and returns at once. Called from any thread.
  using PostToMain = std::function<void(Work)>;

  explicit ThreadedDispatch(PostToMain postToMain);
  // On the main thread, or at least on none of a worker queue.
  ~ThreadedDispatch() override;

  // For a program that is about to end without the destructor: drops what has not begun on a worker
  // queue or waits for its time, and what comes for the worker queues from now on. Does not wait
  // for what runs. The main queue is left to its owner.
  void close();

  // Whether nothing runs on the worker queues. After close() this is true for good once it is.
  bool isAtRest() const;

  void async(Queue queue, Work work) override;
  void after(std::chrono::milliseconds delay, Queue queue, Work work) override;

 private:
  void keepTime();
  void dropDelayed();

  const PostToMain postToMain_;
  WorkerQueue userInitiated_;
  WorkerQueue utility_;

  std::mutex delayedMutex_;
  std::condition_variable delayedChanged_;
  DelayedWork delayed_;     // by the steady clock
  std::thread timekeeper_;  // started when it is first needed
  bool stopping_ = false;
};

}  // namespace tessaly
