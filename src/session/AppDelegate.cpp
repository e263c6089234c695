#include "session/AppDelegate.h"

#include <utility>

#include "session/DiskAlert.h"
#include "system/ToolFigures.h"

namespace tessaly {

AppDelegate::AppDelegate(Services services) : services_(std::move(services)) {
  if (services_.figures == nullptr) {
    ownFigures_ = std::make_unique<ToolFigures>(services_.run, services_.volumeUsage);
    services_.figures = ownFigures_.get();
  }
  if (!services_.date) services_.date = std::chrono::system_clock::now;
}

void AppDelegate::applicationDidFinishLaunching() {
  services_.beginWindow(services_.prefs.startHidden());
  // The answer may come after this delegate is gone, but not after these services.
  services_.figures->askDisk([&prefs = services_.prefs, &notifications = services_.notifications,
                              date = services_.date](const DiskUsage& disk) {
    DiskAlert::check(disk.usedPercent, prefs, prefs.defaults(), notifications, date());
  });
}

bool AppDelegate::applicationShouldHandleReopen(bool) {
  services_.prefs.showMainWindow();
  return true;
}

}  // namespace tessaly
