#include "platform/WorkerQueue.h"

#include <pthread.h>
#if defined(__linux__)
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>
#endif

#include <iterator>
#include <utility>

namespace tessaly {

namespace {

// Sets the name and the priority of the calling thread. Neither is essential, so failures are
// ignored.
void prepareThread(const WorkerQueue::Settings& settings) {
  const bool isLow = settings.priority == WorkerQueue::Priority::low;
#if defined(__APPLE__)
  pthread_setname_np(settings.name.c_str());
  pthread_set_qos_class_self_np(isLow ? QOS_CLASS_UTILITY : QOS_CLASS_USER_INITIATED, 0);
#elif defined(__linux__)
  constexpr std::size_t maxNameBytes = 15;
  pthread_setname_np(pthread_self(), settings.name.substr(0, maxNameBytes).c_str());
  // On Linux niceness is a property of the thread, not of the process.
  constexpr int steps = 5;
  if (isLow) {
    const auto thread = static_cast<id_t>(syscall(SYS_gettid));
    setpriority(PRIO_PROCESS, thread, getpriority(PRIO_PROCESS, thread) + steps);
  }
#endif
}

}  // namespace

WorkerQueue::WorkerQueue(Settings settings) : settings_(std::move(settings)) {}

WorkerQueue::~WorkerQueue() {
  stop();
}

bool WorkerQueue::async(Dispatch::Work work) {
  const std::lock_guard lock(mutex_);
  if (stopping_) return true;
  waiting_.push_back(std::move(work));
  const bool isServed = startMissingThreads();
  wake_.notify_one();
  return isServed;
}

bool WorkerQueue::grow() {
  const std::lock_guard lock(mutex_);
  return startMissingThreads();
}

bool WorkerQueue::startMissingThreads() {
  while (waiting_.size() > threads_.size() - busy_ && threads_.size() < settings_.maxThreads) {
    if (!startThread()) return false;
  }
  return true;
}

bool WorkerQueue::startThread() {
  threads_.emplace_back();
  const auto self = std::prev(threads_.end());
  *self = settings_.startThread([this, self] { serve(self); });
  if (self->joinable()) return true;
  threads_.erase(self);
  return false;
}

void WorkerQueue::serve(Threads::iterator self) {
  prepareThread(settings_);
  std::unique_lock lock(mutex_);
  while (true) {
    wake_.wait(lock, [this] { return stopping_ || !waiting_.empty(); });
    if (stopping_) return;
    Dispatch::Work work = std::move(waiting_.front());
    waiting_.pop_front();
    ++busy_;
    lock.unlock();
    work();
    work = nullptr;
    lock.lock();
    --busy_;
    const std::size_t freeThreads = threads_.size() - busy_;
    if (!stopping_ && waiting_.empty() && freeThreads > settings_.maxIdleThreads) {
      retire(self, lock);
      return;
    }
  }
}

void WorkerQueue::retire(Threads::iterator self, std::unique_lock<std::mutex>& lock) {
  // Each retiring thread joins the one before it, so only the last remains, which stop() joins.
  std::thread previous = std::exchange(retired_, std::move(*self));
  threads_.erase(self);
  lock.unlock();
  if (previous.joinable()) previous.join();
}

void WorkerQueue::close() {
  std::deque<Dispatch::Work> dropped;
  {
    const std::lock_guard lock(mutex_);
    stopping_ = true;
    dropped.swap(waiting_);
  }
  wake_.notify_all();
}

void WorkerQueue::stop() {
  close();
  // From here on the list of threads does not change: none starts and none retires.
  for (std::thread& thread : threads_) thread.join();
  threads_.clear();
  if (retired_.joinable()) retired_.join();
}

WorkerQueue::Counts WorkerQueue::counts() const {
  const std::lock_guard lock(mutex_);
  return {threads_.size(), busy_, waiting_.size()};
}

}  // namespace tessaly
