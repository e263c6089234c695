#include "app/window/WindowChrome.h"

#include <QColor>
#include <QQuickWindow>

namespace tessaly {

void WindowChrome::itemChange(ItemChange change, const ItemChangeData& data) {
  QQuickItem::itemChange(change, data);
  if (change == ItemSceneChange && data.window != nullptr) polish();
}

void WindowChrome::updatePolish() {
  QQuickWindow* const host = window();
  if (host == nullptr) return;
  host->setFlag(Qt::FramelessWindowHint);
  // The background before the first frame, and wherever the content does not cover it.
  host->setColor(QColor(0x1E, 0x1E, 0x1E));
}

}  // namespace tessaly
