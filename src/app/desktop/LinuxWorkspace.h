// The workspace on a Linux desktop: files are revealed by the file manager that answers to
// org.freedesktop.FileManager1 on the session bus, and opened by xdg-open, which also shows the
// folder where no file manager answers. A file that has gone since is not asked for: its folder is
// shown instead.
//
// Both hand everything to a worker queue at once, since a bus, a file manager and a
// disk can each take their time.
#pragma once

#include <atomic>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <QDBusConnection>

#include "platform/Dispatch.h"
#include "platform/Workspace.h"

namespace tessaly {

class LinuxWorkspace : public Workspace {
 public:
  // How it reaches the desktop. Both are called on a worker thread.
  struct Services {
    std::function<QDBusConnection()> sessionBus;
    // Opens a URI in its default application, without waiting for it.
    std::function<void(const std::string& uri)> openUri;

    static Services real();
  };

  explicit LinuxWorkspace(Dispatch& dispatch, Services services = Services::real());

  void reveal(const std::vector<std::string>& paths) override;
  void open(const std::string& path) override;
  // No desktop on Linux has a page to give programs access to the disk.
  bool openSettings(const std::string& /*url*/) override { return false; }
  void close() override { *isClosed_ = true; }

 private:
  Dispatch& dispatch_;
  // Known to the workers too, which may outlive this object.
  std::shared_ptr<std::atomic<bool>> isClosed_ = std::make_shared<std::atomic<bool>>(false);
  Services services_;
};

}  // namespace tessaly
