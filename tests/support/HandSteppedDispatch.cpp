#include "support/HandSteppedDispatch.h"

#include <optional>
#include <utility>

namespace tessaly {

void HandSteppedDispatch::async(Queue queue, Work work) {
  const std::lock_guard lock(mutex_);
  works(queue).push_back(std::move(work));
}

void HandSteppedDispatch::after(std::chrono::milliseconds delay, Queue queue, Work work) {
  const std::lock_guard lock(mutex_);
  delayed_.add(now_ + delay, queue, std::move(work));
  moveTo(now_);
}

std::size_t HandSteppedDispatch::waiting(Queue queue) const {
  const std::lock_guard lock(mutex_);
  return queues_[static_cast<std::size_t>(queue)].size();
}

bool HandSteppedDispatch::step(Queue queue) {
  const Work work = take(queue);
  if (!work) return false;
  work();
  return true;
}

Dispatch::Work HandSteppedDispatch::take(Queue queue) {
  const std::lock_guard lock(mutex_);
  if (works(queue).empty()) return {};
  Work work = std::move(works(queue).front());
  works(queue).pop_front();
  return work;
}

std::size_t HandSteppedDispatch::drain(Queue queue) {
  std::size_t steps = 0;
  while (step(queue)) ++steps;
  return steps;
}

void HandSteppedDispatch::drainAll() {
  std::size_t steps = 0;
  do {
    steps = drain(Queue::userInitiated) + drain(Queue::utility) + drain(Queue::main);
  } while (steps > 0);
}

void HandSteppedDispatch::advance(std::chrono::nanoseconds by) {
  const std::lock_guard lock(mutex_);
  moveTo(now_ + by);
}

bool HandSteppedDispatch::advanceToNextDue() {
  const std::lock_guard lock(mutex_);
  const std::optional<DelayedWork::Time> due = delayed_.nextDue();
  if (!due) return false;
  moveTo(*due);
  return true;
}

std::chrono::nanoseconds HandSteppedDispatch::now() const {
  const std::lock_guard lock(mutex_);
  return now_;
}

void HandSteppedDispatch::moveTo(std::chrono::nanoseconds time) {
  now_ = time;
  while (std::optional<DelayedWork::Item> item = delayed_.takeDue(now_)) {
    works(item->queue).push_back(std::move(item->work));
  }
}

}  // namespace tessaly
