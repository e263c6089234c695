#include "app/desktop/DesktopServices.h"
#include "app/desktop/LinuxApplicationIcon.h"
#include "app/desktop/LinuxNotifications.h"
#include "app/desktop/LinuxStatusBarExtra.h"
#include "app/desktop/LinuxWorkspace.h"
#include "app/desktop/QtFolderPanel.h"
#include "app/desktop/QtPasteboard.h"
#include "app/desktop/QtSavePanel.h"
#include "app/desktop/StatusIcon.h"
#include "app/desktop/X11HotKey.h"

namespace tessaly {

namespace {

class LinuxDesktopServices final : public DesktopServices {
 public:
  std::unique_ptr<FolderPanel> makeFolderPanel(const std::string& startDirectory) const override {
    return std::make_unique<QtFolderPanel>(startDirectory);
  }

  std::unique_ptr<SavePanel> makeSavePanel(const std::string& startDirectory) const override {
    return std::make_unique<QtSavePanel>(startDirectory);
  }

  std::unique_ptr<Pasteboard> makePasteboard() const override {
    return std::make_unique<QtPasteboard>();
  }

  std::unique_ptr<Workspace> makeWorkspace(Dispatch& dispatch) const override {
    return std::make_unique<LinuxWorkspace>(dispatch);
  }

  std::unique_ptr<DesktopIcon> makeIcon(Dispatch& dispatch) const override {
    return std::make_unique<LinuxApplicationIcon>(dispatch);
  }

  std::unique_ptr<NotificationCenter> makeNotifications(Dispatch& dispatch) const override {
    return std::make_unique<LinuxNotifications>(dispatch);
  }

  std::unique_ptr<StatusBarExtra> makeStatusBarExtra(Dispatch& dispatch) const override {
    return std::make_unique<LinuxStatusBarExtra>(
        dispatch, [](const StatusBarExtra::Label& label) { return StatusIcon::paint(label); });
  }

  std::unique_ptr<GlobalHotKey> makeHotKey(Dispatch& dispatch) const override {
    return std::make_unique<X11HotKey>(dispatch);
  }
};

}  // namespace

const DesktopServices& desktopServices() {
  static const LinuxDesktopServices services;
  return services;
}

}  // namespace tessaly
