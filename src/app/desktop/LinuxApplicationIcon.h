// The icon of the program on a Linux desktop. The badge is sent on the session bus as
// com.canonical.Unity.LauncherEntry.Update, which docks of several desktops handle; the window
// requests attention. Main thread only.
//
// Such a badge is an integer: for "87%" the docks show 87, and a text that is not a number hides
// the badge.
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
  // The connection to the desktop.
  struct Services {
    SessionBus::Connect connect;
    // Marks a window as requesting attention until it becomes active.
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
