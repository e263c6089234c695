#include "picture/DrawnScreen.h"

#include "picture/PictureWindow.h"
#include "platform/Process.h"
#include "support/TempTree.h"

namespace tessaly {

QImage drawnScreen(const QString& screen, const std::string& tool) {
  const auto known = PictureWindow::screenNamed(screen);
  if (!known) return {};
  if (PictureWindow::pixelsAPoint(*known) == 1) return PictureWindow(*known).picture();
  const TempTree folder;
  const std::string file = folder.at("picture.png");
  Result<Process> drawing = Process::launch({.path = tool,
                                             .args = {file, "--fixture", screen.toStdString()},
                                             .output = Process::Stream::discarded});
  if (!drawing) return {};
  drawing.value().waitUntil(Deadline::never());
  return QImage(QString::fromStdString(file)).convertToFormat(QImage::Format_RGB32);
}

}  // namespace tessaly
