#include <cstdio>
#include <optional>
#include <string>
#include <utility>

#include <QApplication>

#include "app/Application.h"
#include "app/desktop/Display.h"
#include "app/desktop/ReopenRequests.h"
#include "platform/SingleInstance.h"

int main(int, char** argv) {
  std::string platform = tessaly::platformFor(tessaly::DisplayFacts::ofThisMachine());
  if (platform.empty()) {
    std::fputs("tessaly: there is no display to open a window on\n", stderr);
    return 2;
  }

  using tessaly::SingleInstance;
  std::optional<SingleInstance> instance = SingleInstance::claim(SingleInstance::Place::usual());
  // The one that runs has come forward.
  if (!instance) return 0;

  // The program takes no arguments. Qt would take some, so it gets only what it needs to know.
  std::string option = "-platform";
  char* arguments[] = {argv[0], option.data(), platform.data(), nullptr};
  int count = 3;
  QApplication qtApplication(count, arguments);
  QApplication::setApplicationName(QStringLiteral("Tessaly"));
  QApplication::setDesktopFileName(QStringLiteral("tessaly"));
  // A dialog or a job that ends must not take a program along that has its window closed.
  QApplication::setQuitLockEnabled(false);

  tessaly::Application::setUpLook();
  std::optional<tessaly::ReopenRequests> requests;
  tessaly::Application application({.giveUpInstance = [&] { requests->giveUp(); }});
  requests.emplace(std::move(*instance), [&] { application.reopen(); });
  application.launch();
  return QApplication::exec();
}
