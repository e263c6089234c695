#include "app/desktop/MainQueue.h"

#include <utility>

#include <QCoreApplication>
#include <QEvent>

namespace tessaly {

namespace {

// An event for each piece of work, so that the event loop gets its turn between two of them.
constexpr QEvent::Type workIsWaiting = QEvent::User;

}  // namespace

void MainQueue::post(Dispatch::Work work) {
  {
    const std::lock_guard lock(mutex_);
    waiting_.push_back(std::move(work));
  }
  QCoreApplication::postEvent(this, new QEvent(workIsWaiting));
}

bool MainQueue::event(QEvent* event) {
  if (event->type() != workIsWaiting) return QObject::event(event);
  takeNext()();
  return true;
}

Dispatch::Work MainQueue::takeNext() {
  const std::lock_guard lock(mutex_);
  Dispatch::Work work = std::move(waiting_.front());
  waiting_.pop_front();
  return work;
}

}  // namespace tessaly
