#include "journeys/XServer.h"

#include <cstdlib>
#include <cstring>
#include <stdexcept>

#include <QTest>

namespace tessaly {

XServer::XServer(QSize screen) {
  process_.setProgram(QStringLiteral("Xvfb"));
  // The server looks for a free display itself and tells it on its standard output.
  process_.setArguments({QStringLiteral("-displayfd"), QStringLiteral("1"),
                         QStringLiteral("-nolisten"), QStringLiteral("tcp"),
                         QStringLiteral("-screen"), QStringLiteral("0"),
                         QStringLiteral("%1x%2x24").arg(screen.width()).arg(screen.height())});
  process_.start();
  while (!process_.canReadLine())
    if (!process_.waitForReadyRead()) throw std::runtime_error("Xvfb does not come up");
  display_ = QLatin1Char(':') + QString::fromLatin1(process_.readLine()).trimmed();

  connection_ = xcb_connect(display_.toLatin1().constData(), nullptr);
  if (xcb_connection_has_error(connection_) != 0) throw std::runtime_error("no way into Xvfb");
  screen_ = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data;
}

XServer::~XServer() {
  xcb_disconnect(connection_);
  process_.terminate();
  process_.waitForFinished();
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
  xdotool({QStringLiteral("click"), QStringLiteral("1")});
}

void XServer::movePointer(QPoint point) {
  xdotool({QStringLiteral("mousemove"), QString::number(point.x()), QString::number(point.y())});
}

void XServer::xdotool(const QStringList& arguments) {
  QProcess tool;
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert(QStringLiteral("DISPLAY"), display_);
  tool.setProcessEnvironment(environment);
  tool.start(QStringLiteral("xdotool"), arguments);
  if (!tool.waitForFinished() || tool.exitStatus() != QProcess::NormalExit || tool.exitCode() != 0)
    throw std::runtime_error("xdotool failed");
}

}  // namespace tessaly
