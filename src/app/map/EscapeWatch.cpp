#include "app/map/EscapeWatch.h"

#include <QKeyEvent>

namespace tessaly {

void EscapeWatch::listenIn(QWindow* window) {
  if (window_ == window) return;
  if (window_ != nullptr) window_->removeEventFilter(this);
  window_ = window;
  if (window_ != nullptr) window_->installEventFilter(this);
}

bool EscapeWatch::eventFilter(QObject* watched, QEvent* event) {
  const bool isPress = event->type() == QEvent::KeyPress;
  // Without accepting the override, a shortcut would take the key before it arrives as a press.
  if (!isPress && event->type() != QEvent::ShortcutOverride) {
    return QObject::eventFilter(watched, event);
  }
  if (static_cast<QKeyEvent*>(event)->key() != Qt::Key_Escape) {
    return QObject::eventFilter(watched, event);
  }
  event->accept();
  if (isPress) emit escaped();
  return true;
}

}  // namespace tessaly
