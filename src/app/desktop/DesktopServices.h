// The services of the desktop, created on request. Each system has an implementation; CMake links
// one of them, and app/main passes it to the program.
#pragma once

#include <memory>
#include <string>

#include "app/desktop/DesktopIcon.h"
#include "platform/Dispatch.h"
#include "platform/FolderPanel.h"
#include "platform/GlobalHotKey.h"
#include "platform/NotificationCenter.h"
#include "platform/Pasteboard.h"
#include "platform/SavePanel.h"
#include "platform/StatusBarExtra.h"
#include "platform/Workspace.h"

namespace tessaly {

// Main thread only, after the QApplication is created. The dispatch must outlive the results.
class DesktopServices {
 public:
  virtual ~DesktopServices() = default;

  // `startDirectory` is where a panel opens the first time.
  virtual std::unique_ptr<FolderPanel> makeFolderPanel(const std::string& startDirectory) const = 0;
  virtual std::unique_ptr<SavePanel> makeSavePanel(const std::string& startDirectory) const = 0;
  virtual std::unique_ptr<Pasteboard> makePasteboard() const = 0;
  virtual std::unique_ptr<Workspace> makeWorkspace(Dispatch& dispatch) const = 0;
  virtual std::unique_ptr<DesktopIcon> makeIcon(Dispatch& dispatch) const = 0;
  virtual std::unique_ptr<NotificationCenter> makeNotifications(Dispatch& dispatch) const = 0;
  virtual std::unique_ptr<StatusBarExtra> makeStatusBarExtra(Dispatch& dispatch) const = 0;
  // Destroy the result before the QApplication.
  virtual std::unique_ptr<GlobalHotKey> makeHotKey(Dispatch& dispatch) const = 0;
};

// The services of the system that the program is built for.
const DesktopServices& desktopServices();

}  // namespace tessaly
