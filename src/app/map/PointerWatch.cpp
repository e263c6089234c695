#include "app/map/PointerWatch.h"

#include <utility>

#include <QSinglePointEvent>

namespace tessaly {

PointerWatch::PointerWatch(QWindow& window) : QObject(&window) {
  window.installEventFilter(this);
}

PointerWatch& PointerWatch::of(QWindow& window) {
  auto* const watch = window.findChild<PointerWatch*>(QString(), Qt::FindDirectChildrenOnly);
  return watch != nullptr ? *watch : *new PointerWatch(window);
}

bool PointerWatch::takeMove() {
  return std::exchange(isMoving_, false);
}

bool PointerWatch::eventFilter(QObject* watched, QEvent* event) {
  // A move that was not taken is dropped at the next event.
  isMoving_ = false;
  if (event->type() == QEvent::MouseMove || event->type() == QEvent::Enter) {
    const auto& pointer = static_cast<const QSinglePointEvent&>(*event);
    const Position position{pointer.scenePosition(), pointer.globalPosition()};
    isMoving_ = event->type() == QEvent::MouseMove &&
                (!position_ || (position.inWindow != position_->inWindow &&
                                position.onScreen != position_->onScreen));
    position_ = position;
  }
  return QObject::eventFilter(watched, event);
}

}  // namespace tessaly
