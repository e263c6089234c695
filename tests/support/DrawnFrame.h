// Waiting for a window to be drawn.
#pragma once

#include <QObject>
#include <QQuickWindow>

#include "support/EventuallyByEvents.h"

namespace tessaly {

// Draws the window once more, with all that has changed.
inline void drawFrame(QQuickWindow& window) {
  bool isDrawn = false;
  // In the window's own thread, whichever one draws.
  const auto drawn = QObject::connect(&window, &QQuickWindow::frameSwapped, &window,
                                      [&isDrawn] { isDrawn = true; });
  window.update();
  eventuallyByEvents([&isDrawn] { return isDrawn; }, "a frame of the window");
  QObject::disconnect(drawn);
}

}  // namespace tessaly
