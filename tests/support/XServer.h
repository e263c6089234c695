// An X server of the test's own, without a screen to look at (Xvfb), and what a person in front of
// it could do: look, and click. Ends with the object.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>
#include <xcb/xcb.h>

#include <QImage>
#include <QSize>
#include <QString>

#include "platform/Process.h"
#include "support/TempTree.h"

namespace tessaly {

class XServer {
 public:
  // Throws std::runtime_error when there is no Xvfb or it does not come up.
  explicit XServer(QSize screen);
  ~XServer();
  XServer(const XServer&) = delete;
  XServer& operator=(const XServer&) = delete;

  // As DISPLAY takes it.
  const QString& display() const { return display_; }

  // All of the screen as it is now.
  QImage look();

  // Looks again and again until `seen` holds; false when it does not within a minute.
  bool lookUntil(const std::function<bool(const QImage&)>& seen);

  // Presses and releases the left button there; throws where xdotool is missing.
  void click(QPoint point);
  // The same with the right one.
  void clickSecondary(QPoint point);
  void movePointer(QPoint point);

  // Presses and releases keys together, as xdotool names them: "ctrl+shift+space".
  void pressKeys(const std::string& keys);

  // A way in beside that of the program.
  xcb_connection_t* connection() const { return connection_; }
  xcb_window_t root() const { return screen_->root; }

 private:
  void xdotool(std::vector<std::string> arguments);

  TempTree folder_;  // where the server says what it is called
  // None of Qt's own: how QProcess forks makes the thread sanitizer blind on this thread.
  std::optional<Process> process_;
  QString display_;
  xcb_connection_t* connection_ = nullptr;
  xcb_screen_t* screen_ = nullptr;
};

}  // namespace tessaly
