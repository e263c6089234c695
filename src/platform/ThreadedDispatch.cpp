#include "platform/ThreadedDispatch.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace tessaly {

namespace {

using Clock = std::chrono::steady_clock;

// Interval before a refused thread is requested again.
constexpr std::chrono::milliseconds untilNextTry(100);
// Limit of one wait of the main thread while it does the timekeeping itself.
constexpr std::chrono::milliseconds longestTurn(10);

DelayedWork::Time sinceEpoch(Clock::time_point time) {
  return std::chrono::duration_cast<DelayedWork::Time>(time.time_since_epoch());
}

Clock::time_point timePoint(DelayedWork::Time time) {
  return Clock::time_point(std::chrono::duration_cast<Clock::duration>(time));
}

}  // namespace

ThreadedDispatch::ThreadedDispatch(PostToMain postToMain, const StartThread& startThread)
    : postToMain_(std::move(postToMain)),
      startThread_(startThread),
      userInitiated_({.name = "userInitiated", .startThread = startThread}),
      utility_(
          {.name = "utility", .priority = WorkerQueue::Priority::low, .startThread = startThread}) {
}

ThreadedDispatch::~ThreadedDispatch() {
  life_ = nullptr;
  dropDelayed();
  if (timekeeper_.joinable()) timekeeper_.join();
  // Running work on one queue may still pass work to the other: both must be stopped before either
  // is destroyed.
  userInitiated_.stop();
  utility_.stop();
}

void ThreadedDispatch::close() {
  dropDelayed();
  userInitiated_.close();
  utility_.close();
}

bool ThreadedDispatch::isAtRest() const {
  return userInitiated_.counts().busy == 0 && utility_.counts().busy == 0;
}

void ThreadedDispatch::dropDelayed() {
  DelayedWork dropped;
  {
    const std::lock_guard lock(delayedMutex_);
    stopping_ = true;
    std::swap(dropped, delayed_);
  }
  delayedChanged_.notify_all();
}

void ThreadedDispatch::async(Queue queue, Work work) {
  switch (queue) {
    case Queue::main:
      postToMain_(std::move(work));
      break;
    case Queue::userInitiated:
      handOver(userInitiated_, std::move(work));
      break;
    case Queue::utility:
      handOver(utility_, std::move(work));
      break;
  }
}

void ThreadedDispatch::handOver(WorkerQueue& queue, Work work) {
  if (!queue.async(std::move(work))) growLater();
}

void ThreadedDispatch::growLater() {
  {
    const Lock lock(delayedMutex_);
    if (std::exchange(growsLater_, true)) return;
  }
  after(untilNextTry, Queue::main, whileAlive(&ThreadedDispatch::grow));
}

void ThreadedDispatch::grow() {
  {
    const Lock lock(delayedMutex_);
    growsLater_ = false;
  }
  const bool hasAll = userInitiated_.grow();
  if (!utility_.grow() || !hasAll) growLater();
}

void ThreadedDispatch::after(std::chrono::milliseconds delay, Queue queue, Work work) {
  const DelayedWork::Time due = sinceEpoch(Clock::now()) + delay;
  {
    const Lock lock(delayedMutex_);
    if (stopping_) return;
    delayed_.add(due, queue, std::move(work));
    if (hasTimekeeper()) {
      delayedChanged_.notify_one();
      return;
    }
    if (std::exchange(mainKeepsTime_, true)) return;
  }
  takeTurnOnMain();
}

bool ThreadedDispatch::hasTimekeeper() {
  if (!timekeeper_.joinable()) timekeeper_ = startThread_([this] { keepTime(); });
  return timekeeper_.joinable();
}

void ThreadedDispatch::keepTime() {
  Lock lock(delayedMutex_);
  while (true) {
    handOverDue(lock);
    if (stopping_) return;
    if (const std::optional<DelayedWork::Time> due = delayed_.nextDue()) {
      delayedChanged_.wait_until(lock, timePoint(*due));
    } else {
      delayedChanged_.wait(lock);
    }
  }
}

// The timekeeper's work in short turns on the main queue, with other work in between.
void ThreadedDispatch::keepTimeOnMain() {
  Lock lock(delayedMutex_);
  handOverDue(lock);
  const std::optional<DelayedWork::Time> due = delayed_.nextDue();
  mainKeepsTime_ = due && !hasTimekeeper();
  if (!mainKeepsTime_) return;
  lock.unlock();
  std::this_thread::sleep_until(std::min(timePoint(*due), Clock::now() + longestTurn));
  takeTurnOnMain();
}

void ThreadedDispatch::takeTurnOnMain() {
  postToMain_(whileAlive(&ThreadedDispatch::keepTimeOnMain));
}

void ThreadedDispatch::handOverDue(Lock& lock) {
  while (std::optional<DelayedWork::Item> item = delayed_.takeDue(sinceEpoch(Clock::now()))) {
    lock.unlock();
    async(item->queue, std::move(item->work));
    item.reset();
    lock.lock();
  }
}

// For the main queue, which may run it after this object is destroyed.
Dispatch::Work ThreadedDispatch::whileAlive(void (ThreadedDispatch::*step)()) {
  return [this, step, life = alive_] {
    if (!life.expired()) (this->*step)();
  };
}

}  // namespace tessaly
