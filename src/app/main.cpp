#include <cstdio>
#include <string>

#include <QApplication>

#include "app/Application.h"
#include "app/desktop/Display.h"

int main(int, char** argv) {
  std::string platform = tessaly::platformFor(tessaly::DisplayFacts::ofThisMachine());
  if (platform.empty()) {
    std::fputs("tessaly: there is no display to open a window on\n", stderr);
    return 2;
  }

  // The program takes no arguments. Qt would take some, so it gets only what it needs to know.
  std::string option = "-platform";
  char* arguments[] = {argv[0], option.data(), platform.data(), nullptr};
  int count = 3;
  QApplication qtApplication(count, arguments);
  QApplication::setApplicationName(QStringLiteral("Tessaly"));
  QApplication::setDesktopFileName(QStringLiteral("tessaly"));

  tessaly::Application::setUpLook();
  tessaly::Application application;
  application.window().show();
  return QApplication::exec();
}
