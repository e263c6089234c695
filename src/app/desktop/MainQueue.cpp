#include "app/desktop/MainQueue.h"

#include <utility>

#include <QCoreApplication>
#include <QEvent>

namespace tessaly {

namespace {

// One event per piece of work, so that the event loop can run between two of them.
constexpr QEvent::Type workIsWaiting = QEvent::User;

}  // namespace

void MainQueue::post(Dispatch::Work work) {
  {
    const std::lock_guard lock(mutex_);
    if (isClosed_) return;
    waiting_.push_back(std::move(work));
  }
  QCoreApplication::postEvent(this, new QEvent(workIsWaiting));
}

bool MainQueue::event(QEvent* event) {
  if (event->type() != workIsWaiting) return QObject::event(event);
  if (const Dispatch::Work work = takeNext()) work();
  return true;
}

void MainQueue::close() {
  std::deque<Dispatch::Work> dropped;
  const std::lock_guard lock(mutex_);
  isClosed_ = true;
  // There is still an event on its way for each of them.
  dropped.swap(waiting_);
}

Dispatch::Work MainQueue::takeNext() {
  const std::lock_guard lock(mutex_);
  if (waiting_.empty()) return {};
  Dispatch::Work work = std::move(waiting_.front());
  waiting_.pop_front();
  return work;
}

}  // namespace tessaly
