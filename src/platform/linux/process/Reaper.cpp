#include "platform/linux/process/Reaper.h"

#include <poll.h>
#include <pthread.h>
#include <sys/eventfd.h>
#include <thread>
#include <utility>

namespace tessaly::process {

namespace {

// Waits until one of the children has exited or the bell rings.
void sleepUntilNews(const std::vector<Child>& children, int bell) {
  constexpr int lookEvery = 200;  // milliseconds
  std::vector<pollfd> watched;
  watched.reserve(children.size() + 1);
  for (const Child& child : children) watched.push_back({child.handle.get(), POLLIN, 0});
  if (bell >= 0) watched.push_back({bell, POLLIN, 0});
  poll(watched.data(), watched.size(), bell >= 0 ? -1 : lookEvery);
}

}  // namespace

Reaper& Reaper::instance() {
  static Reaper& reaper = *new Reaper;
  return reaper;
}

Reaper::Reaper(StartThread startThread) : startThread_(std::move(startThread)) {}

void Reaper::adopt(Child child) {
  if (reaped(child.number)) return;
  const std::lock_guard lock(mutex_);
  newcomers_.push_back(std::move(child));
  if (!isServing_) {
    startServing();
  } else if (bell_) {
    eventfd_write(bell_.get(), 1);
  }
}

void Reaper::catchUp() {
  const std::lock_guard lock(mutex_);
  if (isServing_) return;
  std::erase_if(newcomers_, [](const Child& child) { return reaped(child.number).has_value(); });
  if (!newcomers_.empty()) startServing();
}

void Reaper::startServing() {
  bell_ = FileDescriptor(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK));
  std::thread thread = startThread_([this] { serve(); });
  isServing_ = thread.joinable();
  if (isServing_) {
    thread.detach();
  } else {
    bell_ = FileDescriptor();
  }
}

void Reaper::serve() {
  pthread_setname_np(pthread_self(), "tessaly-reaper");
  std::vector<Child> children;
  while (takeNewcomers(children)) {
    // Only this thread changes `bell_` while it serves.
    sleepUntilNews(children, bell_.get());
    std::erase_if(children, [](const Child& child) { return reaped(child.number).has_value(); });
  }
}

bool Reaper::takeNewcomers(std::vector<Child>& children) {
  const std::lock_guard lock(mutex_);
  if (bell_) {
    eventfd_t rings = 0;
    eventfd_read(bell_.get(), &rings);
  }
  for (Child& child : newcomers_) children.push_back(std::move(child));
  newcomers_.clear();
  if (!children.empty()) return true;
  isServing_ = false;
  bell_ = FileDescriptor();
  return false;
}

}  // namespace tessaly::process
