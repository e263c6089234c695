// The Dispatch of the running program: threads for the worker queues, and a main queue that belongs
// to whoever runs the main thread's event loop.
//
// Where the system refuses a thread, no work is lost: it waits until another thread is free for it
// or one can be started, which is tried again ten times a second. Times are kept on the main queue
// as long as there is no thread for that either.
//
// The destructor drops what has not begun and waits for what runs on the worker queues. Work that
// it has handed to the main queue by then is that queue's affair.
#pragma once

#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>

#include "platform/DelayedWork.h"
#include "platform/Dispatch.h"
#include "platform/StartThread.h"
#include "platform/WorkerQueue.h"

namespace tessaly {

class ThreadedDispatch final : public Dispatch {
 public:
  // Puts work at the end of the main queue and returns at once. Called from any thread.
  using PostToMain = std::function<void(Work)>;

  explicit ThreadedDispatch(PostToMain postToMain,
                            const StartThread& startThread = tessaly::startThread);
  // On the main thread.
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
  void handOver(WorkerQueue& queue, Work work);
  void growLater();
  void grow();

  using Lock = std::unique_lock<std::mutex>;

  bool hasTimekeeper();
  void keepTime();
  void keepTimeOnMain();
  void takeTurnOnMain();
  void handOverDue(Lock& lock);
  void dropDelayed();
  Work whileAlive(void (ThreadedDispatch::*step)());

  const PostToMain postToMain_;
  const StartThread startThread_;
  WorkerQueue userInitiated_;
  WorkerQueue utility_;

  std::mutex delayedMutex_;
  std::condition_variable delayedChanged_;
  DelayedWork delayed_;         // by the steady clock
  std::thread timekeeper_;      // started when it is first needed
  bool mainKeepsTime_ = false;  // in its stead
  bool growsLater_ = false;     // a piece of delayed work will try
  bool stopping_ = false;

  // Ends with the destructor. What is put on the main queue looks at it first.
  std::shared_ptr<const bool> life_ = std::make_shared<const bool>(true);
  const std::weak_ptr<const bool> alive_ = life_;
};

}  // namespace tessaly
