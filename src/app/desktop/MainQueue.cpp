#include "app/desktop/MainQueue.h"

#include <QMetaObject>
#include <utility>

namespace tessaly {

void MainQueue::post(Dispatch::Work work) {
  QMetaObject::invokeMethod(this, std::move(work), Qt::QueuedConnection);
}

}  // namespace tessaly
