// The icon of the program on a Linux desktop. The badge goes out on the session bus as
// com.canonical.Unity.LauncherEntry.Update, which docks of several desktops listen to; attention is
// asked for by the window. Main thread only.
//
// Such a badge is a whole number: of "87%" the docks show 87, and a text that is no number takes
// the badge away.
#pragma once

#include <functional>
#include <string>

#include <QPointer>
#include <QWindow>

#include "app/desktop/DesktopIcon.h"
#include "app/desktop/SessionBus.h"

namespace tessaly {

class LinuxApplicationIcon final : public DesktopIcon {
 public:
  // How it reaches the desktop.
  struct Services {
    SessionBus::Connect connect;
    // Marks a window as one that wants attention, until it becomes active.
    std::function<void(QWindow& window)> alert;

    static Services real();
  };

  explicit LinuxApplicationIcon(Dispatch& dispatch, Services services = Services::real());

  void setWindow(QWindow* window) override { window_ = window; }
  void setBadge(const std::string& text) override;
  void requestAttention() override;

 private:
  std::function<void(QWindow&)> alert_;
  QPointer<QWindow> window_;
  SessionBus bus_;
};

}  // namespace tessaly
