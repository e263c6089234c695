// An X server for one test, without a physical screen (Xvfb), and what a user in front of it could
// do: look, click, press keys. Ends with the object.
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
  // Throws std::runtime_error if Xvfb is missing or does not start.
  explicit XServer(QSize screen);
  ~XServer();
  XServer(const XServer&) = delete;
  XServer& operator=(const XServer&) = delete;

  // The value for DISPLAY.
  const QString& display() const { return display_; }

  // A picture of the whole screen.
  QImage look();

  // Takes pictures until `seen` returns true; false if it does not within a minute.
  bool lookUntil(const std::function<bool(const QImage&)>& seen);

  // Clicks the left button at a point; throws if xdotool is missing.
  void click(QPoint point);
  // Clicks the right button.
  void clickSecondary(QPoint point);
  void movePointer(QPoint point);

  // Presses and releases a combination of keys, in the names of xdotool: "ctrl+shift+space".
  void pressKeys(const std::string& keys);

  // A connection of the test's own.
  xcb_connection_t* connection() const { return connection_; }
  xcb_window_t root() const { return screen_->root; }

 private:
  void xdotool(std::vector<std::string> arguments);

  TempTree folder_;  // with the file in which the server writes its display
  // Not a QProcess: the way it forks blinds the thread sanitizer on this thread.
  std::optional<Process> process_;
  QString display_;
  xcb_connection_t* connection_ = nullptr;
  xcb_screen_t* screen_ = nullptr;
};

}  // namespace tessaly
