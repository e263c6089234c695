#include "session/AppDelegate.h"

#include <utility>

#include "session/DiskAlert.h"
#include "system/DiskSpace.h"

namespace tessaly {

AppDelegate::AppDelegate(Services services) : services_(std::move(services)) {
  if (!services_.volumeUsage) services_.volumeUsage = [] { return DiskSpace::volumeUsage(); };
  if (!services_.date) services_.date = std::chrono::system_clock::now;
}

void AppDelegate::applicationDidFinishLaunching() {
  services_.beginWindow(services_.prefs.startHidden());
  const DiskUsage disk = DiskSpace::usage(services_.volumeUsage(), std::nullopt, services_.run);
  DiskAlert::check(disk.usedPercent, services_.prefs, services_.prefs.defaults(),
                   services_.notifications, services_.date());
}

bool AppDelegate::applicationShouldHandleReopen(bool) {
  services_.prefs.showMainWindow();
  return true;
}

}  // namespace tessaly
