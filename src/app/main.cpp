#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>
#include <thread>
#include <unistd.h>
#include <utility>

#include <QApplication>

#include "app/Application.h"
#include "app/Quitting.h"
#include "app/desktop/ClipboardHandOver.h"
#include "app/desktop/DesktopServices.h"
#include "app/desktop/Display.h"
#include "app/desktop/DisplayServers.h"
#include "app/desktop/QuitSignals.h"
#include "app/desktop/ReopenRequests.h"
#include "app/desktop/StartMessages.h"
#include "platform/OwnConnections.h"
#include "platform/PlatformServices.h"
#include "platform/SingleInstance.h"
#include "platform/SizeLimit.h"

namespace {

constexpr int noDisplay = 2;

void leaveWithoutWindow() {
  std::fputs("tessaly: Qt cannot open a window on this display\n", stderr);
  ::_exit(noDisplay);
}

// The socket of the Wayland compositor with the windows, or "".
const std::string& compositor() {
  static const std::string socket =
      QGuiApplication::platformName().startsWith(QLatin1String("wayland"))
          ? tessaly::DisplayServers::waylandSocket()
          : std::string();
  return socket;
}

tessaly::Quitting* quittingAtExit = nullptr;

// Qt calls exit() when the connection to the display server is lost.
void quitWithoutDisplay() {
  if (quittingAtExit != nullptr) quittingAtExit->runWithoutDisplay(EXIT_FAILURE);
}

tessaly::Quitting quittingOf(tessaly::Application& application, tessaly::ReopenRequests& requests,
                             std::optional<tessaly::ClipboardHandOver>& handOver) {
  using namespace tessaly;
  return Quitting(
      {.hideWindows = [&] { application.hideWindows(); },
       .leaveDesktop =
           [&] {
             application.leaveDesktop();
             handOver.emplace();
             // Closing the connections removes the status item from the message bus, and the
             // windows from the display, except on X11 while the clipboard is passed on. The
             // connection to a Wayland compositor stays open, because Qt ends the process at once
             // when it is lost; the compositor is only told that there are no windows.
             OwnConnections::shutDown(handOver->descriptor(), compositor());
             if (!compositor().empty())
               QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
           },
       .endWriting = [&] { application.endWriting(); },
       .giveUpInstance = [&] { requests.giveUp(); },
       .giveUpWork = [&] { application.giveUpWork(); },
       .isBusy = [&] { return application.isBusy() || (handOver && handOver->isPending()); },
       .isMoving = [&] { return application.isMoving(); },
       .pause =
           [&] {
             constexpr std::chrono::milliseconds aMoment(2);
             if (handOver) handOver->serve();
             std::this_thread::sleep_for(aMoment);
           },
       .exit =
           [](int status) {
             OwnConnections::shutDown(-1, compositor());
             ::_exit(status);
           }});
}

}  // namespace

int main(int, char** argv) {
  tessaly::SizeLimit::failWritesBeyond();
  // Not all libraries prevent SIGPIPE, and the display and the message bus disappear when the
  // session ends.
  tessaly::OwnConnections::failWritesToEnded();
  const auto display = tessaly::DisplayFacts::ofThisMachine();
  std::string platform = tessaly::platformFor(display);
  if (platform.empty()) {
    std::fprintf(stderr, "tessaly: %s\n", tessaly::complaintFor(display).c_str());
    return noDisplay;
  }

  using tessaly::SingleInstance;
  std::optional<SingleInstance> instance = SingleInstance::claim(SingleInstance::Address::usual());
  // The running instance has come to the front.
  if (!instance) return 0;

  // The program takes no arguments. Qt would take some, so it gets only the platform.
  std::string option = "-platform";
  char* arguments[] = {argv[0], option.data(), platform.data(), nullptr};
  int count = 3;
  std::optional<tessaly::StartMessages> messages(std::in_place, leaveWithoutWindow);
  QApplication qtApplication(count, arguments);
  if (QGuiApplication::primaryScreen() == nullptr) leaveWithoutWindow();
  messages.reset();
  QApplication::setApplicationName(QStringLiteral("Tessaly"));
  QApplication::setDesktopFileName(QStringLiteral("tessaly"));
  // A closed dialog or finished job must not quit the program while its window is closed.
  QApplication::setQuitLockEnabled(false);

  tessaly::Application::setUpLook();
  std::optional<tessaly::ReopenRequests> requests;
  const auto quit = [&] {
    requests->hold();
    // Not quit(), which a window may refuse.
    QCoreApplication::exit();
  };
  tessaly::Application application({.platform = tessaly::platformServices(),
                                    .desktop = tessaly::desktopServices(),
                                    .giveUpInstance =
                                        [&] {
                                          // The next instance reads what this one has written.
                                          application.endWriting();
                                          requests->giveUp();
                                        },
                                    .quit = quit});
  requests.emplace(std::move(*instance), [&] { application.reopen(); });

  std::optional<tessaly::ClipboardHandOver> handOver;
  tessaly::Quitting quitting = quittingOf(application, *requests, handOver);
  quittingAtExit = &quitting;
  std::atexit(quitWithoutDisplay);
  const tessaly::QuitSignals quitSignals(quit);
  QObject::connect(&qtApplication, &QGuiApplication::lastWindowClosed, &qtApplication, [&] {
    if (QGuiApplication::quitOnLastWindowClosed()) quit();
  });
  application.launch();
  quitting.run(QApplication::exec());
}
