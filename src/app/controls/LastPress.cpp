#include "app/controls/LastPress.h"

#include <QEvent>
#include <QMouseEvent>

namespace tessaly {

LastPress::LastPress(QObject* item) : QObject(item) {
  auto* const place = qobject_cast<QQuickItem*>(item);
  if (place == nullptr) return;
  connect(place, &QQuickItem::windowChanged, this, &LastPress::watch);
  watch(place->window());
}

void LastPress::watch(QQuickWindow* window) {
  if (window_ != nullptr) window_->removeEventFilter(this);
  window_ = window;
  if (window_ != nullptr) window_->installEventFilter(this);
}

bool LastPress::eventFilter(QObject* watched, QEvent* event) {
  switch (event->type()) {
    case QEvent::TouchBegin:
      take(true);
      break;
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
      // A touch that no item accepts is delivered again as a press of the mouse.
      take(static_cast<const QMouseEvent*>(event)->deviceType() ==
           QInputDevice::DeviceType::TouchScreen);
      break;
    default:
      break;
  }
  return QObject::eventFilter(watched, event);
}

void LastPress::take(bool isByFinger) {
  if (isByFinger == isByFinger_) return;
  isByFinger_ = isByFinger;
  emit byFingerChanged();
}

}  // namespace tessaly
