#include "app/window/WindowMover.h"

#include <QGuiApplication>
#include <QMouseEvent>
#include <QQuickWindow>
#include <QStyleHints>

namespace tessaly {

WindowMover::WindowMover(QQuickItem* parent) : QQuickItem(parent) {
  setAcceptedMouseButtons(Qt::LeftButton);
}

void WindowMover::zoom() {
  QQuickWindow* const host = window();
  if (host == nullptr) return;
  if (host->windowStates().testFlag(Qt::WindowMaximized)) {
    host->showNormal();
  } else {
    host->showMaximized();
  }
}

void WindowMover::mousePressEvent(QMouseEvent* event) {
  pull_ = Pull::pressed;
  pressedAt_ = event->globalPosition();
  windowStood_ = window()->position();
}

void WindowMover::mouseMoveEvent(QMouseEvent* event) {
  const QPointF way = event->globalPosition() - pressedAt_;
  if (pull_ == Pull::pressed &&
      way.manhattanLength() >= QGuiApplication::styleHints()->startDragDistance()) {
    // The desktop's own move is better, since it snaps to edges. It takes over the pointer.
    pull_ = window()->startSystemMove() ? Pull::none : Pull::moving;
  }
  if (pull_ == Pull::moving) window()->setPosition(windowStood_ + way.toPoint());
}

void WindowMover::mouseReleaseEvent(QMouseEvent*) {
  pull_ = Pull::none;
}

void WindowMover::mouseUngrabEvent() {
  pull_ = Pull::none;
}

void WindowMover::mouseDoubleClickEvent(QMouseEvent* event) {
  // Below the title bar, the second press counts as an ordinary press.
  if (event->position().y() >= titleHeight_) return;
  pull_ = Pull::none;
  zoom();
}

}  // namespace tessaly
