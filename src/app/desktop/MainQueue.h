// The main queue of the Dispatch, on Qt's event loop: work runs on the thread that made the queue,
// one piece at a time, in the order in which it was handed over. What is still waiting when the
// queue is closed or goes is dropped. post() may be called from any thread.
#pragma once

#include <deque>
#include <mutex>

#include <QObject>

#include "platform/Dispatch.h"

namespace tessaly {

class MainQueue : public QObject {
 public:
  using QObject::QObject;

  void post(Dispatch::Work work);

  // Runs nothing more.
  void close();

 protected:
  bool event(QEvent* event) override;

 private:
  Dispatch::Work takeNext();  // empty once the queue is closed

  // Kept here and not in the events, so that the hand-over between threads is under a lock of our
  // own, where the thread sanitizer sees it.
  std::mutex mutex_;
  std::deque<Dispatch::Work> waiting_;
  bool isClosed_ = false;
};

}  // namespace tessaly
