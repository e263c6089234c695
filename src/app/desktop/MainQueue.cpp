#include "app/desktop/MainQueue.h"

#include <utility>

#include <QMetaObject>

namespace tessaly {

void MainQueue::post(Dispatch::Work work) {
  QMetaObject::invokeMethod(this, std::move(work), Qt::QueuedConnection);
}

}  // namespace tessaly
