// The workspace on a Linux desktop: the service org.freedesktop.FileManager1 on the session bus
// reveals files, and xdg-open opens them; xdg-open also shows the folder if no file manager
// answers. For a file that no longer exists, its folder is shown instead.
//
// Both run on a worker queue, since a bus, a file manager and a disk may be slow.
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
  // The connection to the desktop. Both are called on a worker thread.
  struct Services {
    std::function<QDBusConnection()> sessionBus;
    // Opens a URI in its default application, without waiting for it.
    std::function<void(const std::string& uri)> openUri;

    static Services real();
  };

  explicit LinuxWorkspace(Dispatch& dispatch, Services services = Services::real());

  void reveal(const std::vector<std::string>& paths) override;
  void open(const std::string& path) override;
  // No desktop on Linux has a page of settings for access to the disk.
  bool openSettings(const std::string& /*url*/) override { return false; }
  void close() override { *isClosed_ = true; }

 private:
  Dispatch& dispatch_;
  // Shared with the workers, which may outlive this object.
  std::shared_ptr<std::atomic<bool>> isClosed_ = std::make_shared<std::atomic<bool>>(false);
  Services services_;
};

}  // namespace tessaly
