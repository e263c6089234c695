// Waits for a window to be drawn.
#pragma once

#include <QObject>
#include <QQuickWindow>

#include "support/EventuallyByEvents.h"

namespace tessaly {

// Draws the window with all its changes.
inline void drawFrame(QQuickWindow& window) {
  bool isDrawn = false;
  // Works with any thread that draws, since the slot runs in the window's thread.
  const auto drawn = QObject::connect(&window, &QQuickWindow::frameSwapped, &window,
                                      [&isDrawn] { isDrawn = true; });
  window.update();
  eventuallyByEvents([&isDrawn] { return isDrawn; }, "a frame of the window");
  QObject::disconnect(drawn);
}

}  // namespace tessaly
