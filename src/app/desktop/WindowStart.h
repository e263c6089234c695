// Carries out the WindowPolicy while the program runs. Main thread only.
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

  // How long a start that is to be hidden waits for a status bar.
  static constexpr std::chrono::milliseconds patience{2000};

  // Takes over extra.setPresenceChanged(). The extra and the dispatch outlive it.
  WindowStart(Dispatch& dispatch, StatusBarExtra& extra, Services services);
  ~WindowStart();
  WindowStart(const WindowStart&) = delete;
  WindowStart& operator=(const WindowStart&) = delete;

  // Shows the window now, later or not at all. To be called once.
  void begin(bool startHidden);

  // The window has been asked for in some other way: whether it shows is settled.
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
