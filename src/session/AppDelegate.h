// What the program does when it is launched and when it is opened again. Main thread only.
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

#include "platform/NotificationCenter.h"
#include "session/MarrowPrefs.h"
#include "system/DiskUsage.h"
#include "system/MachineFigures.h"
#include "system/Shell.h"

namespace tessaly {

class AppDelegate {
 public:
  // All of them must outlive the delegate; `figures` must be destroyed before the others. If a
  // function is empty, the named one is used.
  struct Services {
    MarrowPrefs& prefs;  // the settings behind prefs
    NotificationCenter& notifications;
    std::function<void(bool startHidden)> beginWindow;  // shows the main window unless hidden
    std::function<std::optional<DiskUsage>()> volumeUsage = {};        // DiskSpace::volumeUsage
    Shell::Run run = {};                                               // Shell::run
    std::function<std::chrono::system_clock::time_point()> date = {};  // the system's clock
    MachineFigures* figures = nullptr;  // ToolFigures of `run` and `volumeUsage`
  };

  explicit AppDelegate(Services services);

  // Shows the main window unless the user starts the program hidden, and warns of a nearly full
  // disk as soon as its usage is known.
  void applicationDidFinishLaunching();

  // The program was started again while it runs: brings its windows to the front, visible or not.
  // Returns true: the caller has nothing else to do.
  bool applicationShouldHandleReopen(bool hasVisibleWindows);

 private:
  Services services_;
  std::unique_ptr<MachineFigures> ownFigures_;
};

}  // namespace tessaly
