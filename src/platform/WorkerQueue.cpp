#include "platform/WorkerQueue.h"

#include <pthread.h>
#if defined(__linux__)
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>
#endif

#include <system_error>
#include <utility>

namespace tessaly {

namespace {

// Names the calling thread and gives it its share of the processors. Both are a courtesy, so that a
// refusal changes nothing.
void prepareThread(const WorkerQueue::Settings& settings) {
  const bool isLow = settings.priority == WorkerQueue::Priority::low;
#if defined(__APPLE__)
  pthread_setname_np(settings.name.c_str());
  pthread_set_qos_class_self_np(isLow ? QOS_CLASS_UTILITY : QOS_CLASS_USER_INITIATED, 0);
#elif defined(__linux__)
  constexpr std::size_t maxNameBytes = 15;
  pthread_setname_np(pthread_self(), settings.name.substr(0, maxNameBytes).c_str());
  // On Linux niceness belongs to the thread, not to the process.
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

void WorkerQueue::async(Dispatch::Work work) {
  const std::lock_guard lock(mutex_);
  if (stopping_) return;
  waiting_.push_back(std::move(work));
  const std::size_t freeThreads = threads_.size() - busy_;
  if (waiting_.size() > freeThreads && threads_.size() < settings_.maxThreads) startThread();
  wake_.notify_one();
}

void WorkerQueue::startThread() {
  threads_.emplace_back();
  const auto self = std::prev(threads_.end());
  try {
    *self = std::thread([this, self] { serve(self); });
  } catch (const std::system_error&) {
    threads_.erase(self);
    // The threads there are will get to the work. Without any, nobody ever would.
    if (threads_.empty()) throw;
  }
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
  // Each joins the one before it, so that none is left but the last, which stop() joins.
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
  // From here on the list of threads stays as it is: none starts and none retires.
  for (std::thread& thread : threads_) thread.join();
  threads_.clear();
  if (retired_.joinable()) retired_.join();
}

WorkerQueue::Counts WorkerQueue::counts() const {
  const std::lock_guard lock(mutex_);
  return {threads_.size(), busy_, waiting_.size()};
}

}  // namespace tessaly
