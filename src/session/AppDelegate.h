// The two moments in the life of the program that no view sees. Main thread only.
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
  // All of it outlives the delegate, and the figures are outlived by the rest. Where a function is
  // not given, the named one is taken.
  struct Services {
    MarrowPrefs& prefs;  // and the settings that they live in
    NotificationCenter& notifications;
    std::function<void(bool startHidden)> beginWindow;  // shows the main window, or does not
    std::function<std::optional<DiskUsage>()> volumeUsage = {};        // DiskSpace::volumeUsage
    Shell::Run run = {};                                               // Shell::run
    std::function<std::chrono::system_clock::time_point()> date = {};  // the system's clock
    MachineFigures* figures = nullptr;  // ToolFigures of `run` and `volumeUsage`
  };

  explicit AppDelegate(Services services);

  // The main window comes up, unless the user wants it hidden; a disk that is nearly full is told,
  // as soon as it is known.
  void applicationDidFinishLaunching();

  // The program was started again while it runs: its windows come forward, whether or not there are
  // some to see. Gives true: nothing else is to be done.
  bool applicationShouldHandleReopen(bool hasVisibleWindows);

 private:
  Services services_;
  std::unique_ptr<MachineFigures> ownFigures_;
};

}  // namespace tessaly
