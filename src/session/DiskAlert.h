// The one warning that the program gives by itself: the disk is nearly full.
//
// Main thread only.
#pragma once

#include <chrono>
#include <string_view>

#include "platform/NotificationCenter.h"
#include "platform/SettingsStore.h"
#include "session/MarrowPrefs.h"

namespace tessaly::DiskAlert {

// The day of the last warning, as text "yyyy-MM-dd" of the local time zone.
inline constexpr std::string_view lastDayKey = "marrow.diskAlert.lastDay";

// Warns when the disk is `percent` full, of 0 to 100, and that is 90 or more: once a day at most,
// and not at all when the user has switched that off. The day counts as warned once the warning is
// handed over, whether or not the user gets to see it.
void check(double percent, const MarrowPrefs& prefs, SettingsStore& defaults,
           NotificationCenter& notifications,
           std::chrono::system_clock::time_point now = std::chrono::system_clock::now());

}  // namespace tessaly::DiskAlert
