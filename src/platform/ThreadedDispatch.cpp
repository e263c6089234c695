#include "platform/ThreadedDispatch.h"

#include <optional>
#include <utility>

namespace tessaly {

namespace {

using Clock = std::chrono::steady_clock;

DelayedWork::Time sinceEpoch(Clock::time_point time) {
  return std::chrono::duration_cast<DelayedWork::Time>(time.time_since_epoch());
}

Clock::time_point timePoint(DelayedWork::Time time) {
  return Clock::time_point(std::chrono::duration_cast<Clock::duration>(time));
}

}  // namespace

ThreadedDispatch::ThreadedDispatch(PostToMain postToMain)
    : postToMain_(std::move(postToMain)),
      userInitiated_({.name = "userInitiated"}),
      utility_({.name = "utility", .priority = WorkerQueue::Priority::low}) {}

ThreadedDispatch::~ThreadedDispatch() {
  dropDelayed();
  if (timekeeper_.joinable()) timekeeper_.join();
  // Work that still runs on one queue may hand over work to the other: both must have come to rest
  // before either goes.
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
      userInitiated_.async(std::move(work));
      break;
    case Queue::utility:
      utility_.async(std::move(work));
      break;
  }
}

void ThreadedDispatch::after(std::chrono::milliseconds delay, Queue queue, Work work) {
  const DelayedWork::Time due = sinceEpoch(Clock::now()) + delay;
  const std::lock_guard lock(delayedMutex_);
  if (stopping_) return;
  delayed_.add(due, queue, std::move(work));
  if (!timekeeper_.joinable()) timekeeper_ = std::thread([this] { keepTime(); });
  delayedChanged_.notify_one();
}

void ThreadedDispatch::keepTime() {
  std::unique_lock lock(delayedMutex_);
  while (!stopping_) {
    const std::optional<DelayedWork::Time> due = delayed_.nextDue();
    if (!due) {
      delayedChanged_.wait(lock);
      continue;
    }
    std::optional<DelayedWork::Item> item = delayed_.takeDue(sinceEpoch(Clock::now()));
    if (!item) {
      delayedChanged_.wait_until(lock, timePoint(*due));
      continue;
    }
    lock.unlock();
    async(item->queue, std::move(item->work));
    lock.lock();
  }
}

}  // namespace tessaly
