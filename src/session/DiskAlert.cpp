#include "session/DiskAlert.h"

#include <array>
#include <ctime>
#include <string>

#include "look/Wording.h"
#include "scan/Percent.h"

namespace tessaly::DiskAlert {

namespace {

constexpr double fullPercent = 90.0;

std::string localDay(std::chrono::system_clock::time_point time) {
  const std::time_t seconds = std::chrono::system_clock::to_time_t(time);
  std::tm parts{};
  if (localtime_r(&seconds, &parts) == nullptr) return "";
  std::array<char, 64> text{};
  return {text.data(), std::strftime(text.data(), text.size(), "%Y-%m-%d", &parts)};
}

}  // namespace

void check(double percent, const MarrowPrefs& prefs, SettingsStore& defaults,
           NotificationCenter& notifications, std::chrono::system_clock::time_point now) {
  if (!prefs.diskAlerts()) return;
  const std::string today = localDay(now);
  // Written so that NaN does not count as full.
  if (!(percent >= fullPercent)) return;
  if (defaults.text(lastDayKey) == today) return;
  defaults.setText(lastDayKey, today);
  notifications.requestAuthorization();
  notifications.post({.identifier = "marrow.disk.pressure",
                      .title = "Disk almost full",
                      .body = Wording::current().thisComputerIs + Percent::rounded(percent) +
                              " full. Open Tessaly to reclaim space.",
                      .hasSound = true});
}

}  // namespace tessaly::DiskAlert
