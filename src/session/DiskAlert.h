// The notification that the disk is nearly full.
//
// Main thread only.
#pragma once

#include <chrono>
#include <string_view>

#include "platform/NotificationCenter.h"
#include "platform/SettingsStore.h"
#include "session/MarrowPrefs.h"

namespace tessaly::DiskAlert {

// The date of the last warning, as text "yyyy-MM-dd" in the local time zone.
inline constexpr std::string_view lastDayKey = "marrow.diskAlert.lastDay";

// Warns if `percent` (0 to 100) is at least 90: at most once a day, and not if the user has
// switched alerts off. The date is stored once the notification is posted, whether or not it is
// displayed.
void check(double percent, const MarrowPrefs& prefs, SettingsStore& defaults,
           NotificationCenter& notifications,
           std::chrono::system_clock::time_point now = std::chrono::system_clock::now());

}  // namespace tessaly::DiskAlert
