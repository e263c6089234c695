// The main queue of the Dispatch, on Qt's event loop: work runs on the thread that created the
// queue, one piece at a time, in the order in which it was posted. Closing or destroying the queue
// drops waiting work. post() may be called from any thread.
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

  // Runs no more work.
  void close();

 protected:
  bool event(QEvent* event) override;

 private:
  Dispatch::Work takeNext();  // empty once the queue is closed

  // Stored here and not in the events, so that a lock of our own protects it, which the thread
  // sanitizer sees.
  std::mutex mutex_;
  std::deque<Dispatch::Work> waiting_;
  bool isClosed_ = false;
};

}  // namespace tessaly
