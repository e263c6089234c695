#include "support/XServer.h"

#include <cstdlib>
#include <cstring>
#include <fstream>
#include <stdexcept>
#include <utility>

#include <QTest>

namespace tessaly {

namespace {

std::string firstLineOf(const std::string& path) {
  std::ifstream in(path);
  std::string line;
  // Only a line that ends in a line feed is complete.
  return std::getline(in, line) && !in.eof() ? line : "";
}

}  // namespace

XServer::XServer(QSize screen) {
  const std::string told = folder_.at("display");
  const std::string size = std::to_string(screen.width()) + "x" + std::to_string(screen.height());
  // The server chooses a free display and writes its number to the descriptor.
  Result<Process> launched = Process::launch(
      {.path = "/bin/sh",
       .args = {"-c", "exec Xvfb -displayfd 3 -nolisten tcp -screen 0 " + size + "x24 3>\"$0\"",
                told}});
  if (!launched) throw std::runtime_error("Xvfb cannot be started");
  process_ = std::move(launched).value();
  std::string number;
  while ((number = firstLineOf(told)).empty()) {
    // Waits a moment before trying again, unless the server has ended.
    if (process_->waitUntil(Deadline::after(0.002)))
      throw std::runtime_error("Xvfb does not start");
  }
  display_ = QLatin1Char(':') + QString::fromStdString(number);

  connection_ = xcb_connect(display_.toLatin1().constData(), nullptr);
  if (xcb_connection_has_error(connection_) != 0)
    throw std::runtime_error("cannot connect to Xvfb");
  screen_ = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data;
}

XServer::~XServer() {
  xcb_disconnect(connection_);
  process_->terminate();
  process_->waitUntil(Deadline::never());
}

QImage XServer::look() {
  const int width = screen_->width_in_pixels;
  const int height = screen_->height_in_pixels;
  xcb_get_image_reply_t* reply = xcb_get_image_reply(
      connection_,
      xcb_get_image(connection_, XCB_IMAGE_FORMAT_Z_PIXMAP, screen_->root, 0, 0,
                    static_cast<std::uint16_t>(width), static_cast<std::uint16_t>(height), ~0u),
      nullptr);
  if (reply == nullptr) throw std::runtime_error("the screen cannot be read");
  QImage image(width, height, QImage::Format_RGB32);
  std::memcpy(image.bits(), xcb_get_image_data(reply),
              static_cast<std::size_t>(image.sizeInBytes()));
  std::free(reply);
  return image;
}

bool XServer::lookUntil(const std::function<bool(const QImage&)>& seen) {
  return QTest::qWaitFor([&] { return seen(look()); }, 60000);
}

void XServer::click(QPoint point) {
  movePointer(point);
  xdotool({"click", "1"});
}

void XServer::clickSecondary(QPoint point) {
  movePointer(point);
  xdotool({"click", "3"});
}

void XServer::movePointer(QPoint point) {
  xdotool({"mousemove", std::to_string(point.x()), std::to_string(point.y())});
}

void XServer::pressKeys(const std::string& keys) {
  xdotool({"key", keys});
}

void XServer::xdotool(std::vector<std::string> arguments) {
  Result<Process> tool = Process::launch({.path = "/usr/bin/xdotool",
                                          .args = std::move(arguments),
                                          .environment = {{"DISPLAY", display_.toStdString()}}});
  if (!tool || !tool.value().waitUntil(Deadline::never()) || !tool.value().exit()->isSuccess())
    throw std::runtime_error("xdotool failed");
}

}  // namespace tessaly
