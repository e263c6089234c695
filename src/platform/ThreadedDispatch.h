// The Dispatch of the running program: threads for the worker queues, and a main queue that belongs
// to the main thread's event loop.
//
// If the system refuses a thread, no work is lost: it waits until another thread is free or one can
// be started, which is tried ten times a second. Without a thread for timekeeping, the main queue
// does it.
//
// The destructor drops work that has not begun and waits for work that runs on the worker queues.
// It does not touch work already on the main queue.
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
  // Appends work to the main queue and returns at once. Called from any thread.
  using PostToMain = std::function<void(Work)>;

  explicit ThreadedDispatch(PostToMain postToMain,
                            const StartThread& startThread = tessaly::startThread);
  // To be called on the main thread.
  ~ThreadedDispatch() override;

  // For a program that ends without the destructor: drops delayed work, work that has not begun on
  // a worker queue, and all later work for the worker queues. Does not wait for running work. Does
  // not touch the main queue.
  void close();

  // Whether no work runs on the worker queues. After close(), once true, it stays true.
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
  bool mainKeepsTime_ = false;  // instead of the timekeeper
  bool growsLater_ = false;     // delayed work will try to start threads
  bool stopping_ = false;

  // Ends with the destructor. Work on the main queue checks it first.
  std::shared_ptr<const bool> life_ = std::make_shared<const bool>(true);
  const std::weak_ptr<const bool> alive_ = life_;
};

}  // namespace tessaly
