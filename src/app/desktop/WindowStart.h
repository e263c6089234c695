// Applies the WindowPolicy to the running program. Main thread only.
#pragma once

#include <chrono>
#include <functional>
#include <memory>

#include "platform/Dispatch.h"
#include "platform/StatusBarExtra.h"

namespace tessaly {

class WindowStart {
 public:
  struct Services {
    std::function<void()> show;
    std::function<void(bool)> setQuitsOnClose;
  };

  // How long a hidden start waits for a status bar.
  static constexpr std::chrono::milliseconds patience{2000};

  // Sets extra.setPresenceChanged(). The extra and the dispatch must outlive it.
  WindowStart(Dispatch& dispatch, StatusBarExtra& extra, Services services);
  ~WindowStart();
  WindowStart(const WindowStart&) = delete;
  WindowStart& operator=(const WindowStart&) = delete;

  // Shows the window now, later or not at all. Call it once.
  void begin(bool startHidden);

  // The window was requested in another way, which decides whether it is shown.
  void settle() { isSettled_ = true; }

 private:
  void followPresence();
  void decide();

  Dispatch& dispatch_;
  StatusBarExtra& extra_;
  Services services_;
  bool startHidden_ = false;
  bool hasWaited_ = false;
  bool isSettled_ = true;
  std::shared_ptr<WindowStart*> self_ = std::make_shared<WindowStart*>(this);
};

}  // namespace tessaly
